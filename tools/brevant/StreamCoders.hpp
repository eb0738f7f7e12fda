// Base64 and hexadecimal coders that work piece by piece between byte buffers, for `brevant base64` and
// `brevant hex` on inputs of any size. Fed the whole input in pieces, each writes exactly what the
// library's coders write for the whole input at once (BVNSData's encoders, Base64Encoding's lenient
// decoder, BVNSData's lenient and strict hexadecimal readers), without holding the input or a UTF-16 copy.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace brevant {

// Standard Base64 with "=" padding; with lines, 64-character lines joined by "\r\n" (none at the end).
class Base64Encoder {
  public:
    explicit Base64Encoder(bool lines) : lines_(lines) {}
    // Appends the encoding of the bytes to *out. Every piece but the last must hold a multiple of 48
    // bytes, so that pieces end on whole lines.
    void add(const std::uint8_t* bytes, std::size_t length, std::string* out);

  private:
    bool lines_;
    bool wroteLine_ = false;
};

// The lenient decoder: characters outside the alphabet are skipped, the first "=" ends the data, a last
// group without padding is dropped. Any byte outside ASCII makes the input not Base64 text at all.
class Base64Decoder {
  public:
    // Appends the decoded bytes to *out; false when the piece holds a byte outside ASCII.
    bool add(const std::uint8_t* bytes, std::size_t length, std::string* out);

  private:
    void addOne(std::uint8_t byte, char*& write);

    std::uint8_t slots_[4] = {0, 0, 0, 0};
    int filled_ = 0;
    bool ended_ = false;
};

// Two hexadecimal digits per byte, upper-case unless lower.
void appendHex(const std::uint8_t* bytes, std::size_t length, bool upper, std::string* out);

// Hexadecimal text to bytes. Lenient: other characters are skipped, even between the two digits of a
// pair, and an odd last digit is dropped. Strict: digits only, in an even count, except for one final
// line break ("\n", "\r\n" or "\r").
class HexDecoder {
  public:
    explicit HexDecoder(bool strict) : strict_(strict) {}
    // Appends the decoded bytes to *out; false (strict only) at the first character that is not a digit.
    bool add(const std::uint8_t* bytes, std::size_t length, std::string* out);
    // After the last piece; false (strict only) when a non-digit or an odd digit was left at the end.
    bool finish(std::string* out);

  private:
    bool addDigits(const std::uint8_t* bytes, std::size_t length, std::string* out);

    bool strict_;
    int high_ = -1;     // a digit waiting for its pair
    std::string held_;  // strict: the last two characters, which may be the final line break
};

}  // namespace brevant
