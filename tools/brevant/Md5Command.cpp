// brevant md5 FILE...|-: the MD5 digest of each file in md5sum's format ("DIGEST  NAME"), so that
// `md5sum -c` checks the output. Files stream through the digest in pieces, so any size works. A name
// holding a backslash, a line feed or a carriage return is escaped as md5sum does ("\" before the line).
// With --json: [{"file": NAME, "md5": DIGEST}, ...]. An unreadable file is reported and skipped (exit 1).
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/platform/Md5.hpp"
#include "Command.hpp"

namespace brevant {

namespace {

struct Md5Options {
    std::vector<std::string> files{"-"};
    bool json = false;
};

// The digest of everything readable from the descriptor, or nullopt with errno set.
std::optional<std::string> digestOf(int descriptor) {
    constexpr std::size_t kChunk = 1 << 20;
    const auto buffer = std::make_unique<char[]>(kChunk);
    bv::Md5 md5;
    for (;;) {
        const ssize_t count = read(descriptor, buffer.get(), kChunk);
        if (count == 0) break;
        if (count < 0) {
            if (errno == EINTR) continue;
            return std::nullopt;
        }
        md5.update(buffer.get(), static_cast<std::size_t>(count));
    }
    return bv::Md5::hex(md5.finish());
}

std::optional<std::string> digestOfFile(const std::string& path) {
    if (path == "-") return digestOf(STDIN_FILENO);
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return std::nullopt;
    posix_fadvise(descriptor, 0, 0, POSIX_FADV_SEQUENTIAL);
    auto digest = digestOf(descriptor);
    const int savedErrno = errno;
    close(descriptor);
    errno = savedErrno;
    return digest;
}

// One line of md5sum's output.
std::string md5sumLine(const std::string& digest, const std::string& name) {
    std::string escaped;
    for (const char c : name) {
        if (c == '\\')
            escaped += "\\\\";
        else if (c == '\n')
            escaped += "\\n";
        else if (c == '\r')
            escaped += "\\r";
        else
            escaped += c;
    }
    return (escaped.size() != name.size() ? "\\" : "") + digest + "  " + escaped + "\n";
}

int run(const Md5Options& options) {
    int exitCode = kExitSuccess;
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const std::string& file : options.files) {
        const auto digest = digestOfFile(file);
        if (!digest) {
            printError(file + ": " + fileErrorText(errno));
            exitCode = kExitFailure;
            continue;
        }
        if (options.json)
            list.push_back({{"file", file}, {"md5", *digest}});
        else if (!writeOutput(md5sumLine(*digest, file)))
            return kExitFailure;  // the output is closed
    }
    if (options.json && !writeOutput(list.dump(2) + "\n")) return kExitFailure;
    return exitCode;
}

void install(CLI::App& app, int* exitCode) {
    auto* command = app.add_subcommand("md5", "Print the MD5 digest of each file, as md5sum does");
    auto options = std::make_shared<Md5Options>();
    command->add_option("FILE", options->files, "the files; standard input for \"-\" or when none is given");
    command->add_flag("--json", options->json, "print a JSON list of {file, md5}");
    command->callback([options, exitCode] { *exitCode = run(*options); });
}

}  // namespace

const RegisterCommand kMd5Command("md5", install);

}  // namespace brevant
