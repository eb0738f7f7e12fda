// bv::NotificationCenter: notifications between processes, as signals on the D-Bus session bus.
//
// A post sends the signal "Posted" with the name as its one string argument, from the object path
// /org/brevant/Notifications on the interface org.brevant.Notifications, to every process on the user's
// session bus. There is no object and no user information: only the name travels.
//
// The library starts no thread and no loop, so an observer is driven by its caller: a plain program calls
// waitAndProcess in its own loop; a Qt application watches fileDescriptor() with a QSocketNotifier (read)
// and calls processPending() when it fires. The match is in place when observe() returns, so a post made
// after that is never missed.
//
// Without a session bus (no DBUS_SESSION_BUS_ADDRESS and no $XDG_RUNTIME_DIR/bus), a post logs one line
// the first time in the process and answers false; the caller goes on.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv {

class NotificationObserver;

// The signal's coordinates, for programs that listen with other D-Bus tools.
inline constexpr const char* kNotificationPath = "/org/brevant/Notifications";
inline constexpr const char* kNotificationInterface = "org.brevant.Notifications";
inline constexpr const char* kNotificationMember = "Posted";

class NotificationCenter {
  public:
    using Callback = std::function<void(const Text& name)>;

    // Posts the name to every observer on the session bus; true once the signal has left this process.
    static bool postNotificationName(const Text& name);
    // An observer that calls the callback for each later post of the name; null without a session bus.
    [[nodiscard]] static std::unique_ptr<NotificationObserver> addObserverForName(const Text& name,
                                                                                  Callback callback);
};

// One connection to the session bus listening for one name; the connection closes when it is destroyed.
class NotificationObserver {
  public:
    ~NotificationObserver();
    NotificationObserver(const NotificationObserver&) = delete;
    NotificationObserver& operator=(const NotificationObserver&) = delete;

    // The connection's file descriptor, readable when something has arrived.
    [[nodiscard]] int fileDescriptor() const;
    // Calls the callback for every post already received, without blocking; answers how many.
    int processPending();
    // Waits up to the timeout for at least one post of the name, then calls the callback for all that
    // arrived; answers how many. A negative count means the connection failed.
    int waitAndProcess(std::chrono::milliseconds timeout);

  private:
    friend class NotificationCenter;
    struct State;
    explicit NotificationObserver(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

}  // namespace bv
