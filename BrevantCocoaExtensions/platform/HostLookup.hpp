// bv::HostLookup: host lookup by name through getaddrinfo, bounded in time.
//
// A plain getaddrinfo can wait on an unreachable name server for half a minute or more. These lookups run
// as asynchronous requests (glibc's getaddrinfo_a) and give up when their time is spent, so an offline
// machine answers false within the limit and the caller never hangs. A lookup that is still running when
// its time runs out finishes in the background and frees itself.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace bv::HostLookup {

// The default time allowed for a whole lookup (all names of resolvesAny together).
inline constexpr std::chrono::milliseconds kDefaultLimit{3000};

// Whether the name resolves to at least one address within the limit.
[[nodiscard]] bool resolves(const std::string& hostName, std::chrono::milliseconds limit = kDefaultLimit);

// Whether any of the names resolves, trying them in order and stopping at the first that does; the limit
// bounds all the attempts together.
[[nodiscard]] bool resolvesAny(const std::vector<std::string>& hostNames,
                               std::chrono::milliseconds limit = kDefaultLimit);

}  // namespace bv::HostLookup
