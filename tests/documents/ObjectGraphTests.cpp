// The object graph: models from a temporary main bundle, stores saved and read back exactly, damaged
// stores presented once, and values checked against the model.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "BrevantCocoaExtensions/documents/BVNSManagedObject.hpp"
#include "BrevantCocoaExtensions/documents/BVNSManagedObjectContext.hpp"
#include "BrevantCocoaExtensions/platform/AlertCenter.hpp"
#include "BrevantCocoaExtensions/platform/Bundle.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "support/Scratch.hpp"

namespace {

using bv::ManagedObject;
using bv::Text;
using bv::Value;
namespace Contexts = bv::BVNSManagedObjectContext;

const char* const kQuizModel = R"(<objectModel>
    <entity name="Student">
        <attribute name="name" type="text"/>
        <attribute name="age" type="integer"/>
        <attribute name="score" type="double"/>
        <attribute name="present" type="boolean"/>
        <attribute name="born" type="date"/>
        <attribute name="photo" type="binary"/>
        <relationship name="school" destination="School"/>
        <relationship name="friends" destination="Student" toMany="true"/>
    </entity>
    <entity name="School"><attribute name="name" type="text"/></entity>
</objectModel>)";

// A temporary main bundle holding Quiz.mom, with the log captured.
class ObjectGraph : public ::testing::Test {
  protected:
    void SetUp() override {
        folder_.write("App/Contents/Resources/Quiz.mom", kQuizModel);
        previousMain_ = bv::Bundle::setMainBundlePath(folder_.path("App"));
    }
    void TearDown() override { bv::Bundle::setMainBundlePath(previousMain_); }

    void addModel(const std::string& name, const std::string& xml) const {
        folder_.write("App/Contents/Resources/" + name, xml);
    }

    bvtest::ScratchFolder folder_{"bv-object-graph"};
    bvtest::LogCapture log_;

  private:
    std::string previousMain_;
};

Value attribute(const std::shared_ptr<ManagedObject>& object, const char* key) {
    return *object->valueForKey(Text(key));
}

Value held(const std::shared_ptr<ManagedObject>& object) {
    return Value(std::shared_ptr<bv::Object>(object));
}

TEST_F(ObjectGraph, SavedStoreReadsBackEveryValueAndRelationship) {
    bv::AlertRecorder alerts;
    const Text url("file://" + folder_.path("Class%20one.quiz"));
    auto context = Contexts::contextForModelNamedLoadDocAtURL(Text("Quiz"), url);
    ASSERT_TRUE(context);
    EXPECT_TRUE(context->registeredObjects().empty());  // a missing document is a new, empty store

    auto school = Contexts::createObjectForEntityNamed(*context, Text("School"));
    auto ann = bv::BVNSManagedObject::createObjectForEntityNamed(*school, Text("Student"));
    auto bob = Contexts::createObjectForEntityNamed(*context, Text("Student"));
    auto gone = Contexts::createObjectForEntityNamed(*context, Text("Student"));
    const Text spaced(" two\n  lines\r\t & <x> ");  // written as it is
    const Text awkward(
        u"a\x0001"
        u"b\xD800");  // needs the Base64 form
    const bv::ByteData photo{0, 255, 10, 13};
    ann->setValueForKey(Value(awkward), Text("name"));
    ann->setValueForKey(Value(-9223372036854775807LL - 1), Text("age"));
    ann->setValueForKey(Value(0.1), Text("score"));
    ann->setValueForKey(Value(true), Text("present"));
    ann->setValueForKey(Value(bv::Date::fromTimeIntervalSince1970(-1234.000001)), Text("born"));
    ann->setValueForKey(Value(photo), Text("photo"));
    ann->setValueForKey(held(school), Text("school"));
    ann->setValueForKey(Value(bv::ValueArray{held(bob), held(gone), held(bob), held(ann)}),
                        Text("friends"));  // the repeat is dropped
    bob->setValueForKey(Value(Text("")), Text("name"));
    school->setValueForKey(Value(spaced), Text("name"));
    bob->setValueForKey(Value(std::numeric_limits<double>::infinity()), Text("score"));
    bob->setValueForKey(Value(bv::ByteData{}), Text("photo"));
    context->deleteObject(gone);  // leaves the relationships that held it
    EXPECT_EQ(gone->managedObjectContext(), nullptr);
    ASSERT_TRUE(context->save());
    EXPECT_FALSE(context->hasChanges());

    auto reopened =
        Contexts::contextForModelNamedLoadDocAtURL(Text("Quiz"), Text(folder_.path("Class one.quiz")));
    const auto students = reopened->objectsForEntityName(Text("Student"));
    ASSERT_EQ(students.size(), 2u);
    const auto& readAnn = students[0];
    EXPECT_EQ(attribute(readAnn, "name"), Value(awkward));
    EXPECT_EQ(attribute(readAnn, "age"), Value(std::numeric_limits<long long>::min()));
    EXPECT_EQ(attribute(readAnn, "score").number()->doubleValue(), 0.1);
    EXPECT_EQ(attribute(readAnn, "present").number()->kind(), bv::Number::Kind::Bool);
    EXPECT_EQ(attribute(readAnn, "born").get<bv::Date>()->timeIntervalSince1970(), -1234.000001);
    EXPECT_EQ(attribute(readAnn, "photo"), Value(photo));
    const auto readSchool = reopened->objectsForEntityName(Text("School")).at(0);
    EXPECT_EQ(attribute(readAnn, "school").object(), readSchool);
    EXPECT_EQ(attribute(readSchool, "name"), Value(spaced));
    EXPECT_EQ(attribute(readAnn, "friends"), Value(bv::ValueArray{held(students[1]), held(readAnn)}));
    EXPECT_EQ(attribute(students[1], "name"), Value(Text("")));
    EXPECT_TRUE(std::isinf(attribute(students[1], "score").number()->doubleValue()));
    EXPECT_EQ(attribute(students[1], "photo"), Value(bv::ByteData{}));
    EXPECT_TRUE(attribute(students[1], "age").isNull());
    EXPECT_TRUE(alerts.alerts().empty());
}

