// BVEncryption beside bare OpenSSL in the same run: a PBKDF2-HMAC-SHA1 derivation (1000 iterations) plus
// EVP DES-CBC over the same bytes, with the cipher fetched once from a library context of the peer's own
// holding the legacy provider. On 1 MiB the cipher dominates; on a 16-byte text the derivation does, by
// design, so the small rows also show the bare derivation alone.
#include <benchmark/benchmark.h>
#include <openssl/evp.h>
#include <openssl/provider.h>

#include <random>

#include "BrevantCocoaExtensions/files/BVEncryption.hpp"

namespace {

const bv::Text kKey("hR5kt2v9");
const unsigned char kSalt[] = {'d', 'u', 's', 't', 'y', 'O', 'w', 'l'};
const unsigned char kIv[] = {0x3a, 0x91, 0xc4, 0xe0, 0x7d, 0x5b, 0x2f, 0x68};

bv::ByteData randomBytes(std::size_t size) {
    bv::ByteData out(size);
    std::mt19937 random(7);
    for (auto& byte : out)
        byte = static_cast<std::uint8_t>(random());
    return out;
}

// The peer: its own library context with the default and legacy providers, DES-CBC fetched once.
struct Peer {
    OSSL_LIB_CTX* context = OSSL_LIB_CTX_new();
    OSSL_PROVIDER* defaults = OSSL_PROVIDER_load(context, "default");
    OSSL_PROVIDER* legacy = OSSL_PROVIDER_load(context, "legacy");
    EVP_CIPHER* des = EVP_CIPHER_fetch(context, "DES-CBC", nullptr);

    static Peer& shared() {
        static Peer peer;
        return peer;
    }

    void derive(unsigned char key[8]) const {
        PKCS5_PBKDF2_HMAC("hR5kt2v9", 8, kSalt, sizeof kSalt, 1000, EVP_sha1(), 8, key);
    }

    bv::ByteData run(const bv::ByteData& input, bool encrypt) const {
        unsigned char key[8];
        derive(key);
        bv::ByteData out(input.size() + 8);
        EVP_CIPHER_CTX* cipher = EVP_CIPHER_CTX_new();
        int written = 0, last = 0;
        EVP_CipherInit_ex2(cipher, des, key, kIv, encrypt ? 1 : 0, nullptr);
        EVP_CipherUpdate(cipher, out.data(), &written, input.data(), static_cast<int>(input.size()));
        EVP_CipherFinal_ex(cipher, out.data() + written, &last);
        EVP_CIPHER_CTX_free(cipher);
        out.resize(static_cast<std::size_t>(written + last));
        return out;
    }
};

void setBytes(benchmark::State& state) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * state.range(0));
}

void BM_Encrypt_Library(benchmark::State& state) {
    const bv::ByteData plain = randomBytes(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(bv::BVEncryption::encryptDataUsingKey(plain, kKey));
    setBytes(state);
}

void BM_Encrypt_OpenSSL(benchmark::State& state) {
    const bv::ByteData plain = randomBytes(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(Peer::shared().run(plain, true));
    setBytes(state);
}

void BM_Decrypt_Library(benchmark::State& state) {
    const bv::ByteData cipher =
        *bv::BVEncryption::encryptDataUsingKey(randomBytes(static_cast<std::size_t>(state.range(0))), kKey);
    for (auto _ : state)
        benchmark::DoNotOptimize(bv::BVEncryption::decryptDataUsingKey(cipher, kKey));
    setBytes(state);
}

void BM_Decrypt_OpenSSL(benchmark::State& state) {
    const bv::ByteData cipher =
        *bv::BVEncryption::encryptDataUsingKey(randomBytes(static_cast<std::size_t>(state.range(0))), kKey);
    for (auto _ : state)
        benchmark::DoNotOptimize(Peer::shared().run(cipher, false));
    setBytes(state);
}

// The derivation alone: the floor of any call on a short text.
void BM_Derivation_OpenSSL(benchmark::State& state) {
    unsigned char key[8];
    for (auto _ : state) {
        Peer::shared().derive(key);
        benchmark::DoNotOptimize(key);
    }
}

}  // namespace

BENCHMARK(BM_Encrypt_Library)->Arg(1 << 20)->Arg(16)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Encrypt_OpenSSL)->Arg(1 << 20)->Arg(16)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Decrypt_Library)->Arg(1 << 20)->Arg(16)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Decrypt_OpenSSL)->Arg(1 << 20)->Arg(16)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Derivation_OpenSSL)->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
