// BVNSXMLNode: operations every node of the XML node model answers, whatever its kind.
#pragma once

#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/XMLNode.hpp"

namespace bv::BVNSXMLNode {

// A readable name of the node's kind: "NSXMLElementKind", "NSXMLCommentKind", ... A text node is
// "NSXMLUndefinedKind", like any kind outside the table (a gap kept on purpose).
[[nodiscard]] Text kindDescription(const XMLNode& self);

// Every node below this one: all children, then the first child's descendants, then the second's, and so
// on. A node without children has none.
[[nodiscard]] XMLNodeArray descendants(const XMLNode& self);

}  // namespace bv::BVNSXMLNode
