// BVNSXMLElement, BVNSXMLNode and BVNSXMLDocument: search orders and case rules on real trees, the
// argument checks, values, building, the editing operations' index rules and document loading.
#include <gtest/gtest.h>

#include <unistd.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/documents/BVNSXMLDocument.hpp"
#include "BrevantCocoaExtensions/documents/BVNSXMLElement.hpp"
#include "BrevantCocoaExtensions/documents/BVNSXMLNode.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "support/Scratch.hpp"

namespace X = bv::BVNSXMLElement;
using bv::Text;
using bv::XMLElement;
using bv::XMLNode;

namespace {

std::shared_ptr<XMLElement> tree(const std::string& xml) {
    bv::Error error;
    auto document = bv::XMLDocument::parseData(xml, bv::XMLNodePreserveCDATA, &error);
    EXPECT_NE(document, nullptr) << error.failureReason;
    return document->rootElement();
}

// Each element as name, or name#id when it has an id attribute, so results read like the tree.
std::vector<std::string> labels(const bv::XMLElementArray& elements) {
    std::vector<std::string> out;
    for (const auto& element : elements) {
        auto id = X::stringValueOfAttributeForName(*element, "id");
        out.push_back(element->name().toUtf8() + (id ? "#" + id->toUtf8() : ""));
    }
    return out;
}

std::string label(const std::shared_ptr<XMLElement>& element) {
    return element == nullptr ? "null" : labels({element}).front();
}

std::vector<std::string> childNames(const XMLNode& node) {
    std::vector<std::string> out;
    for (const auto& child : node.children())
        out.push_back(child->name().toUtf8());
    return out;
}

using Labels = std::vector<std::string>;

std::string first(const std::shared_ptr<XMLElement>& root, const char* name, bool recursive) {
    return label(X::firstChildElementNamedRecursiveSearch(*root, Text(name), recursive));
}

Labels all(const std::shared_ptr<XMLElement>& root, const char* name, bool recursive) {
    return labels(X::childElementsNamedRecursiveSearch(*root, Text(name), recursive));
}

}  // namespace

TEST(BVNSXMLElement, FirstChildElementNamedLooksAtDirectChildrenBeforeGrandchildren) {
    auto root = tree("<root><a id='1'><b id='1.1'/></a><b id='2'/></root>");
    EXPECT_EQ(first(root, "b", true), "b#2");
    EXPECT_EQ(first(root, "b", false), "b#2");

    // Below the first level: subtree by subtree in document order, each subtree again direct-first.
    auto nested = tree("<root><a><x><c id='deep'/></x><c id='a'/></a><d><c id='d'/></d></root>");
    EXPECT_EQ(first(nested, "c", true), "c#a");
    EXPECT_EQ(first(nested, "c", false), "null");

    // The second try by local name only finds elements in no namespace, and a result of that try is not
    // accepted from below (its qualified name differs), which hides a real match further down.
    auto prefixed = tree("<root xmlns:n='urn:n'><n:item id='ns'/></root>");
    EXPECT_EQ(first(prefixed, "item", false), "null");
    auto built = XMLElement::make("root");
    auto group = X::createAndAddChildNamed(*built, "g");
    X::createAndAddChildNamed(*group, "u:item");  // qualified name, no namespace URI
    X::createAndAddChildNamedWithAttributes(*X::createAndAddChildNamed(*group, "h"), "item",
                                            {{"id", "plain"}});
    EXPECT_EQ(first(group, "item", false), "u:item");
    EXPECT_EQ(first(built, "item", true), "null");
    // ':name' matches by local name at the first level only.
    EXPECT_EQ(first(group, ":item", true), "u:item");
    EXPECT_EQ(first(built, ":item", true), "null");
    EXPECT_EQ(first(prefixed, ":item", true), "null");
}

