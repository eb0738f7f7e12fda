// BVNSHost: internet reachability through the bounded host lookup.
#include "BrevantCocoaExtensions/files/BVNSHost.hpp"

#include <utility>

#include "BrevantCocoaExtensions/platform/HostLookup.hpp"

namespace bv::BVNSHost {

namespace {

std::vector<std::string>& hostNames() {
    static std::vector<std::string> names{"www.wikipedia.org", "www.gnu.org", "www.ietf.org"};
    return names;
}

}  // namespace

bool isInternetReachable() {
    return HostLookup::resolvesAny(hostNames());
}

std::vector<std::string> setReachabilityHostNames(std::vector<std::string> names) {
    return std::exchange(hostNames(), std::move(names));
}

}  // namespace bv::BVNSHost
