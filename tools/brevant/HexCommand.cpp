// brevant hex encode|decode [FILE|-] [--lower] [--strict]: hexadecimal text through the library's own
// coders. Encoding writes two upper-case digits per byte (lower-case with --lower) and a final line feed.
// Decoding skips every character that is not a digit and drops an odd last digit; with --strict the text
// must be digits only (a final line break aside) in an even count. Decoded bytes are written unchanged.
// Standard input is read for "-" or when no FILE is given.
#include <memory>
#include <optional>
#include <string>

#include "BrevantCocoaExtensions/text/BVNSData.hpp"
#include "Command.hpp"

namespace brevant {

namespace {

struct HexOptions {
    std::string mode;
    std::string file = "-";
    bool lower = false;
    bool strict = false;
};

std::string asciiOf(const bv::Text& text) {
    std::string bytes(text.length(), '\0');
    for (std::size_t i = 0; i < text.length(); ++i)
        bytes[i] = static_cast<char>(text[i]);
    return bytes;
}

int run(const HexOptions& options) {
    std::string input;
    std::string error;
    if (!readInput(options.file, &input, &error)) {
        printError("hex: " + error);
        return kExitFailure;
    }
    if (options.mode == "encode") {
        const bv::ByteData data(input.begin(), input.end());
        input.clear();
        input.shrink_to_fit();
        const bv::Text hex = bv::BVNSData::hexStringRepresentationUppercase(data, !options.lower);
        return writeOutput(asciiOf(hex) + "\n") ? kExitSuccess : kExitFailure;
    }
    if (options.strict) {
        if (!input.empty() && input.back() == '\n') input.pop_back();
        if (!input.empty() && input.back() == '\r') input.pop_back();
    }
    const bv::Text text = bv::Text::fromLatin1(input);
    const std::optional<bv::ByteData> data =
        bv::BVNSData::initWithHexStringIgnoreOtherCharacters(text, !options.strict);
    if (!data) {
        printError("hex: the input is not an even number of hexadecimal digits and nothing else");
        return kExitFailure;
    }
    return writeOutput(data->data(), data->size()) ? kExitSuccess : kExitFailure;
}

void install(CLI::App& app, int* exitCode) {
    auto* command =
        app.add_subcommand("hex", "Encode bytes as hexadecimal text, or decode hexadecimal text to bytes");
    auto options = std::make_shared<HexOptions>();
    command->add_option("MODE", options->mode, "encode or decode")
        ->required()
        ->check(CLI::IsMember({"encode", "decode"}));
    command->add_option("FILE", options->file, "the input file; standard input for \"-\" or when absent");
    command->add_flag("--lower", options->lower, "encode with lower-case digits");
    command->add_flag("--strict", options->strict, "decode only digits, in an even count");
    command->callback([options, exitCode] { *exitCode = run(*options); });
}

}  // namespace

const RegisterCommand kHexCommand("hex", install);

}  // namespace brevant
