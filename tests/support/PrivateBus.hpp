// A private D-Bus session bus for one test program: starts dbus-daemon with a configuration of its own in a
// temporary folder, points DBUS_SESSION_BUS_ADDRESS at it, and stops the daemon when it goes away. Nothing
// reaches the user's real session bus.
#pragma once

#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

extern char** environ;

namespace bvtest {

class PrivateBus {
  public:
    PrivateBus() {
        char pattern[] = "/tmp/bv-bus-XXXXXX";
        if (!mkdtemp(pattern)) throw std::runtime_error("PrivateBus: no temporary folder");
        folder_ = pattern;
        const std::string config = folder_ + "/session.conf";
        std::ofstream(config)
            << "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
               " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
               "<busconfig><type>session</type><listen>unix:path="
            << folder_ << "/bus</listen>"
            << "<policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
               "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>\n";
        start(config);
        address_ = "unix:path=" + folder_ + "/bus";
        setenv("DBUS_SESSION_BUS_ADDRESS", address_.c_str(), 1);
    }

    ~PrivateBus() {
        if (pid_ > 0) {
            kill(pid_, SIGTERM);
            waitpid(pid_, nullptr, 0);
        }
        unsetenv("DBUS_SESSION_BUS_ADDRESS");
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    // The address a client connects to ("unix:path=...").
    [[nodiscard]] const std::string& address() const { return address_; }

  private:
    void start(const std::string& config) {
        std::string configArgument = "--config-file=" + config;
        char* argv[] = {const_cast<char*>("dbus-daemon"), const_cast<char*>(configArgument.c_str()),
                        const_cast<char*>("--nofork"), const_cast<char*>("--nopidfile"), nullptr};
        if (posix_spawnp(&pid_, "dbus-daemon", nullptr, nullptr, argv, environ) != 0)
            throw std::runtime_error(
                "PrivateBus: dbus-daemon cannot start (is the dbus-daemon package installed?)");
        const std::string socket = folder_ + "/bus";
        // The socket file appears when the daemon binds it, a moment before it accepts connections: wait
        // until a connection is accepted.
        for (int attempt = 0; attempt < 500 && !accepts(socket); ++attempt)
            usleep(10'000);
        if (!accepts(socket)) throw std::runtime_error("PrivateBus: dbus-daemon did not start listening");
    }

    static bool accepts(const std::string& socketPath) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (socketPath.size() >= sizeof address.sun_path) return false;
        socketPath.copy(address.sun_path, socketPath.size());
        const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (descriptor < 0) return false;
        const bool connected =
            ::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
        ::close(descriptor);
        return connected;
    }

    std::string folder_;
    std::string address_;
    pid_t pid_ = -1;
};

}  // namespace bvtest
