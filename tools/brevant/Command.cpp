// Shared plumbing of the subcommands: the registry, input reading and output writing.
#include "Command.hpp"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

namespace brevant {

std::vector<std::pair<std::string, CommandInstaller>>& commandRegistry() {
    static std::vector<std::pair<std::string, CommandInstaller>> registry;
    return registry;
}

bool readInput(const std::string& path, std::string* contents, std::string* error) {
    if (path == "-") {
        std::ostringstream buffer;
        buffer << std::cin.rdbuf();
        *contents = buffer.str();
        return true;
    }
    std::error_code code;
    if (std::filesystem::is_directory(path, code)) {
        *error = path + ": is a folder, not a file";
        return false;
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        *error = path + ": " + std::strerror(errno);
        return false;
    }
    contents->assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    if (file.bad()) {
        *error = path + ": read error";
        return false;
    }
    return true;
}

bool writeOutput(const void* bytes, std::size_t length) {
    if (length == 0) return true;
    return std::fwrite(bytes, 1, length, stdout) == length;
}

void printError(const std::string& message) {
    std::fprintf(stderr, "brevant: %s\n", message.c_str());
}

}  // namespace brevant
