// The current instant: the system clock, or the clock a program or test installed.
#include "BrevantCocoaExtensions/platform/Date.hpp"

#include <chrono>
#include <utility>

namespace bv {

namespace {
std::function<Date()>& installedClock() {
    static std::function<Date()> clock;
    return clock;
}
}  // namespace

Date Date::now() {
    if (const auto& clock = installedClock()) return clock();
    auto since = std::chrono::system_clock::now().time_since_epoch();
    return fromTimeIntervalSince1970(std::chrono::duration<double>(since).count());
}

std::function<Date()> Date::setClock(std::function<Date()> clock) {
    return std::exchange(installedClock(), std::move(clock));
}

}  // namespace bv
