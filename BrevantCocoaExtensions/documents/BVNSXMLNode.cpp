// BVNSXMLNode: kind descriptions and descendants of any node.
#include "BrevantCocoaExtensions/documents/BVNSXMLNode.hpp"

namespace bv::BVNSXMLNode {

namespace {

void appendDescendants(const XMLNode& node, XMLNodeArray& out) {
    const XMLNodeArray& children = node.children();
    out.insert(out.end(), children.begin(), children.end());
    for (const auto& child : children)
        appendDescendants(*child, out);
}

}  // namespace

Text kindDescription(const XMLNode& self) {
    switch (self.kindCode()) {
        case 0:
            return "NSXMLInvalidKind";
        case 1:
            return "NSXMLDocumentKind";
        case 2:
            return "NSXMLElementKind";
        case 3:
            return "NSXMLAttributeKind";
        case 4:
            return "NSXMLNamespaceKind";
        case 5:
            return "NSXMLProcessingInstructionKind";
        case 6:
            return "NSXMLCommentKind";
        case 8:
            return "NSXMLDTDKind";
        case 9:
            return "NSXMLEntityDeclarationKind";
        case 10:
            return "NSXMLAttributeDeclarationKind";
        case 11:
            return "NSXMLElementDeclarationKind";
        case 12:
            return "NSXMLNotationDeclarationKind";
        default:  // text (7) included
            return "NSXMLUndefinedKind";
    }
}

XMLNodeArray descendants(const XMLNode& self) {
    XMLNodeArray out;
    appendDescendants(self, out);
    return out;
}

}  // namespace bv::BVNSXMLNode
