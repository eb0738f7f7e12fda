// Shared plumbing of the subcommands: the registry, chunked input, checked output and terminal escapes.
#include "Command.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "Chart.hpp"

namespace brevant {

namespace {

int outputError = 0;  // errno of the first failed write of standard output, 0 while all went well

bool rememberOutputError() {
    if (outputError == 0) outputError = errno != 0 ? errno : EIO;
    return false;
}

void appendEscape(std::string& out, unsigned code) {
    switch (code) {
        case '\t':
            out += "\\t";
            return;
        case '\n':
            out += "\\n";
            return;
        case '\r':
            out += "\\r";
            return;
        case 0x1B:
            out += "\\e";
            return;
        default:
            break;
    }
    char escape[8];
    std::snprintf(escape, sizeof escape, "\\u%04X", code);
    out += escape;
}

}  // namespace

std::vector<std::pair<std::string, CommandInstaller>>& commandRegistry() {
    static std::vector<std::pair<std::string, CommandInstaller>> registry;
    return registry;
}

bool readInput(const std::string& path, std::string* contents, std::string* error) {
    InputFile input;
    if (!input.open(path, error)) return false;
    contents->clear();
    if (input.size() > 0) contents->reserve(input.size());
    char buffer[1 << 16];
    while (std::size_t got = input.read(buffer, sizeof buffer))
        contents->append(buffer, got);
    if (input.failed()) {
        *error = input.name() + ": " + std::strerror(errno);
        return false;
    }
    return true;
}

bool writeOutput(const void* bytes, std::size_t length) {
    if (outputError != 0) return false;
    if (length == 0) return true;
    errno = 0;
    if (std::fwrite(bytes, 1, length, stdout) == length) return true;
    return rememberOutputError();
}

bool flushOutput() {
    if (outputError != 0) return false;
    errno = 0;
    if (std::fflush(stdout) == 0) return true;
    return rememberOutputError();
}

bool outputFailed() {
    return outputError != 0;
}

int finishOutput(int exitCode) {
    flushOutput();
    if (outputError == 0) return exitCode;
    if (outputError == EPIPE) return kExitSuccess;  // the reader went away: end quietly
    printError(std::string("write error: ") + std::strerror(outputError));
    return kExitFailure;
}

void printError(const std::string& message) {
    std::fprintf(stderr, "brevant: %s\n", message.c_str());
}

std::string fileErrorText(int error) {
    return error == ENOENT ? std::string("no such file") : std::string(std::strerror(error));
}

InputFile::~InputFile() {
    if (owned_ && descriptor_ >= 0) ::close(descriptor_);
}

bool InputFile::open(const std::string& path, std::string* error) {
    name_ = path == "-" ? "standard input" : path;
    if (path == "-") {
        descriptor_ = STDIN_FILENO;
    } else {
        descriptor_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        owned_ = descriptor_ >= 0;
        if (descriptor_ < 0) {
            *error = path + ": " + fileErrorText(errno);
            return false;
        }
    }
    struct stat status {};
    if (::fstat(descriptor_, &status) != 0) {
        *error = name_ + ": " + std::strerror(errno);
        return false;
    }
    if (S_ISDIR(status.st_mode)) {
        *error = name_ + ": is a folder, not a file";
        return false;
    }
    regular_ = S_ISREG(status.st_mode);
    size_ = regular_ ? static_cast<std::uint64_t>(status.st_size) : 0;
    return true;
}

std::size_t InputFile::read(char* buffer, std::size_t capacity) {
    for (;;) {
        const ssize_t got = ::read(descriptor_, buffer, capacity);
        if (got >= 0) return static_cast<std::size_t>(got);
        if (errno == EINTR) continue;
        failed_ = true;
        return 0;
    }
}

std::size_t InputFile::readFully(char* buffer, std::size_t capacity) {
    std::size_t filled = 0;
    while (filled < capacity) {
        const std::size_t got = read(buffer + filled, capacity - filled);
        if (got == 0) break;
        filled += got;
    }
    return filled;
}

bool forEachChunk(const std::string& path, std::size_t chunkSize, const std::string& label,
                  const std::function<bool(const char* bytes, std::size_t length)>& onChunk,
                  std::string* error) {
    InputFile input;
    if (!input.open(path, error)) return false;
    ProgressBar progress(label + " " + input.name(), input.size());
    std::unique_ptr<char[]> buffer(new char[chunkSize]);
    std::uint64_t done = 0;
    for (;;) {
        const std::size_t got = input.readFully(buffer.get(), chunkSize);
        if (input.failed()) {
            *error = input.name() + ": " + std::strerror(errno);
            return false;
        }
        done += got;
        progress.update(done);
        if (!onChunk(buffer.get(), got) || got < chunkSize || outputFailed()) return true;
    }
}

std::string escapeControlCharacters(std::string_view utf8) {
    const bool plain = std::none_of(utf8.begin(), utf8.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 || byte == 0x7F || byte == 0xC2;
    });
    if (plain) return std::string(utf8);
    std::string out;
    out.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        if (byte < 0x20 || byte == 0x7F) {
            appendEscape(out, byte);
        } else if (byte == 0xC2 && i + 1 < utf8.size() && static_cast<unsigned char>(utf8[i + 1]) >= 0x80 &&
                   static_cast<unsigned char>(utf8[i + 1]) <= 0x9F) {
            appendEscape(out, static_cast<unsigned char>(utf8[++i]));  // a C1 control, U+0080 to U+009F
        } else {
            out += static_cast<char>(byte);
        }
    }
    return out;
}

}  // namespace brevant
