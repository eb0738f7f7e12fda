// brevant qcode CODE...: what the library knows about question type codes. For each code, one line
// with the families it belongs to, whether its answers are scorable, whether it needs the advanced
// answer entry, and what SimpleSequenceForSequence maps it to. Codes are decimal (optionally signed) or
// hexadecimal with 0x; anything else is a usage error and nothing is printed.
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/responses/QuestionCodes.hpp"
#include "Command.hpp"
#include "QuestionFamilies.hpp"

namespace brevant {

namespace {

// A code as decimal or 0x-hexadecimal text, within 32 bits; nullopt for anything else.
std::optional<std::int32_t> parseCode(const std::string& text) {
    std::size_t position = 0;
    bool negative = false;
    if (position < text.size() && (text[position] == '-' || text[position] == '+')) {
        negative = text[position] == '-';
        ++position;
    }
    int base = 10;
    if (text.size() > position + 1 && text[position] == '0' &&
        (text[position + 1] == 'x' || text[position + 1] == 'X')) {
        base = 16;
        position += 2;
    }
    if (position >= text.size()) return std::nullopt;
    std::int64_t magnitude = 0;
    for (; position < text.size(); ++position) {
        char c = text[position];
        int digit = c >= '0' && c <= '9'                 ? c - '0'
                    : base == 16 && c >= 'a' && c <= 'f' ? c - 'a' + 10
                    : base == 16 && c >= 'A' && c <= 'F' ? c - 'A' + 10
                                                         : -1;
        if (digit < 0) return std::nullopt;
        magnitude = magnitude * base + digit;
        if (magnitude > std::int64_t{INT32_MAX} + 1) return std::nullopt;
    }
    std::int64_t value = negative ? -magnitude : magnitude;
    if (value > INT32_MAX) return std::nullopt;
    return static_cast<std::int32_t>(value);
}

// "164 (0xA4)"; negative codes without the hexadecimal form.
std::string codeText(std::int64_t code) {
    char buffer[48];
    if (code < 0) {
        std::snprintf(buffer, sizeof buffer, "%" PRId64, code);
    } else {
        std::snprintf(buffer, sizeof buffer, "%" PRId64 " (0x%" PRIX64 ")", code, code);
    }
    return buffer;
}

std::string describe(std::int32_t code) {
    std::uint32_t mapped = bv::SimpleSequenceForSequence(static_cast<std::uint32_t>(code));
    std::string mapping = mapped == static_cast<std::uint32_t>(code)
                              ? "unchanged"
                              : codeText(static_cast<std::int64_t>(mapped));
    return codeText(code) + ": families: " + questionFamilies(code) +
           "; scorable: " + (bv::IsQuestionCodeScorable(code) ? "yes" : "no") +
           "; advanced answer: " + (bv::IsQuestionCodeAdvancedAnswer(code) ? "yes" : "no") +
           "; simple sequence: " + mapping + "\n";
}

int run(const std::vector<std::string>& arguments) {
    std::vector<std::int32_t> codes;
    for (const std::string& argument : arguments) {
        std::optional<std::int32_t> code = parseCode(argument);
        if (!code) {
            printError("qcode: not a question type code: \"" + argument +
                       "\" (give a 32-bit decimal or 0x number)");
            return kExitUsage;
        }
        codes.push_back(*code);
    }
    for (std::int32_t code : codes) {
        if (!writeOutput(describe(code))) break;
    }
    return kExitSuccess;
}

void install(CLI::App& app, int* exitCode) {
    auto* command =
        app.add_subcommand("qcode", "Show the families, scoring and answer entry of question type codes");
    auto arguments = std::make_shared<std::vector<std::string>>();
    command->add_option("CODE", *arguments, "question type codes: decimal, or hexadecimal with 0x")
        ->required();
    command->callback([arguments, exitCode] { *exitCode = run(*arguments); });
}

}  // namespace

const RegisterCommand kQcodeCommand("qcode", install);

}  // namespace brevant
