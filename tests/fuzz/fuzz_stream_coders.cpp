// libFuzzer program: the brevant tool's piecewise Base64 and hexadecimal coders, fed the input in pieces
// whose sizes the input's first bytes choose, must give exactly what the library's coders give for the
// whole input at once (the carry of an unfinished group or digit across pieces is what can go wrong).
// Needs: text/Base64Encoding.cpp text/BVNSData.cpp
#include <string>
#include <vector>

#include "../../tools/brevant/StreamCoders.cpp"  // the tool's coders, compiled into this program
#include "BrevantCocoaExtensions/text/BVNSData.hpp"
#include "BrevantCocoaExtensions/text/Base64Encoding.hpp"
#include "harness/Common.hpp"

namespace {

// Piece sizes from 1 to 16 taken from the first eight bytes; the rest is the input.
std::vector<std::size_t> pieces(const std::uint8_t*& data, std::size_t& size) {
    std::vector<std::size_t> sizes;
    for (int i = 0; i < 8 && size > 0; ++i, ++data, --size)
        sizes.push_back(1 + (*data & 15));
    return sizes;
}

template <class Feed>
void inPieces(const std::string& input, const std::vector<std::size_t>& sizes, Feed&& feed) {
    std::size_t at = 0;
    for (std::size_t i = 0; at < input.size(); ++i) {
        const std::size_t length =
            std::min(sizes.empty() ? input.size() : sizes[i % sizes.size()], input.size() - at);
        if (!feed(reinterpret_cast<const std::uint8_t*>(input.data()) + at, length)) return;
        at += length;
    }
}

std::string asString(const bv::ByteData& bytes) {
    return {bytes.begin(), bytes.end()};
}

void checkDecoders(const std::string& input, const std::vector<std::size_t>& sizes) {
    brevant::Base64Decoder base64;
    std::string decoded;
    bool ascii = true;
    inPieces(input, sizes, [&](const std::uint8_t* bytes, std::size_t length) {
        return ascii = base64.add(bytes, length, &decoded);
    });
    if (ascii)
        bv::fuzz::check(
            decoded == asString(bv::Base64Encoding::dataWithBase64EncodedString(bv::Text::fromLatin1(input))),
            "piecewise Base64 decoding equals the library's");
    for (bool strict : {false, true}) {
        brevant::HexDecoder hex(strict);
        std::string bytes;
        bool clean = true;
        inPieces(input, sizes, [&](const std::uint8_t* piece, std::size_t length) {
            return clean = hex.add(piece, length, &bytes);
        });
        clean = clean && hex.finish(&bytes);
        std::string text = input;
        if (strict && !text.empty() && text.back() == '\n') text.pop_back();
        if (strict && !text.empty() && text.back() == '\r') text.pop_back();
        const auto expected =
            bv::BVNSData::initWithHexStringIgnoreOtherCharacters(bv::Text::fromLatin1(text), !strict);
        bv::fuzz::check(clean == expected.has_value(),
                        "piecewise hex decoding fails exactly when the library's does");
        if (clean)
            bv::fuzz::check(bytes == asString(*expected), "piecewise hex decoding equals the library's");
    }
}

void checkEncoder(const std::string& input, std::size_t lineGroups) {
    const bv::ByteData data(input.begin(), input.end());
    for (bool lines : {false, true}) {
        brevant::Base64Encoder encoder(lines);
        std::string encoded;
        const std::size_t piece = 48 * lineGroups;  // every piece but the last a multiple of 48 bytes
        for (std::size_t at = 0; at < input.size(); at += piece)
            encoder.add(reinterpret_cast<const std::uint8_t*>(input.data()) + at,
                        std::min(piece, input.size() - at), &encoded);
        bv::fuzz::check(encoded == bv::BVNSData::encodedBase64StringWithNewLines(data, lines).toUtf8(),
                        "piecewise Base64 encoding equals the library's");
    }
}

void streamCoders(const std::uint8_t* data, std::size_t size) {
    const std::vector<std::size_t> sizes = pieces(data, size);
    const std::string input(reinterpret_cast<const char*>(data), size);
    checkDecoders(input, sizes);
    checkEncoder(input, sizes.empty() ? 1 : 1 + sizes[0] % 3);
}

}  // namespace

BV_FUZZ_TARGET(streamCoders)