TEST_F(ObjectGraph, DamagedStoreIsPresentedOnceAndTheContextStillWorks) {
    struct Row {
        const char* document;  // nullptr: a folder stands where the document should be
        const char* reason;    // part of the alert's message
    };
    const Row rows[] = {
        {"<objectGraph><object", "Line 1"},
        {"<quiz/>", "root element"},
        {R"(<objectGraph><object entity="Teacher" id="1"/></objectGraph>)",
         "\"Teacher\" is not in the model"},
        {R"(<objectGraph><object entity="School" id="1"><attribute name="city">x</attribute></object></objectGraph>)",
         "has no attribute \"city\""},
        {R"(<objectGraph><object entity="Student" id="1"><attribute name="age">12x</attribute></object></objectGraph>)",
         "is not integer"},
        {R"(<objectGraph><object entity="Student" id="1"><relationship name="school" ids="1"/></object></objectGraph>)",
         "an object of the entity \"Student\""},
        {R"(<objectGraph><object entity="School" id="1"/><object entity="School" id="1"/></objectGraph>)",
         "occurs twice"},
        {nullptr, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.document ? row.document : "a folder");
        const std::string path = folder_.path("bad.quiz");
        std::filesystem::remove_all(path);
        if (row.document)
            folder_.write("bad.quiz", row.document);
        else
            std::filesystem::create_directory(path);
        log_.lines.clear();
        bv::AlertRecorder alerts;
        auto context = Contexts::contextForModelNamedLoadDocAtURL(Text("Quiz"), Text(path));
        ASSERT_EQ(alerts.alerts().size(), 1u);
        EXPECT_EQ(alerts.alerts()[0].title, Text("The document \u201Cbad.quiz\u201D could not be opened."));
        EXPECT_NE(alerts.alerts()[0].message.toUtf8().find(row.reason), std::string::npos)
            << alerts.alerts()[0].message;
        EXPECT_EQ(log_.lines.size(), 1u);
        ASSERT_TRUE(context);
        EXPECT_TRUE(context->registeredObjects().empty());
        Contexts::createObjectForEntityNamed(*context, Text("School"));
        bv::Error error;
        EXPECT_FALSE(context->save(&error));  // no store to save to
        ASSERT_TRUE(context->persistentStoreCoordinator()->addXMLStoreAtURL(Text(folder_.path("new.quiz"))));
        EXPECT_TRUE(context->save());
        EXPECT_EQ(alerts.alerts().size(), 1u);
        EXPECT_EQ(Contexts::contextForModelNamedLoadDocAtURL(Text("Quiz"), Text(folder_.path("new.quiz")))
                      ->objectsForEntityName(Text("School"))
                      .size(),
                  1u);
        std::filesystem::remove(folder_.path("new.quiz"));
        if (row.document) {
            EXPECT_EQ(folder_.read("bad.quiz"), row.document);  // left as it was
        }
    }
}

