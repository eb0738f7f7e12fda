// BVNSXMLDocument: loading an XML document from a path in one call.
#pragma once

#include <memory>
#include <optional>

#include "BrevantCocoaExtensions/platform/Error.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/XMLNode.hpp"

namespace bv::BVNSXMLDocument {

// A new document read from the file with the parse options (XMLDocumentTidyXML, XMLNodePreserveCDATA, ...);
// null for a null path, and null with *error when the file cannot be read or parsed. External entities load
// only from regular files in the file's own folder or below it; a refused one fails the parse.
[[nodiscard]] std::shared_ptr<XMLDocument> initWithContentsAtPathOptionsError(const std::optional<Text>& path,
                                                                              unsigned options, Error* error);

// The document read from the file with the tidying option (1024, XMLDocumentTidyXML), so malformed input
// gives what can be recovered; null for a null path or when nothing can be read (the error is dropped).
[[nodiscard]] std::shared_ptr<XMLDocument> documentAtPath(const std::optional<Text>& path);

}  // namespace bv::BVNSXMLDocument
