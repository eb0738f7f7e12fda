// List controller helpers: arranged objects (filtered and sorted) versus content, the string search with
// its absent-value rule, selection, and the "state" helpers.
#include <gtest/gtest.h>

#include <memory>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/text/BVNSArrayController.hpp"
#include "BrevantCocoaExtensions/text/BVNSSortDescriptor.hpp"

using bv::ArrayController;
using bv::NotFound;
using bv::Text;
using bv::Value;
using bv::ValueArray;
using bv::ValueDictionary;
namespace ctl = bv::BVNSArrayController;

namespace {

Value item(const char* name, const Value& state = Value()) {
    ValueDictionary record{{Text("name"), Value(name)}};
    if (!state.isNull()) record.emplace(Text("state"), state);
    return Value(record);
}

Text nameOf(const Value& record) {
    return *record.dictionary()->at(Text("name")).text();
}

// Shows only the items whose name is not "hidden", sorted by name.
ArrayController sortedAndFiltered(ValueArray content) {
    ArrayController controller(std::move(content));
    controller.setFilterPredicate(
        [](const Value& v) { return v.dictionary()->at(Text("name")) != Value("hidden"); });
    controller.setSortDescriptors(
        bv::BVNSSortDescriptor::descriptorsForKeyAscendingOrder(Text("name"), true));
    return controller;
}

}  // namespace

TEST(BVNSArrayController, EmptyController) {
    ArrayController controller;
    EXPECT_EQ(ctl::arrangedObjectCount(controller), 0u);
    EXPECT_FALSE(ctl::firstObject(controller));
    EXPECT_FALSE(ctl::lastObject(controller));
    EXPECT_FALSE(ctl::selectedObject(controller));
    EXPECT_EQ(ctl::indexOfLastObject(controller), NotFound);
    EXPECT_EQ(ctl::indexOfObject(controller, item("a")), NotFound);
    EXPECT_TRUE(ctl::areAllItemsInState(controller, 1));
    EXPECT_THROW((void)ctl::objectAtIndex(controller, 0), bv::RangeException);
    ctl::removeArrangedObjects(controller);
    ctl::setState(controller, 1);
}

TEST(BVNSArrayController, OperationsWorkOnTheArrangedObjects) {
    ArrayController controller = sortedAndFiltered({item("c"), item("hidden"), item("a"), item("b")});
    EXPECT_EQ(ctl::arrangedObjectCount(controller), 3u);
    EXPECT_EQ((ValueArray{*ctl::firstObject(controller), ctl::objectAtIndex(controller, 1),
                          *ctl::lastObject(controller)}),
              (ValueArray{item("a"), item("b"), item("c")}));
    EXPECT_EQ(ctl::indexOfObject(controller, item("c")), 2u);
    EXPECT_EQ(ctl::indexOfObject(controller, item("hidden")), NotFound);
    EXPECT_EQ(ctl::indexOfLastObject(controller), 2u);
    EXPECT_THROW((void)ctl::objectAtIndex(controller, 3), bv::RangeException);
    ctl::removeArrangedObjects(controller);
    EXPECT_EQ(controller.content(), (ValueArray{item("hidden")}));
}

TEST(BVNSArrayController, StringSearchMatchesAbsentValuesOnlyWhenIgnoringCase) {
    ArrayController controller(ValueArray{item("Ann"), Value(ValueDictionary{{Text("other"), Value(1)}}),
                                          item("bob"), Value(ValueDictionary{{Text("name"), Value()}})});
    auto find = [](const ArrayController& c, const char* text, bool ignoreCase) {
        return ctl::indexOfObjectWithStringValueCaseInsensitiveCompareForKey(c, Text(text), ignoreCase,
                                                                             Text("name"));
    };
    EXPECT_EQ(find(controller, "BOB", true), 1u);  // the element without a name comes first and matches
    EXPECT_EQ(find(controller, "bob", false), 2u);
    EXPECT_EQ(find(controller, "BOB", false), NotFound);
    EXPECT_EQ(find(controller, "ann", true), 0u);
    ArrayController numbers(ValueArray{Value(ValueDictionary{{Text("name"), Value(5)}})});
    EXPECT_THROW((void)find(numbers, "5", true), bv::UnrecognizedOperationException);
    EXPECT_EQ(find(numbers, "5", false), NotFound);
}

