// brevant base36 VALUE...: writes each decimal unsigned 64-bit value in base 36, one per line (0 gives an
// empty line: the library writes nothing for zero). brevant base36 --decode TEXT...: prints the value of
// each base-36 text as a signed decimal, read as the library reads it (either case; a character outside
// the digits is not rejected, and values past 2^63 - 1 come out negative).
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/text/BVNSString.hpp"
#include "Command.hpp"

namespace brevant {

namespace {

// Plain decimal digits within 64 bits; nullopt for anything else (signs, spaces, overflow, "").
std::optional<std::uint64_t> parseUnsigned(const std::string& text) {
    if (text.empty()) return std::nullopt;
    std::uint64_t value = 0;
    for (char c : text) {
        if (c < '0' || c > '9') return std::nullopt;
        const auto digit = static_cast<std::uint64_t>(c - '0');
        if (value > (UINT64_MAX - digit) / 10) return std::nullopt;
        value = value * 10 + digit;
    }
    return value;
}

int encode(const std::vector<std::string>& arguments) {
    std::vector<std::uint64_t> values;
    for (const std::string& argument : arguments) {
        std::optional<std::uint64_t> value = parseUnsigned(argument);
        if (!value) {
            printError("base36: not a decimal unsigned 64-bit integer: \"" + argument + "\"");
            return kExitUsage;
        }
        values.push_back(*value);
    }
    for (std::uint64_t value : values) {
        if (!writeOutput(bv::BVNSString::base36StringForValue(value).toUtf8() + "\n")) return kExitFailure;
    }
    return kExitSuccess;
}

int decode(const std::vector<std::string>& arguments) {
    for (const std::string& argument : arguments) {
        char line[32];
        std::snprintf(line, sizeof line, "%" PRId64 "\n",
                      bv::BVNSString::valueForBase36String(bv::Text(argument)));
        if (!writeOutput(line)) return kExitFailure;
    }
    return kExitSuccess;
}

void install(CLI::App& app, int* exitCode) {
    auto* command =
        app.add_subcommand("base36", "Write numbers in base 36, or read base-36 texts with --decode");
    auto arguments = std::make_shared<std::vector<std::string>>();
    auto decoding = std::make_shared<bool>(false);
    command->add_flag("-d,--decode", *decoding, "read each TEXT as base 36 and print it as a signed decimal");
    command->add_option("VALUE", *arguments, "decimal unsigned 64-bit values (base-36 texts with --decode)")
        ->required();
    command->callback(
        [arguments, decoding, exitCode] { *exitCode = *decoding ? decode(*arguments) : encode(*arguments); });
}

}  // namespace

const RegisterCommand kBase36Command("base36", install);

}  // namespace brevant
