// brevant unpack ARCHIVE FOLDER [--windows-paths] [--replace] [--json]: unpacks a zip archive (- reads it
// from standard input) into a folder with the library's unzip, which empties the folder first; so an existing
// folder that holds anything is refused unless --replace says that its contents may go. With --windows-paths
// the entries named with backslashes (Media\Images\a.png, as archives made on a drive-letter system unpack)
// become real folders and files, and each path made is printed; entries that would land outside the folder
// are left as they are and reported, and the exit code is then 1.
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/files/BVNSFileManager.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"
#include "BrevantCocoaExtensions/platform/PathRules.hpp"
#include "Command.hpp"

namespace brevant {

namespace {

namespace fs = std::filesystem;
namespace fm = bv::BVNSFileManager;

struct UnpackOptions {
    std::string archive;
    std::string folder;
    bool windowsPaths = false;
    bool replace = false;
    bool json = false;
};

// One entry named with backslashes, and where it is meant to go.
struct Rebuild {
    bv::Text entry;
    bv::Text converted;
    bool made = false;
};

// Standard input saved to a temporary file for the unzip tool, removed with this object.
class SavedInput {
  public:
    bool save() {
        std::string contents, error;
        if (!readInput("-", &contents, &error)) return false;
        std::string pattern = (fs::temp_directory_path() / "brevant-unpack-XXXXXX").string();
        const int fd = ::mkstemp(pattern.data());
        if (fd < 0) return false;
        path_ = pattern;
        const bool written =
            ::write(fd, contents.data(), contents.size()) == static_cast<ssize_t>(contents.size());
        return ::close(fd) == 0 && written;
    }
    ~SavedInput() {
        if (!path_.empty()) ::unlink(path_.c_str());
    }
    [[nodiscard]] const std::string& path() const { return path_; }

  private:
    std::string path_;
};

// Sends this process's standard output to standard error while it lives, so the unpacking tool's chatter
// never mixes with the paths (or the JSON) printed on standard output.
class OutputToErrors {
  public:
    OutputToErrors() : saved_(::dup(STDOUT_FILENO)) {
        std::fflush(stdout);
        ::dup2(STDERR_FILENO, STDOUT_FILENO);
    }
    ~OutputToErrors() {
        if (saved_ < 0) return;
        ::dup2(saved_, STDOUT_FILENO);
        ::close(saved_);
    }
    OutputToErrors(const OutputToErrors&) = delete;
    OutputToErrors& operator=(const OutputToErrors&) = delete;

