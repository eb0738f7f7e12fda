// Timestamps of the current moment, written with legacy percent codes.
#include "BrevantCocoaExtensions/dates/BVNSCalendarDate.hpp"

#include "BrevantCocoaExtensions/dates/DateFormatter.hpp"
#include "BrevantCocoaExtensions/platform/Date.hpp"

namespace bv::BVNSCalendarDate {

namespace {

Text nowWithLegacyFormat(const char* format) {
    DateFormatter formatter;
    formatter.setFormatterBehavior(DateFormatter::Behavior10_0);
    formatter.setDateFormat(format);
    return formatter.stringFromDate(Date::now());
}

}  // namespace

Text timestamp() {
    return nowWithLegacyFormat("%m/%d/%y %H:%M:%S.%F");
}

Text timestampWithoutSpace() {
    return nowWithLegacyFormat("%d%b%Y_%H%M%S");
}

}  // namespace bv::BVNSCalendarDate
