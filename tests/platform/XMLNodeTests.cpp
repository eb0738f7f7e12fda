// The XML node model: parsing into the tree, tree invariants under edits, the writer's round trips, and
// hostile input (malformed, entity bombs, external entities; arbitrary bytes are the fuzz target's).
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/XMLLibxmlSupportInternal.hpp"
#include "BrevantCocoaExtensions/platform/XMLNode.hpp"
#include "BrevantCocoaExtensions/platform/XMLStreamParser.hpp"
#include "support/Scratch.hpp"

using bv::Text;
using bv::XMLDocument;
using bv::XMLElement;
using bv::XMLNode;
using bv::XMLNodeArray;
using bv::XMLNodeKind;
using Texts = std::vector<Text>;

namespace {

std::shared_ptr<XMLDocument> parse(const std::string& xml, unsigned options = bv::XMLNodeOptionsNone) {
    bv::Error error;
    auto document = XMLDocument::parseData(xml, options, &error);
    EXPECT_NE(document, nullptr) << xml << "\n" << error.failureReason;
    return document;
}

// Equal kind, name, URI, CDATA flag, leaf value, attributes, namespaces and children, recursively.
::testing::AssertionResult sameTree(const XMLNode& a, const XMLNode& b, const std::string& at = "/") {
    auto differ = [&](const std::string& what) {
        return ::testing::AssertionFailure() << what << " differs at " << at << a.name().toUtf8();
    };
    if (a.kind() != b.kind() || a.name() != b.name() || a.URI() != b.URI() || a.isCDATA() != b.isCDATA()) {
        return differ("kind, name, URI or CDATA flag");
    }
    if (a.children().empty() && a.stringValue() != b.stringValue()) {
        return differ("value '" + a.stringValue().toUtf8() + "' / '" + b.stringValue().toUtf8() + "'");
    }
    // Attributes, then namespaces, then children: a node of the wrong kind in a slot differs by kind.
    auto parts = [](const XMLNode& node) {
        XMLNodeArray all;
        if (const auto* element = dynamic_cast<const XMLElement*>(&node)) {
            all = element->attributes();
            all.insert(all.end(), element->namespaces().begin(), element->namespaces().end());
        }
        all.insert(all.end(), node.children().begin(), node.children().end());
        return all;
    };
    const XMLNodeArray x = parts(a), y = parts(b);
    if (x.size() != y.size()) return differ("attribute, namespace or child count");
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (auto r = sameTree(*x[i], *y[i], at + a.name().toUtf8() + "/" + std::to_string(i)); !r) return r;
    }
    return ::testing::AssertionSuccess();
}

}  // namespace

TEST(XMLNode, ParseGivesKindsNamesNamespacesAndValues) {
    auto document = parse(
        "<?xml version='1.0' encoding='ISO-8859-1'?>\n<!-- top -->\n"
        "<r xmlns='urn:d' xmlns:p='urn:p'><p:a p:k='1' k='2'>x<![CDATA[<y>]]>z</p:a><?pi data?><b/>"
        "\xE9</r>",
        bv::XMLNodePreserveCDATA);
    ASSERT_NE(document, nullptr);
    EXPECT_EQ(document->characterEncoding(), Text("ISO-8859-1"));
    ASSERT_EQ(document->childCount(), 2u);
    EXPECT_EQ(document->children()[0]->kind(), XMLNodeKind::Comment);
    auto root = document->rootElement();
    ASSERT_EQ(root->namespaces().size(), 2u);
    EXPECT_EQ((Texts{root->URI(), root->namespaces()[1]->name(), root->namespaces()[1]->stringValue()}),
              (Texts{"urn:d", "p", "urn:p"}));
    EXPECT_TRUE(root->attributes().empty());  // declarations are namespaces, not attributes

    auto a = root->children()[0]->asElement();
    EXPECT_EQ((Texts{a->name(), a->localName(), a->prefix(), a->URI(), a->attributeForName("p:k")->URI(),
                     a->attributeForName("k")->URI(), a->stringValue()}),
              (Texts{"p:a", "a", "p", "urn:p", "urn:p", "", "x<y>z"}));
    EXPECT_EQ(a->attributeForName("k")->index(), 1u);
    ASSERT_EQ(a->childCount(), 3u);
    EXPECT_TRUE(a->children()[1]->isCDATA());
    EXPECT_EQ(root->children()[1]->kind(), XMLNodeKind::ProcessingInstruction);
    EXPECT_EQ(root->children()[1]->name(), Text("pi"));
    EXPECT_EQ(root->stringValue(), Text("x<y>z\xC3\xA9"));  // comments and instructions are not text
    EXPECT_EQ(root->children()[3]->index(), 3u);
    EXPECT_EQ(root->children()[2]->parent(), root);
    EXPECT_EQ(root->children()[2]->rootDocument(), document);

    // Without the option a CDATA section is plain text, merged with its neighbours.
    auto merged = parse("<a>x<![CDATA[<y>]]>z</a>")->rootElement();
    ASSERT_EQ(merged->childCount(), 1u);
    EXPECT_FALSE(merged->children()[0]->isCDATA());
}

