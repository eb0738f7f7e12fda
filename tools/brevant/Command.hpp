// How a subcommand joins the brevant tool, and the plumbing every subcommand shares.
//
// Each subcommand file registers a function that adds its CLI11 subcommand, and main() calls every
// registered function. Exit codes: 0 success, 1 a failure of the work, 2 wrong usage.
//
// Output: write through writeOutput (or flushOutput). A failed write is remembered, and main() decides the
// exit once the subcommand returns, the same way for every subcommand: a closed pipe (the reader went
// away, as with `| head -1`) ends with status 0 and no message; any other write error (a full disk) prints
// "brevant: write error: REASON" and ends with status 1, whatever the subcommand answered. A subcommand
// that writes in a loop stops as soon as writeOutput answers false (or outputFailed() is true).
//
// Input: readInput reads a whole file; InputFile reads one in chunks, and forEachChunk streams one through
// a function in fixed-size pieces with a progress bar on a terminal. All take "-" for standard input and
// work on pipes, FIFOs and /dev/stdin as well as regular files. Prefer streaming for anything that can be
// large: memory then stays bounded whatever the input's size.
//
// Terminal text: escapeControlCharacters makes answers from untrusted files safe to show in a table.
#pragma once

#include <CLI/CLI.hpp>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace brevant {

inline constexpr int kExitSuccess = 0;
inline constexpr int kExitFailure = 1;
inline constexpr int kExitUsage = 2;

// Adds a subcommand to the app. The callback it installs sets *exitCode.
using CommandInstaller = std::function<void(CLI::App& app, int* exitCode)>;

// The registered installers, in registration order.
std::vector<std::pair<std::string, CommandInstaller>>& commandRegistry();

// Registers a subcommand at static-initialisation time: `const brevant::RegisterCommand kX("x", install);`
struct RegisterCommand {
    RegisterCommand(std::string name, CommandInstaller installer) {
        commandRegistry().emplace_back(std::move(name), std::move(installer));
    }
};

// Reads a whole file, or standard input for "-"; false with a one-line message in *error on failure
// ("PATH: no such file", "PATH: is a folder, not a file", "PATH: REASON").
bool readInput(const std::string& path, std::string* contents, std::string* error);

// Writes bytes to standard output unchanged; false when the output cannot take them (a closed pipe or a
// write error, remembered for main() as described above).
bool writeOutput(const void* bytes, std::size_t length);
inline bool writeOutput(std::string_view text) {
    return writeOutput(text.data(), text.size());
}
// Flushes standard output; false (remembered the same way) when the buffered bytes cannot be written.
bool flushOutput();
// True once a write or flush of standard output failed.
[[nodiscard]] bool outputFailed();
// The exit status once the subcommand answered `exitCode`: flushes standard output, then applies the
// rules above (0 and silent for a closed pipe; "brevant: write error: ..." and 1 for other failures).
int finishOutput(int exitCode);

// Prints "brevant: MESSAGE" on standard error.
void printError(const std::string& message);
// How a failed open or read is told: "no such file" for a missing file, else the system's text.
[[nodiscard]] std::string fileErrorText(int error);

// A file, or standard input for "-", read in chunks of any size: regular files, pipes, FIFOs, devices.
class InputFile {
  public:
    InputFile() = default;
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    // Opens the path; false with "PATH: no such file", "PATH: is a folder, not a file" or "PATH: REASON".
    bool open(const std::string& path, std::string* error);
    // Reads up to `capacity` bytes; 0 at the end or on a read error (then failed() is true).
    std::size_t read(char* buffer, std::size_t capacity);
    // Reads until the buffer is full or the input ends (pipes deliver short reads).
    std::size_t readFully(char* buffer, std::size_t capacity);
    [[nodiscard]] bool failed() const noexcept { return failed_; }
    // The size of a regular file, 0 for anything else (a pipe's size is not known in advance).
    [[nodiscard]] std::uint64_t size() const noexcept { return size_; }
    [[nodiscard]] bool isRegularFile() const noexcept { return regular_; }
    // The name for messages: the path, or "standard input" for "-".
    [[nodiscard]] const std::string& name() const noexcept { return name_; }
    [[nodiscard]] int descriptor() const noexcept { return descriptor_; }

  private:
    int descriptor_ = -1;
    bool owned_ = false;
    bool regular_ = false;
    bool failed_ = false;
    std::uint64_t size_ = 0;
    std::string name_;
};

// Opens the path ("-" for standard input) and hands its bytes to onChunk in pieces of exactly `chunkSize`
// bytes (the last one shorter, possibly empty), until onChunk answers false or output failed. Shows
// "LABEL NAME" with a progress bar on standard error when it is a terminal and the file is large.
// False with a "NAME: problem" message when the input cannot be opened or read.
bool forEachChunk(const std::string& path, std::size_t chunkSize, const std::string& label,
                  const std::function<bool(const char* bytes, std::size_t length)>& onChunk,
                  std::string* error);

// UTF-8 text made safe for a terminal: each control character (C0, DEL and C1) is shown as an escape,
// "\t", "\n", "\r", "\e" or "\uXXXX", so that an answer cannot move the cursor or retitle the window.
// Everything else, backslashes included, is kept as it is.
[[nodiscard]] std::string escapeControlCharacters(std::string_view utf8);

}  // namespace brevant
