// Interface files: Qt Designer forms loaded from a bundle's resources, kept alive by the returned list or
// by a widget owner, and damaged files answered with null and the bundle's log line.
#include <gtest/gtest.h>

#include <unistd.h>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <filesystem>
#include <fstream>

#include "BrevantCocoaExtensions/files/BVNSBundle.hpp"
#include "BrevantCocoaExtensions/interface/QtObjectHandle.hpp"
#include "BrevantCocoaExtensions/interface/UiFileLoader.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"

using namespace bv;

namespace {
constexpr const char* panelForm = R"(<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0">
 <class>Panel</class>
 <widget class="QWidget" name="Panel">
  <layout class="QVBoxLayout" name="layout">
   <item><widget class="QLabel" name="prompt"><property name="text"><string>Ready?</string></property></widget></item>
   <item><widget class="QPushButton" name="okButton"><property name="text"><string>OK</string></property></widget></item>
  </layout>
 </widget>
</ui>
)";

// A bundle in a temporary folder with the loader installed; forms are written into its resources.
class UiFiles : public testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::create_directories(root_ / "Contents/Resources");
        previous_ = UiFileLoader::install();
    }
    void TearDown() override {
        BVNSBundle::setInterfaceFileLoader(previous_);
        std::filesystem::remove_all(root_);
    }
    void write(const std::string& name, const std::string& contents) {
        std::ofstream(root_ / "Contents/Resources" / (name + ".ui"), std::ios::binary) << contents;
    }
    std::optional<ValueArray> load(const char* name, const std::shared_ptr<Object>& owner = nullptr) {
        return BVNSBundle::topLevelNibObjectsForLoadedNibNamedOwnedBy(Bundle(root_.string()), Text(name),
                                                                      owner);
    }

    std::filesystem::path root_ =
        std::filesystem::temp_directory_path() / ("bv-ui-" + std::to_string(::getpid()) + ".app");
    BVNSBundle::InterfaceFileLoader previous_;
};
}  // namespace

TEST_F(UiFiles, TheListOrAWidgetOwnerKeepsTheForm) {
    write("Panel", panelForm);
    auto objects = load("Panel");
    ASSERT_TRUE(objects);
    ASSERT_EQ(objects->size(), 1u);
    const QPointer<QWidget> form = qObjectOf<QWidget>((*objects)[0]);
    ASSERT_FALSE(form.isNull());
    EXPECT_EQ((*objects)[0].description(), Text("QWidget \"Panel\""));
    EXPECT_EQ(form->findChild<QPushButton*>(QStringLiteral("okButton"))->text(), QStringLiteral("OK"));
    EXPECT_EQ(form->parent(), nullptr);
    objects.reset();
    EXPECT_TRUE(form.isNull());  // the list was its only keeper

    auto owner = std::make_unique<QWidget>();
    auto owned = load("Panel", QtObjectHandle::borrowing(owner.get()));
    ASSERT_TRUE(owned);
    const QPointer<QWidget> child = qObjectOf<QWidget>((*owned)[0]);
    EXPECT_EQ(child->parent(), owner.get());
    owned.reset();
    EXPECT_FALSE(child.isNull());  // the owner keeps it too
    owner.reset();
    EXPECT_TRUE(child.isNull());
}

TEST_F(UiFiles, DamagedFilesAnswerNullWithTheLogLine) {
    const std::pair<const char*, std::string> files[] = {
        {"Empty", ""},
        {"Truncated", std::string(panelForm).substr(0, 120)},
        {"NotAForm", "<html><body/></html>"},
        {"Binary", std::string("\x00\xff\xfe<ui", 6)},
    };
    std::vector<std::string> lines;
    const LogSink previous = setLogSink([&](const std::string& line) { lines.push_back(line); });
    for (const auto& [name, contents] : files) {
        write(name, contents);
        EXPECT_FALSE(load(name)) << name;
    }
    EXPECT_FALSE(load("Missing"));
    BVNSBundle::setInterfaceFileLoader({});
    write("Panel", panelForm);
    EXPECT_FALSE(load("Panel"));  // no loader installed
    setLogSink(previous);
    EXPECT_EQ(lines, (std::vector<std::string>{"Empty Nib failed to load!", "Truncated Nib failed to load!",
                                               "NotAForm Nib failed to load!", "Binary Nib failed to load!",
                                               "Missing Nib failed to load!", "Panel Nib failed to load!"}));
}
