// Piecewise Base64 and hexadecimal coding with lookup tables.
#include "StreamCoders.hpp"

#include <algorithm>
#include <array>
#include <cstring>

namespace brevant {

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t kSkipped = 0x80;
constexpr std::uint8_t kEquals = 0x40;
constexpr std::size_t kLineBytes = 48;  // 64 characters

// Each 12-bit value as its two Base64 characters.
const std::array<char, 8192>& pairTable() {
    static const std::array<char, 8192> table = [] {
        std::array<char, 8192> pairs{};
        for (std::size_t value = 0; value < 4096; ++value) {
            pairs[2 * value] = kAlphabet[value >> 6];
            pairs[2 * value + 1] = kAlphabet[value & 63];
        }
        return pairs;
    }();
    return table;
}

constexpr std::array<std::uint8_t, 256> makeSextets() {
    std::array<std::uint8_t, 256> table{};
    for (auto& entry : table)
        entry = kSkipped;
    for (std::uint8_t value = 0; value < 64; ++value)
        table[static_cast<unsigned char>(kAlphabet[value])] = value;
    table['='] = kEquals;
    return table;
}
constexpr auto kSextets = makeSextets();

constexpr std::array<std::int8_t, 256> makeNibbles() {
    std::array<std::int8_t, 256> table{};
    for (auto& entry : table)
        entry = -1;
    for (int digit = 0; digit < 10; ++digit)
        table['0' + digit] = static_cast<std::int8_t>(digit);
    for (int digit = 0; digit < 6; ++digit) {
        table['a' + digit] = static_cast<std::int8_t>(10 + digit);
        table['A' + digit] = static_cast<std::int8_t>(10 + digit);
    }
    return table;
}
constexpr auto kNibbles = makeNibbles();

// Encodes up to 48 bytes (one line) with padding.
void encodeLine(const std::uint8_t* bytes, std::size_t length, char* out, std::size_t* written) {
    const auto& pairs = pairTable();
    char* start = out;
    std::size_t i = 0;
    for (; i + 3 <= length; i += 3) {
        const std::uint32_t group =
            (std::uint32_t{bytes[i]} << 16) | (std::uint32_t{bytes[i + 1]} << 8) | bytes[i + 2];
        const char* high = &pairs[2 * (group >> 12)];
        const char* low = &pairs[2 * (group & 0xFFF)];
        out[0] = high[0];
        out[1] = high[1];
        out[2] = low[0];
        out[3] = low[1];
        out += 4;
    }
    if (i < length) {
        const std::uint32_t first = bytes[i];
        const std::uint32_t second = i + 1 < length ? bytes[i + 1] : 0;
        out[0] = kAlphabet[first >> 2];
        out[1] = kAlphabet[((first & 3) << 4) | (second >> 4)];
        out[2] = i + 1 < length ? kAlphabet[(second & 15) << 2] : '=';
        out[3] = '=';
        out += 4;
    }
    *written = static_cast<std::size_t>(out - start);
}

}  // namespace

void Base64Encoder::add(const std::uint8_t* bytes, std::size_t length, std::string* out) {
    if (length == 0) return;
    const std::size_t start = out->size();
    out->resize(start + (length + 2) / 3 * 4 + (lines_ ? (length / kLineBytes + 1) * 2 : 0));
    char* write = out->data() + start;
    for (std::size_t offset = 0; offset < length; offset += kLineBytes) {
        if (lines_ && wroteLine_) {
            *write++ = '\r';
            *write++ = '\n';
        }
        std::size_t written = 0;
        encodeLine(bytes + offset, std::min(kLineBytes, length - offset), write, &written);
        write += written;
        wroteLine_ = true;
    }
    out->resize(static_cast<std::size_t>(write - out->data()));
}

bool Base64Decoder::add(const std::uint8_t* bytes, std::size_t length, std::string* out) {
    const std::size_t start = out->size();
    out->resize(start + (length + 3) / 4 * 3 + 3);  // up to three sextets may wait from the last piece
    char* write = out->data() + start;
    bool ascii = true;
    std::size_t i = 0;
    while (i < length) {
        if (filled_ == 0 && !ended_) {  // whole groups of four alphabet characters
            for (; i + 4 <= length; i += 4) {
                const std::uint8_t a = kSextets[bytes[i]], b = kSextets[bytes[i + 1]],
                                   c = kSextets[bytes[i + 2]], d = kSextets[bytes[i + 3]];
                if (((a | b | c | d) & (kSkipped | kEquals)) != 0) break;
                const std::uint32_t group =
                    (std::uint32_t{a} << 18) | (std::uint32_t{b} << 12) | (std::uint32_t{c} << 6) | d;
                write[0] = static_cast<char>(group >> 16);
                write[1] = static_cast<char>(group >> 8);
                write[2] = static_cast<char>(group);
                write += 3;
            }
            if (i == length) break;
        }
        const std::uint8_t byte = bytes[i++];
        if (byte >= 0x80) {
            ascii = false;
            break;
        }
        addOne(byte, write);
    }
    out->resize(static_cast<std::size_t>(write - out->data()));
    return ascii;
}

