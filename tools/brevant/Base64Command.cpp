// brevant base64 encode|decode [FILE|-] [--lines]: Base64 through the library's own coders. Encoding
// writes one line (or 64-character lines joined by "\r\n" with --lines) and a final line feed; decoding
// follows the library's lenient rules (other characters skipped, the first "=" ends the data) and writes
// the bytes unchanged. Standard input is read for "-" or when no FILE is given.
#include <memory>
#include <string>

#include "BrevantCocoaExtensions/text/BVNSData.hpp"
#include "BrevantCocoaExtensions/text/Base64Encoding.hpp"
#include "Command.hpp"

namespace brevant {

namespace {

struct Base64Options {
    std::string mode;
    std::string file = "-";
    bool lines = false;
};

// The ASCII text as bytes (the encoders' output is ASCII only).
std::string asciiOf(const bv::Text& text) {
    std::string bytes(text.length(), '\0');
    for (std::size_t i = 0; i < text.length(); ++i)
        bytes[i] = static_cast<char>(text[i]);
    return bytes;
}

bool hasNonAscii(const std::string& bytes) {
    for (const char byte : bytes)
        if (static_cast<unsigned char>(byte) >= 0x80) return true;
    return false;
}

int run(const Base64Options& options) {
    std::string input;
    std::string error;
    if (!readInput(options.file, &input, &error)) {
        printError("base64: " + error);
        return kExitFailure;
    }
    if (options.mode == "encode") {
        const bv::ByteData data(input.begin(), input.end());
        input.clear();
        input.shrink_to_fit();
        const bv::Text encoded = bv::BVNSData::encodedBase64StringWithNewLines(data, options.lines);
        return writeOutput(asciiOf(encoded) + "\n") ? kExitSuccess : kExitFailure;
    }
    if (hasNonAscii(input)) {
        printError("base64: the input holds non-ASCII bytes, so it is not Base64 text");
        return kExitFailure;
    }
    const bv::ByteData data = bv::Base64Encoding::dataWithBase64EncodedString(bv::Text::fromLatin1(input));
    return writeOutput(data.data(), data.size()) ? kExitSuccess : kExitFailure;
}

void install(CLI::App& app, int* exitCode) {
    auto* command =
        app.add_subcommand("base64", "Encode bytes as Base64 text, or decode Base64 text to bytes");
    auto options = std::make_shared<Base64Options>();
    command->add_option("MODE", options->mode, "encode or decode")
        ->required()
        ->check(CLI::IsMember({"encode", "decode"}));
    command->add_option("FILE", options->file, "the input file; standard input for \"-\" or when absent");
    command->add_flag("--lines", options->lines, "encode in lines of 64 characters joined by CR LF");
    command->callback([options, exitCode] { *exitCode = run(*options); });
}

}  // namespace

const RegisterCommand kBase64Command("base64", install);

}  // namespace brevant
