// bv::ChildProcess: runs a program as a child process with an argument vector and a working folder, never
// through a shell, and waits for its exit.
//
//   int status = bv::ChildProcess::run("/usr/bin/zip", {"-r", "-q", "out.zip", "a.txt"}, "/work/folder");
//
// The arguments are handed to the program exactly as given (no quoting, no globbing, no variables); the
// program's name is passed as the argument before them. The child inherits the environment and the standard
// input, output and error of this process. A program that cannot be started (missing, not executable, or a
// working folder that does not exist) raises InvalidArgumentException, as a failed launch is a programming or
// installation fault, not an outcome of the work.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace bv {

class ChildProcess {
  public:
    // An empty working folder keeps this process's current folder.
    ChildProcess(std::string executable, std::vector<std::string> arguments,
                 std::string workingDirectory = {});
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    // Waits for a child that is still running, so none is left behind as a zombie.
    ~ChildProcess();

    // Starts the program; throws InvalidArgumentException when it cannot be started or was started before.
    void launch();
    // Blocks until the child exits and answers terminationStatus().
    int waitUntilExit();
    [[nodiscard]] bool isRunning() const noexcept { return pid_ > 0 && !exited_; }
    // The exit status, or 128 plus the signal number for a child ended by a signal; -1 before the exit.
    [[nodiscard]] int terminationStatus() const noexcept { return status_; }
    [[nodiscard]] pid_t processIdentifier() const noexcept { return pid_; }

    // Launches, waits, and answers the termination status.
    static int run(std::string executable, std::vector<std::string> arguments,
                   std::string workingDirectory = {});

  private:
    std::string executable_;
    std::vector<std::string> arguments_;
    std::string workingDirectory_;
    pid_t pid_ = 0;
    bool exited_ = false;
    int status_ = -1;
};

}  // namespace bv
