// brevant: the command-line tool that does the library's main jobs on real files.
#include <unistd.h>

#include <csignal>
#include <cstdio>

#include "Command.hpp"

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN);  // a closed pipe shows up as a failed write, which ends quietly
    static char outputBuffer[1 << 16];
    if (!isatty(STDOUT_FILENO)) std::setvbuf(stdout, outputBuffer, _IOFBF, sizeof outputBuffer);
    CLI::App app{"brevant: the Brevant suite's utility library on real files", "brevant"};
    app.set_version_flag("--version", std::string("brevant ") + BV_VERSION);
    app.require_subcommand(1);
    int exitCode = brevant::kExitSuccess;
    for (auto& [name, install] : brevant::commandRegistry())
        install(app, &exitCode);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp& help) {
        return brevant::finishOutput(app.exit(help));
    } catch (const CLI::CallForAllHelp& help) {
        return brevant::finishOutput(app.exit(help));
    } catch (const CLI::CallForVersion& version) {
        return brevant::finishOutput(app.exit(version));
    } catch (const CLI::ParseError& error) {
        app.exit(error);
        return brevant::kExitUsage;
    }
    return brevant::finishOutput(exitCode);
}
