// The cryptographic provider helpers on OpenSSL 3: one library context of the library's own, algorithms
// fetched from it by name, and the fixed derivation and cipher choices of BVEncryption.
#include "BrevantCocoaExtensions/files/CDSA.hpp"

#include <openssl/core_names.h>
#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/kdf.h>
#include <openssl/params.h>
#include <openssl/provider.h>

#include <algorithm>
#include <cstdio>
#include <mutex>

namespace bv {

struct CspSession {
    OSSL_LIB_CTX* context = nullptr;
};

namespace {

// The process-wide provider state, created by the first successful cssmStartup and kept for the life of
// the process (OpenSSL needs the providers loaded as long as anyone may encrypt).
struct ProviderState {
    std::mutex mutex;
    OSSL_LIB_CTX* context = nullptr;
};

ProviderState& providerState() {
    static ProviderState state;
    return state;
}

template <typename T, void (*Free)(T*)>
struct OpenSSLDeleter {
    void operator()(T* pointer) const { Free(pointer); }
};
using CipherPtr = std::unique_ptr<EVP_CIPHER, OpenSSLDeleter<EVP_CIPHER, EVP_CIPHER_free>>;
using CipherContextPtr = std::unique_ptr<EVP_CIPHER_CTX, OpenSSLDeleter<EVP_CIPHER_CTX, EVP_CIPHER_CTX_free>>;
using KdfPtr = std::unique_ptr<EVP_KDF, OpenSSLDeleter<EVP_KDF, EVP_KDF_free>>;
using KdfContextPtr = std::unique_ptr<EVP_KDF_CTX, OpenSSLDeleter<EVP_KDF_CTX, EVP_KDF_CTX_free>>;
using MdPtr = std::unique_ptr<EVP_MD, OpenSSLDeleter<EVP_MD, EVP_MD_free>>;
using PkeyPtr = std::unique_ptr<EVP_PKEY, OpenSSLDeleter<EVP_PKEY, EVP_PKEY_free>>;
using PkeyContextPtr = std::unique_ptr<EVP_PKEY_CTX, OpenSSLDeleter<EVP_PKEY_CTX, EVP_PKEY_CTX_free>>;

// Whether a key of that many bits suits the algorithm (as a symmetric key).
bool keySizeFits(CssmAlgorithm algorithm, std::uint32_t bits) {
    switch (algorithm) {
        case CssmAlgorithm::DES:
            return bits == 64;
        case CssmAlgorithm::TripleDES3KeyEDE:
            return bits == 192;
        case CssmAlgorithm::AES:
            return bits == 128 || bits == 192 || bits == 256;
        case CssmAlgorithm::RC2:
        case CssmAlgorithm::RC4:
        case CssmAlgorithm::RC5:
            return bits % 8 == 0 && bits >= 8 && bits <= 2048;
        default:
            return false;
    }
}

// The OpenSSL cipher name for a symmetric key, or null when OpenSSL has no such cipher.
const char* cipherName(const CssmKey& key) {
    switch (key.algorithm) {
        case CssmAlgorithm::DES:
            return "DES-CBC";
        case CssmAlgorithm::TripleDES3KeyEDE:
            return "DES-EDE3-CBC";
        case CssmAlgorithm::RC2:
            return "RC2-CBC";
        case CssmAlgorithm::RC5:
            return "RC5-CBC";
        case CssmAlgorithm::RC4:
            return "RC4";
        case CssmAlgorithm::AES:
            return key.sizeInBits == 128   ? "AES-128-CBC"
                   : key.sizeInBits == 192 ? "AES-192-CBC"
                                           : "AES-256-CBC";
        default:
            return nullptr;
    }
}

const char* digestName(CssmAlgorithm algorithm) {
    switch (algorithm) {
        case CssmAlgorithm::MD5:
            return "MD5";
        case CssmAlgorithm::SHA1:
            return "SHA1";
        case CssmAlgorithm::SHA256:
            return "SHA256";
        case CssmAlgorithm::SHA512:
            return "SHA512";
        default:
            return nullptr;
    }
}

const char* dhGroupName(std::uint32_t bits) {
    switch (bits) {
        case 2048:
            return "ffdhe2048";
        case 3072:
            return "ffdhe3072";
        case 4096:
            return "ffdhe4096";
        case 6144:
            return "ffdhe6144";
        case 8192:
            return "ffdhe8192";
        default:
            return nullptr;
    }
}

// A cipher context set up for the key with the fixed vector, ready for one pass; null with *status set.
CipherContextPtr makeCipherContext(CspHandle handle, const CssmKey& key, bool encrypt, CssmReturn* status) {
    CssmContextChoice choice;
    *status = genCryptHandle(key.algorithm, &choice);
    if (*status != CssmOK) return nullptr;
    const char* name = cipherName(key);
    if (choice.kind != CssmContextKind::Symmetric || name == nullptr) {
        *status = CssmErrInvalidAlgorithm;
        return nullptr;
    }
    if (key.keyData.empty() || key.keyData.size() * 8 != key.sizeInBits) {
        *status = CssmErrInvalidKey;
        return nullptr;
    }
    CipherPtr cipher(EVP_CIPHER_fetch(handle->context, name, nullptr));
    CipherContextPtr context(EVP_CIPHER_CTX_new());
    if (!cipher || !context) {
        *status = CssmErrInvalidAlgorithm;
        return nullptr;
    }
    std::uint8_t iv[EVP_MAX_IV_LENGTH] = {};
    std::copy(std::begin(kCdsaInitVector), std::end(kCdsaInitVector), iv);
    const int direction = encrypt ? 1 : 0;
    const bool ready =
        EVP_CipherInit_ex2(context.get(), cipher.get(), nullptr, nullptr, direction, nullptr) == 1 &&
        EVP_CIPHER_CTX_set_key_length(context.get(), static_cast<int>(key.keyData.size())) == 1 &&
        EVP_CipherInit_ex2(context.get(), nullptr, key.keyData.data(), iv, direction, nullptr) == 1 &&
        EVP_CIPHER_CTX_set_padding(context.get(), choice.padding == CssmPadding::None ? 0 : 1) == 1;
    if (!ready) {
        *status = encrypt ? CssmErrEncryptionFailed : CssmErrDecryptionFailed;
        return nullptr;
    }
    return context;
}

// Runs the cipher over the input in one update plus the final block; false when OpenSSL refuses.
bool runCipher(EVP_CIPHER_CTX* context, const ByteData& input, ByteData* output) {
    output->resize(input.size() + static_cast<std::size_t>(EVP_MAX_BLOCK_LENGTH));
    int written = 0;
    int finalWritten = 0;
    const bool done = EVP_CipherUpdate(context, output->data(), &written, input.data(),
                                       static_cast<int>(input.size())) == 1 &&
                      EVP_CipherFinal_ex(context, output->data() + written, &finalWritten) == 1;
    output->resize(done ? static_cast<std::size_t>(written + finalWritten) : 0);
    return done;
}

CssmReturn cipherPass(CspHandle handle, const CssmKey& key, const ByteData& input, ByteData* output,
                      bool encrypt) {
    if (output == nullptr) return encrypt ? CssmErrEncryptionFailed : CssmErrDecryptionFailed;
    output->clear();
    if (handle == nullptr || handle->context == nullptr) return CssmErrInvalidHandle;
    // OpenSSL counts lengths in int; larger inputs are refused rather than cut.
    if (input.size() > static_cast<std::size_t>(INT32_MAX - EVP_MAX_BLOCK_LENGTH))
        return encrypt ? CssmErrEncryptionFailed : CssmErrDecryptionFailed;
    CssmReturn status = CssmOK;
    CipherContextPtr context = makeCipherContext(handle, key, encrypt, &status);
    if (!context) return status;
    if (runCipher(context.get(), input, output)) return CssmOK;
    return encrypt ? CssmErrEncryptionFailed : CssmErrDecryptionFailed;
}

// The big-endian public value of a Diffie-Hellman key, padded to the group's size.
bool publicValueOf(EVP_PKEY* pkey, ByteData* bytes) {
    std::size_t length = 0;
    if (EVP_PKEY_get_octet_string_param(pkey, OSSL_PKEY_PARAM_ENCODED_PUBLIC_KEY, nullptr, 0, &length) != 1)
        return false;
    bytes->resize(length);
    return EVP_PKEY_get_octet_string_param(pkey, OSSL_PKEY_PARAM_ENCODED_PUBLIC_KEY, bytes->data(),
                                           bytes->size(), &length) == 1;
}

// A key holding only the peer's public value, in the same group as the own key.
PkeyPtr peerKeyFor(EVP_PKEY* own, const ByteData& peerPublicKey) {
    PkeyPtr peer(EVP_PKEY_new());
    if (!peer || EVP_PKEY_copy_parameters(peer.get(), own) != 1 ||
        EVP_PKEY_set1_encoded_public_key(peer.get(), peerPublicKey.data(), peerPublicKey.size()) != 1)
        return nullptr;
    return peer;
}

}  // namespace

const char* cssmStatusText(CssmReturn status) {
    switch (status) {
        case CssmOK:
            return "no error";
        case CssmErrProviderUnavailable:
            return "the cryptographic provider could not be loaded";
        case CssmErrInvalidHandle:
            return "invalid provider handle";
        case CssmErrInvalidAlgorithm:
            return "invalid algorithm";
        case CssmErrInvalidKeySize:
            return "invalid key size";
        case CssmErrInvalidKey:
            return "invalid key";
        case CssmErrDerivationFailed:
            return "key derivation failed";
        case CssmErrEncryptionFailed:
            return "encryption failed";
        case CssmErrDecryptionFailed:
            return "decryption failed (wrong key, damaged data or bad padding)";
        case CssmErrKeyGenerationFailed:
            return "key generation failed";
        case CssmErrKeyExchangeFailed:
            return "key exchange failed";
        case CssmErrDigestFailed:
            return "digest failed";
    }
    return "unknown error";
}

void cssmPerror(const char* how, CssmReturn status) {
    std::fprintf(stderr, "%s: %s (status 0x%x)\n", how, cssmStatusText(status),
                 static_cast<unsigned>(status));
}

bool cssmStartup() {
    ProviderState& state = providerState();
    const std::lock_guard lock(state.mutex);
    if (state.context != nullptr) return true;
    OSSL_LIB_CTX* context = OSSL_LIB_CTX_new();
    if (context == nullptr) return false;
    // The providers stay loaded for the life of the process, like the context itself.
    if (OSSL_PROVIDER_load(context, "default") == nullptr ||
        OSSL_PROVIDER_load(context, "legacy") == nullptr) {
        OSSL_LIB_CTX_free(context);
        return false;
    }
    state.context = context;
    return true;
}

CssmReturn cdsaCspAttach(CspHandle* handle) {
    if (handle == nullptr) return CssmErrInvalidHandle;
    *handle = nullptr;
    if (!cssmStartup()) return CssmErrProviderUnavailable;
    *handle = new CspSession{providerState().context};
    return CssmOK;
}

CssmReturn cdsaCspDetach(CspHandle handle) {
    if (handle == nullptr) return CssmErrInvalidHandle;
    delete handle;
    return CssmOK;
}

CssmReturn cdsaDeriveKey(CspHandle handle, const void* passPhrase, std::size_t passPhraseLength,
                         CssmAlgorithm keyAlgorithm, std::uint32_t keySizeInBits, CssmKey* key) {
    if (handle == nullptr || handle->context == nullptr) return CssmErrInvalidHandle;
    if (key == nullptr || (passPhrase == nullptr && passPhraseLength != 0)) return CssmErrInvalidKey;
    if (!keySizeFits(keyAlgorithm, keySizeInBits)) return CssmErrInvalidKeySize;
    KdfPtr kdf(EVP_KDF_fetch(handle->context, "PBKDF2", nullptr));
    KdfContextPtr context(kdf ? EVP_KDF_CTX_new(kdf.get()) : nullptr);
    if (!context) return CssmErrDerivationFailed;
    static const char empty = 0;
    unsigned iterations = kCdsaIterations;
    int pkcs5Mode = 1;  // plain PKCS #5: no lower bounds on salt or key length
    char digest[] = "SHA1";
    const OSSL_PARAM params[] = {
        OSSL_PARAM_construct_octet_string(OSSL_KDF_PARAM_PASSWORD,
                                          const_cast<void*>(passPhraseLength ? passPhrase : &empty),
                                          passPhraseLength),
        OSSL_PARAM_construct_octet_string(OSSL_KDF_PARAM_SALT, const_cast<char*>(kCdsaSalt), kCdsaSaltLength),
        OSSL_PARAM_construct_uint(OSSL_KDF_PARAM_ITER, &iterations),
        OSSL_PARAM_construct_utf8_string(OSSL_KDF_PARAM_DIGEST, digest, 0),
        OSSL_PARAM_construct_int(OSSL_KDF_PARAM_PKCS5, &pkcs5Mode),
        OSSL_PARAM_construct_end(),
    };
    ByteData bytes(keySizeInBits / 8);
    if (EVP_KDF_derive(context.get(), bytes.data(), bytes.size(), params) != 1) {
        OPENSSL_cleanse(bytes.data(), bytes.size());
        return CssmErrDerivationFailed;
    }
    *key = CssmKey{keyAlgorithm, keySizeInBits, "tempKey", std::move(bytes), nullptr};
    return CssmOK;
}

CssmReturn cdsaFreeKey(CspHandle handle, CssmKey* key) {
    if (handle == nullptr) return CssmErrInvalidHandle;
    if (key == nullptr) return CssmErrInvalidKey;
    OPENSSL_cleanse(key->keyData.data(), key->keyData.size());
    key->keyData.clear();
    key->asymmetricKey.reset();
    return CssmOK;
}

CssmReturn genCryptHandle(CssmAlgorithm keyAlgorithm, CssmContextChoice* choice) {
    switch (keyAlgorithm) {
        case CssmAlgorithm::DES:
        case CssmAlgorithm::TripleDES3KeyEDE:
        case CssmAlgorithm::RC2:
        case CssmAlgorithm::RC5:
            *choice = {CssmContextKind::Symmetric, CssmMode::CBCPadIV8, CssmPadding::PKCS5};
            return CssmOK;
        case CssmAlgorithm::AES:
            *choice = {CssmContextKind::Symmetric, CssmMode::CBCPadIV8, CssmPadding::PKCS7};
            return CssmOK;
        case CssmAlgorithm::RC4:
        case CssmAlgorithm::ASC:
            *choice = {CssmContextKind::Symmetric, CssmMode::None, CssmPadding::None};
            return CssmOK;
        case CssmAlgorithm::RSA:
            *choice = {CssmContextKind::Asymmetric, CssmMode::None, CssmPadding::PKCS1};
            return CssmOK;
        default:
            *choice = {};
            return CssmErrInvalidAlgorithm;
    }
}

CssmReturn cdsaEncrypt(CspHandle handle, const CssmKey& key, const ByteData& plain, ByteData* cipher) {
    return cipherPass(handle, key, plain, cipher, true);
}

CssmReturn cdsaDecrypt(CspHandle handle, const CssmKey& key, const ByteData& cipher, ByteData* plain) {
    return cipherPass(handle, key, cipher, plain, false);
}

CssmReturn cdsaDhGenerateKeyPair(CspHandle handle, std::uint32_t keySizeInBits, CssmKey* privateKey,
                                 CssmKey* publicKey) {
    if (handle == nullptr || handle->context == nullptr) return CssmErrInvalidHandle;
    const char* group = dhGroupName(keySizeInBits);
    if (group == nullptr) return CssmErrInvalidKeySize;
    if (privateKey == nullptr || publicKey == nullptr) return CssmErrInvalidKey;
    PkeyContextPtr context(EVP_PKEY_CTX_new_from_name(handle->context, "DH", nullptr));
    char groupName[16];
    std::snprintf(groupName, sizeof groupName, "%s", group);
    const OSSL_PARAM params[] = {OSSL_PARAM_construct_utf8_string(OSSL_PKEY_PARAM_GROUP_NAME, groupName, 0),
                                 OSSL_PARAM_construct_end()};
    EVP_PKEY* generated = nullptr;
    if (!context || EVP_PKEY_keygen_init(context.get()) != 1 ||
        EVP_PKEY_CTX_set_params(context.get(), params) != 1 ||
        EVP_PKEY_generate(context.get(), &generated) != 1)
        return CssmErrKeyGenerationFailed;
    std::shared_ptr<void> pkey(generated, [](void* p) { EVP_PKEY_free(static_cast<EVP_PKEY*>(p)); });
    ByteData publicValue;
    if (!publicValueOf(generated, &publicValue)) return CssmErrKeyGenerationFailed;
    *privateKey = CssmKey{CssmAlgorithm::DH, keySizeInBits, "privateKey", {}, pkey};
    *publicKey = CssmKey{CssmAlgorithm::DH, keySizeInBits, "publicKey", std::move(publicValue), nullptr};
    return CssmOK;
}

CssmReturn cdsaDhKeyExchange(CspHandle handle, const CssmKey& privateKey, const ByteData& peerPublicKey,
                             CssmAlgorithm derivedKeyAlgorithm, std::uint32_t derivedKeySizeInBits,
                             CssmKey* derivedKey) {
    if (handle == nullptr || handle->context == nullptr) return CssmErrInvalidHandle;
    if (derivedKey == nullptr || privateKey.algorithm != CssmAlgorithm::DH || !privateKey.asymmetricKey)
        return CssmErrInvalidKey;
    if (!keySizeFits(derivedKeyAlgorithm, derivedKeySizeInBits)) return CssmErrInvalidKeySize;
    auto* own = static_cast<EVP_PKEY*>(privateKey.asymmetricKey.get());
    PkeyPtr peer = peerKeyFor(own, peerPublicKey);
    PkeyContextPtr context(EVP_PKEY_CTX_new_from_pkey(handle->context, own, nullptr));
    std::size_t length = 0;
    if (!peer || !context || EVP_PKEY_derive_init(context.get()) != 1 ||
        EVP_PKEY_derive_set_peer_ex(context.get(), peer.get(), 1) != 1 ||
        EVP_PKEY_derive(context.get(), nullptr, &length) != 1)
        return CssmErrKeyExchangeFailed;
    ByteData secret(length);
    if (EVP_PKEY_derive(context.get(), secret.data(), &length) != 1 || length * 8 < derivedKeySizeInBits) {
        OPENSSL_cleanse(secret.data(), secret.size());
        return CssmErrKeyExchangeFailed;
    }
    ByteData keyBytes(secret.begin(), secret.begin() + derivedKeySizeInBits / 8);
    OPENSSL_cleanse(secret.data(), secret.size());
    *derivedKey =
        CssmKey{derivedKeyAlgorithm, derivedKeySizeInBits, "derivedKey", std::move(keyBytes), nullptr};
    return CssmOK;
}

CssmReturn cdsaDigest(CspHandle handle, CssmAlgorithm digestAlgorithm, const ByteData& data,
                      ByteData* digest) {
    if (handle == nullptr || handle->context == nullptr) return CssmErrInvalidHandle;
    const char* name = digestName(digestAlgorithm);
    if (name == nullptr) return CssmErrInvalidAlgorithm;
    if (digest == nullptr) return CssmErrDigestFailed;
    MdPtr md(EVP_MD_fetch(handle->context, name, nullptr));
    if (!md) return CssmErrInvalidAlgorithm;
    digest->resize(static_cast<std::size_t>(EVP_MD_get_size(md.get())));
    unsigned length = 0;
    if (EVP_Digest(data.data(), data.size(), digest->data(), &length, md.get(), nullptr) != 1) {
        digest->clear();
        return CssmErrDigestFailed;
    }
    digest->resize(length);
    return CssmOK;
}

}  // namespace bv
