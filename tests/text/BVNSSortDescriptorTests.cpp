// Sort keys: stable sorting by one or more keys with each comparison, key paths, and values that cannot be
// ordered.
#include <gtest/gtest.h>

#include <memory>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/KeyValue.hpp"
#include "BrevantCocoaExtensions/text/BVNSSortDescriptor.hpp"

using bv::SortDescriptor;
using bv::Text;
using bv::Value;
using bv::ValueArray;
using bv::ValueDictionary;
namespace sorting = bv::BVNSSortDescriptor;
using Comparison = SortDescriptor::Comparison;

namespace {

Value row(const Value& name, int tag) {
    ValueDictionary record{{Text("tag"), Value(tag)}};
    if (!name.isNull()) record.emplace(Text("name"), name);
    return Value(record);
}

std::vector<int> tagsOf(const ValueArray& rows) {
    std::vector<int> tags;
    for (const Value& r : rows)
        tags.push_back(static_cast<int>(r.dictionary()->at(Text("tag")).number()->int64Value()));
    return tags;
}

std::vector<SortDescriptor> byName(bool ascending = true) {
    return sorting::descriptorsForKeyAscendingOrder(Text("name"), ascending);
}

ValueArray sorted(const ValueArray& rows, const std::vector<SortDescriptor>& keys) {
    return bv::sortedArrayUsingDescriptors(rows, keys);
}

// A library object that answers one key.
struct Person : bv::Object {
    Text name;
    explicit Person(Text n) : name(std::move(n)) {}
    std::optional<Value> valueForKey(const Text& key) const override {
        return key == Text("name") ? std::optional<Value>(Value(name)) : std::nullopt;
    }
};

}  // namespace

TEST(BVNSSortDescriptor, SortingIsStableInBothDirections) {
    ValueArray rows{row(Value("b"), 1), row(Value("a"), 2), row(Value("b"), 3), row(Value("a"), 4),
                    row(Value(), 5)};
    EXPECT_EQ(tagsOf(sorted(rows, byName())),
              (std::vector<int>{5, 2, 4, 1, 3}));  // absent first, ties in original order
    EXPECT_EQ(tagsOf(sorted(rows, byName(false))),
              (std::vector<int>{1, 3, 2, 4, 5}));  // descending keeps ties in original order too
    EXPECT_EQ(tagsOf(sorted(rows, {})), (std::vector<int>{1, 2, 3, 4, 5}));
}

TEST(BVNSSortDescriptor, EachComparisonOrdersTextsItsOwnWay) {
    ValueArray rows{row(Value("b"), 1), row(Value("B"), 2), row(Value("a"), 3), row(Value("A"), 4)};
    auto sortedTags = [&](Comparison comparison) {
        return tagsOf(sorted(rows, {SortDescriptor{Text("name"), true, comparison}}));
    };
    EXPECT_EQ(sortedTags(Comparison::Compare), (std::vector<int>{4, 2, 3, 1}));  // "A" "B" "a" "b"
    EXPECT_EQ(sortedTags(Comparison::CaseInsensitiveCompare), (std::vector<int>{3, 4, 1, 2}));  // ties stay
    // The collation depends on the current locale; letters of one case keep the alphabet's order in all.
    ValueArray lower{row(Value("c"), 1), row(Value("a"), 2), row(Value("b"), 3)};
    EXPECT_EQ(tagsOf(sorted(lower, {SortDescriptor{Text("name"), true, Comparison::LocalizedCompare}})),
              (std::vector<int>{2, 3, 1}));
    // Canonically equivalent texts are equal under the default comparison, so they stay in order.
    ValueArray accents{row(Value("caf\xC3\xA9"), 1), row(Value("cafe\xCC\x81"), 2), row(Value("cafe"), 3)};
    EXPECT_EQ(tagsOf(sorted(accents, byName())), (std::vector<int>{3, 1, 2}));
}

TEST(BVNSSortDescriptor, NumbersSortNumericallyAndTiesFallToTheNextKey) {
    auto entry = [](int score, const char* name, int tag) {
        return Value(ValueDictionary{
            {Text("score"), Value(score)}, {Text("name"), Value(name)}, {Text("tag"), Value(tag)}});
    };
    ValueArray rows{entry(10, "b", 1), entry(9, "z", 2), entry(10, "a", 3), entry(9, "a", 4)};
    std::vector<SortDescriptor> keys{{Text("score"), false, Comparison::Compare},
                                     {Text("name"), true, Comparison::Compare}};
    EXPECT_EQ(tagsOf(sorted(rows, keys)), (std::vector<int>{3, 1, 4, 2}));
    EXPECT_EQ(keys[0].compareObjects(rows[0], rows[1]), -1);  // descending: 10 comes first
}

TEST(BVNSSortDescriptor, KeyPathsSelfAndLibraryObjects) {
    ValueArray nested{
        Value(ValueDictionary{{Text("who"), Value(ValueDictionary{{Text("name"), Value("b")}})}}),
        Value(ValueDictionary{{Text("who"), Value(ValueDictionary{{Text("name"), Value("a")}})}})};
    EXPECT_EQ(sorted(nested, sorting::descriptorsForKeyAscendingOrder(Text("who.name"), true)),
              (ValueArray{nested[1], nested[0]}));
    EXPECT_EQ(sorted(ValueArray{Value("b"), Value("a")},
                     sorting::descriptorsForKeyAscendingOrder(Text("self"), true)),
              (ValueArray{Value("a"), Value("b")}));
    auto bob = std::make_shared<Person>(Text("Bob")), amy = std::make_shared<Person>(Text("amy"));
    EXPECT_EQ(sorted(ValueArray{Value(bob), Value(amy)},
                     sorting::descriptorsForKeyAscendingOrderCaseInsensitive(Text("name"), true, true)),
              (ValueArray{Value(amy), Value(bob)}));
}

TEST(BVNSSortDescriptor, ValuesThatCannotBeOrderedThrow) {
    EXPECT_THROW((void)sorted(ValueArray{row(Value("a"), 1), row(Value(2), 2)}, byName()),
                 bv::InvalidArgumentException);
    EXPECT_THROW(
        (void)sorted(ValueArray{row(Value(1), 1), row(Value(2), 2)},
                     sorting::descriptorsForKeyAscendingOrderCaseInsensitive(Text("name"), true, true)),
        bv::InvalidArgumentException);
    EXPECT_THROW((void)sorted(ValueArray{row(Value(ValueArray{}), 1), row(Value(ValueArray{}), 2)}, byName()),
                 bv::InvalidArgumentException);
    EXPECT_THROW((void)sorted(ValueArray{Value("a"), Value("b")}, byName()),
                 bv::UnrecognizedOperationException);  // a text has no "name"
}