TEST(BVNSXMLElement, ChildElementsNamedListsDirectMatchesThenEachSubtree) {
    auto root =
        tree("<root><a id='1'><b id='1.1'/></a><b id='2'><b id='2.1'/></b><c><b id='3.1'/></c></root>");
    EXPECT_EQ(all(root, "b", true), (Labels{"b#2", "b#1.1", "b#2.1", "b#3.1"}));
    EXPECT_EQ(all(root, "b", false), (Labels{"b#2"}));
    EXPECT_EQ(all(root, "none", true), (Labels{}));

    // Mixed node kinds are skipped; ':name' applies at every level; there is no second try by local name.
    auto mixed = XMLElement::make("root");
    mixed->addChild(XMLNode::makeComment("b"));
    mixed->addChild(XMLNode::makeText("b"));
    auto p = X::createAndAddChildNamed(*mixed, "p:b");
    X::createAndAddChildNamed(*p, "b");
    EXPECT_EQ(all(mixed, ":b", true), (Labels{"p:b", "b"}));
    EXPECT_EQ(all(mixed, "b", true), (Labels{"b"}));
    EXPECT_EQ(all(mixed, "b", false), (Labels{}));
}

TEST(BVNSXMLElement, ValueSearchesDifferInCaseAndInWhereTheyRecurse) {
    auto root = tree(
        "<root><flag id='1'>yes<flag id='1.1'>YES</flag></flag><other><flag id='hidden'>yes</flag></other>"
        "<flag id='2'>Yes</flag></root>");
    auto allWith = [&](const char* value) {
        return labels(X::childElementsNamedWithStringValueRecursiveSearch(*root, Text("flag"), value, true));
    };
    auto firstWith = [&](const char* value, bool recursive) {
        return label(
            X::firstChildElementNamedWithStringValueRecursiveSearch(*root, Text("flag"), value, recursive));
    };
    // Ignoring case, and recursing only through elements of the searched name.
    EXPECT_EQ(allWith("YES"), (Labels{"flag#2", "flag#1.1"}));
    EXPECT_EQ(allWith("yesyes"), (Labels{"flag#1"}));
    // Exactly, over the full recursive list.
    EXPECT_EQ(firstWith("YES", true), "flag#1.1");
    EXPECT_EQ(firstWith("yes", true), "flag#hidden");
    EXPECT_EQ(firstWith("yes", false), "null");
}

TEST(BVNSXMLElement, AttributeSearchesHaveTheirOwnCaseRulesAndPreOrder) {
    auto root = tree(
        "<root><a><b ID='x' name='first'/></a><c id='y' name='Second'><d id='z' name='second'/></c></root>");
    EXPECT_EQ(label(X::firstChildElementHavingAttributeRecursiveSearch(*root, "id", true)), "b");
    EXPECT_EQ(label(X::firstChildElementHavingAttributeRecursiveSearch(*root, "id", false)), "c#y");
    EXPECT_EQ(labels(X::childElementsHavingAttributeRecursiveSearch(*root, "id", true)),
              (Labels{"c#y", "d#z"}));
    EXPECT_EQ(labels(X::childElementsHavingAttributeRecursiveSearch(*root, "ID", true)), (Labels{"b"}));
    EXPECT_EQ(labels(X::childElementsHavingAttributeRecursiveSearch(*root, "id", false)), (Labels{"c#y"}));

    auto byValue = [&](const char* value, bool ignoreCase, bool recursive) {
        return label(X::firstChildElementHavingAttributeWithStringValueCaseInsensitiveSearchRecursiveSearch(
            *root, "name", value, ignoreCase, recursive));
    };
    EXPECT_EQ(byValue("second", false, true), "d#z");
    EXPECT_EQ(byValue("second", true, true), "c#y");
    EXPECT_EQ(byValue("FIRST", true, true), "b");
    EXPECT_EQ(byValue("FIRST", true, false), "null");
    EXPECT_EQ(byValue("", false, true), "null");  // a missing attribute never matches, even the empty text
}

