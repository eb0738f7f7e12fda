// BVCountedStrings: case rules, first-match lookups kept right through replacements, removals and mode
// changes, and the (deliberately reversed) count orders.
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/responses/BVCountedStrings.hpp"

using bv::BVCountedString;
using bv::BVCountedStringList;
using bv::BVCountedStrings;
using bv::Text;

namespace {

// "text:count" for each entry, to compare whole lists at once.
std::vector<std::string> describe(const BVCountedStringList& list) {
    std::vector<std::string> out;
    for (const auto& entry : list)
        out.push_back(entry->string().toUtf8() + ":" + std::to_string(entry->count()));
    return out;
}

using Lines = std::vector<std::string>;

}  // namespace

TEST(BVCountedStrings, CaseInsensitiveTallyKeepsTheFirstSpelling) {
    BVCountedStrings counted({"Paris", "paris", "PARIS", "Lyon"}, true);
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"Paris:3", "Lyon:1"}));
    EXPECT_EQ(counted.countForString(Text("pArIs")), 3u);
    // Full case folding, beyond ASCII: "Straße" and "STRASSE" are one answer; so are Greek sigmas.
    counted.addString(
        Text("Stra\xC3\x9F"
             "e"));
    counted.addString(Text("STRASSE"));
    counted.addString(Text("\xCE\xA3\xCE\x99\xCE\xA3"));  // ΣΙΣ
    counted.addString(Text("\xCF\x83\xCE\xB9\xCF\x82"));  // σις
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"Paris:3", "Lyon:1",
                                                         "Stra\xC3\x9F"
                                                         "e:2",
                                                         "\xCE\xA3\xCE\x99\xCE\xA3:2"}));
    EXPECT_EQ(counted.totalCount(), 8u);

    BVCountedStrings exact({"Paris", "paris", "PARIS"}, false);
    EXPECT_EQ(describe(exact.countedStrings()), (Lines{"Paris:1", "paris:1", "PARIS:1"}));
    EXPECT_EQ(exact.countForString(Text("pArIs")), 0u);
    EXPECT_EQ(exact.strings(), (std::vector<Text>{"Paris", "paris", "PARIS"}));
}

TEST(BVCountedStrings, NullTextsChangeNothing) {
    BVCountedStrings counted(true);
    EXPECT_EQ(counted.addString(std::nullopt), nullptr);
    counted.addString(Text("a"));
    counted.removeString(std::nullopt);
    EXPECT_EQ(counted.replaceStringWithString(std::nullopt, Text("b")), nullptr);
    EXPECT_EQ(counted.totalCount(), 1u);
    EXPECT_EQ(counted.countedStringHavingString(std::nullopt), nullptr);
    EXPECT_TRUE(counted.countedStringsNotHavingString(std::nullopt).empty());
    EXPECT_EQ(counted.countForString(std::nullopt), 0u);
}

TEST(BVCountedStrings, AddKeepsTheFirstCallerDataAndAnswersTheEntry) {
    BVCountedStrings counted(true);
    auto first = counted.addStringWithUserInfo(Text("Yes"), bv::Value(7));
    auto again = counted.addStringWithUserInfo(Text("YES"), bv::Value(8));
    EXPECT_EQ(first, again);
    EXPECT_EQ(first->userInfo(), bv::Value(7));
    EXPECT_EQ(first->count(), 2u);
    EXPECT_TRUE(counted.addString(Text("no"))->userInfo().isNull());
}

TEST(BVCountedStrings, RemovalDecrementsThenDropsTheEntryKeepingOrder) {
    BVCountedStrings counted({"a", "b", "B", "c"}, true);
    counted.removeString(Text("b"));
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"a:1", "b:1", "c:1"}));
    counted.removeString(Text("B"));
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"a:1", "c:1"}));
    EXPECT_EQ(counted.countedStringHavingString(Text("b")), nullptr);
    counted.removeString(Text("zzz"));
    // An answer that comes back after removal is a new entry at the end.
    counted.addString(Text("B"));
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"a:1", "c:1", "B:1"}));
    // A count set to 0 by the caller: the next removal drops the entry.
    counted.countedStrings()[0]->setCount(0);
    counted.removeString(Text("A"));
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"c:1", "B:1"}));
    // A removed entry no longer follows the collection.
    auto removed = counted.countedStringHavingString(Text("c"));
    counted.removeString(Text("c"));
    removed->setString(Text("b"));
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"B:1"}));
}

