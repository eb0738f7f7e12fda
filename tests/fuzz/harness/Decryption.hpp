// Harness: decrypting any bytes under any pass phrase.
//
// Input: one byte N (taken modulo 17), then N bytes of pass phrase, then the cipher bytes.
#pragma once

#include "BrevantCocoaExtensions/files/BVEncryption.hpp"
#include "Common.hpp"

namespace bv::fuzz {

// A decryption fails (null) or gives plain bytes 1 to 8 shorter than a whole-block cipher, which encrypt
// back to exactly the same cipher bytes (the cipher is deterministic).
inline void decryption(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return;
    const std::size_t keyLength = std::min<std::size_t>(data[0] % 17, size - 1);
    const Text key = Text::fromLatin1(asChars(data + 1, keyLength));
    const ByteData cipher(data + 1 + keyLength, data + size);
    const std::optional<ByteData> plain = BVEncryption::decryptDataUsingKey(cipher, key);
    if (!plain) return;
    check(cipher.size() % 8 == 0 && cipher.size() - plain->size() >= 1 && cipher.size() - plain->size() <= 8,
          "plain bytes are the cipher less 1 to 8 bytes of padding");
    check(BVEncryption::encryptDataUsingKey(*plain, key) == cipher,
          "the plain bytes encrypt back to the cipher");
}

}  // namespace bv::fuzz
