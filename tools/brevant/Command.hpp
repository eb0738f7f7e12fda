// How a subcommand joins the brevant tool: each subcommand file registers a function that adds its
// CLI11 subcommand, and main() calls every registered function. Exit codes: 0 success, 1 a failure of
// the work, 2 wrong usage.
#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <string>
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

// Reads a whole file, or standard input for "-"; false with a one-line message in *error on failure.
bool readInput(const std::string& path, std::string* contents, std::string* error);
// Writes bytes to standard output unchanged; false when the output is closed (a closed pipe).
bool writeOutput(const void* bytes, std::size_t length);
inline bool writeOutput(const std::string& text) {
    return writeOutput(text.data(), text.size());
}
// Prints "brevant: MESSAGE" on standard error.
void printError(const std::string& message);

}  // namespace brevant