  private:
    int saved_;
};

bool isInside(const fs::path& item, const fs::path& folder) {
    std::error_code ignored;
    const fs::path relative =
        fs::weakly_canonical(item, ignored).lexically_relative(fs::weakly_canonical(folder, ignored));
    return !relative.empty() && *relative.begin() != "..";
}

// Why the folder may not be unpacked into, or "" when it may.
std::string refusal(const UnpackOptions& options, const std::string& archive) {
    std::error_code code;
    const fs::file_status status = fs::status(options.folder, code);
    if (!fs::exists(status)) return "";
    if (!fs::is_directory(status)) return options.folder + ": exists and is not a folder";
    if (isInside(archive, options.folder))
        return archive + ": lies inside " + options.folder + ", which unpacking empties first";
    if (!options.replace && !fs::is_empty(options.folder, code)) {
        return options.folder + ": not empty; unpacking empties it first, so pass --replace to allow that";
    }
    return "";
}

std::vector<Rebuild> plannedRebuilds(const bv::Text& folder) {
    std::vector<Rebuild> plan;
    for (const bv::Text& entry : bv::FileManager::defaultManager().contentsOfDirectoryAtPath(folder).value_or(
             std::vector<bv::Text>{})) {
        if (entry.view().find(u'\\') == std::u16string_view::npos) continue;
        plan.push_back({entry, fm::pathConvertedFromMSWindowsPath(entry).value_or(bv::Text()), false});
    }
    return plan;
}

bool rebuildWindowsPaths(const bv::Text& folder, std::vector<Rebuild>* plan) {
    *plan = plannedRebuilds(folder);
    bv::LogSink previous =
        bv::setLogSink([&folder](const std::string& line) { printError(folder.toUtf8() + ": " + line); });
    fm::createDirectoryStructureForMSWindowsPathsInDirectoryDeleteMSWindowsPaths(
        bv::FileManager::defaultManager(), folder, true);
    bv::setLogSink(std::move(previous));
    bool all = true;
    for (Rebuild& item : *plan) {
        std::error_code ignored;
        const fs::path source =
            bv::PathRules::nativePath(bv::PathRules::appendingPathComponent(folder, item.entry));
        const fs::path target =
            bv::PathRules::nativePath(bv::PathRules::appendingPathComponent(folder, item.converted));
        item.made = !fs::exists(fs::symlink_status(source, ignored)) &&
                    fs::exists(fs::symlink_status(target, ignored));
        all = all && item.made;
    }
    return all;
}

std::string render(const UnpackOptions& options, const std::vector<Rebuild>& plan) {
    if (!options.json) {
        std::string out;
        for (const Rebuild& item : plan) {
            if (item.made) out += item.converted.toUtf8() + "\n";
        }
        return out;
    }
    nlohmann::ordered_json rebuilt = nlohmann::ordered_json::array(), left = nlohmann::ordered_json::array();
    for (const Rebuild& item : plan) {
        if (item.made)
            rebuilt.push_back({{"from", item.entry.toUtf8()}, {"to", item.converted.toUtf8()}});
        else
            left.push_back(item.entry.toUtf8());
    }
    nlohmann::ordered_json out = {
        {"archive", options.archive}, {"folder", options.folder}, {"rebuilt", rebuilt}, {"notRebuilt", left}};
    return out.dump(2) + "\n";
}

int runUnpack(const UnpackOptions& options) {
    SavedInput input;
    if (options.archive == "-" && !input.save()) {
        printError("-: cannot save standard input for unpacking");
        return kExitFailure;
    }
    const std::string archive = options.archive == "-" ? input.path() : options.archive;
    std::error_code code;
    if (!fs::is_regular_file(archive, code)) {
        printError(archive + ": no such archive file");
        return kExitFailure;
    }
    if (std::string why = refusal(options, archive); !why.empty()) {
        printError(why);
        return kExitFailure;
    }
    const bv::Text folder(options.folder);
    try {
        OutputToErrors quietOutput;
        if (!fm::unzipPathToPathRemoveSourcePath(bv::Text(archive), folder, false)) {
            printError(options.archive + ": the unzip tool failed");
            return kExitFailure;
        }
    } catch (const bv::Exception& error) {
        printError(options.archive + ": " + error.reason());
        return kExitFailure;
    }
    std::vector<Rebuild> plan;
    const bool rebuiltAll = !options.windowsPaths || rebuildWindowsPaths(folder, &plan);
    if (!writeOutput(render(options, plan))) return kExitFailure;
    return rebuiltAll ? kExitSuccess : kExitFailure;
}

void install(CLI::App& app, int* exitCode) {
    auto* command = app.add_subcommand("unpack", "Unpack a zip archive into a folder");
    auto options = std::make_shared<UnpackOptions>();
    command->add_option("ARCHIVE", options->archive, "the zip archive (- for standard input)")->required();
    command->add_option("FOLDER", options->folder, "the folder to unpack into (made when missing)")
        ->required();
    command->add_flag("--windows-paths", options->windowsPaths,
                      "make folders of entries named with backslashes and print each path made");
    command->add_flag("--replace", options->replace, "allow a folder that holds anything (its contents go)");
    command->add_flag("--json", options->json, "print a JSON object of the paths made and left");
    command->callback([options, exitCode] { *exitCode = runUnpack(*options); });
}

}  // namespace

const RegisterCommand kUnpackCommand("unpack", install);

}  // namespace brevant
