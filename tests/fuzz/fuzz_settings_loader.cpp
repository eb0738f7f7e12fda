// libFuzzer program: loading the shared settings file.
// Needs: files/TolvernSettings.cpp
#include "harness/SettingsLoader.hpp"

BV_FUZZ_TARGET(bv::fuzz::settingsLoader)
