// brevant paths --from-windows [FILE|-] [--remove-file-names] [--json]: converts a list of drive-letter paths
// (C:\Quiz\Media\a.png), one per line, into paths of this system (Quiz/Media/a.png), one per line in the same
// order. Lines may end in CRLF. With --remove-file-names each path loses its last component.
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "BrevantCocoaExtensions/files/BVNSFileManager.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"
#include "Command.hpp"

namespace brevant {

namespace {

struct PathsOptions {
    std::string input = "-";
    bool fromWindows = false;
    bool removeFileNames = false;
    bool json = false;
};

// The lines of the input without their line ends; a final line end does not start another line.
std::vector<bv::Text> linesOf(std::string_view contents) {
    std::vector<bv::Text> lines;
    while (!contents.empty()) {
        std::size_t end = contents.find('\n');
        std::string_view line = contents.substr(0, end);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        lines.emplace_back(line);
        contents.remove_prefix(end == std::string_view::npos ? contents.size() : end + 1);
    }
    return lines;
}

std::string render(const std::vector<bv::Text>& paths, bool json) {
    if (json) {
        nlohmann::ordered_json out = nlohmann::ordered_json::array();
        for (const bv::Text& path : paths)
            out.push_back(path.toUtf8());
        return out.dump(2) + "\n";
    }
    std::string out;
    for (const bv::Text& path : paths)
        out += path.toUtf8() + "\n";
    return out;
}

int runPaths(const PathsOptions& options) {
    if (!options.fromWindows) {
        printError("paths: say which paths to convert: --from-windows");
        return kExitUsage;
    }
    std::string contents, error;
    if (!readInput(options.input, &contents, &error)) {
        printError(error);
        return kExitFailure;
    }
    bv::LogSink previous = bv::setLogSink([](const std::string&) {});  // the failure is reported below
    auto converted = bv::BVNSFileManager::pathsConvertedFromMSWindowsPathsRemoveFileNames(
        linesOf(contents), options.removeFileNames);
    bv::setLogSink(std::move(previous));
    if (!converted) {
        printError(options.input + ": a line holds a NUL character, which no path can hold");
        return kExitFailure;
    }
    return writeOutput(render(*converted, options.json)) ? kExitSuccess : kExitFailure;
}

void install(CLI::App& app, int* exitCode) {
    auto* command =
        app.add_subcommand("paths", "Convert drive-letter paths (C:\\Quiz\\a.xml) into paths of this system");
    auto options = std::make_shared<PathsOptions>();
    command->add_option("FILE", options->input, "the list, one path per line (- or nothing: standard input)");
    command->add_flag("--from-windows", options->fromWindows,
                      "the lines are drive-letter paths with backslashes");
    command->add_flag("--remove-file-names", options->removeFileNames, "drop each path's last component");
    command->add_flag("--json", options->json, "print a JSON array of the converted paths");
    command->callback([options, exitCode] { *exitCode = runPaths(*options); });
}

}  // namespace

const RegisterCommand kPathsCommand("paths", install);

}  // namespace brevant