TEST(BVNSArrayController, SelectionFollowsElementsThroughRearrangement) {
    ArrayController controller(ValueArray{item("c"), item("a"), item("b")});
    controller.setSelectionIndexes({0, 2});  // c and b
    EXPECT_EQ(ctl::selectedObject(controller), item("c"));
    controller.setSortDescriptors(
        bv::BVNSSortDescriptor::descriptorsForKeyAscendingOrder(Text("name"), true));
    EXPECT_EQ(controller.selectionIndexes(), (bv::IndexSet{1, 2}));
    EXPECT_EQ(ctl::selectedObject(controller), item("b"));  // the first selected in arranged order
    controller.setFilterPredicate([](const Value& v) { return nameOf(v) != Text("b"); });
    EXPECT_EQ(controller.selectedObjects(), (ValueArray{item("c")}));
    controller.setFilterPredicate(nullptr);
    EXPECT_EQ(controller.selectedObjects(), (ValueArray{item("c")}));  // b left the selection when hidden
    EXPECT_THROW(controller.setSelectionIndexes({3}), bv::RangeException);
    EXPECT_EQ(controller.selectedObjects(), (ValueArray{item("c")}));
}

TEST(BVNSArrayController, FailedRearrangementLeavesTheControllerUnchanged) {
    ArrayController controller = sortedAndFiltered({item("a"), item("b")});
    EXPECT_THROW(controller.addObject(Value(ValueDictionary{{Text("name"), Value(3)}})), std::exception);
    EXPECT_EQ(controller.content().size(), 2u);
    EXPECT_EQ(ctl::arrangedObjectCount(controller), 2u);
}

TEST(BVNSArrayController, StateHelpersWorkOnArrangedObjectsOnly) {
    ArrayController controller =
        sortedAndFiltered({item("a", Value("1")), item("hidden", Value(0)), item("b", Value(1.0))});
    EXPECT_TRUE(ctl::areAllItemsInState(controller, 1));  // the text "1" reads as 1
    EXPECT_FALSE(ctl::areAllItemsInState(controller, 0));
    ctl::setState(controller, 4294967298LL);  // stored as a 32-bit number: 2
    EXPECT_TRUE(ctl::areAllItemsInState(controller, 2));
    EXPECT_EQ(ctl::objectAtIndex(controller, 0).dictionary()->at(Text("state")).number()->kind(),
              bv::Number::Kind::Int32);
    EXPECT_EQ(controller.content()[1], item("hidden", Value(0)));  // the hidden item is untouched
    ArrayController missing(ValueArray{item("x")});
    EXPECT_FALSE(ctl::areAllItemsInState(missing, 1));  // no state reads as 0
    EXPECT_TRUE(ctl::areAllItemsInState(missing, 0));
}

TEST(BVNSArrayController, StateOfLibraryObjects) {
    struct Switch : bv::Object {
        Value state = Value(0);
        std::optional<Value> valueForKey(const Text& key) const override {
            return key == Text("state") ? std::optional<Value>(state) : std::nullopt;
        }
        void setValueForKey(const Value& value, const Text& key) override {
            if (key == Text("state")) state = value;
        }
    };
    auto one = std::make_shared<Switch>();
    ArrayController controller(ValueArray{Value(one), Value(std::make_shared<Switch>())});
    EXPECT_TRUE(ctl::areAllItemsInState(controller, 0));
    ctl::setState(controller, 1);
    EXPECT_TRUE(ctl::areAllItemsInState(controller, 1));
    EXPECT_EQ(one->state, Value(1));
}
