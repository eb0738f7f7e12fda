// The lenient Base64 decoder: one pass over the text, four alphabet characters at a time while the
// input is clean, one character at a time around skipped characters and the end of the data.
#include "BrevantCocoaExtensions/text/Base64Encoding.hpp"

#include <array>
#include <cstdint>

namespace bv::Base64Encoding {

namespace {

constexpr std::uint8_t kSkipped = 0x80;  // a character outside the alphabet
constexpr std::uint8_t kEquals = 0x40;   // "=": the end of the data
constexpr std::uint8_t kEndMark = 0xFF;  // what the slots after the end of the data hold

constexpr std::array<std::uint8_t, 128> makeSextetTable() {
    constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<std::uint8_t, 128> table{};
    for (auto& entry : table)
        entry = kSkipped;
    for (std::uint8_t value = 0; value < 64; ++value)
        table[static_cast<unsigned char>(alphabet[value])] = value;
    table['='] = kEquals;
    return table;
}
constexpr auto kSextets = makeSextetTable();

// Writes the first `count` bytes of a group of four sextets; answers the next output position.
inline std::uint8_t* emitGroup(const std::uint8_t slots[4], int count, std::uint8_t* out) {
    out[0] = static_cast<std::uint8_t>((slots[0] << 2) | ((slots[1] & 0x30) >> 4));
    if (count > 1) out[1] = static_cast<std::uint8_t>(((slots[1] & 0x0F) << 4) | ((slots[2] & 0x3C) >> 2));
    if (count > 2) out[2] = static_cast<std::uint8_t>(((slots[2] & 0x03) << 6) | slots[3]);
    return out + count;
}

// The group cut short by "=" after `filled` sextets: the missing slots take the end mark and one byte
// (two after three sextets) is emitted. An "=" at the start of a group emits nothing.
inline std::uint8_t* emitLastGroup(std::uint8_t slots[4], int filled, std::uint8_t* out) {
    if (filled == 0) return out;
    for (int slot = filled; slot < 4; ++slot)
        slots[slot] = kEndMark;
    return emitGroup(slots, filled == 3 ? 2 : 1, out);
}

bool isAscii(const char16_t* units, std::size_t length) noexcept {
    char16_t seen = 0;
    for (std::size_t i = 0; i < length; ++i)
        seen |= units[i];
    return seen < 0x80;
}

// Decodes whole groups of four clean alphabet characters while they last; answers how many units it used.
inline std::size_t decodeCleanGroups(const char16_t* units, std::size_t length, std::uint8_t*& out) noexcept {
    std::size_t i = 0;
    for (; i + 4 <= length; i += 4) {
        const char16_t a = units[i], b = units[i + 1], c = units[i + 2], d = units[i + 3];
        if ((a | b | c | d) >= 0x80) break;
        const std::uint8_t sa = kSextets[a], sb = kSextets[b], sc = kSextets[c], sd = kSextets[d];
        if (((sa | sb | sc | sd) & (kSkipped | kEquals)) != 0) break;
        const std::uint32_t group =
            (std::uint32_t{sa} << 18) | (std::uint32_t{sb} << 12) | (std::uint32_t{sc} << 6) | sd;
        out[0] = static_cast<std::uint8_t>(group >> 16);
        out[1] = static_cast<std::uint8_t>(group >> 8);
        out[2] = static_cast<std::uint8_t>(group);
        out += 3;
    }
    return i;
}

ByteData decode(const std::u16string& text) {
    const char16_t* units = text.data();
    const std::size_t length = text.size();
    ByteData data(length * 3 / 4 + 3);
    std::uint8_t* out = data.data();
    std::uint8_t slots[4] = {0, 0, 0, 0};
    int filled = 0;
    std::size_t i = 0;
    while (i < length) {
        if (filled == 0) {
            i += decodeCleanGroups(units + i, length - i, out);
            if (i == length) break;
        }
        const char16_t unit = units[i++];
        if (unit >= 0x80) return {};
        const std::uint8_t sextet = kSextets[unit];
        if (sextet == kSkipped) continue;
        if (sextet == kEquals) {
            // Nothing after the first "=" is decoded, but the whole text must still be ASCII.
            if (!isAscii(units + i, length - i)) return {};
            out = emitLastGroup(slots, filled, out);
            break;
        }
        slots[filled++] = sextet;
        if (filled == 4) {
            out = emitGroup(slots, 3, out);
            filled = 0;
        }
    }
    data.resize(static_cast<std::size_t>(out - data.data()));
    return data;
}

}  // namespace

bool isCharacterPartOfBase64Encoding(char16_t character) noexcept {
    return character < 0x80 && kSextets[character] < 64;
}

ByteData initWithBase64EncodedString(const std::optional<Text>& string) {
    if (!string) return {};
    return decode(string->units());
}

ByteData initWithBase64EncodedString(const Text& string) {
    return decode(string.units());
}

ByteData dataWithBase64EncodedString(const Text& string) {
    return initWithBase64EncodedString(string);
}

ByteData newDataWithBase64EncodedString(const Text& string) {
    return initWithBase64EncodedString(string);
}

}  // namespace bv::Base64Encoding
