// ByteData to text and back (Base64 out, hexadecimal both ways) and the universally writable writers.
#include "BrevantCocoaExtensions/text/BVNSData.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <new>
#include <stdexcept>
#include <string>

#include "BrevantCocoaExtensions/platform/Base64.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/FileURL.hpp"
#include "BrevantCocoaExtensions/platform/FileWriting.hpp"

namespace bv::BVNSData {

namespace {

// --- Base64 -------------------------------------------------------------------------------------------

constexpr std::size_t kBase64LineLength = 64;
constexpr std::size_t kBytesPerLine = kBase64LineLength / 4 * 3;  // 48
constexpr std::size_t kLinesPerChunk = 64;

// Encodes a chunk of whole lines at a time with the platform's encoder into a small buffer that stays
// in cache, and appends it, so the result is written once. Lines of 64 characters are joined by "\r\n"
// when asked; there is no break after the last line.
std::u16string encodeBase64(const ByteData& bytes, bool newLines) {
    const std::size_t length = bytes.size();
    const std::size_t characters = (length + 2) / 3 * 4;
    const std::size_t breaks = newLines && characters != 0 ? (characters - 1) / kBase64LineLength : 0;
    std::u16string units;
    units.reserve(characters + 2 * breaks);
    char16_t chunk[kLinesPerChunk * (kBase64LineLength + 2)];
    for (std::size_t offset = 0; offset < length; offset += kBytesPerLine * kLinesPerChunk) {
        const std::size_t chunkEnd = std::min(offset + kBytesPerLine * kLinesPerChunk, length);
        if (!newLines) {
            base64::encodeInto(bytes.data() + offset, chunkEnd - offset, chunk);
            units.append(chunk, (chunkEnd - offset + 2) / 3 * 4);
            continue;
        }
        char16_t* cursor = chunk;
        for (std::size_t line = offset; line < chunkEnd; line += kBytesPerLine) {
            if (line != 0) {
                *cursor++ = u'\r';
                *cursor++ = u'\n';
            }
            const std::size_t lineBytes = std::min(kBytesPerLine, chunkEnd - line);
            base64::encodeInto(bytes.data() + line, lineBytes, cursor);
            cursor += (lineBytes + 2) / 3 * 4;
        }
        units.append(chunk, static_cast<std::size_t>(cursor - chunk));
    }
    return units;
}

// --- Hexadecimal --------------------------------------------------------------------------------------

using HexTable = std::array<std::array<char16_t, 2>, 256>;

constexpr HexTable makeHexTable(const char* digits) {
    HexTable table{};
    for (std::size_t value = 0; value < 256; ++value)
        table[value] = {static_cast<char16_t>(digits[value >> 4]), static_cast<char16_t>(digits[value & 15])};
    return table;
}
constexpr HexTable kUppercaseHex = makeHexTable("0123456789ABCDEF");
constexpr HexTable kLowercaseHex = makeHexTable("0123456789abcdef");

constexpr std::uint8_t kNoNibble = 128;

constexpr std::array<std::uint8_t, 128> makeNibbleTable() {
    std::array<std::uint8_t, 128> table{};
    for (auto& entry : table)
        entry = kNoNibble;
    for (int digit = 0; digit < 10; ++digit)
        table['0' + digit] = static_cast<std::uint8_t>(digit);
    for (int digit = 0; digit < 6; ++digit) {
        table['A' + digit] = static_cast<std::uint8_t>(10 + digit);
        table['a' + digit] = static_cast<std::uint8_t>(10 + digit);
    }
    return table;
}
constexpr auto kNibbles = makeNibbleTable();

inline std::uint8_t nibbleOf(char16_t unit) noexcept {
    return unit < 0x80 ? kNibbles[unit] : kNoNibble;
}

// Strict reading: every unit a digit, an even count.
std::optional<ByteData> readStrictHex(std::u16string_view units) {
    if (units.size() % 2 != 0) return std::nullopt;
    ByteData data(units.size() / 2);
    for (std::size_t i = 0; i < data.size(); ++i) {
        const std::uint8_t high = nibbleOf(units[2 * i]);
        const std::uint8_t low = nibbleOf(units[2 * i + 1]);
        if (((high | low) & kNoNibble) != 0) return std::nullopt;
        data[i] = static_cast<std::uint8_t>((high << 4) | low);
    }
    return data;
}

// Lenient reading: other characters are skipped, even between the two digits of a pair, and an odd
// last digit is dropped.
ByteData readLenientHex(std::u16string_view units) {
    ByteData data(units.size() / 2);
    std::size_t count = 0;
    std::size_t i = 0;
    const std::size_t length = units.size();
    while (i < length) {
        // Two digits in a row make a byte straight away; anything else goes one unit at a time.
        if (i + 1 < length) {
            const std::uint8_t high = nibbleOf(units[i]);
            const std::uint8_t low = nibbleOf(units[i + 1]);
            if (((high | low) & kNoNibble) == 0) {
                data[count++] = static_cast<std::uint8_t>((high << 4) | low);
                i += 2;
                continue;
            }
        }
        // A digit followed by other characters waits for the next digit, which completes its byte.
        const std::uint8_t high = nibbleOf(units[i++]);
        if (high == kNoNibble) continue;
        while (i < length && nibbleOf(units[i]) == kNoNibble)
            ++i;
        if (i == length) break;  // an odd last digit is dropped
        data[count++] = static_cast<std::uint8_t>((high << 4) | nibbleOf(units[i++]));
    }
    data.resize(count);
    return data;
}

// --- Files --------------------------------------------------------------------------------------------

constexpr unsigned kUniversallyWritable = 0777;

bool writeThenOpenUp(const ByteData& self, const std::string& path, unsigned options, Error* error) {
    bool written = false;
    std::error_code ignored;
    if ((options & DataWritingWithoutOverwriting) != 0 && std::filesystem::exists(path, ignored)) {
        written = Error::report(error, Error{"NSPOSIXErrorDomain", EEXIST,
                                             Text("The file \u201C" + path +
                                                  "\u201D couldn\u2019t be saved "
                                                  "because a file with the same name already exists."),
                                             Text(std::strerror(EEXIST))});
    } else {
        written = writeBytesToFile(path, self.data(), self.size(), (options & DataWritingAtomic) != 0, error);
    }
    setPosixPermissions(path, kUniversallyWritable);  // also after a failed write; its own failure is ignored
    return written;
}

}  // namespace

Text newEncodedBase64StringWithNewLines(const ByteData& self, bool newLines) {
    return Text(encodeBase64(self, newLines));
}

Text encodedBase64StringWithNewLines(const ByteData& self, bool newLines) {
    return newEncodedBase64StringWithNewLines(self, newLines);
}

Text newEncodedBase64String(const ByteData& self) {
    return newEncodedBase64StringWithNewLines(self, false);
}

Text encodedBase64String(const ByteData& self) {
    return newEncodedBase64StringWithNewLines(self, false);
}

Text hexStringRepresentationUppercase(const ByteData& self, bool uppercase) {
    const HexTable& table = uppercase ? kUppercaseHex : kLowercaseHex;
    std::u16string units;
    try {
        units.reserve(2 * self.size());
    } catch (const std::bad_alloc&) {
        throw InternalInconsistencyException("failed malloc");
    } catch (const std::length_error&) {
        throw InternalInconsistencyException("failed malloc");
    }
    // Each chunk is converted in a small buffer that stays in cache and then appended, so the result is
    // written once (no zero fill first) and never copied again.
    constexpr std::size_t kChunk = 2048;
    char16_t chunk[2 * kChunk];
    for (std::size_t offset = 0; offset < self.size(); offset += kChunk) {
        const std::size_t count = std::min(kChunk, self.size() - offset);
        const std::uint8_t* bytes = self.data() + offset;
        for (std::size_t i = 0; i < count; ++i)
            std::memcpy(chunk + 2 * i, table[bytes[i]].data(), sizeof(char16_t) * 2);
        units.append(chunk, 2 * count);
    }
    return Text(std::move(units));
}

Text hexStringRepresentation(const ByteData& self) {
    return hexStringRepresentationUppercase(self, true);
}

std::optional<ByteData> initWithHexStringIgnoreOtherCharacters(const std::optional<Text>& string,
                                                               bool ignoreOtherCharacters) {
    if (!string) return std::nullopt;
    return initWithHexStringIgnoreOtherCharacters(*string, ignoreOtherCharacters);
}

std::optional<ByteData> initWithHexStringIgnoreOtherCharacters(const Text& string,
                                                               bool ignoreOtherCharacters) {
    if (ignoreOtherCharacters) return readLenientHex(string.view());
    return readStrictHex(string.view());
}

std::optional<ByteData> dataWithHexString(const Text& string) {
    return initWithHexStringIgnoreOtherCharacters(string, true);
}

bool writeToUniversallyWritableFileOptionsError(const ByteData& self, const Text& path, unsigned options,
                                                Error* error) {
    return writeThenOpenUp(self, path.toUtf8(), options, error);
}

bool writeToUniversallyWritableFileAtomically(const ByteData& self, const Text& path, bool atomically) {
    return writeThenOpenUp(self, path.toUtf8(), atomically ? DataWritingAtomic : 0u, nullptr);
}

bool writeToUniversallyWritableURLAtomically(const ByteData& self, const Text& url, bool atomically) {
    const std::optional<std::string> path = pathOfFileURL(url.toUtf8());
    if (!path) return false;
    return writeThenOpenUp(self, *path, atomically ? DataWritingAtomic : 0u, nullptr);
}

}  // namespace bv::BVNSData
