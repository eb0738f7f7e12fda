// ByteData to text and back (Base64 out, hexadecimal both ways) and the universally writable writers.
#include "BrevantCocoaExtensions/text/BVNSData.hpp"

#include <strings.h>

#include <array>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <new>
#include <stdexcept>
#include <string>

#include "BrevantCocoaExtensions/platform/Base64.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/FileWriting.hpp"

namespace bv::BVNSData {

namespace {

// --- Base64 -------------------------------------------------------------------------------------------

constexpr std::size_t kBase64LineLength = 64;

// The encoder's ASCII output as UTF-16, with "\r\n" after every full line but the last.
std::u16string widenWithLineBreaks(const std::string& encoded, bool newLines) {
    const std::size_t length = encoded.size();
    const std::size_t breaks = newLines && length != 0 ? (length - 1) / kBase64LineLength : 0;
    std::u16string units(length + 2 * breaks, u'\0');
    char16_t* out = units.data();
    for (std::size_t i = 0; i < length; ++i) {
        if (i != 0 && breaks != 0 && i % kBase64LineLength == 0) {
            *out++ = u'\r';
            *out++ = u'\n';
        }
        *out++ = static_cast<unsigned char>(encoded[i]);
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
    std::uint8_t pending = kNoNibble;
    for (const char16_t unit : units) {
        const std::uint8_t nibble = nibbleOf(unit);
        if (nibble == kNoNibble) continue;
        if (pending == kNoNibble) {
            pending = nibble;
        } else {
            data[count++] = static_cast<std::uint8_t>((pending << 4) | nibble);
            pending = kNoNibble;
        }
    }
    data.resize(count);
    return data;
}

// --- Files --------------------------------------------------------------------------------------------

constexpr unsigned kUniversallyWritable = 0777;

// The local path of a "file:" URL, percent-decoded; nullopt for any other URL.
std::optional<std::string> pathOfFileUrl(const std::string& url) {
    if (url.size() < 5 || strncasecmp(url.c_str(), "file:", 5) != 0) return std::nullopt;
    std::string rest = url.substr(5);
    if (rest.rfind("//", 0) == 0) {
        const std::size_t slash = rest.find('/', 2);
        const std::string host = rest.substr(2, slash == std::string::npos ? std::string::npos : slash - 2);
        if (!host.empty() && strcasecmp(host.c_str(), "localhost") != 0) return std::nullopt;
        rest = slash == std::string::npos ? std::string() : rest.substr(slash);
    }
    rest = rest.substr(0, rest.find_first_of("?#"));
    if (rest.empty() || rest.front() != '/') return std::nullopt;
    std::string path;
    for (std::size_t i = 0; i < rest.size(); ++i) {
        if (rest[i] != '%') {
            path += rest[i];
            continue;
        }
        if (i + 2 >= rest.size() || !std::isxdigit(static_cast<unsigned char>(rest[i + 1])) ||
            !std::isxdigit(static_cast<unsigned char>(rest[i + 2])))
            return std::nullopt;
        path += static_cast<char>(std::stoi(rest.substr(i + 1, 2), nullptr, 16));
        i += 2;
    }
    return path;
}

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
    return Text(widenWithLineBreaks(base64::encode(self), newLines));
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
        units.resize(2 * self.size());
    } catch (const std::bad_alloc&) {
        throw InternalInconsistencyException("failed malloc");
    } catch (const std::length_error&) {
        throw InternalInconsistencyException("failed malloc");
    }
    char16_t* out = units.data();
    for (const std::uint8_t byte : self) {
        std::memcpy(out, table[byte].data(), sizeof(char16_t) * 2);
        out += 2;
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
    const std::optional<std::string> path = pathOfFileUrl(url.toUtf8());
    if (!path) return false;
    return writeThenOpenUp(self, *path, atomically ? DataWritingAtomic : 0u, nullptr);
}

}  // namespace bv::BVNSData
