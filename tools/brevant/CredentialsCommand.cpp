// brevant credentials save|check|show|remove: the stored online account (credentials.xml) through
// BVFileManager. A password is never taken from the command line, where other users could see it in the
// process list: it is read from the terminal without echo, or from standard input with --password-stdin.
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include <cstdio>
#include <memory>
#include <string>

#include "BrevantCocoaExtensions/files/BVFileManager.hpp"
#include "Command.hpp"

namespace brevant {

namespace {

using bv::BVFileManager;

struct CredentialsOptions {
    std::string action;
    std::string username;
    bool passwordStdin = false;
    bool showPassword = false;
    bool json = false;
};

// Reads one line from the descriptor, without its line end; false at end of input before any byte.
bool readLine(int descriptor, std::string* line) {
    line->clear();
    char byte = 0;
    ssize_t got = 0;
    while ((got = ::read(descriptor, &byte, 1)) == 1 && byte != '\n')
        line->push_back(byte);
    if (!line->empty() && line->back() == '\r') line->pop_back();
    return got == 1 || !line->empty();
}

// Prompts on the terminal and reads the password with echo off; false without a terminal.
bool readPasswordFromTerminal(std::string* password) {
    const int terminal = ::open("/dev/tty", O_RDWR | O_CLOEXEC);
    if (terminal < 0) return false;
    const char prompt[] = "Password: ";
    (void)!::write(terminal, prompt, sizeof prompt - 1);
    termios saved{};
    const bool canHide = ::tcgetattr(terminal, &saved) == 0;
    termios hidden = saved;
    hidden.c_lflag &= static_cast<tcflag_t>(~ECHO);
    if (canHide) ::tcsetattr(terminal, TCSAFLUSH, &hidden);
    const bool read = readLine(terminal, password);
    if (canHide) ::tcsetattr(terminal, TCSAFLUSH, &saved);
    (void)!::write(terminal, "\n", 1);
    ::close(terminal);
    return read;
}

// The password by the chosen road; a usage error code when there is none.
int readPassword(const CredentialsOptions& options, std::string* password) {
    if (options.passwordStdin ? readLine(STDIN_FILENO, password) : readPasswordFromTerminal(password))
        return kExitSuccess;
    printError(options.passwordStdin
                   ? "credentials: no password on standard input"
                   : "credentials: no terminal to read the password from; use --password-stdin");
    return kExitUsage;
}

std::string credentialsFile() {
    return BVFileManager::credentialsPath().value_or(bv::Text("credentials.xml")).toUtf8();
}

int save(const CredentialsOptions& options) {
    std::string password;
    if (const int code = readPassword(options, &password); code != kExitSuccess) return code;
    if (!BVFileManager::saveCredentialsWithUsernamePassword(bv::Text(options.username), bv::Text(password))) {
        printError(credentialsFile() + ": could not be saved");
        return kExitFailure;
    }
    return kExitSuccess;
}

int check(const CredentialsOptions& options) {
    std::string password;
    if (const int code = readPassword(options, &password); code != kExitSuccess) return code;
    const bool match =
        BVFileManager::savedCredentialsMatchUsernamePassword(bv::Text(options.username), bv::Text(password));
    const std::string out =
        options.json ? nlohmann::json{{"match", match}}.dump() : (match ? "match" : "no match");
    (void)writeOutput(out + "\n");
    return match ? kExitSuccess : kExitFailure;
}

int show(const CredentialsOptions& options) {
    const std::optional<bv::ValueDictionary> saved = BVFileManager::savedCredentials();
    if (!saved) {
        printError(credentialsFile() + ": no saved credentials (missing, damaged or not readable)");
        return kExitFailure;
    }
    const std::string username = saved->at(bv::Text("credential1")).text()->toUtf8();
    const std::string password =
        options.showPassword ? saved->at(bv::Text("credential0")).text()->toUtf8() : "";
    std::string out;
    if (options.json) {
        nlohmann::ordered_json document{{"username", username}};
        if (options.showPassword) document["password"] = password;
        out = document.dump() + "\n";
    } else {
        out = "Username: " + username + "\n" + (options.showPassword ? "Password: " + password + "\n" : "");
    }
    return writeOutput(out) ? kExitSuccess : kExitFailure;
}

int run(const CredentialsOptions& options) {
    if ((options.action == "save" || options.action == "check") && options.username.empty()) {
        printError("credentials: " + options.action + " needs --username NAME");
        return kExitUsage;
    }
    if (options.action == "save") return save(options);
    if (options.action == "check") return check(options);
    if (options.action == "show") return show(options);
    BVFileManager::removeSavedCredentials();
    return kExitSuccess;
}

void install(CLI::App& app, int* exitCode) {
    auto* command =
        app.add_subcommand("credentials", "Save, check, show or remove the stored online account");
    auto options = std::make_shared<CredentialsOptions>();
    command->add_option("ACTION", options->action, "save, check, show or remove")
        ->required()
        ->check(CLI::IsMember({"save", "check", "show", "remove"}));
    command->add_option("--username", options->username, "the account name (save, check)");
    command->add_flag("--password-stdin", options->passwordStdin,
                      "read the password from the first line of standard input instead of the terminal");
    command->add_flag("--show-password", options->showPassword, "show: print the password too");
    command->add_flag("--json", options->json, "print JSON (check, show)");
    command->callback([options, exitCode] { *exitCode = run(*options); });
}

}  // namespace

const RegisterCommand kCredentialsCommand("credentials", install);

}  // namespace brevant
