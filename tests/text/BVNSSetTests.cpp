// Set helpers: counting members' texts, the uniqueness validation error, random members; and the set itself.
#include <gtest/gtest.h>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/text/BVNSSet.hpp"

using bv::Text;
using bv::Value;
using bv::ValueDictionary;
using bv::ValueSet;
namespace set = bv::BVNSSet;

namespace {

Value student(int id, const Value& lastName) {
    ValueDictionary record{{Text("id"), Value(id)}};
    if (!lastName.isNull()) record.emplace(Text("lastName"), lastName);
    return Value(record);
}

}  // namespace

TEST(ValueSet, KeepsDistinctValuesInFirstInsertionOrder) {
    ValueSet values{Value(1), Value("1"), Value(1.0), Value(true), Value("a"), Value(1)};
    EXPECT_EQ(values.allObjects(), (bv::ValueArray{Value(1), Value("1"), Value("a")}));
    EXPECT_TRUE(values.contains(Value(true)));
    EXPECT_FALSE(values.insert(Value(1.0)));
    EXPECT_TRUE(values.insert(Value(2)));
    EXPECT_EQ(values.size(), 4u);
}

TEST(BVNSSet, StringValuesCountTextsAndDescriptionsAndSkipAbsentValues) {
    ValueSet records{student(1, Value("Smith")), student(2, Value("Smith")), student(3, Value(7)),
                     student(4, Value("7")), student(5, Value())};
    bv::ValueCountedSet counted = set::stringValuesForKey(records, Text("lastName"));
    EXPECT_EQ(counted.size(), 2u);
    EXPECT_EQ(counted.countFor(Value("Smith")), 2u);
    EXPECT_EQ(counted.countFor(Value("7")), 2u);  // the number 7 counts as its text
    EXPECT_EQ(counted.countFor(Value(7)), 0u);
}

TEST(BVNSSet, UniquenessCheckReportsTheValidationError) {
    std::vector<bv::Error> errors{bv::Error{"earlier", 1, Text("kept"), Text()}};
    ValueSet unique{student(1, Value("Smith")), student(2, Value("Jones")), student(3, Value())};
    EXPECT_TRUE(
        set::assertUniqueAttributeDisplayNameErrors(unique, Text("lastName"), Text("Last Name"), errors));
    EXPECT_EQ(errors.size(), 1u);

    ValueSet duplicated{student(1, Value("Smith")), student(2, Value("Jones")), student(3, Value("Smith")),
                        student(4, Value("Jones")), student(5, Value("Lee"))};
    EXPECT_FALSE(
        set::assertUniqueAttributeDisplayNameErrors(duplicated, Text("lastName"), Text("Last Name"), errors));
    ASSERT_EQ(errors.size(), 2u);
    EXPECT_EQ(errors[0].domain, "earlier");
    EXPECT_EQ(errors[1].domain, "data validation");
    EXPECT_EQ(errors[1].code, 1550);
    EXPECT_EQ(errors[1].localizedDescription, Text("duplicate 'Last Name' found: (Smith, Jones)"));
}

TEST(BVNSSet, AnyRandomObject) {
    EXPECT_FALSE(set::anyRandomObject(ValueSet{}));
    EXPECT_EQ(set::anyRandomObject(ValueSet{Value("only")}), Value("only"));
}