TEST(BVNSXMLElement, EmptyOrNullNamesFailTheirArgumentCheck) {
    auto root = tree("<root><a/></root>");
    struct Case {
        std::function<void()> call;
        int line;
        std::string description;
    };
    const std::string first = "firstChildElementNamed:recursiveSearch: elementName is empty";
    const std::string children = "childElementsNamed:recursiveSearch: elementName is empty";
    const std::string withValue = "childElementsNamed:withStringValue:recursiveSearch: elementName is empty";
    const std::vector<Case> cases = {
        {[&] { (void)X::firstChildElementNamedRecursiveSearch(*root, Text(""), true); }, 567, first},
        {[&] { (void)X::firstChildElementNamedRecursiveSearch(*root, std::nullopt, false); }, 567, first},
        {[&] { (void)X::childElementsNamedRecursiveSearch(*root, Text(""), true); }, 790, children},
        {[&] { (void)X::childElementsNamedWithStringValueRecursiveSearch(*root, std::nullopt, "v", true); },
         838, withValue},
        {[&] { (void)X::firstChildElementNamedWithStringValueRecursiveSearch(*root, Text(""), "v", true); },
         790, children},
        {[&] { X::removeFirstChildElementNamedRecursiveSearch(*root, Text(""), true); }, 567, first},
        {[&] { (void)X::stringValuesOfChildrenNamedRecursiveSearch(*root, Text(""), true); }, 790, children},
        {[&] { X::removeChildElementsNamedRecursively(*root, std::nullopt, true); }, 790, children},
        {[&] { (void)X::attributesOfFirstChildElementNamedRecursiveSearch(*root, Text(""), true); }, 567,
         first},
    };
    const bvtest::LogCapture silenced;
    for (const Case& each : cases) {
        try {
            each.call();
            ADD_FAILURE() << "no assertion failure for " << each.description;
        } catch (const bv::InternalInconsistencyException& failure) {
            EXPECT_EQ(failure.fileStem() + ":" + std::to_string(failure.line()) + " " + failure.description(),
                      "BVNSXMLElement:" + std::to_string(each.line) + " " + each.description);
            EXPECT_EQ(failure.name(), "NSInternalInconsistencyException");
        }
    }
    EXPECT_EQ(root->childCount(), 1u);  // nothing was removed
}

TEST(BVNSXMLElement, ParentsDescendantsAndTagNames) {
    auto root = tree("<root><a><b><c/></b><!--note-->text</a><d>  \n </d><e>v<f/></e></root>");
    auto c = X::firstChildElementNamedRecursiveSearch(*root, Text("c"), true);
    EXPECT_EQ(label(X::firstParentElementNamed(*c, "a")), "a");
    EXPECT_EQ(label(X::firstParentElementNamed(*c, "c")), "null");  // the receiver itself is not a parent
    EXPECT_EQ(label(X::firstParentElementNamed(*root, "root")), "null");

    std::vector<std::string> kinds;
    for (const auto& node : X::descendants(*root)) {
        kinds.push_back(node->hasName() ? node->name().toUtf8()
                                        : bv::BVNSXMLNode::kindDescription(*node).toUtf8());
    }
    EXPECT_EQ(kinds, (std::vector<std::string>{"a", "d", "e", "b", "NSXMLCommentKind", "NSXMLUndefinedKind",
                                               "c", "NSXMLUndefinedKind", "NSXMLUndefinedKind", "f"}));

    using Names = std::vector<Text>;
    EXPECT_EQ(X::namesOfTagsRecursiveSearch(*root, true), (Names{"a", "b", "c", "d", "e", "f"}));
    EXPECT_EQ(X::namesOfTagsRecursiveSearch(*root, false), (Names{"a", "d", "e"}));
    // The data-only filter applies to the receiver's own children only: d (blank) goes, b and f stay.
    EXPECT_EQ(X::namesOfTagsContainingDataRecursiveSearch(*root, true, true),
              (Names{"a", "b", "c", "e", "f"}));
}

