// BVXMLParser: which text each wanted element gets, the early stop, merging across runs, and input that is
// missing, truncated, binary or reaches for external entities.
#include <gtest/gtest.h>

#include <unistd.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <tuple>
#include <vector>

#include "BrevantCocoaExtensions/documents/BVXMLParser.hpp"
#include "support/Scratch.hpp"

using bv::BVXMLParser;
using bv::Text;
using Results = BVXMLParser::ResultsDictionary;

namespace {

bv::ByteData bytes(const std::string& text) {
    return bv::ByteData(text.begin(), text.end());
}

Results collect(const std::string& xml, const std::vector<Text>& names) {
    return *BVXMLParser().resultsOfDataToParseSeekingDesiredElements(bytes(xml), names);
}

// Records the element starts it sees, to show where the parse stopped.
struct CountingParser : BVXMLParser {
    std::vector<std::string> started;
    void parserDidStartElementNamespaceURIQualifiedNameAttributes(
        bv::XMLStreamParser& parser, const Text& name, const Text& uri, const Text& qualified,
        const std::map<Text, Text>& attributes) override {
        started.push_back(name.toUtf8());
        BVXMLParser::parserDidStartElementNamespaceURIQualifiedNameAttributes(parser, name, uri, qualified,
                                                                              attributes);
    }
};

}  // namespace

TEST(BVXMLParser, CollectsTheWantedValuesAndStopsAfterTheLast) {
    CountingParser parser;
    auto results = parser.resultsOfDataToParseSeekingDesiredElements(
        bytes("<doc><title>T</title><version>2.1</version><after/></doc>"), {"version", "title"});
    EXPECT_EQ(*results, (Results{{"title", "T"}, {"version", "2.1"}}));
    EXPECT_EQ(parser.started, (std::vector<std::string>{"doc", "title", "version"}));
    EXPECT_EQ(results, parser.resultsData());  // the object's own dictionary
    EXPECT_TRUE(parser.desiredElements()->empty());

    // A name that does not occur: no key, and the parse runs to the end.
    CountingParser unfinished;
    results = unfinished.resultsOfDataToParseSeekingDesiredElements(
        bytes("<doc><title>T</title><after/></doc>"), {"title", "missing"});
    EXPECT_EQ(*results, (Results{{"title", "T"}}));
    EXPECT_EQ(unfinished.started.back(), "after");
    EXPECT_EQ(*unfinished.desiredElements(), (std::vector<Text>{"missing"}));

    // Once everything is found, what follows is never parsed: a broken tail does not matter.
    EXPECT_EQ(collect("<doc><version>3</version><broken attr=></doc", {"version"}),
              (Results{{"version", "3"}}));
    EXPECT_EQ(collect("<doc><version>3</version>" + std::string("\x00\xFF\xFE<<&", 6), {"version"}),
              (Results{{"version", "3"}}));
}

TEST(BVXMLParser, WhatTextEachElementGets) {
    const std::tuple<const char*, std::vector<Text>, Results> cases[] = {
        // Text before a child is lost; the child's text and the text after it remain.
        {"<a>lost<b>x</b>y</a>", {"a"}, {{"a", "xy"}}},
        {"<a>lost<b>x</b>y</a>", {"b", "a"}, {{"a", "xy"}, {"b", "x"}}},
        // The first occurrence wins; a name given twice takes the second occurrence as well.
        {"<r><v>1</v><v>2</v></r>", {"v"}, {{"v", "1"}}},
        {"<r><v>1</v><v>2</v><v>3</v></r>", {"v", "v"}, {{"v", "2"}}},
        // A chunk that is exactly one line feed is dropped; other white space stays.
        {"<r><a>\n</a></r>", {"a"}, {{"a", ""}}},
        {"<r><a>\n\n</a></r>", {"a"}, {{"a", ""}}},
        {"<r><a>\r\n</a></r>", {"a"}, {{"a", ""}}},
        {"<r><a> \n </a></r>", {"a"}, {{"a", "  "}}},
        {"<r><a>one\ntwo</a></r>", {"a"}, {{"a", "one\ntwo"}}},  // inside text a line feed is kept
        // Entities, CDATA and comments.
        {"<r><a>x &amp; &#65;<!-- c -->y</a></r>", {"a"}, {{"a", "x & Ay"}}},
        {"<r><a><![CDATA[<raw>]]></a></r>", {"a"}, {{"a", "<raw>"}}},
        {"<!DOCTYPE r [<!ENTITY e 'expanded'>]><r><a>&e;</a></r>", {"a"}, {{"a", "expanded"}}},
        // Names compare exactly, qualified as written.
        {"<r xmlns:p='urn:p'><p:a>1</p:a><A>2</A></r>", {"p:a", "a"}, {{"p:a", "1"}}},
        // Empty or non-XML data gives nothing.
        {"", {"a"}, {}},
        {"\x89PNG\r\n\x1a\n\x00\x00", {"a"}, {}},
    };
    for (const auto& [xml, names, expected] : cases)
        EXPECT_EQ(collect(xml, names), expected) << xml;
}

