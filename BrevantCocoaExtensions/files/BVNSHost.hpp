// BVNSHost: a quick test of whether the internet is reachable, by looking up well-known host names.
#pragma once

#include <string>
#include <vector>

namespace bv::BVNSHost {

// Looks up "www.wikipedia.org", "www.gnu.org" and "www.ietf.org" in that order and answers true at the
// first that resolves (the rest are not tried); false when none does. The lookups together are bounded to
// a few seconds, so an offline machine answers false promptly.
[[nodiscard]] bool isInternetReachable();

// Replaces the host names isInternetReachable tries (tests use local names) and answers the previous list.
std::vector<std::string> setReachabilityHostNames(std::vector<std::string> hostNames);

}  // namespace bv::BVNSHost
