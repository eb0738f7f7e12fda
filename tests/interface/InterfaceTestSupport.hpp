// Test support for scripts, alerts and panels: a temporary application bundle as the main bundle (with an
// identifier and a help book), preferences and home folders under the test's folder, and a speaker that
// records what would be spoken.
#pragma once

#include <cstdlib>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/interface/Speech.hpp"
#include "BrevantCocoaExtensions/platform/Bundle.hpp"
#include "files/FileTestSupport.hpp"

namespace bvtest {

class InterfaceTest : public FileTest {
  protected:
    void SetUp() override {
        FileTest::SetUp();
        folder("Quiz.app/Contents/Resources");
        previousMain_ = bv::Bundle::setMainBundlePath(path("Quiz.app"));
        bv::Bundle::setMainInfoDictionary(
            bv::ValueDictionary{{bv::Text("CFBundleIdentifier"), bv::Text("com.brevant.quiz")},
                                {bv::Text("CFBundleHelpBookName"), bv::Text("QuizHelp")}});
        for (const char* variable : {"XDG_CONFIG_HOME", "HOME"}) {
            const char* value = std::getenv(variable);
            savedEnvironment_.emplace_back(variable, value ? value : "");
        }
        setenv("XDG_CONFIG_HOME", path("config").c_str(), 1);
        setenv("HOME", path("home").c_str(), 1);
        previousSpeaker_ = bv::Speech::setSpeaker([this](const bv::Text& text) {
            spoken_.push_back(text.toUtf8());
            return speaks_;
        });
    }
    void TearDown() override {
        bv::Speech::setSpeaker(previousSpeaker_);
        for (const auto& [variable, value] : savedEnvironment_)
            setenv(variable.c_str(), value.c_str(), 1);
        bv::Bundle::setMainInfoDictionary(std::nullopt);
        bv::Bundle::setMainBundlePath(previousMain_);
        FileTest::TearDown();
    }

    // Makes a file in the application's resources.
    void resource(const std::string& name, const std::string& bytes) const {
        file("Quiz.app/Contents/Resources/" + name, bytes);
    }
    [[nodiscard]] std::string resourcePath(const std::string& name) const {
        return path("Quiz.app/Contents/Resources/" + name);
    }

    std::vector<std::string> spoken_;
    bool speaks_ = true;

  private:
    std::string previousMain_;
    bv::Speech::Speaker previousSpeaker_;
    std::vector<std::pair<std::string, std::string>> savedEnvironment_;
};

}  // namespace bvtest
