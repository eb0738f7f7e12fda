// BVUtilities: digests.
#include "BrevantCocoaExtensions/dates/BVUtilities.hpp"

#include <cstdint>
#include <string>

#include "BrevantCocoaExtensions/platform/Md5.hpp"

namespace bv {

Text BVUtilities::MD5ForString(const Text& string) {
    const std::string bytes = string.toUtf8();
    return MD5ForData(ByteData(bytes.begin(), bytes.end()));
}

Text BVUtilities::MD5ForData(const ByteData& data) {
    const auto length = static_cast<std::uint32_t>(data.size());  // the digest's 32-bit length
    return Text(Md5::hexOf(data.data(), length));
}

}  // namespace bv
