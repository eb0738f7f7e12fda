// brevant xml-values FILE NAME...: prints "NAME<TAB>VALUE" for each wanted element found in the XML file
// (the collecting streaming parser: it stops reading once every name has been seen), in the order the
// names were given, each name once. Backslash, tab, line feed, carriage return, escape and the other
// control characters in a value are written as \\, \t, \n, \r, \e and \u00XX, so that every value stays on
// its line and nothing reaches the terminal as a command. FILE "-" (or a pipe, a FIFO, /dev/stdin) is read
// as a stream; no text outside the wanted elements is kept. Names that do not occur are simply not
// printed. Exit 1 when the file cannot be read, when a write fails, or when some name was not found and
// the document is malformed or was refused (an external entity outside its folder, an entity expansion out
// of proportion): the values printed are those found before the fault. A fault after the last wanted
// element does not matter, as the file is not read that far.
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/documents/BVXMLParser.hpp"
#include "BrevantCocoaExtensions/platform/XMLStreamParser.hpp"
#include "Chart.hpp"
#include "Command.hpp"

namespace brevant {

namespace {

// The value on one line: backslashes doubled, so that a line reads back unambiguously, then every control
// character (C0, DEL and the C1 controls) written as an escape.
std::string escaped(const std::string& value) {
    std::string doubled;
    doubled.reserve(value.size());
    for (char c : value) {
        doubled += c;
        if (c == '\\') doubled += c;
    }
    return escapeControlCharacters(doubled);
}

// The collecting parser, drawing the progress bar as the file is read.
class ProgressCollector : public bv::BVXMLParser {
  public:
    ProgressCollector(std::FILE* file, ProgressBar& progress) : file_(file), progress_(progress) {}

    void parserDidEndElementNamespaceURIQualifiedName(bv::XMLStreamParser& parser, const bv::Text& name,
                                                      const bv::Text& uri,
                                                      const bv::Text& qualified) override {
        if (progress_.enabled() && (++ends_ & 0xFFF) == 0) {
            long at = std::ftell(file_);
            if (at >= 0) progress_.update(static_cast<std::uint64_t>(at));
        }
        BVXMLParser::parserDidEndElementNamespaceURIQualifiedName(parser, name, uri, qualified);
    }

  private:
    std::FILE* file_;
    ProgressBar& progress_;
    std::uint64_t ends_ = 0;
};

// Prints the values in the order the names were given, each name once; false when a write fails.
bool printValues(const std::vector<std::string>& names, const bv::BVXMLParser::ResultsDictionary& results,
                 std::set<std::string>& printed) {
    for (const std::string& name : names) {
        auto found = results.find(bv::Text(name));
        if (found == results.end() || !printed.insert(name).second) continue;
        if (!writeOutput(name + "\t" + escaped(found->second.toUtf8()) + "\n")) return false;
    }
    return std::fflush(stdout) == 0;
}

int run(const std::string& path, const std::vector<std::string>& names) {
    const bool isStandardInput = path == "-";
    const std::string shown = isStandardInput ? "standard input" : path;
    std::error_code ignored;
    if (!isStandardInput && std::filesystem::is_directory(path, ignored)) {
        printError(path + ": is a folder, not a file");
        return kExitFailure;
    }
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> opened(
        isStandardInput ? nullptr : std::fopen(path.c_str(), "rb"), &std::fclose);
    std::FILE* file = isStandardInput ? stdin : opened.get();
    if (file == nullptr) {
        printError(path + ": " + fileErrorText(errno));
        return kExitFailure;
    }
    struct stat status {};
    const bool regular = ::fstat(fileno(file), &status) == 0 && S_ISREG(status.st_mode);
    ProgressBar progress("Reading " + shown, regular ? static_cast<std::uint64_t>(status.st_size) : 0);

    ProgressCollector collector(file, progress);
    collector.desiredElements()->assign(names.begin(), names.end());
    bv::XMLStreamParser parser(collector);
    parser.setShouldResolveExternalEntities(true);
    // Only a named regular file has a folder that external entities may come from.
    parser.parseStream(file, regular && !isStandardInput ? path : std::string());

    std::set<std::string> printed;
    // main() reports a failed write (and stays silent for a closed pipe).
    if (!printValues(names, *collector.resultsData(), printed)) return kExitFailure;
    if (printed.size() < std::set<std::string>(names.begin(), names.end()).size() && parser.parserError()) {
        printError(shown + ": " + parser.parserError()->failureReason.toUtf8());
        return kExitFailure;
    }
    return kExitSuccess;
}

void install(CLI::App& app, int* exitCode) {
    auto* command = app.add_subcommand(
        "xml-values",
        "Print NAME<TAB>VALUE for the named elements of an XML file, reading only as far as needed");
    auto path = std::make_shared<std::string>();
    auto names = std::make_shared<std::vector<std::string>>();
    command->add_option("FILE", *path, "the XML file (- for standard input; pipes and FIFOs work too)")
        ->required();
    command->add_option("NAME", *names, "element names, as written in the file (qualified: x:item)")
        ->required();
    command->footer(
        "External entities load only from regular files in the file's own folder or below (none from "
        "standard input); entity expansion is bounded by the file's size.\n"
        "Exit status: 0 success, 1 the file cannot be read, a write failed, or the file is malformed or "
        "refused before every name was found, 2 wrong usage.");
    command->callback([path, names, exitCode] { *exitCode = run(*path, *names); });
}

}  // namespace

const RegisterCommand kXmlValuesCommand("xml-values", install);

}  // namespace brevant
