// brevant base64 encode|decode [FILE|-] [--lines]: Base64 as the library's coders write and read it.
// Encoding writes one line (or 64-character lines joined by "\r\n" with --lines) and a final line feed;
// decoding follows the library's lenient rules (other characters skipped, the first "=" ends the data)
// and writes the bytes unchanged. Standard input is read for "-" or when no FILE is given. Both stream
// in fixed pieces, so memory stays small whatever the input's size; a fault found part-way (a byte
// outside ASCII when decoding) ends the run with exit 1 after the bytes decoded before it.
#include <memory>
#include <string>

#include "Command.hpp"
#include "StreamCoders.hpp"

namespace brevant {

namespace {

struct Base64Options {
    std::string mode;
    std::string file = "-";
    bool lines = false;
};

constexpr std::size_t kEncodeChunk = 48 * 16384;  // whole 64-character lines
constexpr std::size_t kDecodeChunk = 1 << 20;

const std::uint8_t* bytesOf(const char* chars) {
    return reinterpret_cast<const std::uint8_t*>(chars);
}

int run(const Base64Options& options) {
    std::string out;
    std::string error;
    bool clean = true;
    bool read;
    if (options.mode == "encode") {
        Base64Encoder encoder(options.lines);
        read = forEachChunk(
            options.file, kEncodeChunk, "Encoding",
            [&](const char* bytes, std::size_t length) {
                out.clear();
                encoder.add(bytesOf(bytes), length, &out);
                return writeOutput(out);
            },
            &error);
        if (read) writeOutput("\n");
    } else {
        Base64Decoder decoder;
        read = forEachChunk(
            options.file, kDecodeChunk, "Decoding",
            [&](const char* bytes, std::size_t length) {
                out.clear();
                clean = decoder.add(bytesOf(bytes), length, &out);
                return writeOutput(out) && clean;
            },
            &error);
    }
    if (!read) {
        printError("base64: " + error);
        return kExitFailure;
    }
    if (!clean) {
        printError("base64: the input holds non-ASCII bytes, so it is not Base64 text");
        return kExitFailure;
    }
    return kExitSuccess;
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