TEST(BVXMLParser, PrettyPrintedAndSingleLineDocumentsGiveTheSameLeafValues) {
    const std::string singleLine =
        "<settings><user><name>Ann</name><id>7</id></user><mode>quiz</mode></settings>";
    const std::string pretty =
        "<?xml version=\"1.0\"?>\n<settings>\n    <user>\n        <name>Ann</name>\n        <id>7</id>\n"
        "    </user>\n    <mode>quiz</mode>\n</settings>\n";
    const std::vector<Text> names{"name", "id", "mode"};
    EXPECT_EQ(collect(singleLine, names), collect(pretty, names));
    EXPECT_EQ(collect(pretty, names), (Results{{"id", "7"}, {"mode", "quiz"}, {"name", "Ann"}}));
    // An element with children ends with the text after its last child: the indentation survives, the
    // line feed before it does not.
    EXPECT_EQ(collect(singleLine, {"user"}), (Results{{"user", "7"}}));
    EXPECT_EQ(collect(pretty, {"user"}), (Results{{"user", "7    "}}));
}

TEST(BVXMLParser, RunsMergeAndSettersKeepTheObjectGiven) {
    BVXMLParser parser;
    auto results = std::make_shared<Results>(Results{{"old", "kept"}, {"a", "replaced"}});
    parser.setResultsData(results);
    auto first = parser.resultsOfDataToParseSeekingDesiredElements(bytes("<r><a>1</a></r>"), {"a"});
    auto second = parser.resultsOfDataToParseSeekingDesiredElements(bytes("<r><b>2</b></r>"), {"b"});
    EXPECT_TRUE(first == results && second == results);
    EXPECT_EQ(*results, (Results{{"a", "1"}, {"b", "2"}, {"old", "kept"}}));

    auto wanted = std::make_shared<std::vector<Text>>(std::vector<Text>{"stale"});
    parser.setDesiredElements(wanted);
    (void)parser.resultsOfDataToParseSeekingDesiredElements(bytes("<r><c>3</c></r>"), {"c", "d"});
    EXPECT_EQ(parser.desiredElements(), wanted);  // the list object stays, its contents were replaced
    EXPECT_EQ(*wanted, (std::vector<Text>{"d"}));

    parser.appendElementData("\n");
    parser.appendElementData("x\n");
    EXPECT_EQ(*parser.elementData(), Text("3x\n"));  // the last element's text, then only the second append
}

TEST(BVXMLParser, FilesAreReadOnlyAsFarAsNeeded) {
    auto atPath = [](const std::string& path, const std::vector<Text>& names) {
        return BVXMLParser::resultsOfDataToParseAtPathSeekingDesiredElements(Text(path), names);
    };
    EXPECT_EQ(atPath("/nonexistent/file.xml", {"a"}), Results{});
    EXPECT_EQ(atPath(std::filesystem::temp_directory_path().string(), {"a"}), Results{});

    // The value sits at the top; megabytes of garbage follow it and are never read.
    std::string contents = "<catalog><version>4.2</version>";
    contents += std::string(3 * 1024 * 1024, '\x01');
    const bvtest::ScratchFolder folder;
    EXPECT_EQ(atPath(folder.write("big.xml", contents), {"version"}), (Results{{"version", "4.2"}}));
    // A value past the first chunks is found too.
    std::string late = "<catalog>" + std::string(1024 * 1024, ' ') + "<version>5</version></catalog>";
    EXPECT_EQ(atPath(folder.write("late.xml", late), {"version"}), (Results{{"version", "5"}}));
}

TEST(BVXMLParser, ARefusedEntityEndsTheParseAndKeepsTheValuesFoundBeforeIt) {
    const bvtest::ScratchFolder folder;
    const std::string xml = "<!DOCTYPE r [<!ENTITY s SYSTEM '" + folder.write("secret.txt", "SECRET") +
                            "'>]><r><a>1</a><b>&s;</b><c>3</c></r>";
    const std::string path = folder.write("documents/refused.xml", xml);
    const Results expected{{"a", "1"}};
    EXPECT_EQ(BVXMLParser::resultsOfDataToParseAtPathSeekingDesiredElements(Text(path), {"a", "b", "c"}),
              expected);                                 // the secret lies outside the document's folder
    EXPECT_EQ(collect(xml, {"a", "b", "c"}), expected);  // bytes load no external entity at all
}

TEST(BVXMLParser, TextOutsideTheWantedElementsIsNeverGathered) {
    // Records how much text had been gathered when each element began.
    struct Watcher : BVXMLParser {
        std::size_t mostGathered = 0;
        void parserDidStartElementNamespaceURIQualifiedNameAttributes(
            bv::XMLStreamParser& parser, const Text& name, const Text& uri, const Text& qualified,
            const std::map<Text, Text>& attributes) override {
            mostGathered = std::max(mostGathered, elementData()->length());
            BVXMLParser::parserDidStartElementNamespaceURIQualifiedNameAttributes(parser, name, uri,
                                                                                  qualified, attributes);
        }
    } watcher;
    const std::string unwanted(1024 * 1024, 'u');
    auto results = watcher.resultsOfDataToParseSeekingDesiredElements(
        bytes("<r>" + unwanted + "<skip>" + unwanted + "</skip><a>x<i>" + unwanted + "</i>y</a></r>"), {"a"});
    EXPECT_TRUE(*results == (Results{{"a", Text(unwanted + "y")}}));  // inside <a>, text is kept as always
    EXPECT_EQ(watcher.mostGathered, 1u);  // only the "x" inside <a>, when <i> began
}
