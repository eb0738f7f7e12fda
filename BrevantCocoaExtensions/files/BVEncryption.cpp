// BVEncryption: one provider session per call (attach, derive, run the cipher, free, detach).
#include "BrevantCocoaExtensions/files/BVEncryption.hpp"

#include <cstring>
#include <string>

#include "BrevantCocoaExtensions/files/CDSA.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"

namespace bv {

namespace {

constexpr std::uint32_t kDesKeyBits = 64;

// Attaches and derives the DES key from the pass phrase up to its first zero byte; false after writing
// the failing step's line on standard error.
bool openSession(const Text& passPhrase, CspHandle* handle, CssmKey* key) {
    CssmReturn status = cdsaCspAttach(handle);
    if (status != CssmOK) {
        cssmPerror("Error in cdsaCspAttach()", status);
        return false;
    }
    const std::string bytes = passPhrase.toUtf8();
    status = cdsaDeriveKey(*handle, bytes.data(), std::strlen(bytes.c_str()), CssmAlgorithm::DES, kDesKeyBits,
                           key);
    if (status != CssmOK) {
        cssmPerror("Error in cdsaDeriveKey()", status);
        (void)cdsaCspDetach(*handle);
        return false;
    }
    return true;
}

void closeSession(CspHandle handle, CssmKey* key) {
    (void)cdsaFreeKey(handle, key);
    (void)cdsaCspDetach(handle);
}

}  // namespace

std::optional<ByteData> BVEncryption::encryptDataUsingKey(const ByteData& data, const Text& key) {
    CspHandle handle = nullptr;
    CssmKey desKey;
    if (!openSession(key, &handle, &desKey)) return std::nullopt;
    ByteData cipher;
    (void)cdsaEncrypt(handle, desKey, data, &cipher);  // unchecked by design: a failure leaves it empty
    closeSession(handle, &desKey);
    return cipher;
}

std::optional<ByteData> BVEncryption::encryptStringUsingKey(const Text& string, const Text& key) {
    const std::string utf8 = string.toUtf8();
    return encryptDataUsingKey(ByteData(utf8.begin(), utf8.end()), key);
}

std::optional<ByteData> BVEncryption::decryptDataUsingKey(const ByteData& data, const Text& key) {
    CspHandle handle = nullptr;
    CssmKey desKey;
    if (!openSession(key, &handle, &desKey)) return std::nullopt;
    ByteData plain;
    const CssmReturn status = cdsaDecrypt(handle, desKey, data, &plain);
    closeSession(handle, &desKey);
    if (status != CssmOK) {
        cssmPerror("Error in cdsaDecrypt()", status);
        return std::nullopt;
    }
    return plain;
}

std::optional<Text> BVEncryption::stringDecryptionForEncryptedDataUsingKey(const ByteData& data,
                                                                           const Text& key) {
    const std::optional<ByteData> plain = decryptDataUsingKey(data, key);
    if (!plain) return std::nullopt;
    return BVNSString::stringWithDataUsingEncoding(*plain, TextEncoding::ASCII);
}

}  // namespace bv
