// BVCountedStrings: case rules, first-match lookups kept right through replacements, removals and mode
// changes, and the (deliberately reversed) count orders.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/responses/BVCountedStrings.hpp"

using bv::BVCountedString;
using bv::BVCountedStrings;
using bv::Text;
using Lines = std::vector<std::string>;

namespace {

// "text:count" for each entry, to compare whole lists at once.
Lines describe(const bv::BVCountedStringList& list) {
    Lines out;
    for (const auto& entry : list)
        out.push_back(entry->string().toUtf8() + ":" + std::to_string(entry->count()));
    return out;
}

void addTimes(BVCountedStrings& counted, const std::vector<std::pair<const char*, int>>& answers) {
    for (auto [text, times] : answers) {
        for (int i = 0; i < times; ++i)
            counted.addString(Text(text));
    }
}

}  // namespace

TEST(BVCountedStrings, CaseInsensitiveTallyKeepsTheFirstSpellingAndCallerData) {
    BVCountedStrings counted({"Paris", "paris", "PARIS", "Lyon", "Stra\u00DFe", "STRASSE"}, true);
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"Paris:3", "Lyon:1", "Stra\u00DFe:2"}));
    EXPECT_EQ(counted.countForString(Text("pArIs")), 3u);
    EXPECT_EQ(counted.totalCount(), 6u);
    auto yes = counted.addStringWithUserInfo(Text("Yes"), bv::Value(7));
    EXPECT_EQ(counted.addStringWithUserInfo(Text("YES"), bv::Value(8)), yes);
    EXPECT_EQ(yes->userInfo(), bv::Value(7));

    BVCountedStrings exact({"Paris", "paris", "PARIS"}, false);
    EXPECT_EQ(describe(exact.countedStrings()), (Lines{"Paris:1", "paris:1", "PARIS:1"}));
    EXPECT_EQ(exact.countForString(Text("pArIs")), 0u);
}

TEST(BVCountedStrings, NullTextsAndTheEmptyCollection) {
    BVCountedStrings counted(true);
    EXPECT_TRUE(counted.strings().empty());
    EXPECT_TRUE(counted.countedStringsWithHighestCount().empty());
    EXPECT_EQ(counted.addString(std::nullopt), nullptr);
    EXPECT_EQ(counted.totalCount(), 0u);
    counted.addString(Text("a"));
    counted.removeString(std::nullopt);
    EXPECT_EQ(counted.replaceStringWithString(std::nullopt, Text("b")), nullptr);
    EXPECT_EQ(counted.countedStringHavingString(std::nullopt), nullptr);
    EXPECT_TRUE(counted.countedStringsNotHavingString(std::nullopt).empty());
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"a:1"}));
}

TEST(BVCountedStrings, RemovalDecrementsThenDropsTheEntryKeepingOrder) {
    BVCountedStrings counted({"a", "b", "B", "c"}, true);
    counted.removeString(Text("b"));
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"a:1", "b:1", "c:1"}));
    counted.removeString(Text("B"));
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"a:1", "c:1"}));
    counted.addString(Text("B"));  // back again: a new entry at the end
    counted.countedStrings()[0]->setCount(0);
    counted.removeString(Text("A"));  // a count set to 0 stays 0 and the entry goes
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"c:1", "B:1"}));
    // A removed entry no longer follows the collection.
    auto removed = counted.countedStringHavingString(Text("c"));
    counted.removeString(Text("c"));
    removed->setString(Text("b"));
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"B:1"}));
}

TEST(BVCountedStrings, ReplacedTextsLeaveDuplicatesAndAddsCountOnTheFirstInListOrder) {
    BVCountedStrings counted({"red", "green", "blue", "blue"}, true);
    auto replaced = counted.replaceStringWithString(Text("BLUE"), Text("Red"));
    ASSERT_NE(replaced, nullptr);
    EXPECT_EQ(replaced->count(), 2u);
    EXPECT_EQ(counted.replaceStringWithString(Text("purple"), Text("x")), nullptr);
    counted.addString(Text("RED"));
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"red:2", "green:1", "Red:2"}));
    EXPECT_EQ(describe(counted.countedStringsNotHavingString(Text("ReD"))), (Lines{"green:1"}));
    // A middle entry moved onto the same text: the earliest still answers, then the next in list order.
    counted.replaceStringWithString(Text("green"), Text("RED"));
    counted.addString(Text("red"));
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"red:3", "RED:1", "Red:2"}));
    for (int i = 0; i < 4; ++i)
        counted.removeString(Text("red"));
    counted.addString(Text("rEd"));
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"Red:3"}));
    // An entry's own setters keep lookups right as well.
    counted.countedStrings()[0]->setValueForKey(bv::Value("Teal"), Text("string"));
    EXPECT_EQ(counted.countForString(Text("red")), 0u);
    EXPECT_EQ(counted.countForString(Text("TEAL")), 3u);
}

TEST(BVCountedStrings, ChangingTheModeAffectsLaterCallsOnlyAndNeverMerges) {
    BVCountedStrings counted({"Oui", "oui", "OUI"}, false);
    counted.setIsOperatingWithCaseInsensitivity(true);
    counted.addString(Text("oUi"));
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"Oui:2", "oui:1", "OUI:1"}));
    EXPECT_TRUE(counted.countedStringsNotHavingString(Text("oui")).empty());
    counted.removeString(Text("OUI"));
    counted.removeString(Text("OUI"));
    counted.setIsOperatingWithCaseInsensitivity(false);
    counted.addString(Text("OUI"));
    counted.addString(Text("Oui"));
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"oui:1", "OUI:2", "Oui:1"}));
}