TEST(XMLNode, EditsKeepParentsAndIndexesAndRefuseBrokenTrees) {
    auto root = XMLElement::make("root"), a = XMLElement::make("a"), b = XMLElement::make("b");
    root->addChild(a);
    root->insertChild(b, 0);
    root->insertChild(XMLNode::makeComment("c"), 2);
    EXPECT_EQ(a->index(), 1u);
    EXPECT_EQ(b->index(), 0u);
    EXPECT_THROW(root->insertChild(XMLElement::make("x"), 4), bv::RangeException);
    EXPECT_THROW(root->removeChildAtIndex(3), bv::RangeException);
    EXPECT_THROW((void)root->childAtIndex(3), bv::RangeException);
    EXPECT_THROW(root->addChild(a), bv::InvalidArgumentException);                    // already has a parent
    EXPECT_THROW(a->addChild(root), bv::InvalidArgumentException);                    // a cycle
    EXPECT_THROW(root->addChild(XMLDocument::make()), bv::InvalidArgumentException);  // a document inside
    EXPECT_THROW(root->addChild(XMLNode::makeAttribute("k", "v")), bv::InvalidArgumentException);

    root->replaceChildAtIndex(0, XMLElement::make("b2"));
    EXPECT_FALSE(b->hasParent());
    a->detach();
    EXPECT_EQ(a->parent(), nullptr);
    EXPECT_EQ(a->index(), 0u);
    EXPECT_EQ(root->xmlString(), "<root><b2/><!--c--></root>");

    auto attribute = XMLNode::makeAttribute("k", "1");
    a->addAttribute(attribute);
    a->addAttribute(XMLNode::makeAttribute("k", "2"));  // same name: replaced in place
    EXPECT_FALSE(attribute->hasParent());
    EXPECT_EQ(a->xmlString(), "<a k=\"2\"/>");

    auto document = XMLDocument::make(XMLElement::make("r"));
    EXPECT_THROW(document->addChild(XMLElement::make("second")), bv::InvalidArgumentException);
    EXPECT_THROW(document->addChild(XMLNode::makeText("t")), bv::InvalidArgumentException);
    document->setRootElement(a);  // a new root takes the old one's place
    EXPECT_EQ(document->rootElement(), a);
    EXPECT_EQ(document->childCount(), 1u);
}

TEST(XMLNode, HeldNodesOutliveTheirTreeAndDeepTreesAreReleased) {
    std::shared_ptr<XMLNode> kept, keptAttribute;
    {
        auto root = XMLElement::make("root");
        auto child = XMLElement::make("child");
        root->addChild(child);
        child->addAttribute(XMLNode::makeAttribute("k", "v"));
        keptAttribute = child->attributes()[0];
        kept = child;
    }
    EXPECT_FALSE(kept->hasParent());
    EXPECT_EQ(keptAttribute->parent(), kept);  // the held element still owns its attribute

    auto top = XMLElement::make("level");
    XMLElement* bottom = top.get();
    for (int depth = 0; depth < 200000; ++depth) {  // far deeper than the stack would allow recursively
        auto next = XMLElement::make("level");
        bottom->addChild(next);
        bottom = next.get();
    }
    top.reset();
}