TEST(BVNSXMLElement, ValuesAndAttributes) {
    auto root =
        tree("<root><item k='1' j='x'>one</item><g><item k='2'>two</item><item>three</item></g></root>");
    EXPECT_EQ(X::stringValueOfFirstChildElementNamedRecursiveSearch(*root, Text("item"), true), Text("one"));
    EXPECT_EQ(X::stringValueOfFirstChildElementNamedRecursiveSearch(*root, Text("none"), true), std::nullopt);
    EXPECT_EQ(X::stringValuesOfChildrenNamedRecursiveSearch(*root, Text("item"), true),
              (std::vector<Text>{"one", "two", "three"}));
    EXPECT_EQ(X::stringValuesOfAttributesNamedOfChildrenNamedRecursiveSearch(*root, "k", Text("item"), true),
              (std::vector<Text>{"1", "2"}));
    auto attributeOfFirst = [&](const char* attribute) {
        return X::stringValueOfAttributeForNameOfFirstChildNamedRecursiveSearch(*root, attribute,
                                                                                Text("item"), true);
    };
    EXPECT_EQ(attributeOfFirst("j"), Text("x"));
    EXPECT_EQ(attributeOfFirst("z"), std::nullopt);
    EXPECT_EQ(X::attributesOfFirstChildElementNamedRecursiveSearch(*root, Text("item"), true),
              (bv::ValueDictionary{{"j", "x"}, {"k", "1"}}));
    EXPECT_TRUE(X::attributesOfFirstChildElementNamedRecursiveSearch(*root, Text("none"), true).empty());
    EXPECT_EQ(X::attributesOfChildrenNamedRecursiveSearch(*root, Text("item"), true),
              (std::vector<bv::ValueDictionary>{{{"j", "x"}, {"k", "1"}}, {{"k", "2"}}, {}}));
    EXPECT_EQ(X::childrenOfFirstChildElementNamedRecursiveSearch(*root, Text("g"), false).size(), 2u);
    EXPECT_TRUE(X::childrenOfFirstChildElementNamedRecursiveSearch(*root, Text("none"), false).empty());

    EXPECT_TRUE(X::setStringValueOfFirstChildElementNamedRecursiveSearch(*root, "uno", Text("item"), false));
    EXPECT_FALSE(X::setStringValueOfFirstChildElementNamedRecursiveSearch(*root, "x", Text("none"), true));
    X::setStringValueForElements("same", X::childElementsNamedRecursiveSearch(*root, Text("g"), false));
    EXPECT_EQ(root->stringValue(), Text("unosame"));

    auto item = X::firstChildElementNamedRecursiveSearch(*root, Text("item"), false);
    X::setCDATAStringValue(*item, "a");
    X::setCDATAStringValue(*item, "b");
    // The text stays, two CDATA sections follow.
    EXPECT_EQ(item->xmlString(), "<item k=\"1\" j=\"x\">uno<![CDATA[a]]><![CDATA[b]]></item>");

    item->addAttribute(XMLNode::makeAttribute("third", "3"));
    X::setAttributeWithStringValue(*item, Text("only"), Text("1"));
    EXPECT_EQ(X::attributesDictionary(*item), (bv::ValueDictionary{{"only", "1"}}));

    bvtest::LogCapture log;
    X::setAttributeWithStringValue(*item, std::nullopt, Text("v"));
    X::setAttributeWithStringValue(*item, Text("k"), std::nullopt);
    X::setAttributeWithStringValue(*item, std::nullopt, std::nullopt);
    EXPECT_EQ(log.lines, (std::vector<std::string>{"setAttribute:withStringValue: attribute is nil",
                                                   "setAttribute:withStringValue: stringValue is nil",
                                                   "setAttribute:withStringValue: attribute is nil",
                                                   "setAttribute:withStringValue: stringValue is nil"}));
    EXPECT_EQ(X::attributesDictionary(*item), (bv::ValueDictionary{{"only", "1"}}));
}

