// Byte encodings on 64 MiB: the library's Base64 and hexadecimal coders beside OpenSSL's
// EVP_DecodeBlock / EVP_EncodeBlock and a plain table loop for hexadecimal, in the same run.
//
// Bytes processed are always the binary data (the decoded side), so rows compare directly. Each row runs
// on 64 MiB, where every iteration's result lands in fresh pages from the kernel (page faults and page
// clearing are part of the cost, and the library's UTF-16 output has twice the peers' pages), and on
// 1 MiB, where the allocator reuses the same memory and the figures show the conversion itself.
// The library works on Text (UTF-16 code units); the peers work on 8-bit characters. The *Lines rows
// decode or encode 64-character lines joined by "\r\n", where the decoder leaves its four-at-a-time path
// at every line break.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <openssl/evp.h>
#include <string_view>

#include <array>
#include <random>
#include <string>

#include "BrevantCocoaExtensions/platform/Base64.hpp"
#include "BrevantCocoaExtensions/text/BVNSData.hpp"
#include "BrevantCocoaExtensions/text/Base64Encoding.hpp"

namespace {

constexpr std::size_t kLarge = 64u << 20;
constexpr std::size_t kSmall = 1u << 20;

// The first `size` bytes of 64 MiB of random data.
const bv::ByteData& data(std::size_t size) {
    static const bv::ByteData all = [] {
        bv::ByteData out(kLarge);
        std::mt19937_64 random(1);
        for (std::size_t i = 0; i < kLarge; i += 8) {
            const std::uint64_t word = random();
            for (std::size_t j = 0; j < 8; ++j)
                out[i + j] = static_cast<std::uint8_t>(word >> (8 * j));
        }
        return out;
    }();
    static const bv::ByteData small(all.begin(), all.begin() + kSmall);
    return size == kLarge ? all : small;
}

std::size_t sizeOf(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

void setBytes(benchmark::State& state) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * sizeOf(state)));
}

// --- Base64 decoding ----------------------------------------------------------------------------------

void BM_Base64Decode_Library(benchmark::State& state) {
    const bv::Text text = bv::BVNSData::encodedBase64String(data(sizeOf(state)));
    for (auto _ : state) {
        bv::ByteData decoded = bv::Base64Encoding::dataWithBase64EncodedString(text);
        if (decoded.size() != sizeOf(state)) state.SkipWithError("wrong length");
        benchmark::DoNotOptimize(decoded.data());
    }
    setBytes(state);
}
BENCHMARK(BM_Base64Decode_Library)->Arg(kLarge)->Arg(kSmall)->Unit(benchmark::kMicrosecond);

void BM_Base64Decode_LibraryLines(benchmark::State& state) {
    const bv::Text text = bv::BVNSData::encodedBase64StringWithNewLines(data(sizeOf(state)), true);
    for (auto _ : state) {
        bv::ByteData decoded = bv::Base64Encoding::dataWithBase64EncodedString(text);
        if (decoded.size() != sizeOf(state)) state.SkipWithError("wrong length");
        benchmark::DoNotOptimize(decoded.data());
    }
    setBytes(state);
}
BENCHMARK(BM_Base64Decode_LibraryLines)->Arg(kLarge)->Arg(kSmall)->Unit(benchmark::kMicrosecond);

void BM_Base64Decode_OpenSSL(benchmark::State& state) {
    const std::string text = bv::base64::encode(data(sizeOf(state)));
    for (auto _ : state) {
        bv::ByteData decoded(text.size() / 4 * 3);
        const int length =
            EVP_DecodeBlock(decoded.data(), reinterpret_cast<const unsigned char*>(text.data()),
                            static_cast<int>(text.size()));
        if (length < static_cast<int>(sizeOf(state))) state.SkipWithError("decode failed");
        benchmark::DoNotOptimize(decoded.data());
    }
    setBytes(state);
}
BENCHMARK(BM_Base64Decode_OpenSSL)->Arg(kLarge)->Arg(kSmall)->Unit(benchmark::kMicrosecond);

// --- Base64 encoding ----------------------------------------------------------------------------------

void BM_Base64Encode_Library(benchmark::State& state) {
    for (auto _ : state) {
        bv::Text text = bv::BVNSData::encodedBase64String(data(sizeOf(state)));
        benchmark::DoNotOptimize(text.units().data());
    }
    setBytes(state);
}
BENCHMARK(BM_Base64Encode_Library)->Arg(kLarge)->Arg(kSmall)->Unit(benchmark::kMicrosecond);

void BM_Base64Encode_LibraryLines(benchmark::State& state) {
    for (auto _ : state) {
        bv::Text text = bv::BVNSData::encodedBase64StringWithNewLines(data(sizeOf(state)), true);
        benchmark::DoNotOptimize(text.units().data());
    }
    setBytes(state);
}
BENCHMARK(BM_Base64Encode_LibraryLines)->Arg(kLarge)->Arg(kSmall)->Unit(benchmark::kMicrosecond);

void BM_Base64Encode_OpenSSL(benchmark::State& state) {
    for (auto _ : state) {
        std::string text(sizeOf(state) / 3 * 4 + 8, '\0');
        EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text.data()), data(sizeOf(state)).data(),
                        static_cast<int>(sizeOf(state)));
        benchmark::DoNotOptimize(text.data());
    }
    setBytes(state);
}
BENCHMARK(BM_Base64Encode_OpenSSL)->Arg(kLarge)->Arg(kSmall)->Unit(benchmark::kMicrosecond);