TEST_F(ObjectGraph, ModelsComeFromTheMainBundle) {
    EXPECT_EQ(Contexts::contextForModelNamed(Text("Missing")), nullptr);
    EXPECT_EQ(Contexts::contextForModelNamedLoadDocAtURL(Text("Missing"), Text(folder_.path("x.quiz"))),
              nullptr);
    addModel("Games.mom", R"(<objectModel><entity name="Game">
        <relationship name="winner" destination="Student"/></entity></objectModel>)");
    auto all = Contexts::contextForAllModels();
    ASSERT_TRUE(all);
    EXPECT_EQ(all->persistentStoreCoordinator()->managedObjectModel()->entities().size(), 3u);
    EXPECT_FALSE(all->persistentStoreCoordinator()->storePath());
    EXPECT_TRUE(log_.lines.empty());

    addModel("Other.mom", R"(<objectModel><entity name="School"/></objectModel>)");
    EXPECT_EQ(Contexts::contextForAllModels(), nullptr);
    ASSERT_EQ(log_.lines.size(), 1u);
    EXPECT_NE(
        log_.lines[0].find("\"School\" is defined in " + folder_.path("App/Contents/Resources/Other.mom") +
                           " and in " + folder_.path("App/Contents/Resources/Quiz.mom")),
        std::string::npos)
        << log_.lines[0];

    const char* const damaged[] = {
        "<objectModel><entity name='A'>",
        "<model/>",
        "<objectModel><entity name='A'><attribute name='x' type='string'/></entity></objectModel>",
        "<objectModel><entity name='A'><relationship name='b' destination='B'/></entity></objectModel>",
        "<objectModel><entity name='A'><attribute name='x' type='text'/><relationship name='x' "
        "destination='A'/></entity></objectModel>",
    };
    for (const char* model : damaged) {
        log_.lines.clear();
        EXPECT_EQ(Contexts::contextForModelAtPath(Text(folder_.write("Bad.mom", model))), nullptr) << model;
        EXPECT_EQ(log_.lines.size(), 1u) << model;
    }
}

TEST_F(ObjectGraph, ValuesAreCheckedAgainstTheModel) {
    auto context = Contexts::contextForModelNamed(Text("Quiz"));
    auto ann = Contexts::createObjectForEntityNamed(*context, Text("Student"));
    auto school = Contexts::createObjectForEntityNamed(*context, Text("School"));
    auto elsewhere =
        Contexts::createObjectForEntityNamed(*Contexts::contextForModelNamed(Text("Quiz")), Text("School"));
    struct Row {
        const char* key;
        Value value;
        bool taken;
    };
    const Row rows[] = {
        {"name", Value(Text("Ann")), true},
        {"name", Value(3), false},
        {"age", Value(3), true},
        {"age", Value(3.5), false},
        {"age", Value(true), false},
        {"age", Value(18446744073709551615ULL), false},
        {"score", Value(3), true},
        {"score", Value(true), false},
        {"present", Value(false), true},
        {"present", Value(1), false},
        {"born", Value(bv::Date()), true},
        {"born", Value(Text("2020-01-01")), false},
        {"photo", Value(bv::ByteData{1}), true},
        {"photo", Value(Text("AQ==")), false},
        {"school", held(school), true},
        {"school", held(ann), false},
        {"school", held(elsewhere), false},
        {"friends", Value(bv::ValueArray{held(ann)}), true},
        {"friends", held(ann), false},
        {"nickname", Value(Text("A")), false},
        {"name", Value(), true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.key) + " = " + row.value.description().toUtf8());
        if (row.taken) {
            ann->setValueForKey(row.value, Text(row.key));
            EXPECT_EQ(attribute(ann, row.key), row.value);
        } else {
            EXPECT_THROW(ann->setValueForKey(row.value, Text(row.key)), bv::InvalidArgumentException);
        }
    }
    EXPECT_EQ(attribute(ann, "score").number()->kind(), bv::Number::Kind::Double);  // kept as the type says
    try {
        Contexts::createObjectForEntityNamed(*context, Text("Teacher"));
        ADD_FAILURE() << "an unknown entity was inserted";
    } catch (const bv::InvalidArgumentException& exception) {
        EXPECT_STREQ(exception.what(), "The object model has no entity named \u201CTeacher\u201D.");
    }
    context->deleteObject(ann);
    EXPECT_THROW(bv::BVNSManagedObject::createObjectForEntityNamed(*ann, Text("School")),
                 bv::InvalidArgumentException);
    EXPECT_EQ(context->registeredObjects().size(), 1u);
}

}  // namespace
