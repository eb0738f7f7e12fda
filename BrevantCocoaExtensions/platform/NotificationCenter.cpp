// Notifications between processes over sd-bus: one short-lived connection per post, one connection per
// observer with a signal match installed before the observer is handed out.
#include "BrevantCocoaExtensions/platform/NotificationCenter.hpp"

#include <systemd/sd-bus.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <string>

#include "BrevantCocoaExtensions/platform/Log.hpp"

namespace bv {

namespace {

// Logs the missing bus the first time only, so a program without one is told once, not on every save.
void logNoBusOnce(int error) {
    static std::atomic<bool> logged{false};
    if (!logged.exchange(true))
        log("Notifications are off: no D-Bus session bus (" + std::string(std::strerror(error)) + ")");
}

}  // namespace

struct NotificationObserver::State {
    sd_bus* bus = nullptr;
    sd_bus_slot* slot = nullptr;
    std::string name;
    NotificationCenter::Callback callback;
    int delivered = 0;

    static int onSignal(sd_bus_message* message, void* userdata, sd_bus_error*) {
        auto* state = static_cast<State*>(userdata);
        const char* posted = nullptr;
        if (sd_bus_message_read(message, "s", &posted) >= 0 && posted != nullptr && state->name == posted) {
            ++state->delivered;
            if (state->callback) state->callback(Text(posted));
        }
        return 0;
    }
};

bool NotificationCenter::postNotificationName(const Text& name) {
    sd_bus* bus = nullptr;
    int result = sd_bus_open_user(&bus);
    if (result >= 0) {
        const std::string utf8 = name.toUtf8();
        result = sd_bus_emit_signal(bus, kNotificationPath, kNotificationInterface, kNotificationMember, "s",
                                    utf8.c_str());
        if (result >= 0) result = sd_bus_flush(bus);
    }
    if (bus != nullptr) sd_bus_flush_close_unref(bus);
    if (result < 0) logNoBusOnce(-result);
    return result >= 0;
}

std::unique_ptr<NotificationObserver> NotificationCenter::addObserverForName(const Text& name,
                                                                             Callback callback) {
    auto state = std::make_unique<NotificationObserver::State>();
    state->name = name.toUtf8();
    state->callback = std::move(callback);
    // The match call waits for the bus's answer, so the match is active when this returns.
    if (sd_bus_open_user(&state->bus) < 0 ||
        sd_bus_match_signal(state->bus, &state->slot, nullptr, kNotificationPath, kNotificationInterface,
                            kNotificationMember, &NotificationObserver::State::onSignal, state.get()) < 0) {
        if (state->bus != nullptr) sd_bus_flush_close_unref(state->bus);
        return nullptr;
    }
    return std::unique_ptr<NotificationObserver>(new NotificationObserver(std::move(state)));
}

NotificationObserver::NotificationObserver(std::unique_ptr<State> state) : state_(std::move(state)) {}

NotificationObserver::~NotificationObserver() {
    sd_bus_slot_unref(state_->slot);
    sd_bus_flush_close_unref(state_->bus);
}

int NotificationObserver::fileDescriptor() const {
    return sd_bus_get_fd(state_->bus);
}

int NotificationObserver::processPending() {
    const int before = state_->delivered;
    int result = 0;
    while ((result = sd_bus_process(state_->bus, nullptr)) > 0) {
    }
    if (result < 0) return result;
    return state_->delivered - before;
}

int NotificationObserver::waitAndProcess(std::chrono::milliseconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    int count = 0;
    for (;;) {
        const int processed = processPending();
        if (processed < 0) return processed;
        count += processed;
        const auto left = deadline - std::chrono::steady_clock::now();
        if (count > 0 || left <= std::chrono::steady_clock::duration::zero()) return count;
        const auto micros = std::chrono::duration_cast<std::chrono::microseconds>(left).count();
        const int waited = sd_bus_wait(state_->bus, static_cast<std::uint64_t>(micros));
        if (waited < 0 && waited != -EINTR) return waited;
    }
}

}  // namespace bv