// --- Hexadecimal --------------------------------------------------------------------------------------

void BM_HexEncode_Library(benchmark::State& state) {
    for (auto _ : state) {
        bv::Text text = bv::BVNSData::hexStringRepresentationUppercase(data(sizeOf(state)), false);
        benchmark::DoNotOptimize(text.units().data());
    }
    setBytes(state);
}
BENCHMARK(BM_HexEncode_Library)->Arg(kLarge)->Arg(kSmall)->Unit(benchmark::kMicrosecond);

// The plain loop: two characters per byte from a 16-entry digit table into a pre-sized 8-bit string.
void BM_HexEncode_PlainLoop(benchmark::State& state) {
    static const char kDigits[] = "0123456789abcdef";
    for (auto _ : state) {
        std::string text(2 * sizeOf(state), '\0');
        const bv::ByteData& bytes = data(sizeOf(state));
        for (std::size_t i = 0; i < sizeOf(state); ++i) {
            text[2 * i] = kDigits[bytes[i] >> 4];
            text[2 * i + 1] = kDigits[bytes[i] & 15];
        }
        benchmark::DoNotOptimize(text.data());
    }
    setBytes(state);
}
BENCHMARK(BM_HexEncode_PlainLoop)->Arg(kLarge)->Arg(kSmall)->Unit(benchmark::kMicrosecond);

void BM_HexDecode_LibraryStrict(benchmark::State& state) {
    const bv::Text text = bv::BVNSData::hexStringRepresentation(data(sizeOf(state)));
    for (auto _ : state) {
        auto decoded = bv::BVNSData::initWithHexStringIgnoreOtherCharacters(text, false);
        if (!decoded || decoded->size() != sizeOf(state)) state.SkipWithError("decode failed");
        benchmark::DoNotOptimize(decoded->data());
    }
    setBytes(state);
}
BENCHMARK(BM_HexDecode_LibraryStrict)->Arg(kLarge)->Arg(kSmall)->Unit(benchmark::kMicrosecond);

void BM_HexDecode_LibraryLenient(benchmark::State& state) {
    const bv::Text text = bv::BVNSData::hexStringRepresentation(data(sizeOf(state)));
    for (auto _ : state) {
        auto decoded = bv::BVNSData::dataWithHexString(text);
        if (!decoded || decoded->size() != sizeOf(state)) state.SkipWithError("decode failed");
        benchmark::DoNotOptimize(decoded->data());
    }
    setBytes(state);
}
BENCHMARK(BM_HexDecode_LibraryLenient)->Arg(kLarge)->Arg(kSmall)->Unit(benchmark::kMicrosecond);

// The plain loop: a 256-entry nibble table over 8-bit characters, failing on any non-digit.
void BM_HexDecode_PlainLoop(benchmark::State& state) {
    static const std::array<std::uint8_t, 256> kNibbles = [] {
        std::array<std::uint8_t, 256> table{};
        table.fill(0xFF);
        for (int i = 0; i < 10; ++i)
            table['0' + i] = static_cast<std::uint8_t>(i);
        for (int i = 0; i < 6; ++i)
            table['a' + i] = table['A' + i] = static_cast<std::uint8_t>(10 + i);
        return table;
    }();
    const bv::Text hex = bv::BVNSData::hexStringRepresentation(data(sizeOf(state)));
    std::string text(hex.length(), '\0');
    for (std::size_t i = 0; i < text.size(); ++i)
        text[i] = static_cast<char>(hex[i]);
    for (auto _ : state) {
        bv::ByteData decoded(sizeOf(state));
        bool valid = true;
        for (std::size_t i = 0; i < sizeOf(state); ++i) {
            const std::uint8_t high = kNibbles[static_cast<unsigned char>(text[2 * i])];
            const std::uint8_t low = kNibbles[static_cast<unsigned char>(text[2 * i + 1])];
            valid &= (high | low) != 0xFF;
            decoded[i] = static_cast<std::uint8_t>((high << 4) | low);
        }
        if (!valid) state.SkipWithError("decode failed");
        benchmark::DoNotOptimize(decoded.data());
    }
    setBytes(state);
}
BENCHMARK(BM_HexDecode_PlainLoop)->Arg(kLarge)->Arg(kSmall)->Unit(benchmark::kMicrosecond);

}  // namespace

// Keeps freed large buffers in the process instead of returning them to the system, so each iteration
// measures the coders writing to memory rather than the kernel handing out fresh zeroed pages (which costs
// both sides alike and hides the difference). Run with --fresh-pages to measure with page faults included.
int main(int argc, char** argv) {
    bool freshPages = false;
    for (int i = 1; i < argc; ++i)
        freshPages = freshPages || std::string_view(argv[i]) == "--fresh-pages";
    if (!freshPages) {
        mallopt(M_MMAP_THRESHOLD, 1 << 30);
        mallopt(M_TRIM_THRESHOLD, 1 << 30);
    }
    std::vector<char*> arguments;
    for (int i = 0; i < argc; ++i)
        if (std::string_view(argv[i]) != "--fresh-pages") arguments.push_back(argv[i]);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
