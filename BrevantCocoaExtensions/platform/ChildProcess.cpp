// Child processes through posix_spawn: argument vector, working folder, exit status.
#include "BrevantCocoaExtensions/platform/ChildProcess.hpp"

#include <spawn.h>
#include <sys/wait.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

extern char** environ;

namespace bv {

namespace {

// Owns the spawn file actions for the life of one launch.
class FileActions {
  public:
    FileActions() { posix_spawn_file_actions_init(&actions_); }
    ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;
    posix_spawn_file_actions_t* get() { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_;
};

[[noreturn]] void launchFailed(const std::string& executable, const std::string& reason) {
    throw InvalidArgumentException("cannot launch " + executable + ": " + reason);
}

}  // namespace

ChildProcess::ChildProcess(std::string executable, std::vector<std::string> arguments,
                           std::string workingDirectory)
    : executable_(std::move(executable)),
      arguments_(std::move(arguments)),
      workingDirectory_(std::move(workingDirectory)) {}

ChildProcess::~ChildProcess() {
    if (isRunning()) waitUntilExit();
}

void ChildProcess::launch() {
    if (pid_ != 0) launchFailed(executable_, "the process was launched before");
    FileActions actions;
    if (!workingDirectory_.empty() &&
        posix_spawn_file_actions_addchdir_np(actions.get(), workingDirectory_.c_str()) != 0) {
        launchFailed(executable_, "cannot set the working folder");
    }
    std::vector<char*> argv;
    argv.reserve(arguments_.size() + 2);
    argv.push_back(executable_.data());
    for (std::string& argument : arguments_)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    pid_t pid = 0;
    if (int error = posix_spawn(&pid, executable_.c_str(), actions.get(), nullptr, argv.data(), environ)) {
        launchFailed(executable_, std::strerror(error));
    }
    pid_ = pid;
}

int ChildProcess::waitUntilExit() {
    if (!isRunning()) return status_;
    int status = 0;
    while (waitpid(pid_, &status, 0) < 0) {
        if (errno != EINTR) {
            exited_ = true;
            return status_;
        }
    }
    exited_ = true;
    status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return status_;
}

int ChildProcess::run(std::string executable, std::vector<std::string> arguments,
                      std::string workingDirectory) {
    ChildProcess process(std::move(executable), std::move(arguments), std::move(workingDirectory));
    process.launch();
    return process.waitUntilExit();
}

}  // namespace bv