TEST(BVNSXMLElement, BuildingAppendsOrInsertsAndReturnsTheNewElement) {
    auto root = XMLElement::make("root");
    auto plain = X::createAndAddChildNamedWithStringValue(*root, "plain", "a<b");
    auto cdata = X::createAndAddChildNamedWithStringValueAsCDATAAndAttributes(*root, "cdata", "x]]>y", true,
                                                                              {{"n", 2}, {"k", "v"}});
    X::createAndAddChildNamedWithStringValueAndAttributes(*root, "both", "t", {{"k", "v"}});
    EXPECT_EQ(plain->parent(), root);
    EXPECT_EQ(cdata->parent(), root);

    EXPECT_EQ(X::createAndAddElementsNamedForStringValuesAsCDATA(*root, Text("v"),
                                                                 std::vector<Text>{"1", "2"}, true)
                  ->size(),
              2u);
    EXPECT_EQ(X::createAndAddElementsNamedForStringValues(*root, std::nullopt, std::vector<Text>{"1"}),
              std::nullopt);
    EXPECT_EQ(X::createAndAddElementsNamedForStringValues(*root, Text("v"), std::nullopt), std::nullopt);

    X::createAndInsertChildNamedAtIndex(*root, "first", 0);
    X::createAndInsertChildNamedAtIndex(*root, "last", root->childCount());
    EXPECT_THROW(X::createAndInsertChildNamedAtIndex(*root, "past", root->childCount() + 1),
                 bv::RangeException);
    X::addObjectsAsElementsFromArray(*root, bv::ValueArray{Text("fromText"), 5, bv::Value()});
    X::addChildren(*root, {XMLNode::makeComment("c"), XMLElement::make("node")});
    EXPECT_EQ(childNames(*root), (std::vector<std::string>{"first", "plain", "cdata", "both", "v", "v",
                                                           "last", "fromText", "", "node"}));
    EXPECT_EQ(
        root->xmlString(),
        "<root><first/><plain>a&lt;b</plain><cdata k=\"v\" n=\"2\"><![CDATA[x]]]]><![CDATA[>y]]></cdata>"
        "<both "
        "k=\"v\">t</both><v><![CDATA[1]]></v><v><![CDATA[2]]></v><last/><fromText/><!--c--><node/></root>");

    bv::Error error;
    auto wrapper = X::createAndAddChildNamedWithRawXMLError(*root, "raw", "<p a='1'><q/></p>", &error);
    ASSERT_NE(wrapper, nullptr);
    EXPECT_EQ(wrapper->xmlString(), "<raw><p a=\"1\"><q/></p></raw>");
    std::size_t count = root->childCount();
    EXPECT_EQ(X::createAndAddChildNamedWithRawXMLError(*root, "raw", "<p><q></p>", &error), nullptr);
    EXPECT_EQ(root->childCount(), count);
    EXPECT_EQ(error.domain, "BVXMLErrorDomain");
    EXPECT_NE(error.failureReason.toUtf8().find("Line 1"), std::string::npos);
}

