// bv::DateFormatter: writes instants as text (and reads them back) with a fixed pattern or a locale's date
// and time styles, on ICU's formatters.
//
// Two behaviours: the modern one (the default, or 1040), whose formats are Unicode date patterns ("M/d/Y":
// there "Y" is the week-numbering year, not the calendar year), and the legacy one (1000), whose formats
// use percent codes ("%m/%d/%Y %I:%M:%S %p"), translated to a Unicode pattern when the formatter is used.
// Legacy codes: %a %A weekday (short, full), %b %B month name (short, full), %d day 01-31, %e day 1-31,
// %F milliseconds 000-999, %H hour 00-23, %I hour 01-12, %j day of the year 001-366, %m month 01-12,
// %M minute 00-59, %p AM/PM, %S second 00-59, %y year 00-99, %Y year with century, %Z zone name,
// %z zone offset (+hhmm), %% a percent sign; any other code is written as it stands.
// Locale and zone are the process's defaults (ICU's) unless a locale identifier is set. A formatter keeps
// ICU state and is not for use from several threads at once.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "BrevantCocoaExtensions/platform/Date.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv {

class DateFormatter {
  public:
    static constexpr std::int64_t BehaviorDefault = 0;
    static constexpr std::int64_t Behavior10_0 = 1000;  // legacy percent codes
    static constexpr std::int64_t Behavior10_4 = 1040;  // Unicode date patterns

    // Date and time styles; a style outside 1 to 4 counts as NoStyle.
    static constexpr std::int64_t NoStyle = 0;
    static constexpr std::int64_t ShortStyle = 1;
    static constexpr std::int64_t MediumStyle = 2;
    static constexpr std::int64_t LongStyle = 3;
    static constexpr std::int64_t FullStyle = 4;

    DateFormatter();
    ~DateFormatter();
    DateFormatter(DateFormatter&&) noexcept;
    DateFormatter& operator=(DateFormatter&&) noexcept;

    [[nodiscard]] std::int64_t formatterBehavior() const noexcept { return behavior_; }
    void setFormatterBehavior(std::int64_t behavior);
    [[nodiscard]] const Text& dateFormat() const noexcept { return format_; }
    // The format: a Unicode pattern, or percent codes under the legacy behaviour. It wins over the styles.
    void setDateFormat(const Text& format);
    // The locale identifier ("en_US", "us-EN"; "-" reads as "_"); empty for the process's default locale.
    [[nodiscard]] const Text& localeIdentifier() const noexcept { return locale_; }
    void setLocale(const Text& identifier);
    [[nodiscard]] std::int64_t dateStyle() const noexcept { return dateStyle_; }
    void setDateStyle(std::int64_t style);
    [[nodiscard]] std::int64_t timeStyle() const noexcept { return timeStyle_; }
    void setTimeStyle(std::int64_t style);

    // The Unicode pattern the formatter writes with (the translated one under the legacy behaviour).
    [[nodiscard]] Text pattern() const;
    // The instant as text; empty when there is neither a format nor a style.
    [[nodiscard]] Text stringFromDate(Date date) const;
    // The instant the whole text stands for; nullopt when it does not read.
    [[nodiscard]] std::optional<Date> dateFromString(const Text& text) const;

  private:
    struct Impl;
    void changed();
    // Builds the ICU formatter when there is none; false when there is neither a format nor a style.
    [[nodiscard]] bool prepare() const;

    std::int64_t behavior_ = BehaviorDefault;
    Text format_;
    Text locale_;
    std::int64_t dateStyle_ = NoStyle;
    std::int64_t timeStyle_ = NoStyle;
    std::unique_ptr<Impl> impl_;  // the ICU formatter, built on first use after a change
};

}  // namespace bv
