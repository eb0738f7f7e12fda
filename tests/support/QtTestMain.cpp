// The main() of the interface tests: a QApplication (headless unless a platform is chosen), then the tests.
#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>

int main(int argc, char** argv) {
    // Offscreen unless the caller asked for a platform, so listing and running tests never needs a display.
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