TEST(BVCountedStrings, ReplacedTextsLeaveDuplicatesAndAddsCountOnTheFirstInListOrder) {
    BVCountedStrings counted({"red", "green", "blue", "blue"}, true);
    // "blue" (third) becomes "Red": now two entries match "red"; the first in list order wins.
    auto replaced = counted.replaceStringWithString(Text("BLUE"), Text("Red"));
    ASSERT_NE(replaced, nullptr);
    EXPECT_EQ(replaced->count(), 2u);
    EXPECT_EQ(counted.replaceStringWithString(Text("purple"), Text("x")), nullptr);
    counted.addString(Text("RED"));
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"red:2", "green:1", "Red:2"}));
    EXPECT_EQ(counted.countForString(Text("blue")), 0u);
    EXPECT_EQ(describe(counted.countedStringsNotHavingString(Text("ReD"))), (Lines{"green:1"}));

    // Moving an entry from a later position onto an earlier entry's text: still the earlier one answers.
    counted.replaceStringWithString(Text("green"), Text("RED"));
    counted.addString(Text("red"));
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"red:3", "RED:1", "Red:2"}));
    // Once the first is gone, the next in list order takes over; then the last.
    counted.removeString(Text("red"));
    counted.removeString(Text("red"));
    counted.removeString(Text("red"));
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"RED:1", "Red:2"}));
    counted.removeString(Text("red"));
    counted.addString(Text("rEd"));
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"Red:3"}));

    // An entry's own setter keeps lookups right as well.
    counted.countedStrings()[0]->setString(Text("Mauve"));
    EXPECT_EQ(counted.countForString(Text("red")), 0u);
    EXPECT_EQ(counted.countForString(Text("MAUVE")), 3u);
    counted.countedStrings()[0]->setValueForKey(bv::Value("Teal"), Text("string"));
    EXPECT_EQ(counted.countForString(Text("teal")), 3u);
}

TEST(BVCountedStrings, ChangingTheModeAffectsLaterCallsOnlyAndNeverMerges) {
    BVCountedStrings counted({"Oui", "oui", "OUI"}, false);
    counted.setIsOperatingWithCaseInsensitivity(true);
    EXPECT_TRUE(counted.isOperatingWithCaseInsensitivity());
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"Oui:1", "oui:1", "OUI:1"}));
    counted.addString(Text("oUi"));
    EXPECT_EQ(counted.countForString(Text("OUI")), 2u);  // the first entry in list order
    EXPECT_EQ(counted.countedStringsNotHavingString(Text("oui")).size(), 0u);
    counted.removeString(Text("OUI"));
    counted.removeString(Text("OUI"));
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"oui:1", "OUI:1"}));

    counted.setIsOperatingWithCaseInsensitivity(false);
    counted.addString(Text("OUI"));
    counted.addString(Text("Oui"));
    EXPECT_EQ(describe(counted.countedStrings()), (Lines{"oui:1", "OUI:2", "Oui:1"}));
}

TEST(BVCountedStrings, SortedListsAreReversedFromTheirNamesAndStable) {
    BVCountedStrings counted(false);
    for (auto [text, times] : std::vector<std::pair<const char*, int>>{
             {"one", 1}, {"three", 3}, {"two", 2}, {"three-b", 3}, {"one-b", 1}}) {
        for (int i = 0; i < times; ++i)
            counted.addString(Text(text));
    }
    EXPECT_EQ(describe(counted.countedStringsSortedByCountInAscendingOrder()),
              (Lines{"three:3", "three-b:3", "two:2", "one:1", "one-b:1"}));
    EXPECT_EQ(describe(counted.countedStringsSortedByCountInDescendingOrder()),
              (Lines{"one:1", "one-b:1", "two:2", "three:3", "three-b:3"}));
    // The collection's own list is not reordered.
    EXPECT_EQ(describe(counted.countedStrings())[0], "one:1");

    BVCountedString low(Text("x"), bv::Value()), high(Text("y"), bv::Value());
    high.setCount(5);
    EXPECT_EQ(high.sortByCountAscending(low), -1);
    EXPECT_EQ(low.sortByCountAscending(high), 1);
    EXPECT_EQ(high.sortByCountDescending(low), 1);
    EXPECT_EQ(low.sortByCountDescending(low), 0);
}

