// BVNSXMLDocument: documents read from paths.
#include "BrevantCocoaExtensions/documents/BVNSXMLDocument.hpp"

namespace bv::BVNSXMLDocument {

std::shared_ptr<XMLDocument> initWithContentsAtPathOptionsError(const std::optional<Text>& path,
                                                                unsigned options, Error* error) {
    if (!path) return nullptr;
    return XMLDocument::parseFile(path->toUtf8(), options, error);
}

std::shared_ptr<XMLDocument> documentAtPath(const std::optional<Text>& path) {
    return initWithContentsAtPathOptionsError(path, XMLDocumentTidyXML, nullptr);
}

}  // namespace bv::BVNSXMLDocument
