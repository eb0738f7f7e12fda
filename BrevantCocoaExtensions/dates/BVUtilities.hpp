// BVUtilities: the odds and ends the suite's applications share, as class operations with no instances.
#pragma once

#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

class BVUtilities {
  public:
    BVUtilities() = delete;

    // --- Digests --------------------------------------------------------------------------------------

    // The MD5 digest of the text's UTF-8 bytes, as MD5ForData gives it.
    [[nodiscard]] static Text MD5ForString(const Text& string);
    // The MD5 digest as 32 lower-case hexadecimal digits. The byte count goes to the digest as a 32-bit
    // length, so of data of 4 GiB or more only the first (size mod 2^32) bytes count; stream larger input
    // through bv::Md5 instead.
    [[nodiscard]] static Text MD5ForData(const ByteData& data);
};

}  // namespace bv
