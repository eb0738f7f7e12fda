// Linked into the interface tests: a QApplication (headless unless a platform is chosen) that lives while
// the tests run, registered as a GoogleTest environment before main() starts.
#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>
#include <memory>

namespace {
class QtEnvironment : public testing::Environment {
  public:
    void SetUp() override {
        // Offscreen unless the caller asked for a platform, so the tests never need a display.
        setenv("QT_QPA_PLATFORM", "offscreen", 0);
        application_ = std::make_unique<QApplication>(argc_, argv_);
    }
    void TearDown() override { application_.reset(); }

  private:
    int argc_ = 1;
    char name_[16] = "interface-test";
    char* argv_[2] = {name_, nullptr};
    std::unique_ptr<QApplication> application_;
};

const auto* const environment = testing::AddGlobalTestEnvironment(new QtEnvironment);
}  // namespace
