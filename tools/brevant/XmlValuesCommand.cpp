// brevant xml-values FILE NAME...: prints "NAME<TAB>VALUE" for each wanted element found in the XML file
// (the collecting streaming parser: it stops reading once every name has been seen), in the order the
// names were given, each name once. Backslash, tab, line feed and carriage return in a value are written
// as \\, \t, \n and \r so that every value stays on its line. FILE "-" reads standard input. Exit 1 when
// the file cannot be read; names that do not occur are simply not printed.
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/documents/BVXMLParser.hpp"
#include "Command.hpp"

namespace brevant {

namespace {

std::string escaped(const std::string& value) {
    std::string out;
    out.reserve(value.size());
    for (char c : value) {
        switch (c) {
            case '\\':
                out += "\\\\";
                break;
            case '\t':
                out += "\\t";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\r':
                out += "\\r";
                break;
            default:
                out += c;
        }
    }
    return out;
}

// Whether the file can be opened for reading; a one-line reason otherwise.
bool readable(const std::string& path, std::string* reason) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        *reason = path + ": is a folder, not a file";
        return false;
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        *reason = path + ": " + std::strerror(errno);
        return false;
    }
    return true;
}

int run(const std::string& path, const std::vector<std::string>& names) {
    std::vector<bv::Text> wanted(names.begin(), names.end());
    bv::BVXMLParser::ResultsDictionary results;
    std::string reason;
    if (path == "-") {
        std::string contents;
        if (!readInput(path, &contents, &reason)) {
            printError("xml-values: " + reason);
            return kExitFailure;
        }
        results = bv::BVXMLParser::resultsOfDataToParseSeekingDesiredElements(
            bv::ByteData(contents.begin(), contents.end()), wanted);
    } else {
        if (!readable(path, &reason)) {
            printError("xml-values: " + reason);
            return kExitFailure;
        }
        results = bv::BVXMLParser::resultsOfDataToParseAtPathSeekingDesiredElements(bv::Text(path), wanted);
    }
    std::set<std::string> printed;
    for (const std::string& name : names) {
        auto found = results.find(bv::Text(name));
        if (found == results.end() || !printed.insert(name).second) continue;
        if (!writeOutput(name + "\t" + escaped(found->second.toUtf8()) + "\n")) return kExitFailure;
    }
    return kExitSuccess;
}

void install(CLI::App& app, int* exitCode) {
    auto* command = app.add_subcommand(
        "xml-values",
        "Print NAME<TAB>VALUE for the named elements of an XML file, reading only as far as needed");
    auto path = std::make_shared<std::string>();
    auto names = std::make_shared<std::vector<std::string>>();
    command->add_option("FILE", *path, "the XML file (- for standard input)")->required();
    command->add_option("NAME", *names, "element names, as written in the file (qualified: x:item)")
        ->required();
    command->callback([path, names, exitCode] { *exitCode = run(*path, *names); });
}

}  // namespace

const RegisterCommand kXmlValuesCommand("xml-values", install);

}  // namespace brevant
