// The cryptographic provider helpers: a small layer of free functions over OpenSSL 3 that BVEncryption
// builds on, with provider handles, keys and status codes (0 for success).
//
// cssmStartup creates, once per process, an OpenSSL library context of the library's own and loads the
// default and legacy providers into it (the legacy one supplies DES). Every algorithm is fetched from that
// context, so an application's own OpenSSL set-up is never read or changed.
//
// A session is: cdsaCspAttach, cdsaDeriveKey, cdsaEncrypt or cdsaDecrypt, cdsaFreeKey, cdsaCspDetach.
// Keys come from PBKDF2 with HMAC-SHA1 over the fixed 8-byte salt "dustyOwl", 1000 iterations; the
// symmetric ciphers run in CBC mode with the fixed initialisation vector 3a91c4e07d5b2f68, so the same pass
// phrase and plain bytes always give the same cipher bytes.
//
// The Diffie-Hellman helpers use the RFC 7919 finite-field groups that OpenSSL names ffdhe2048, ffdhe3072,
// ffdhe4096, ffdhe6144 and ffdhe8192, chosen by the key size; no parameters are generated at run time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

// The status of a helper: 0 for success, otherwise what went wrong (cssmStatusText describes it).
enum CssmReturn : std::uint32_t {
    CssmOK = 0,
    CssmErrProviderUnavailable = 0x1001,  // the library context or a provider could not be loaded
    CssmErrInvalidHandle = 0x1002,        // a null or detached provider handle
    CssmErrInvalidAlgorithm = 0x1003,     // no cipher context, digest or derivation for the algorithm
    CssmErrInvalidKeySize = 0x1004,       // a key size the algorithm cannot take
    CssmErrInvalidKey = 0x1005,           // a key without the data the operation needs
    CssmErrDerivationFailed = 0x1006,
    CssmErrEncryptionFailed = 0x1007,
    CssmErrDecryptionFailed = 0x1008,  // wrong key, damaged cipher bytes or bad padding
    CssmErrKeyGenerationFailed = 0x1009,
    CssmErrKeyExchangeFailed = 0x100A,  // also a peer public key that is not a valid group element
    CssmErrDigestFailed = 0x100B,
};

// The algorithms a key, a cipher context or a digest names.
enum class CssmAlgorithm {
    DES,
    TripleDES3KeyEDE,  // a three-key triple-DES key uses the EDE algorithm
    RC2,
    RC5,
    AES,
    RC4,
    ASC,
    RSA,
    DH,
    MD5,
    SHA1,
    SHA256,
    SHA512,
};

enum class CssmContextKind { None, Symmetric, Asymmetric };
enum class CssmMode { None, CBCPadIV8 };
enum class CssmPadding { None, PKCS1, PKCS5, PKCS7 };

// What a cipher context for a key algorithm is made of.
struct CssmContextChoice {
    CssmContextKind kind = CssmContextKind::None;
    CssmMode mode = CssmMode::None;
    CssmPadding padding = CssmPadding::None;
};

// A key. Symmetric keys hold their raw bytes (extractable); Diffie-Hellman keys hold an OpenSSL key object.
struct CssmKey {
    CssmAlgorithm algorithm = CssmAlgorithm::DES;
    std::uint32_t sizeInBits = 0;
    std::string label;
    ByteData keyData;
    std::shared_ptr<void> asymmetricKey;  // an EVP_PKEY for Diffie-Hellman keys, else null
};

struct CspSession;
// A provider handle from cdsaCspAttach, valid until cdsaCspDetach.
using CspHandle = CspSession*;

// The fixed salt and iteration count of every derivation, and the fixed initialisation vector.
inline constexpr char kCdsaSalt[] = "dustyOwl";
inline constexpr std::size_t kCdsaSaltLength = 8;
inline constexpr unsigned kCdsaIterations = 1000;
inline constexpr std::uint8_t kCdsaInitVector[8] = {0x3a, 0x91, 0xc4, 0xe0, 0x7d, 0x5b, 0x2f, 0x68};

// A short English text for a status ("no error" for 0).
[[nodiscard]] const char* cssmStatusText(CssmReturn status);
// Writes "HOW: status text" as one line on standard error.
void cssmPerror(const char* how, CssmReturn status);

// Creates the library's OpenSSL context with the default and legacy providers; true at once when that was
// already done in this process, false when a provider cannot be loaded (a later call tries again).
bool cssmStartup();

// Starts up and hands out a provider handle in *handle (null on failure).
CssmReturn cdsaCspAttach(CspHandle* handle);
// Releases the handle; a null handle is CssmErrInvalidHandle.
CssmReturn cdsaCspDetach(CspHandle handle);

// Derives a key of the algorithm and size with PBKDF2-HMAC-SHA1 from the pass phrase bytes, the fixed salt
// and 1000 iterations. DES takes 64 bits (parity bits included), triple-DES 192, AES 128/192/256; RC2, RC4
// and RC5 any whole number of bytes from 1 to 256. The key is labelled "tempKey".
CssmReturn cdsaDeriveKey(CspHandle handle, const void* passPhrase, std::size_t passPhraseLength,
                         CssmAlgorithm keyAlgorithm, std::uint32_t keySizeInBits, CssmKey* key);
// Wipes and releases the key's data.
CssmReturn cdsaFreeKey(CspHandle handle, CssmKey* key);

// The cipher context rule: DES, triple-DES, RC2 and RC5 are symmetric CBC with PKCS #5 padding; AES is CBC
// with PKCS #7 padding; RC4 and ASC are stream ciphers without mode or padding; RSA is asymmetric with
// PKCS #1 padding; any other algorithm is CssmErrInvalidAlgorithm.
CssmReturn genCryptHandle(CssmAlgorithm keyAlgorithm, CssmContextChoice* choice);

// Encrypts in one pass and appends the final padding block; *cipher is empty on failure. Only symmetric
// keys encrypt here (an RSA or Diffie-Hellman key is CssmErrInvalidAlgorithm); ciphers with a block longer
// than 8 bytes take the fixed vector followed by zero bytes.
CssmReturn cdsaEncrypt(CspHandle handle, const CssmKey& key, const ByteData& plain, ByteData* cipher);
// Decrypts and removes the padding; CssmErrDecryptionFailed (and an empty *plain) for a wrong key, a
// cipher length that is no whole number of blocks, or bad padding.
CssmReturn cdsaDecrypt(CspHandle handle, const CssmKey& key, const ByteData& cipher, ByteData* plain);

// A Diffie-Hellman key pair in the ffdhe group of that size (2048, 3072, 4096, 6144 or 8192 bits). The
// public key holds only the public value (keyData: big-endian bytes of the group's size), for the peer.
CssmReturn cdsaDhGenerateKeyPair(CspHandle handle, std::uint32_t keySizeInBits, CssmKey* privateKey,
                                 CssmKey* publicKey);
// Agrees on a shared secret with the peer's public value (bytes as cdsaDhGenerateKeyPair gives them) and
// makes a symmetric key of the algorithm and size from its leading bytes.
CssmReturn cdsaDhKeyExchange(CspHandle handle, const CssmKey& privateKey, const ByteData& peerPublicKey,
                             CssmAlgorithm derivedKeyAlgorithm, std::uint32_t derivedKeySizeInBits,
                             CssmKey* derivedKey);

// A one-pass digest with MD5, SHA-1, SHA-256 or SHA-512; any other algorithm is CssmErrInvalidAlgorithm.
CssmReturn cdsaDigest(CspHandle handle, CssmAlgorithm digestAlgorithm, const ByteData& data,
                      ByteData* digest);

}  // namespace bv
