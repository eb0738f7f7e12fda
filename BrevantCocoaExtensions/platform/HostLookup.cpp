// Bounded host lookup over getaddrinfo_a.
#include "BrevantCocoaExtensions/platform/HostLookup.hpp"

#include <netdb.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>

namespace bv::HostLookup {

namespace {

using Clock = std::chrono::steady_clock;

// One asynchronous request. Both the caller and the completion notification hold a reference; the last
// to let go frees it, so a request abandoned on time-out is freed when the resolver is done with it.
struct Request {
    std::string name;
    addrinfo hints{};
    gaicb block{};
    std::atomic<int> references{2};

    void release() {
        if (references.fetch_sub(1) == 1) {
            if (block.ar_result != nullptr) freeaddrinfo(block.ar_result);
            delete this;
        }
    }
};

void onComplete(sigval value) {
    static_cast<Request*>(value.sival_ptr)->release();
}

timespec remainingTime(Clock::time_point deadline) {
    const auto left = std::chrono::duration_cast<std::chrono::nanoseconds>(deadline - Clock::now());
    const long long nanoseconds = left.count() > 0 ? left.count() : 0;
    return timespec{static_cast<time_t>(nanoseconds / 1'000'000'000),
                    static_cast<long>(nanoseconds % 1'000'000'000)};
}

// Waits for the request until the deadline; answers its getaddrinfo result, or EAI_INPROGRESS on time-out.
int waitFor(gaicb* block, Clock::time_point deadline) {
    const gaicb* list[] = {block};
    for (;;) {
        const int state = gai_error(block);
        if (state != EAI_INPROGRESS) return state;
        const timespec left = remainingTime(deadline);
        if (left.tv_sec == 0 && left.tv_nsec == 0) return EAI_INPROGRESS;
        gai_suspend(list, 1, &left);  // returns early on completion, a signal or the time-out
    }
}

bool resolvesBefore(const std::string& hostName, Clock::time_point deadline) {
    auto* request = new Request{};
    request->name = hostName;
    request->hints.ai_socktype = SOCK_STREAM;
    request->block.ar_name = request->name.c_str();
    request->block.ar_request = &request->hints;
    sigevent notification{};
    notification.sigev_notify = SIGEV_THREAD;
    notification.sigev_notify_function = onComplete;
    notification.sigev_value.sival_ptr = request;
    gaicb* list[] = {&request->block};
    if (getaddrinfo_a(GAI_NOWAIT, list, 1, &notification) != 0) {
        delete request;  // never queued, so no notification will come
        return false;
    }
    const int state = waitFor(&request->block, deadline);
    if (state == EAI_INPROGRESS && gai_cancel(&request->block) == EAI_CANCELED) {
        request->release();  // a cancelled request is never notified: drop its reference too
    }
    const bool found = state == 0 && request->block.ar_result != nullptr;
    request->release();
    return found;
}

}  // namespace

bool resolves(const std::string& hostName, std::chrono::milliseconds limit) {
    return resolvesBefore(hostName, Clock::now() + limit);
}

bool resolvesAny(const std::vector<std::string>& hostNames, std::chrono::milliseconds limit) {
    const auto deadline = Clock::now() + limit;
    for (const auto& name : hostNames) {
        if (Clock::now() >= deadline) return false;
        if (resolvesBefore(name, deadline)) return true;
    }
    return false;
}

}  // namespace bv::HostLookup