TEST(XMLNode, StringValueSetsReplaceChildrenAndCopiesAreDeep) {
    auto element = parse("<a k='v'><b>x</b>y<!--c--></a>")->rootElement();
    auto copy = element->copyElement();
    EXPECT_TRUE(sameTree(*element, *copy));
    EXPECT_NE(copy->children()[0], element->children()[0]);
    EXPECT_EQ(copy->children()[0]->parent(), copy);

    element->setStringValue("new");
    EXPECT_EQ(element->xmlString(), "<a k=\"v\">new</a>");
    element->setStringValue("");
    EXPECT_EQ(element->childCount(), 0u);
    EXPECT_EQ(copy->stringValue(), Text("xy"));  // the copy kept its own children
}

TEST(XMLNode, WriterOutputParsesBackToTheSameTree) {
    const std::vector<std::string> documents = {
        "<a/>",
        "<r><a x=\"1 &amp; &lt;2&gt; &quot;q&quot; 'a'\">t &amp; &lt;u&gt; ]]&gt;</a><b/><c></c></r>",
        "<r a=\"tab&#9;lf&#10;cr&#13;\">line\nfeed&#13;cr\ttab</r>",
        "<r><![CDATA[a]]]]><![CDATA[>b]]><![CDATA[cr&#13;]]></r>",
        "<r><!-- c - d --><?target some ? > data?><x/></r>",
        "<r xmlns='urn:d' xmlns:p='urn:p'><p:a p:k='1'><b xmlns=''>in</b></p:a><c/></r>",
        "<r>\xF0\x9F\x98\x80 caf\xC3\xA9 \xE2\x98\xBA</r>",
        "<!DOCTYPE r [\n<!ENTITY e \"entity text\">\n]><r>&e;</r>",
        "<!DOCTYPE r [<!ATTLIST r k (a|b) \"~\">]><r/>",  // a default outside its list is dropped
        "<r><p>Hello <b>big</b> <i>world</i>!</p>\n  <q>\n</q></r>"};
    for (const std::string& xml : documents) {
        auto original = parse(xml, bv::XMLNodePreserveCDATA);
        ASSERT_NE(original, nullptr);
        for (unsigned options : {bv::XMLNodeOptionsNone, bv::XMLNodeCompactEmptyElement,
                                 bv::XMLNodePrettyPrint | bv::XMLNodeCompactEmptyElement}) {
            std::string written = original->xmlString(options);
            auto again = parse(written, bv::XMLNodePreserveCDATA);
            ASSERT_NE(again, nullptr) << written;
            EXPECT_TRUE(sameTree(*original, *again)) << xml << "\nwritten as\n" << written;
        }
    }
}

