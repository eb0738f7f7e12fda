// brevant base36 VALUE...: writes each decimal unsigned 64-bit value in base 36, one per line (0 gives an
// empty line: the library writes nothing for zero). brevant base36 --decode TEXT...: prints the unsigned
// decimal value of each base-36 text (either case), read by the library. Decoding takes exactly what
// encoding can write, digits only and at most 2^64 - 1, so the two round-trip; any other text is refused
// as a usage error (the library would answer a meaningless or wrapped number for it).
#include <cstdint>
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
        if (!writeOutput(bv::BVNSString::base36StringForValue(value).toUtf8() + "\n")) break;
    }
    return kExitSuccess;
}

// Whether the text is base-36 digits (either case) whose value fits in 64 unsigned bits.
bool fitsInBase36(const std::string& text) {
    std::uint64_t value = 0;
    for (char c : text) {
        const int digit = c >= '0' && c <= '9'   ? c - '0'
                          : c >= 'a' && c <= 'z' ? c - 'a' + 10
                          : c >= 'A' && c <= 'Z' ? c - 'A' + 10
                                                 : -1;
        if (digit < 0) return false;
        const auto d = static_cast<std::uint64_t>(digit);
        if (value > (UINT64_MAX - d) / 36) return false;
        value = value * 36 + d;
    }
    return true;
}

int decode(const std::vector<std::string>& arguments) {
    for (const std::string& argument : arguments) {
        if (!fitsInBase36(argument)) {
            printError(
                "base36: not a base-36 number of at most 64 bits (digits 0-9 and A-Z, up to "
                "3W5E11264SGSF): \"" +
                argument + "\"");
            return kExitUsage;
        }
    }
    for (const std::string& argument : arguments) {
        // The library sums modulo 2^64 and answers the bits as signed; read them back as unsigned.
        const auto value =
            static_cast<std::uint64_t>(bv::BVNSString::valueForBase36String(bv::Text(argument)));
        if (!writeOutput(std::to_string(value) + "\n")) break;
    }
    return kExitSuccess;
}

void install(CLI::App& app, int* exitCode) {
    auto* command =
        app.add_subcommand("base36", "Write numbers in base 36, or read base-36 texts with --decode");
    auto arguments = std::make_shared<std::vector<std::string>>();
    auto decoding = std::make_shared<bool>(false);
    command->add_flag("-d,--decode", *decoding,
                      "read each TEXT as base 36 and print it as an unsigned decimal");
    command->add_option("VALUE", *arguments, "decimal unsigned 64-bit values (base-36 texts with --decode)")
        ->required();
    command->callback(
        [arguments, decoding, exitCode] { *exitCode = *decoding ? decode(*arguments) : encode(*arguments); });
}

}  // namespace

const RegisterCommand kBase36Command("base36", install);

}  // namespace brevant