// One character at a time, around skipped characters and at the end of the data.
void Base64Decoder::addOne(std::uint8_t byte, char*& write) {
    if (ended_) return;
    const std::uint8_t sextet = kSextets[byte];
    if (sextet == kSkipped) return;
    if (sextet == kEquals) {  // the group cut short: the missing slots read as all ones
        ended_ = true;
        if (filled_ == 0) return;
        for (int slot = filled_; slot < 4; ++slot)
            slots_[slot] = 0xFF;
        *write++ = static_cast<char>((slots_[0] << 2) | ((slots_[1] & 0x30) >> 4));
        if (filled_ == 3) *write++ = static_cast<char>(((slots_[1] & 0x0F) << 4) | ((slots_[2] & 0x3C) >> 2));
        return;
    }
    slots_[filled_++] = sextet;
    if (filled_ < 4) return;
    *write++ = static_cast<char>((slots_[0] << 2) | (slots_[1] >> 4));
    *write++ = static_cast<char>(((slots_[1] & 0x0F) << 4) | (slots_[2] >> 2));
    *write++ = static_cast<char>(((slots_[2] & 0x03) << 6) | slots_[3]);
    filled_ = 0;
}

void appendHex(const std::uint8_t* bytes, std::size_t length, bool upper, std::string* out) {
    // Each byte's two digits, looked up at once.
    static const auto table = [] {
        std::array<char, 1024> pairs{};
        for (int letterCase = 0; letterCase < 2; ++letterCase) {
            const char* digits = letterCase == 0 ? "0123456789abcdef" : "0123456789ABCDEF";
            for (int byte = 0; byte < 256; ++byte) {
                pairs[static_cast<std::size_t>(letterCase * 512 + 2 * byte)] = digits[byte >> 4];
                pairs[static_cast<std::size_t>(letterCase * 512 + 2 * byte + 1)] = digits[byte & 15];
            }
        }
        return pairs;
    }();
    const char* pairs = table.data() + (upper ? 512 : 0);
    const std::size_t start = out->size();
    out->resize(start + 2 * length);
    char* write = out->data() + start;
    for (std::size_t i = 0; i < length; ++i)
        std::memcpy(write + 2 * i, pairs + 2 * bytes[i], 2);
}

bool HexDecoder::addDigits(const std::uint8_t* bytes, std::size_t length, std::string* out) {
    const std::size_t start = out->size();
    out->resize(start + (length + 1) / 2);
    char* write = out->data() + start;
    bool clean = true;
    for (std::size_t i = 0; i < length; ++i) {
        const int nibble = kNibbles[bytes[i]];
        if (nibble < 0) {
            if (!strict_) continue;
            clean = false;
            break;
        }
        if (high_ < 0) {
            high_ = nibble;
        } else {
            *write++ = static_cast<char>((high_ << 4) | nibble);
            high_ = -1;
        }
    }
    out->resize(static_cast<std::size_t>(write - out->data()));
    return clean;
}

bool HexDecoder::add(const std::uint8_t* bytes, std::size_t length, std::string* out) {
    if (!strict_) return addDigits(bytes, length, out);
    // The last two characters wait: they may be the final line break.
    const auto* held = reinterpret_cast<const std::uint8_t*>(held_.data());
    if (length < 2) {
        held_.append(reinterpret_cast<const char*>(bytes), length);
        if (held_.size() <= 2) return true;
        const bool clean = addDigits(held, held_.size() - 2, out);
        held_.erase(0, held_.size() - 2);
        return clean;
    }
    if (!addDigits(held, held_.size(), out) || !addDigits(bytes, length - 2, out)) return false;
    held_.assign(reinterpret_cast<const char*>(bytes) + length - 2, 2);
    return true;
}

bool HexDecoder::finish(std::string* out) {
    if (!strict_) return true;
    if (!held_.empty() && held_.back() == '\n') held_.pop_back();
    if (!held_.empty() && held_.back() == '\r') held_.pop_back();
    return addDigits(reinterpret_cast<const std::uint8_t*>(held_.data()), held_.size(), out) && high_ < 0;
}

}  // namespace brevant
