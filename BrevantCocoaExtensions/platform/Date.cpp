// The current instant from the system clock.
#include "BrevantCocoaExtensions/platform/Date.hpp"

#include <chrono>

namespace bv {

Date Date::now() {
    auto since = std::chrono::system_clock::now().time_since_epoch();
    return fromTimeIntervalSince1970(std::chrono::duration<double>(since).count());
}

}  // namespace bv