TEST(BVCountedStrings, HighestCountTiesComeInFirstAddedOrder) {
    BVCountedStrings counted(true);
    for (auto [text, times] :
         std::vector<std::pair<const char*, int>>{{"a", 2}, {"b", 5}, {"c", 5}, {"d", 1}}) {
        for (int i = 0; i < times; ++i)
            counted.addString(Text(text));
    }
    EXPECT_EQ(describe(counted.countedStringsWithHighestCount()), (Lines{"b:5", "c:5"}));
    // A later entry overtaking the earlier ones is alone at the top.
    counted.addString(Text("C"));
    EXPECT_EQ(describe(counted.countedStringsWithHighestCount()), (Lines{"c:6"}));
    // All counts zero: every entry ties.
    for (const auto& entry : counted.countedStrings())
        entry->setCount(0);
    EXPECT_EQ(counted.countedStringsWithHighestCount().size(), 4u);
}

TEST(BVCountedStrings, EmptyCollectionAndCountArithmetic) {
    BVCountedStrings counted(true);
    EXPECT_EQ(counted.totalCount(), 0u);
    EXPECT_TRUE(counted.strings().empty());
    EXPECT_TRUE(counted.countedStringsWithHighestCount().empty());
    EXPECT_FALSE(counted.stringEnumerator().nextObject().has_value());

    BVCountedString entry(Text("x"), bv::Value());
    EXPECT_EQ(entry.decrementCount(), 0u);
    EXPECT_EQ(entry.decrementCount(), 0u);  // never below 0
    EXPECT_EQ(entry.incrementCount(), 1u);
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
    EXPECT_EQ(source.totalCount(), 0u);  // NOLINT: the moved-from collection is documented as usable
    source.addString(Text("Z"));
    EXPECT_EQ(source.countForString(Text("z")), 1u);
}

// The index must answer exactly what a first-match walk through the list would, in any sequence of
// operations; a plain list model checks it on random work over a small alphabet of spellings.
TEST(BVCountedStrings, IndexAgreesWithAListWalkUnderRandomOperations) {
    const std::vector<Text> words{
        "ab", "AB", "Ab", "\xC3\xA9t\xC3\xA9", "\xC3\x89T\xC3\x89", "e\xCC\x81t\xC3\xA9", "x"};
    std::mt19937 random(12345);
    for (bool startInsensitive : {true, false}) {
        BVCountedStrings counted(startInsensitive);
        for (int step = 0; step < 3000; ++step) {
            const Text& word = words[random() % words.size()];
            switch (random() % 8) {
                case 0:
                    counted.removeString(word);
                    break;
                case 1:
                    counted.replaceStringWithString(word, words[random() % words.size()]);
                    break;
                case 2:
                    if (random() % 10 == 0) counted.setIsOperatingWithCaseInsensitivity(random() % 2 == 0);
                    break;
                default:
                    counted.addString(word);
                    break;
            }
            auto mode = counted.isOperatingWithCaseInsensitivity() ? bv::CompareMode::CaseInsensitive
                                                                   : bv::CompareMode::Literal;
            for (const Text& probe : words) {
                std::shared_ptr<BVCountedString> expected;
                for (const auto& entry : counted.countedStrings()) {
                    if (entry->string().equals(probe, mode)) {
                        expected = entry;
                        break;
                    }
                }
                ASSERT_EQ(counted.countedStringHavingString(probe), expected) << "step " << step;
            }
        }
    }
}

// Case-insensitive matching must agree with the full Unicode key (NFD of the case-folded NFD form) for
// every character of the common alphabets, alone and next to combining marks that reorder or fold.
TEST(BVCountedStrings, CaseInsensitiveMatchingAgreesWithTheFullUnicodeKey) {
    const std::u16string neighbours[] = {u"",       u"\u0301", u"\u0316", u"\u0345", u"A",
                                         u"\u00DF", u"\u0130", u"\u03A3", u"\u1E9E", u"\uFB00"};
    std::vector<Text> texts;
    for (char16_t unit = 1; unit < 0x600; ++unit) {
        for (const std::u16string& next : neighbours)
            texts.emplace_back(u"k" + std::u16string(1, unit) + next);
    }
    BVCountedStrings counted(true);
    std::map<std::u16string, std::shared_ptr<BVCountedString>> firstByKey;  // the oracle
    for (const Text& text : texts) {
        auto entry = counted.addString(text);
        firstByKey.try_emplace(text.comparisonKey(bv::CompareMode::CaseInsensitive).units(), entry);
    }
    EXPECT_EQ(counted.countedStrings().size(), firstByKey.size());
    for (const Text& text : texts) {
        for (const Text& probe : {text.uppercased(), text.lowercased(), text.canonicalDecomposition()}) {
            auto found = firstByKey.find(probe.comparisonKey(bv::CompareMode::CaseInsensitive).units());
            auto expected = found == firstByKey.end() ? nullptr : found->second;
            ASSERT_EQ(counted.countedStringHavingString(probe).get(), expected.get()) << probe;
        }
    }
}