TEST(BVCountedStrings, SortedListsAreReversedFromTheirNamesAndStable) {
    BVCountedStrings counted(false);
    addTimes(counted, {{"one", 1}, {"three", 3}, {"two", 2}, {"three-b", 3}, {"one-b", 1}});
    EXPECT_EQ(describe(counted.countedStringsSortedByCountInAscendingOrder()),
              (Lines{"three:3", "three-b:3", "two:2", "one:1", "one-b:1"}));
    EXPECT_EQ(describe(counted.countedStringsSortedByCountInDescendingOrder()),
              (Lines{"one:1", "one-b:1", "two:2", "three:3", "three-b:3"}));
    EXPECT_EQ(describe(counted.countedStrings())[0], "one:1");  // the own list keeps its order
}

TEST(BVCountedStrings, HighestCountTiesComeInFirstAddedOrder) {
    BVCountedStrings counted(true);
    addTimes(counted, {{"a", 2}, {"b", 5}, {"c", 5}, {"d", 1}});
    EXPECT_EQ(describe(counted.countedStringsWithHighestCount()), (Lines{"b:5", "c:5"}));
    counted.addString(Text("C"));
    EXPECT_EQ(describe(counted.countedStringsWithHighestCount()), (Lines{"c:6"}));
    for (const auto& entry : counted.countedStrings())
        entry->setCount(0);
    EXPECT_EQ(counted.countedStringsWithHighestCount().size(), 4u);
}

TEST(BVCountedStrings, EnumeratorAndMovesKeepEntriesAndTheirIndex) {
    BVCountedStrings source({"a", "B", "b"}, true);
    auto enumerator = source.stringEnumerator();
    EXPECT_EQ(enumerator.nextObject(), Text("a"));
    EXPECT_EQ(enumerator.allObjects(), (std::vector<Text>{"B"}));
    EXPECT_FALSE(enumerator.nextObject().has_value());

    auto entryB = source.countedStringHavingString(Text("b"));
    BVCountedStrings moved(std::move(source));
    entryB->setString(Text("z"));
    EXPECT_EQ(moved.countForString(Text("Z")), 2u);
    source.addString(Text("Z"));  // NOLINT: a moved-from collection is empty and usable
    EXPECT_EQ(source.totalCount(), 1u);
}

// The index must answer exactly what a first-match walk through the list would, whatever the sequence
// of adds, removals, replacements and mode changes.
TEST(BVCountedStrings, IndexAgreesWithAListWalkUnderRandomOperations) {
    const std::vector<Text> words{"ab", "AB", "Ab", "\u00E9t\u00E9", "\u00C9T\u00C9", "e\u0301t\u00E9", "x"};
    std::mt19937 random(12345);
    BVCountedStrings counted(true);
    for (int step = 0; step < 6000; ++step) {
        const Text& word = words[random() % words.size()];
        switch (random() % 10) {
            case 0:
                counted.removeString(word);
                break;
            case 1:
                counted.replaceStringWithString(word, words[random() % words.size()]);
                break;
            case 2:
                counted.setIsOperatingWithCaseInsensitivity(random() % 2 == 0);
                break;
            default:
                counted.addString(word);
                break;
        }
        auto mode = counted.isOperatingWithCaseInsensitivity() ? bv::CompareMode::CaseInsensitive
                                                               : bv::CompareMode::Literal;
        for (const Text& probe : words) {
            auto expected =
                std::find_if(counted.countedStrings().begin(), counted.countedStrings().end(),
                             [&](const auto& entry) { return entry->string().equals(probe, mode); });
            auto* want = expected == counted.countedStrings().end() ? nullptr : expected->get();
            ASSERT_EQ(counted.countedStringHavingString(probe).get(), want) << "step " << step;
        }
    }
}

// Case-insensitive matching must agree with the full Unicode key (NFD of the case-folded NFD form) for
// every character of the common alphabets, alone and next to marks that reorder or fold.
TEST(BVCountedStrings, CaseInsensitiveMatchingAgreesWithTheFullUnicodeKey) {
    const std::u16string neighbours[] = {u"",       u"\u0301", u"\u0316", u"\u0345", u"A",
                                         u"\u00DF", u"\u0130", u"\u03A3", u"\u1E9E", u"\uFB00"};
    std::vector<Text> texts;
    for (char16_t unit = 1; unit < 0x600; ++unit) {
        for (const std::u16string& next : neighbours)
            texts.emplace_back(u"k" + std::u16string(1, unit) + next);
    }
    BVCountedStrings counted(true);
    std::map<std::u16string, BVCountedString*> firstByKey;  // the oracle
    for (const Text& text : texts) {
        auto entry = counted.addString(text);
        firstByKey.try_emplace(text.comparisonKey(bv::CompareMode::CaseInsensitive).units(), entry.get());
    }
    EXPECT_EQ(counted.countedStrings().size(), firstByKey.size());
    for (const Text& text : texts) {
        for (const Text& probe : {text.uppercased(), text.lowercased(), text.canonicalDecomposition()}) {
            auto found = firstByKey.find(probe.comparisonKey(bv::CompareMode::CaseInsensitive).units());
            ASSERT_EQ(counted.countedStringHavingString(probe).get(),
                      found == firstByKey.end() ? nullptr : found->second)
                << probe;
        }
    }
}