TEST(XMLNode, WriterFormsAndRepairs) {
    auto root = XMLElement::make("settings"), empty = XMLElement::make("Empty"),
         group = XMLElement::make("Group");
    root->addChild(XMLElement::makeWithStringValue("Volume", "11"));
    root->addChild(empty);
    root->addChild(group);
    group->addChild(XMLElement::make("Item"));
    auto document = XMLDocument::make(root);
    EXPECT_EQ(
        document->xmlString(bv::XMLNodePrettyPrint | bv::XMLNodeCompactEmptyElement),
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<settings>\n    <Volume>11</Volume>\n    <Empty/>\n    <Group>\n        <Item/>\n    </Group>\n"
        "</settings>\n");
    EXPECT_EQ(empty->xmlString(bv::XMLNodeOptionsNone), "<Empty></Empty>");

    // Characters XML 1.0 cannot hold become U+FFFD; closers inside comments and instructions are split.
    auto odd = XMLElement::makeWithStringValue("o", Text(std::u16string{u'a', 0x0001, 0xD800, u'b'}));
    EXPECT_EQ(odd->xmlString(),
              "<o>a\xEF\xBF\xBD\xEF\xBF\xBD"
              "b</o>");
    EXPECT_EQ(XMLNode::makeComment("a--b-")->xmlString(), "<!--a- -b- -->");

    // A namespace URI that nothing declares gets its declaration, so the output parses to the same URIs.
    auto item = XMLElement::make("p:item", "urn:p"), inDefault = XMLElement::make("d", "urn:d");
    item->addAttribute(XMLNode::makeAttribute("q:k", "v", "urn:q"));
    inDefault->addChild(XMLElement::make("plain"));
    item->addChild(inDefault);
    auto reparsed = XMLElement::parse(Text(item->xmlString()));
    ASSERT_NE(reparsed, nullptr) << item->xmlString();
    EXPECT_EQ((Texts{reparsed->URI(), reparsed->attributeForName("q:k")->URI(),
                     reparsed->children()[0]->URI(), reparsed->children()[0]->children()[0]->URI()}),
              (Texts{"urn:p", "urn:q", "urn:d", ""}));
}

TEST(XMLNode, LineBreakingWhitespaceAmongMarkupIsLayout) {
    const std::string xml = "<r>\n  <a>x</a> <b>y</b>\n  <c> </c>\n</r>";
    auto root = parse(xml)->rootElement();
    ASSERT_EQ(root->childCount(), 4u);  // a, " ", b, c
    EXPECT_EQ(root->children()[1]->stringValue(), Text(" "));
    EXPECT_EQ(root->children()[3]->stringValue(), Text(" "));  // text alone in its element is content
    EXPECT_EQ(parse(xml, bv::XMLNodePreserveWhitespace)->rootElement()->childCount(), 7u);
}

TEST(XMLNode, BadInputGivesAnErrorWithItsPlaceOrARecoveredTree) {
    const std::pair<std::string, std::string> cases[] = {
        {"<a><b>x</a>", "Line 1, column 12: Opening and ending tag mismatch: b line 1 and a"},
        {"", "Line 1, column 1: Document is empty"},
        {"<a>\n<b attr=1/></a>", "Line 2, column 9: AttValue: \" or ' expected"},
        {"<a/><b/>", "Line 1, column 5: Extra content at the end of the document"},
        {"<a>&undefined;</a>", "Line 1, column 15: Entity 'undefined' not defined"}};
    for (const auto& [xml, reason] : cases) {
        bv::Error error;
        EXPECT_EQ(XMLDocument::parseData(xml, 0, &error), nullptr) << xml;
        EXPECT_EQ(error.domain, "BVXMLErrorDomain");
        EXPECT_NE(error.code, 0);
        EXPECT_EQ(error.failureReason, Text(reason)) << xml;
    }
    auto recovered = XMLDocument::parseData("<a><b>x</a><c", bv::XMLDocumentTidyXML);
    ASSERT_TRUE(recovered && recovered->rootElement());
    EXPECT_EQ(recovered->rootElement()->xmlString(), "<a><b>x</b><c/></a>");
    // Recovered trees write XML that parses plainly and writes the same again: a misplaced XML declaration
    // (even inside the document type) is dropped; a namespace declaration recovery could not take becomes
    // what a parse reads ("xmlns:2" stays an attribute, beside the declaration the writer adds for "r:");
    // an internal subset that cannot be written back well-formed is dropped.
    for (const char* xml :
         {"<a><?xml version=\"1.0\"?></a>", "<!DOCTYPE a [<?xml version=\"1.0\"?>]><a/>",
          "<r:0 xmlns=\"urn:d\" xmlns:2=\"urn:two\"/>", "<!DOCTYPE l [<!ENTITY e \"&d;&#####d;\">]><l/>"}) {
        auto tidied = XMLDocument::parseData(xml, bv::XMLDocumentTidyXML);
        ASSERT_NE(tidied, nullptr) << xml;
        const std::string written = tidied->xmlString();
        auto again = XMLDocument::parseData(written, 0);
        ASSERT_NE(again, nullptr) << written;
        EXPECT_EQ(again->xmlString(), written) << xml;
    }
    bv::Error error;
    EXPECT_EQ(XMLDocument::parseData("no markup at all", bv::XMLDocumentTidyXML, &error), nullptr);
    EXPECT_FALSE(error.failureReason.empty());
}

