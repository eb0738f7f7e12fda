// brevant doctor [--json]: checks the suite's installation as an administrator would, without changing
// anything: each folder of the layout (there, and writable by whom), the web-service configuration and
// settings files (there, and parse), the stored credentials' permissions, and the session bus. Every
// problem comes with a fix; the exit code is 1 when there is any.
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/documents/BVNSXMLDocument.hpp"
#include "BrevantCocoaExtensions/files/TolvernSettings.hpp"
#include "BrevantCocoaExtensions/platform/NotificationCenter.hpp"
#include "BrevantCocoaExtensions/platform/StandardFolders.hpp"
#include "Command.hpp"

namespace brevant {

namespace {

enum class Status { Ok, Note, Problem };

struct Finding {
    Status status = Status::Ok;
    std::string check;
    std::string path;
    std::string detail;
    std::string fix;
};

// Who may write the item, from its mode and owner ("owner root, rwxr-xr-x: writable by its owner only").
std::string accessOf(const struct stat& info) {
    const passwd* owner = ::getpwuid(info.st_uid);
    std::string bits = "rwxrwxrwx";
    for (int i = 0; i < 9; ++i)
        if ((info.st_mode & (0400u >> i)) == 0) bits[static_cast<std::size_t>(i)] = '-';
    const char* who = (info.st_mode & 0002)   ? "writable by everyone"
                      : (info.st_mode & 0020) ? "writable by its owner and group"
                      : (info.st_mode & 0200) ? "writable by its owner only"
                                              : "writable by no one";
    return "owner " + (owner ? std::string(owner->pw_name) : std::to_string(info.st_uid)) + ", " + bits +
           ": " + who;
}

// How a folder is provided: by the installer (missing is a problem), shared by all users (must be
// writable by everyone), or made on first use (missing is fine).
enum class FolderKind { Installer, SharedRoot, OnDemand, UserRoot };

Finding folderFinding(const std::string& check, const std::string& path, FolderKind kind) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0 || !S_ISDIR(info.st_mode)) {
        const bool plainFile = ::stat(path.c_str(), &info) == 0;
        if (kind == FolderKind::OnDemand || kind == FolderKind::UserRoot)
            return {plainFile ? Status::Problem : Status::Note, check, path,
                    plainFile ? "a file, where a folder belongs" : "not there yet; made on first use",
                    plainFile ? "remove or rename the file: rm '" + path + "'" : ""};
        return {Status::Problem, check, path, plainFile ? "a file, where a folder belongs" : "missing",
                "reinstall the suite: its installer provides this folder"};
    }
    const std::string access = accessOf(info);
    const bool everyone = (info.st_mode & 0777) == 0777;
    if (kind == FolderKind::UserRoot)
        return ::access(path.c_str(), W_OK) == 0
                   ? Finding{Status::Ok, check, path, access, ""}
                   : Finding{Status::Problem, check, path, access + "; not writable by you",
                             "give it back to its user: chown -R \"$USER\" '" + path + "'"};
    if (kind == FolderKind::Installer || everyone) return {Status::Ok, check, path, access, ""};
    return {Status::Problem, check, path, access + "; every user of the machine must be able to write here",
            "as an administrator: chmod 0777 '" + path + "'"};
}

bool parsesWithRoot(const std::string& path) {
    const auto document = bv::BVNSXMLDocument::documentAtPath(bv::Text(path));
    return document && document->rootElement();
}

Finding configurationFinding(const std::string& check, const std::string& path) {
    if (::access(path.c_str(), F_OK) != 0)
        return {Status::Problem, check, path, "missing: Brevant online cannot be reached",
                "copy the file from the suite's installation media"};
    if (!parsesWithRoot(path))
        return {Status::Problem, check, path, "does not parse as XML", "replace it with the installed copy"};
    return {Status::Ok, check, path, "present, parses", ""};
}

Finding settingsFinding(const std::string& path) {
    const std::string check = "Settings file";
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0)
        return {Status::Note, check, path, "not there: the defaults are in use until the first save", ""};
    if (!bv::TolvernSettings::settingsAtPath(bv::Text(path)))
        return {Status::Problem, check, path, "does not parse: every application falls back to the defaults",
                "remove it and save again: rm '" + path + "' && brevant settings set State ''"};
    if ((info.st_mode & 0666) != 0666)
        return {Status::Problem, check, path, accessOf(info) + "; other users cannot save the settings",
                "as an administrator: chmod 0777 '" + path + "'"};
    return {Status::Ok, check, path, "parses; " + accessOf(info), ""};
}

