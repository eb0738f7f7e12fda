// Inputs found by fuzzing whose tree did not write XML that reads back the same: each written form must
// parse again (plainly) and write the very same XML.
#include <gtest/gtest.h>

#include <string>

#include "BrevantCocoaExtensions/platform/XMLNode.hpp"

namespace {

using bv::XMLDocument;
using bv::XMLNode;

void expectStableWrittenForm(const XMLDocument& document) {
    const std::string written = document.xmlString();
    bv::Error error;
    const auto again = XMLDocument::parseData(written, bv::XMLNodeOptionsNone, &error);
    ASSERT_NE(again, nullptr) << written << "\n" << error.failureReason;
    EXPECT_EQ(again->xmlString(), written);
}

TEST(XMLNodeRegression, RecoveredTreesWriteXMLThatReadsBackTheSame) {
    struct Case {
        const char* what;
        const char* xml;
        const char* expected;  // the root element as written
    };
    const Case cases[] = {
        {"a misplaced XML declaration is no processing instruction", R"(<a><?xml version="1.0"?>x</a>)",
         "<a>x</a>"},
        {"a document type declaration without a name is dropped", "<!DOCTYPE ><a/>", "<a/>"},
        {"a prefix declared with an empty URI is dropped", R"(<a xmlns:p="" b="1"/>)", R"(<a b="1"/>)"},
        {"a malformed prefix declaration with an empty URI is dropped", "<a xmlns:\xB7p=\"\" b=\"1\"/>",
         R"(<a b="1"/>)"},
        {"an element named with an empty local part keeps one declaration per prefix",
         R"(<r: xmlns:r="a" xmlns="b"/>)", R"(<r: xmlns:r="a" xmlns="b"/>)"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.what);
        const auto document = XMLDocument::parseData(each.xml, bv::XMLDocumentTidyXML);
        ASSERT_NE(document, nullptr);
        EXPECT_EQ(document->rootElement()->xmlString(), each.expected);
        expectStableWrittenForm(*document);
    }
}

TEST(XMLNodeRegression, VersionThatNoXMLDeclarationCanHoldIsWrittenAs1_0) {
    const auto recovered = XMLDocument::parseData(R"(<?xml version="0.0"?><a/>)", bv::XMLDocumentTidyXML);
    ASSERT_NE(recovered, nullptr);
    EXPECT_EQ(recovered->xmlString().substr(0, 21), R"(<?xml version="1.0" e)");
    expectStableWrittenForm(*recovered);

    const auto built = XMLDocument::make(bv::XMLElement::make("a"));
    for (const char* version : {"1.1", "1.10"}) {
        built->setVersion(version);
        EXPECT_NE(built->xmlString().find(std::string("version=\"") + version + "\""), std::string::npos);
    }
    for (const char* version : {"", "2.0", "1.", "1.0\"?><x"}) {
        built->setVersion(version);
        EXPECT_EQ(built->xmlString().substr(0, 21), R"(<?xml version="1.0" e)") << version;
    }
}

TEST(XMLNodeRegression, BuiltElementWhosePrefixIsDeclaredForAnotherURIWritesWellFormedXML) {
    // The element's own declaration wins; a second xmlns:p on the same element would not be XML.
    const auto element = bv::XMLElement::make("p:a", "urn:two");
    element->addNamespace(XMLNode::makeNamespace("p", "urn:one"));
    const auto document = XMLDocument::make(element);
    EXPECT_EQ(element->xmlString(), R"(<p:a xmlns:p="urn:one"/>)");
    expectStableWrittenForm(*document);
}

}  // namespace