TEST(XMLNode, FilesThatCannotBeReadAreReportedAndWrittenFilesReadBack) {
    bv::Error error;
    EXPECT_EQ(XMLDocument::parseFile("/nonexistent/folder/x.xml", 0, &error), nullptr);
    EXPECT_EQ(error.domain, "NSPOSIXErrorDomain");
    EXPECT_EQ(error.code, ENOENT);
    EXPECT_EQ(XMLDocument::parseFile(std::filesystem::temp_directory_path().string(), 0, &error), nullptr);
    EXPECT_EQ(error.code, EISDIR);

    const bvtest::ScratchFolder folder;
    auto document = XMLDocument::make(XMLElement::makeWithStringValue("r", "caf\xC3\xA9"));
    ASSERT_TRUE(document->writeToFile(folder.path("written.xml")));
    auto readBack = XMLDocument::parseFile(folder.path("written.xml"), 0, &error);
    ASSERT_NE(readBack, nullptr);
    EXPECT_TRUE(sameTree(*document, *readBack));
}

namespace {

struct Recorder : bv::XMLStreamParserDelegate {
    std::vector<std::string> events;
    std::string abortAfter;

    void parserDidStartElementNamespaceURIQualifiedNameAttributes(
        bv::XMLStreamParser&, const Text& name, const Text& uri, const Text&,
        const std::map<Text, Text>& attributes) override {
        std::string event = "<" + name.toUtf8() + (uri.empty() ? "" : "{" + uri.toUtf8() + "}");
        for (const auto& [key, value] : attributes)
            event += " " + key.toUtf8() + "=" + value.toUtf8();
        events.push_back(event);
    }
    void parserFoundCharacters(bv::XMLStreamParser&, const Text& characters) override {
        events.push_back("'" + characters.toUtf8() + "'");
    }
    void parserDidEndElementNamespaceURIQualifiedName(bv::XMLStreamParser& parser, const Text& name,
                                                      const Text&, const Text&) override {
        events.push_back("/" + name.toUtf8());
        if (name == Text(abortAfter)) parser.abortParsing();
    }
};

std::vector<std::string> streamEvents(const std::string& xml, const std::string& abortAfter = "",
                                      bool resolve = false) {
    Recorder recorder;
    recorder.abortAfter = abortAfter;
    bv::XMLStreamParser parser(recorder);
    parser.setShouldResolveExternalEntities(resolve);
    parser.parse(reinterpret_cast<const std::uint8_t*>(xml.data()), xml.size());
    return recorder.events;
}

}  // namespace

TEST(XMLStreamParser, ReportsWhitespaceRunsInChunksOfTheirOwnAndStopsOnAbort) {
    using Events = std::vector<std::string>;
    EXPECT_EQ(streamEvents("<r x:k='1' xmlns:x='urn:x'>\n  <a>t&amp;u<!--c-->v</a>\n\n</r>"),
              (Events{"<r x:k=1", "'\n'", "'  '", "<a", "'t&uv'", "/a", "'\n'", "'\n'", "/r"}));
    EXPECT_EQ(streamEvents("<r><a><![CDATA[\n]]></a><b/><c/></r>", "b"),
              (Events{"<r", "<a", "'\n'", "/a", "<b", "/b"}));
    // Internal entities are expanded, markup included, on every reference.
    const std::string entities = "<!DOCTYPE r [<!ENTITY e \"1<i>2</i>\">]><r>[&e;&e;]</r>";
    const Events expanded{"<r", "'[1'", "<i", "'2'", "/i", "'1'", "<i", "'2'", "/i", "']'", "/r"};
    EXPECT_EQ(streamEvents(entities), expanded);
    EXPECT_EQ(streamEvents(entities, "", true), expanded);
}