TEST(BVNSXMLElement, EditingFollowsItsIndexRules) {
    auto list = [](const char* xml) { return tree(xml); };
    struct Move {
        std::size_t from, to;
        std::vector<std::string> expected;
    };
    for (const Move& move : std::vector<Move>{{0, 2, {"b", "c", "a"}},
                                              {0, 1, {"b", "a", "c"}},  // the target is not adjusted
                                              {2, 0, {"c", "a", "b"}},
                                              {0, 9, {"b", "c", "a"}},  // past the end appends
                                              {1, 1, {"a", "b", "c"}}}) {
        auto root = list("<r><a/><b/><c/></r>");
        X::moveChildElementAtIndexToIndex(*root, move.from, move.to);
        EXPECT_EQ(childNames(*root), move.expected) << move.from << " to " << move.to;
    }
    auto root = list("<r><a/><b/><c/></r>");
    EXPECT_THROW(X::moveChildElementAtIndexToIndex(*root, 3, 0), bv::RangeException);

    // Replacing puts a copy at the old element's index in its own parent.
    auto replacement = XMLElement::make("new");
    auto nested = list("<r><x><a/><b/></x><y/><z/></r>");
    auto b = X::firstChildElementNamedRecursiveSearch(*nested, Text("b"), true);
    X::replaceElementWithElement(*nested, b, replacement);
    EXPECT_EQ(childNames(*nested), (std::vector<std::string>{"x", "new", "z"}));
    EXPECT_FALSE(replacement->hasParent());  // a copy went in
    EXPECT_EQ(b->parent()->name(), Text("x"));

    nested = list("<r><x><a/><b/></x><y/><z/></r>");
    X::replaceFirstChildElementNamedWithElementRecursiveSearch(*nested, Text("b"), replacement, true);
    EXPECT_EQ(childNames(*nested), (std::vector<std::string>{"x", "new", "z"}));  // b sat at index 1 in x
    X::replaceFirstChildElementNamedWithElementRecursiveSearch(*nested, Text("missing"), replacement, true);
    EXPECT_EQ(nested->childCount(), 3u);
    X::replaceFirstChildElementNamedWithElementRecursiveSearchAddIfDoesNotExist(*nested, Text("missing"),
                                                                                replacement, true, true);
    EXPECT_EQ(childNames(*nested), (std::vector<std::string>{"x", "new", "z", "new"}));

    // Removal works on the element's own parent, whatever the receiver.
    auto doc = list("<r><a><b id='1'><b id='2'/></b></a><b id='3'/><c>v</c><c>w</c></r>");
    auto other = XMLElement::make("other");
    X::removeElement(*other, X::firstChildElementNamedRecursiveSearch(*doc, Text("a"), false)->children()[0]);
    EXPECT_EQ(X::descendants(*doc).size(), 6u);
    X::removeElement(*other, nullptr);
    X::removeFirstChildNamedWithStringValueRecursiveSearch(*doc, Text("c"), "w", false);
    X::removeFirstChildElementNamedRecursiveSearch(*doc, Text("a"), false);
    EXPECT_EQ(childNames(*doc), (std::vector<std::string>{"b", "c"}));

    doc = list("<r><a><b id='1'><b id='2'/></b></a><b id='3'/><c/></r>");
    X::removeChildElementsNamedRecursively(*doc, Text("b"), true);
    EXPECT_EQ(doc->xmlString(), "<r><a/><c/></r>");
    X::removeAllChildElements(*doc);
    EXPECT_EQ(doc->childCount(), 0u);
}

TEST(BVNSXMLDocument, LoadingFromPaths) {
    const bvtest::ScratchFolder folder;
    const std::string path = folder.write("settings.xml", "<settings><a>1</a><b>2</settings>");
    EXPECT_EQ(bv::BVNSXMLDocument::documentAtPath(std::nullopt), nullptr);
    auto tidied = bv::BVNSXMLDocument::documentAtPath(Text(path));
    ASSERT_NE(tidied, nullptr);
    EXPECT_EQ(X::stringValueOfFirstChildElementNamedRecursiveSearch(*tidied->rootElement(), Text("b"), true),
              Text("2"));

    bv::Error error;
    EXPECT_EQ(bv::BVNSXMLDocument::initWithContentsAtPathOptionsError(Text(path), 0, &error), nullptr);
    EXPECT_EQ(error.domain, "BVXMLErrorDomain");
    EXPECT_EQ(bv::BVNSXMLDocument::initWithContentsAtPathOptionsError(std::nullopt, 0, &error), nullptr);
    EXPECT_EQ(bv::BVNSXMLDocument::documentAtPath(Text("/nonexistent/settings.xml")), nullptr);
}

TEST(BVNSXMLNode, KindDescriptions) {
    auto document = bv::XMLDocument::parseData("<!DOCTYPE r><?pi x?><r xmlns:p='urn:p' a='1'>t<!--c--></r>",
                                               bv::XMLNodeOptionsNone);
    ASSERT_NE(document, nullptr);
    auto root = document->rootElement();
    std::vector<std::pair<std::shared_ptr<XMLNode>, const char*>> cases = {
        {document, "NSXMLDocumentKind"},
        {document->children()[0], "NSXMLDTDKind"},
        {document->children()[1], "NSXMLProcessingInstructionKind"},
        {root, "NSXMLElementKind"},
        {root->attributes()[0], "NSXMLAttributeKind"},
        {root->namespaces()[0], "NSXMLNamespaceKind"},
        {root->children()[0], "NSXMLUndefinedKind"},  // text has no description of its own
        {root->children()[1], "NSXMLCommentKind"},
    };
    for (const auto& [node, description] : cases) {
        EXPECT_EQ(bv::BVNSXMLNode::kindDescription(*node), Text(description)) << description;
    }
}