Finding credentialsFinding(const std::string& path) {
    const std::string check = "Stored credentials";
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) return {Status::Note, check, path, "none saved", ""};
    if ((info.st_mode & 077) != 0)
        return {Status::Problem, check, path,
                accessOf(info) + "; other users can read it and recover the password",
                "chmod 600 '" + path + "' (or save again: brevant credentials save --username NAME)"};
    if (!parsesWithRoot(path))
        return {Status::Problem, check, path, "does not parse",
                "save again: brevant credentials save --username NAME"};
    return {Status::Ok, check, path, accessOf(info), ""};
}

Finding busFinding() {
    const auto observer = bv::NotificationCenter::addObserverForName(bv::Text("BVDoctorProbe"), nullptr);
    if (observer)
        return {Status::Ok, "Session bus", "", "reachable: settings changes reach every application", ""};
    return {
        Status::Problem, "Session bus", "", "not reachable: other applications miss settings changes",
        "run inside a desktop session, or start one: dbus-daemon --session --fork --print-address, and set "
        "DBUS_SESSION_BUS_ADDRESS to the address it prints"};
}

std::vector<Finding> examine() {
    const std::string local = bv::StandardFolders::localApplicationSupport();
    const std::string brevant = local + "/Brevant";
    const std::string support = brevant + "/Support Files";
    const std::string user = bv::StandardFolders::userApplicationSupport() + "/Brevant";
    std::vector<Finding> findings = {
        folderFinding("Local application support", local, FolderKind::Installer),
        folderFinding("Local Brevant folder", brevant, FolderKind::SharedRoot),
        folderFinding("Support Files", support, FolderKind::Installer),
        folderFinding("Languages folder", brevant + "/Languages", FolderKind::Installer),
        folderFinding("Games folder", brevant + "/Games", FolderKind::Installer),
        folderFinding("ZRP folder", brevant + "/ZRP", FolderKind::Installer),
    };
    for (const char* name : {"PlugIns", "Standards", "Categories", "Content Downloads"})
        findings.push_back(
            folderFinding(std::string(name) + " folder", brevant + "/" + name, FolderKind::OnDemand));
    findings.push_back(folderFinding("Web Services folder", support + "/Web Services", FolderKind::OnDemand));
    findings.push_back(folderFinding("Settings folder", support + "/Settings", FolderKind::OnDemand));
    findings.push_back(
        configurationFinding("Web-service configuration", support + "/Web Services/BrevantWSConfig.xml"));
    findings.push_back(
        configurationFinding("Orlane configuration", support + "/Web Services/OrlaneConfig.xml"));
    findings.push_back(settingsFinding(support + "/Settings/Settings.xml"));
    findings.push_back(folderFinding("User Brevant folder", user, FolderKind::UserRoot));
    findings.push_back(credentialsFinding(user + "/credentials.xml"));
    findings.push_back(busFinding());
    return findings;
}

const char* statusWord(Status status) {
    return status == Status::Ok ? "ok" : status == Status::Note ? "note" : "problem";
}

std::string report(const std::vector<Finding>& findings, std::size_t problems, bool json) {
    if (json) {
        nlohmann::ordered_json checks = nlohmann::ordered_json::array();
        for (const Finding& f : findings)
            checks.push_back({{"check", f.check},
                              {"status", statusWord(f.status)},
                              {"path", f.path},
                              {"detail", f.detail},
                              {"fix", f.fix}});
        return nlohmann::ordered_json{{"problems", problems}, {"checks", checks}}.dump(2) + "\n";
    }
    std::string out;
    for (const Finding& f : findings) {
        char line[96];
        std::snprintf(line, sizeof line, "%-8s %-27s ",
                      f.status == Status::Problem ? "PROBLEM" : statusWord(f.status), f.check.c_str());
        out += line + (f.path.empty() ? f.detail : f.path + ": " + f.detail) + "\n";
        if (!f.fix.empty()) out += "         fix: " + f.fix + "\n";
    }
    out += problems == 0
               ? "No problems found.\n"
               : std::to_string(problems) + (problems == 1 ? " problem" : " problems") + " found.\n";
    return out;
}

int run(bool json) {
    const std::vector<Finding> findings = examine();
    std::size_t problems = 0;
    for (const Finding& f : findings)
        problems += f.status == Status::Problem ? 1 : 0;
    (void)writeOutput(report(findings, problems, json));
    return problems == 0 ? kExitSuccess : kExitFailure;
}

void install(CLI::App& app, int* exitCode) {
    auto* command =
        app.add_subcommand("doctor", "Check the suite's folders, files, credentials and session bus");
    auto json = std::make_shared<bool>(false);
    command->add_flag("--json", *json, "print JSON");
    command->callback([json, exitCode] { *exitCode = run(*json); });
}

}  // namespace

const RegisterCommand kDoctorCommand("doctor", install);

}  // namespace brevant