namespace {

// The text a document yields through the tree parser and through the streaming parser (external entities
// resolved), or "refused: REASON" with the parse error.
std::pair<std::string, std::string> bothParses(const std::string& xml, const std::string& documentPath) {
    bv::Error error;
    auto document = documentPath.empty() ? XMLDocument::parseData(xml, 0, &error)
                                         : XMLDocument::parseFile(documentPath, 0, &error);
    std::string tree = document != nullptr ? document->rootElement()->stringValue().toUtf8()
                                           : "refused: " + error.failureReason.toUtf8();
    Recorder recorder;
    bv::XMLStreamParser parser(recorder);
    parser.setShouldResolveExternalEntities(true);
    bool parsed = documentPath.empty()
                      ? parser.parse(reinterpret_cast<const std::uint8_t*>(xml.data()), xml.size())
                      : parser.parseFile(documentPath);
    std::string stream;
    for (const std::string& event : recorder.events)
        if (event.front() == '\'') stream += event.substr(1, event.size() - 2);
    if (!parsed) stream = "refused: " + parser.parserError()->failureReason.toUtf8();
    return {tree, stream};
}

}  // namespace

TEST(XMLEntities, ExternalEntitiesLoadOnlyRegularFilesFromTheDocumentsFolder) {
    namespace fs = std::filesystem;
    const bvtest::ScratchFolder scratch("bv-entities");
    const fs::path& root = scratch.root();
    const fs::path folder = root / "quiz";
    fs::create_directories(folder / "sub");
    std::ofstream(root / "secret.txt") << "SECRET";
    std::ofstream(folder / "ok.txt") << "inside";
    std::ofstream(folder / "sub" / "deeper.txt") << "deeper";
    std::ofstream(folder / "decl.ent") << "<!ENTITY fromPE 'declared in a file'>";
    std::ofstream(folder / "big.txt") << std::string(bv::xmlsupport::kLargestEntityFile + 1, 'b');
    fs::create_symlink(root / "secret.txt", folder / "link.txt");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);

    const std::string inFolder = "only files in the document's folder";
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"<!ENTITY e SYSTEM 'ok.txt'>", "&e;", "inside"},
        {"<!ENTITY e SYSTEM 'sub/deeper.txt'>", "&e;", "deeper"},
        {"<!ENTITY e SYSTEM 'file://" + (folder / "ok.txt").string() + "'>", "&e;", "inside"},
        {"<!ENTITY % p SYSTEM 'decl.ent'> %p;", "&fromPE;", "declared in a file"},
        {"<!ENTITY e SYSTEM '" + (root / "secret.txt").string() + "'>", "&e;", inFolder},
        {"<!ENTITY e SYSTEM '../secret.txt'>", "&e;", inFolder},
        {"<!ENTITY e SYSTEM 'sub/../../secret.txt'>", "&e;", inFolder},
        {"<!ENTITY e SYSTEM 'link.txt'>", "&e;", inFolder},
        {"<!ENTITY e SYSTEM 'file:///dev/zero'>", "&e;", inFolder},
        {"<!ENTITY e SYSTEM 'pipe'>", "&e;", "not a regular file"},
        {"<!ENTITY e SYSTEM 'big.txt'>", "&e;", "larger than 1 MB"},
        {"<!ENTITY e SYSTEM 'missing.txt'>", "&e;", "does not exist"},
        {"<!ENTITY e SYSTEM 'http://192.0.2.1/x'>", "&e;", "never the network"},
        {"<!ENTITY % p SYSTEM '../secret.txt'> %p;", "x", inFolder},
    };
    const std::string documentPath = (folder / "doc.xml").string();
    for (const auto& [declaration, body, expected] : cases) {
        const std::string xml = "<!DOCTYPE r [" + declaration + "]><r>" + body + "</r>";
        std::ofstream(documentPath, std::ios::trunc) << xml;
        auto [tree, stream] = bothParses(xml, documentPath);
        EXPECT_NE(tree.find(expected), std::string::npos) << declaration << " -> " << tree;
        EXPECT_NE(stream.find(expected), std::string::npos) << declaration << " -> " << stream;
        EXPECT_EQ(tree.find("SECRET"), std::string::npos);
        EXPECT_EQ(stream.find("SECRET"), std::string::npos);
    }
    // A document given as bytes has no folder: even the file beside it is refused.
    const std::string beside =
        "<!DOCTYPE r [<!ENTITY e SYSTEM '" + (folder / "ok.txt").string() + "'>]><r>&e;</r>";
    auto [tree, stream] = bothParses(beside, "");
    EXPECT_NE(tree.find("refused: a document with no folder"), std::string::npos) << tree;
    EXPECT_NE(stream.find("refused: a document with no folder"), std::string::npos) << stream;
    // With resolution off, the streaming parser reads an external entity as empty and never refuses.
    EXPECT_EQ(streamEvents(beside), (std::vector<std::string>{"<r", "/r"}));
}

