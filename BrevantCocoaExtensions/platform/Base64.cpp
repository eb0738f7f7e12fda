// Standard Base64 encoding and decoding.
#include "BrevantCocoaExtensions/platform/Base64.hpp"

#include <array>
#include <cstring>

namespace bv::base64 {

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t kInvalid = 0xFF;

constexpr std::array<std::uint8_t, 256> makeDecodeTable() {
    std::array<std::uint8_t, 256> table{};
    for (auto& entry : table)
        entry = kInvalid;
    for (std::uint8_t i = 0; i < 64; ++i)
        table[static_cast<unsigned char>(kAlphabet[i])] = i;
    return table;
}
constexpr auto kDecode = makeDecodeTable();

template <class Unit>
std::optional<ByteData> decodeUnits(const Unit* units, std::size_t length, bool ignoreUnknown) {
    ByteData out;
    out.reserve(length / 4 * 3 + 3);
    std::uint32_t accumulator = 0;
    int pending = 0;  // sextets collected in the current group
    std::size_t padding = 0;
    for (std::size_t i = 0; i < length; ++i) {
        auto unit = static_cast<std::uint32_t>(units[i]);
        if (unit == '=') {
            ++padding;
            continue;
        }
        std::uint8_t sextet = unit < 256 ? kDecode[unit] : kInvalid;
        if (sextet == kInvalid) {
            if (ignoreUnknown) continue;
            return std::nullopt;
        }
        if (padding != 0) return std::nullopt;  // data after padding
        accumulator = (accumulator << 6) | sextet;
        if (++pending == 4) {
            out.push_back(static_cast<std::uint8_t>(accumulator >> 16));
            out.push_back(static_cast<std::uint8_t>(accumulator >> 8));
            out.push_back(static_cast<std::uint8_t>(accumulator));
            accumulator = 0;
            pending = 0;
        }
    }
    if (pending == 1 || padding > 2) return std::nullopt;
    if (padding != 0 && (pending + padding) % 4 != 0) return std::nullopt;
    if (pending == 2) out.push_back(static_cast<std::uint8_t>(accumulator >> 4));
    if (pending == 3) {
        out.push_back(static_cast<std::uint8_t>(accumulator >> 10));
        out.push_back(static_cast<std::uint8_t>(accumulator >> 2));
    }
    return out;
}

// Two output characters for every 12-bit value: one lookup writes half a group.
template <class Unit>
struct PairTable {
    std::array<std::array<Unit, 2>, 4096> pairs{};
    constexpr PairTable() {
        for (std::size_t i = 0; i < 4096; ++i)
            pairs[i] = {static_cast<Unit>(kAlphabet[i >> 6]), static_cast<Unit>(kAlphabet[i & 63])};
    }
};

// Writes (length + 2) / 3 * 4 characters through a pointer: appending character by character would cost
// a capacity check and a terminator per character.
template <class Unit>
void encodeUnits(const std::uint8_t* bytes, std::size_t length, Unit* cursor) {
    static constexpr PairTable<Unit> kPairs;
    std::size_t i = 0;
    for (; i + 3 <= length; i += 3) {
        std::uint32_t group =
            (std::uint32_t{bytes[i]} << 16) | (std::uint32_t{bytes[i + 1]} << 8) | bytes[i + 2];
        std::memcpy(cursor, kPairs.pairs[group >> 12].data(), 2 * sizeof(Unit));
        std::memcpy(cursor + 2, kPairs.pairs[group & 0xFFF].data(), 2 * sizeof(Unit));
        cursor += 4;
    }
    if (std::size_t rest = length - i; rest != 0) {
        std::uint32_t group = std::uint32_t{bytes[i]} << 16;
        if (rest == 2) group |= std::uint32_t{bytes[i + 1]} << 8;
        cursor[0] = static_cast<Unit>(kAlphabet[group >> 18]);
        cursor[1] = static_cast<Unit>(kAlphabet[(group >> 12) & 63]);
        cursor[2] = static_cast<Unit>(rest == 2 ? kAlphabet[(group >> 6) & 63] : '=');
        cursor[3] = static_cast<Unit>('=');
    }
}

}  // namespace

std::string encode(const std::uint8_t* bytes, std::size_t length) {
    std::string out((length + 2) / 3 * 4, '\0');
    encodeUnits(bytes, length, out.data());
    return out;
}

void encodeInto(const std::uint8_t* bytes, std::size_t length, char16_t* out) {
    encodeUnits(bytes, length, out);
}

std::optional<ByteData> decode(std::u16string_view text, bool ignoreUnknownCharacters) {
    return decodeUnits(text.data(), text.size(), ignoreUnknownCharacters);
}

std::optional<ByteData> decode(std::string_view text, bool ignoreUnknownCharacters) {
    return decodeUnits(reinterpret_cast<const unsigned char*>(text.data()), text.size(),
                       ignoreUnknownCharacters);
}

}  // namespace bv::base64
