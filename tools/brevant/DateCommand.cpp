// brevant date TEXT...: reads each RFC 3339 date-time text as the library reads it and prints its
// components, its offset and the instant it stands for in UTC (or JSON with --json); "-" reads one text
// per line from standard input. brevant date --now: the suite's two timestamp texts of this moment.
// A text in which not even a date reads is reported and makes the exit code 1; the others still print.
#include <nlohmann/json.hpp>

#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/dates/BVNSCalendarDate.hpp"
#include "BrevantCocoaExtensions/dates/RFC3339DateTime.hpp"
#include "Command.hpp"

namespace brevant {

namespace {

using bv::UndefinedDateComponent;

struct Options {
    std::vector<std::string> texts;
    bool now = false;
    bool json = false;
};

// A component as the text gave it: the reader keeps the value in the low 32 bits.
std::optional<std::int64_t> asWritten(std::int64_t component, bool thirtyTwoBits = true) {
    if (component == UndefinedDateComponent) return std::nullopt;
    return thirtyTwoBits ? static_cast<std::int32_t>(component) : component;
}

// The texts to read: the arguments, with "-" replaced by the lines of standard input.
std::vector<std::string> textsToRead(const std::vector<std::string>& arguments) {
    std::vector<std::string> texts;
    for (const std::string& argument : arguments) {
        if (argument != "-") {
            texts.push_back(argument);
            continue;
        }
        std::string line;
        while (std::getline(std::cin, line)) {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            texts.push_back(line);
        }
    }
    return texts;
}

std::string utcText(bv::Date instant) {
    return bv::RFC3339DateTime::dateTimeWithDateTimeZone(instant, bv::TimeZone::timeZoneWithName("Universal"))
        .RFC3339String()
        .toUtf8();
}

std::string offsetText(const bv::RFC3339DateTime& value) {
    if (value.isUniversalTime()) return "Z (universal time)";
    const std::int64_t offset = value.offsetSeconds();
    if (offset == UndefinedDateComponent)
        return "unknown (-00:00): the instant is read in the local time zone";
    const std::int64_t magnitude = offset < 0 ? -offset : offset;
    char line[96];
    std::snprintf(line, sizeof line, "%c%02" PRId64 ":%02" PRId64 " (%" PRId64 " seconds)",
                  offset < 0 ? '-' : '+', magnitude / 3600, magnitude / 60 % 60, offset);
    return line;
}

// Whole seconds as an integer, anything else as a number with its fraction.
nlohmann::ordered_json secondsJson(double seconds) {
    const bool whole = std::fabs(seconds) < 9e15 && seconds == std::floor(seconds);
    return whole ? nlohmann::ordered_json(static_cast<std::int64_t>(seconds))
                 : nlohmann::ordered_json(seconds);
}

nlohmann::ordered_json asJson(const std::string& text, const bv::RFC3339DateTime& value) {
    const bv::DateComponents& parts = *value.dateComponents();
    nlohmann::ordered_json out = nlohmann::ordered_json::object();
    auto component = [](std::optional<std::int64_t> v) { return v ? nlohmann::ordered_json(*v) : nullptr; };
    out["text"] = text;
    out["year"] = component(asWritten(parts.year));
    out["month"] = component(asWritten(parts.month));
    out["day"] = component(asWritten(parts.day));
    out["hour"] = component(asWritten(parts.hour));
    out["minute"] = component(asWritten(parts.minute));
    out["second"] = component(asWritten(parts.second, false));
    out["hasTime"] = value.hasTime();
    out["universal"] = value.isUniversalTime();
    out["offsetSeconds"] = component(asWritten(value.offsetSeconds(), false));
    const std::optional<bv::Date> instant = value.date();
    out["utc"] = instant ? nlohmann::ordered_json(utcText(*instant)) : nullptr;
    out["secondsSince1970"] = instant ? secondsJson(instant->timeIntervalSince1970()) : nullptr;
    return out;
}

std::string asLines(const std::string& text, const bv::RFC3339DateTime& value) {
    const bv::DateComponents& parts = *value.dateComponents();
    auto component = [](const char* name, std::optional<std::int64_t> v) {
        return std::string(name) + " " + (v ? std::to_string(*v) : std::string("none"));
    };
    std::string out = text + "\n  " + component("year", asWritten(parts.year)) + "  " +
                      component("month", asWritten(parts.month)) + "  " +
                      component("day", asWritten(parts.day));
    if (value.hasTime()) {
        out += "  " + component("hour", asWritten(parts.hour)) + "  " +
               component("minute", asWritten(parts.minute)) + "  " +
               component("second", asWritten(parts.second, false)) + "\n  offset " + offsetText(value);
    } else {
        out += "  (no time: the date stands for noon UTC)";
    }
    const std::optional<bv::Date> instant = value.date();
    char seconds[64] = "";
    if (instant)
        std::snprintf(seconds, sizeof seconds, " (%.0f seconds since 1970)",
                      instant->timeIntervalSince1970());
    return out + "\n  UTC " + (instant ? utcText(*instant) + seconds : std::string("none")) + "\n";
}

int readTexts(const Options& options) {
    int status = kExitSuccess;
    nlohmann::ordered_json all = nlohmann::ordered_json::array();
    std::string lines;
    for (const std::string& text : textsToRead(options.texts)) {
        const bv::RFC3339DateTime value = bv::RFC3339DateTime::dateTimeWithRFC3339String(bv::Text(text));
        const bv::DateComponents& parts = *value.dateComponents();
        if (parts.year == UndefinedDateComponent || parts.month == UndefinedDateComponent ||
            parts.day == UndefinedDateComponent) {
            printError("date: \"" + text + "\": not an RFC 3339 date-time (no year-month-day)");
            status = kExitFailure;
            continue;
        }
        if (options.json) {
            all.push_back(asJson(text, value));
        } else {
            lines += asLines(text, value);
        }
    }
    const std::string out = options.json ? all.dump(2) + "\n" : lines;
    if (!(options.json && all.empty() && status != kExitSuccess) && !writeOutput(out)) return kExitFailure;
    return status;
}

int printNow(const Options& options) {
    const std::string timestamp = bv::BVNSCalendarDate::timestamp().toUtf8();
    const std::string withoutSpace = bv::BVNSCalendarDate::timestampWithoutSpace().toUtf8();
    std::string out;
    if (options.json) {
        nlohmann::ordered_json object = {{"timestamp", timestamp}, {"timestampWithoutSpace", withoutSpace}};
        out = object.dump(2) + "\n";
    } else {
        out = "timestamp              " + timestamp + "\ntimestampWithoutSpace  " + withoutSpace + "\n";
    }
    return writeOutput(out) ? kExitSuccess : kExitFailure;
}

int run(const Options& options) {
    if (options.now == !options.texts.empty()) {
        printError("date: give RFC 3339 texts or --now (one of them)");
        return kExitUsage;
    }
    return options.now ? printNow(options) : readTexts(options);
}

void install(CLI::App& app, int* exitCode) {
    auto* command = app.add_subcommand(
        "date", "Read RFC 3339 date-times as the library does, or print the suite's timestamps with --now");
    auto options = std::make_shared<Options>();
    command->add_option("TEXT", options->texts,
                        "RFC 3339 date-time texts (\"-\": one per line from standard input)");
    command->add_flag("--now", options->now, "print the suite's two timestamp texts of this moment");
    command->add_flag("--json", options->json, "print JSON");
    command->callback([options, exitCode] { *exitCode = run(*options); });
}

}  // namespace

const RegisterCommand kDateCommand("date", install);

}  // namespace brevant
