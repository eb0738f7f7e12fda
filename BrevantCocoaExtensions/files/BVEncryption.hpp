// BVEncryption: bytes and texts to cipher bytes and back with a pass phrase.
//
// Each call derives a DES key from the pass phrase (its UTF-8 bytes up to the first zero byte) with
// PBKDF2-HMAC-SHA1, the fixed salt "dustyOwl" and 1000 iterations, and runs DES-CBC with PKCS #5 padding and
// a fixed initialisation vector (see CDSA.hpp). The same pass phrase and plain bytes therefore always give
// the same cipher bytes, and files written by the suite's existing applications stay readable. The cipher
// is as long as the plain bytes rounded up to the next multiple of 8, plus a whole block when the length
// is already a multiple of 8. It keeps casual readers out; it is no protection against a determined one.
//
// Failures write one line on standard error ("Error in cdsaDecrypt(): ...") and give null.
#pragma once

#include <optional>

#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

class BVEncryption {
  public:
    // The cipher bytes; null when the provider or the derivation fails. A failed encryption itself gives
    // empty bytes rather than null.
    [[nodiscard]] static std::optional<ByteData> encryptDataUsingKey(const ByteData& data, const Text& key);
    // The cipher bytes of the text's UTF-8 bytes.
    [[nodiscard]] static std::optional<ByteData> encryptStringUsingKey(const Text& string, const Text& key);
    // The plain bytes; null for a wrong key, damaged cipher bytes or bad padding.
    [[nodiscard]] static std::optional<ByteData> decryptDataUsingKey(const ByteData& data, const Text& key);
    // Decrypts and reads the plain bytes as ASCII, not UTF-8: a text with characters outside ASCII,
    // encrypted with encryptStringUsingKey, comes back null rather than as it went in.
    [[nodiscard]] static std::optional<Text> stringDecryptionForEncryptedDataUsingKey(const ByteData& data,
                                                                                      const Text& key);
};

}  // namespace bv