TEST(XMLEntities, ExpansionOutOfProportionToTheInputIsRefused) {
    auto repeated = [](const std::string& text, int times) {
        std::string out;
        for (int i = 0; i < times; ++i)
            out += text;
        return out;
    };
    std::string laughs = "<!ENTITY e0 'lol'>";
    for (int level = 1; level < 10; ++level)
        laughs += "<!ENTITY e" + std::to_string(level) + " '" +
                  repeated("&e" + std::to_string(level - 1) + ";", 10) + "'>";
    const std::string big = "<!ENTITY b '" + std::string(50 * 1024, 'x') + "'>";
    const std::pair<std::string, std::string> attacks[] = {
        {laughs, "&e9;"},                                 // nested, a billion bytes
        {big, repeated("&b;", 50000)},                    // flat: 2.5 GB from 200 KB
        {big, "<a v='" + repeated("&b;", 2000) + "'/>"},  // in an attribute value
        {big + "<!ENTITY a '" + repeated("&b;", 1000) + "'>", repeated("&a;", 40)},  // two levels
        {"<!ENTITY % p '<!--" + std::string(50 * 1024, 'y') + "-->'>" + repeated("%p;", 2000),
         "x"},  // parameter
    };
    for (const auto& [declarations, body] : attacks) {
        const std::string xml = "<!DOCTYPE r [" + declarations + "]><r>" + body + "</r>";
        auto [tree, stream] = bothParses(xml, "");
        EXPECT_NE(tree.find("The entities would expand to more than"), std::string::npos)
            << tree.substr(0, 200);
        EXPECT_NE(stream.find("The entities would expand to more than"), std::string::npos)
            << stream.substr(0, 200);
    }
    // Entities used in proportion are expanded as always.
    const std::string fair = "<!DOCTYPE r [<!ENTITY w 'word '>]><r>" + repeated("&w;", 1000) + "</r>";
    auto [tree, stream] = bothParses(fair, "");
    EXPECT_EQ(tree, repeated("word ", 1000));
    EXPECT_EQ(stream, repeated("word ", 1000));
}

TEST(XMLStreamParser, SystemIdentifiersResolveToLocalPathsOnly) {
    const std::tuple<const char*, const char*, std::optional<std::string>> cases[] = {
        {"file://localhost/a%20b", "", "/a b"},
        {"file:///x", "", "/x"},
        {"file:/x", "", "/x"},
        {"rel.txt", "/d/doc.xml", "/d/rel.txt"},
        {"rel.txt", "file:///d/doc.xml", "/d/rel.txt"},
        {"file://otherhost/x", "", std::nullopt},
        {"HTTP://h/x", "", std::nullopt},
        {"rel.txt", "http://h/doc.xml", std::nullopt}};
    for (const auto& [id, base, expected] : cases)
        EXPECT_EQ(bv::xmlsupport::localPathOfSystemID(id, base), expected) << id << " in " << base;
}
