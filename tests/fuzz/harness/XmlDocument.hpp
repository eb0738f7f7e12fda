// Harness: parsing XML documents into the node tree (plain and recovering), and writing them back.
#pragma once

#include "BrevantCocoaExtensions/platform/XMLNode.hpp"
#include "Common.hpp"
#include "EntityFolder.hpp"

namespace bv::fuzz {

namespace detail {

// Every child points back to its parent and knows its position (checked for the first children of each
// node only, since index() scans the siblings).
inline void checkTreeLinks(const XMLNode& node, std::size_t& budget) {
    const XMLNodeArray& children = node.children();
    for (std::size_t i = 0; i < children.size() && budget > 0; ++i, --budget) {
        check(children[i]->parent().get() == &node, "a child's parent is the node holding it");
        if (i < 64) check(children[i]->index() == i, "a child's index is its position");
        checkTreeLinks(*children[i], budget);
    }
}

// Written XML parses again (plainly) into a tree that writes the same XML; a copy writes the same XML.
inline void checkWrittenForm(const XMLDocument& document, unsigned options) {
    const std::string written = document.xmlString();
    Error error;
    const auto again = XMLDocument::parseData(written, options & ~XMLDocumentTidyXML, &error);
    if (!again) std::fprintf(stderr, "reparse failed: %s\n", error.failureReason.toUtf8().c_str());
    check(again != nullptr, "the writer's output is well-formed XML");
    check(again->xmlString() == written, "writing, parsing and writing again gives the same XML");
    check(document.copyDocument()->xmlString() == written, "a copy writes the same XML");
    check(XMLDocument::parseData(document.xmlString(XMLNodePrettyPrint), options & ~XMLDocumentTidyXML) !=
              nullptr,
          "pretty-printed output is well-formed XML");
    std::size_t budget = 4096;
    checkTreeLinks(document, budget);
    (void)document.stringValue();
}

}  // namespace detail

// The first byte picks the parse options (recovering, keeping CDATA, keeping white space); the rest is the
// document, parsed as bytes, as text, as one element, and from a file whose folder holds entity files. A
// parse fails with an error or gives a tree whose written form is stable (see checkWrittenForm); the file's
// entities never open a file outside its folder.
inline void xmlDocument(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return;
    unsigned options = XMLNodeOptionsNone;
    if ((data[0] & 1) != 0) options |= XMLDocumentTidyXML;
    if ((data[0] & 2) != 0) options |= XMLNodePreserveCDATA;
    if ((data[0] & 4) != 0) options |= XMLNodePreserveWhitespace;
    const std::string_view bytes = asChars(data + 1, size - 1);

    Error error;
    if (const auto document = XMLDocument::parseData(bytes, options, &error))
        detail::checkWrittenForm(*document, options);
    else
        check(!error.domain.empty(), "a failed parse says why");

    const Text text = Text::fromUtf8(bytes);
    if (const auto document = XMLDocument::parseXMLString(text, options))
        detail::checkWrittenForm(*document, options);
    if (const auto element = XMLElement::parse(text)) {
        const auto document = XMLDocument::make(element);
        detail::checkWrittenForm(*document, XMLNodeOptionsNone);
    }

    const EntityFolder& folder = EntityFolder::shared();
    if (const auto document = XMLDocument::parseFile(folder.writeDocument(bytes), options))
        detail::checkWrittenForm(*document, options);
    folder.checkNothingOutsideWasOpened();
}

}  // namespace bv::fuzz
