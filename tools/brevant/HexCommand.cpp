// brevant hex encode|decode [FILE|-] [--lower] [--strict]: hexadecimal text as the library's coders write
// and read it. Encoding writes two upper-case digits per byte (lower-case with --lower) and a final line
// feed. Decoding skips every character that is not a digit and drops an odd last digit; with --strict the
// text must be digits only (a final line break aside) in an even count. Decoded bytes are written
// unchanged. Standard input is read for "-" or when no FILE is given. Both stream in fixed pieces; a
// --strict fault found part-way ends the run with exit 1 after the bytes decoded before it.
#include <memory>
#include <string>

#include "Command.hpp"
#include "StreamCoders.hpp"

namespace brevant {

namespace {

struct HexOptions {
    std::string mode;
    std::string file = "-";
    bool lower = false;
    bool strict = false;
};

constexpr std::size_t kChunk = 1 << 19;

int run(const HexOptions& options) {
    std::string out;
    std::string error;
    bool clean = true;
    bool read;
    if (options.mode == "encode") {
        read = forEachChunk(
            options.file, kChunk, "Encoding",
            [&](const char* bytes, std::size_t length) {
                out.clear();
                appendHex(reinterpret_cast<const std::uint8_t*>(bytes), length, !options.lower, &out);
                return writeOutput(out);
            },
            &error);
        if (read) writeOutput("\n");
    } else {
        HexDecoder decoder(options.strict);
        read = forEachChunk(
            options.file, kChunk, "Decoding",
            [&](const char* bytes, std::size_t length) {
                out.clear();
                clean = decoder.add(reinterpret_cast<const std::uint8_t*>(bytes), length, &out);
                return writeOutput(out) && clean;
            },
            &error);
        if (read && clean) {
            out.clear();
            clean = decoder.finish(&out);
            writeOutput(out);
        }
    }
    if (!read) {
        printError("hex: " + error);
        return kExitFailure;
    }
    if (!clean) {
        printError("hex: the input is not an even number of hexadecimal digits and nothing else");
        return kExitFailure;
    }
    return kExitSuccess;
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
