// brevant xml-values FILE NAME...: prints "NAME<TAB>VALUE" for each wanted element found in the XML file
// (the collecting streaming parser: it stops reading once every name has been seen), in the order the
// names were given, each name once. Backslash, tab, line feed and carriage return in a value are written
// as \\, \t, \n and \r so that every value stays on its line. FILE "-" reads standard input. Names that do
// not occur are simply not printed. Exit 1 when the file cannot be read, or when some name was not found
// and the document is malformed (the values printed are those found before the fault); a malformed tail
// after the last wanted element does not matter.
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/documents/BVXMLParser.hpp"
#include "BrevantCocoaExtensions/platform/XMLStreamParser.hpp"
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

// Why the document is not well-formed, or nullopt when it is.
std::optional<std::string> malformation(const std::string& path, const bv::ByteData& contents) {
    bv::XMLStreamParserDelegate ignoreEvents;
    bv::XMLStreamParser checker(ignoreEvents);
    bool wellFormed = path == "-" ? checker.parse(contents.data(), contents.size()) : checker.parseFile(path);
    if (wellFormed || !checker.parserError()) return std::nullopt;
    return checker.parserError()->failureReason.toUtf8();
}

int run(const std::string& path, const std::vector<std::string>& names) {
    std::vector<bv::Text> wanted(names.begin(), names.end());
    bv::BVXMLParser::ResultsDictionary results;
    bv::ByteData contents;
    std::string reason;
    if (path == "-") {
        std::string input;
        if (!readInput(path, &input, &reason)) {
            printError("xml-values: " + reason);
            return kExitFailure;
        }
        contents.assign(input.begin(), input.end());
        results = bv::BVXMLParser::resultsOfDataToParseSeekingDesiredElements(contents, wanted);
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
    if (printed.size() < std::set<std::string>(names.begin(), names.end()).size()) {
        if (auto fault = malformation(path, contents)) {
            printError("xml-values: " + (path == "-" ? std::string("standard input") : path) + ": " + *fault);
            return kExitFailure;
        }
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
    command->footer(
        "Exit status: 0 success, 1 the file cannot be read or is malformed before every name was found, "
        "2 wrong usage.");
    command->callback([path, names, exitCode] { *exitCode = run(*path, *names); });
}

}  // namespace

const RegisterCommand kXmlValuesCommand("xml-values", install);

}  // namespace brevant
