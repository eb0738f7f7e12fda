// Strict conversions between bytes and Text through ICU converters: any invalid or unmappable
// sequence fails the whole conversion instead of being replaced.
#include "BrevantCocoaExtensions/platform/TextEncoding.hpp"

#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <memory>

namespace bv {

namespace {

const char* converterName(TextEncoding encoding) {
    switch (encoding) {
        case TextEncoding::ASCII:
            return "US-ASCII";
        case TextEncoding::UTF8:
            return "UTF-8";
        case TextEncoding::ISOLatin1:
            return "ISO-8859-1";
        case TextEncoding::UTF16:
            return "UTF-16";
        case TextEncoding::WindowsCP1251:
            return "windows-1251";
        case TextEncoding::WindowsCP1252:
            return "windows-1252";
        case TextEncoding::WindowsCP1250:
            return "windows-1250";
        case TextEncoding::MacOSRoman:
            return "macos-0_2-10.2";
        case TextEncoding::UTF16BigEndian:
            return "UTF-16BE";
        case TextEncoding::UTF16LittleEndian:
            return "UTF-16LE";
        case TextEncoding::UTF32:
            return "UTF-32";
        case TextEncoding::UTF32BigEndian:
            return "UTF-32BE";
        case TextEncoding::UTF32LittleEndian:
            return "UTF-32LE";
    }
    return nullptr;
}

struct ConverterCloser {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

// A converter that stops at the first invalid or unmappable sequence in both directions.
Converter openStrict(TextEncoding encoding) {
    const char* name = converterName(encoding);
    if (name == nullptr) return nullptr;
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open(name, &status));
    if (U_FAILURE(status)) return nullptr;
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    if (U_FAILURE(status)) return nullptr;
    return converter;
}

// Whether a surrogate half stands without its partner: such a unit has no UTF-8 form.
bool hasUnpairedSurrogate(std::u16string_view units) {
    for (std::size_t i = 0; i < units.size();) {
        UChar32 c;
        U16_NEXT(units.data(), i, units.size(), c);
        if (U_IS_SURROGATE(c)) return true;
    }
    return false;
}

}  // namespace

bool isValidUtf8(const std::uint8_t* bytes, std::size_t length) {
    std::size_t i = 0;
    while (i < length) {
        if (bytes[i] < 0x80) {
            ++i;
            continue;
        }
        UChar32 c;
        U8_NEXT(bytes, i, length, c);
        if (c < 0) return false;
    }
    return true;
}

std::optional<Text> decodeText(const std::uint8_t* bytes, std::size_t length, TextEncoding encoding) {
    if (length == 0) return Text();
    if (encoding == TextEncoding::UTF8) {  // the common case, without a converter
        if (!isValidUtf8(bytes, length)) return std::nullopt;
        return Text(std::string_view(reinterpret_cast<const char*>(bytes), length));
    }
    if (encoding == TextEncoding::ISOLatin1)
        return Text::fromLatin1(std::string_view(reinterpret_cast<const char*>(bytes), length));
    Converter converter = openStrict(encoding);
    if (!converter) return std::nullopt;
    std::u16string units(length * 2 + 2, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    int32_t written = ucnv_toUChars(converter.get(), reinterpret_cast<UChar*>(units.data()),
                                    static_cast<int32_t>(units.size()), reinterpret_cast<const char*>(bytes),
                                    static_cast<int32_t>(length), &status);
    if (U_FAILURE(status)) return std::nullopt;
    units.resize(static_cast<std::size_t>(written));
    return Text(std::move(units));
}

std::optional<ByteData> encodeText(const Text& text, TextEncoding encoding) {
    if (encoding == TextEncoding::UTF8) {
        if (hasUnpairedSurrogate(text.view())) return std::nullopt;  // toUtf8 would write U+FFFD for it
        std::string utf8 = text.toUtf8();
        return ByteData(utf8.begin(), utf8.end());
    }
    if (text.empty()) return ByteData();
    Converter converter = openStrict(encoding);
    if (!converter) return std::nullopt;
    ByteData bytes(text.length() * 4 + 8);
    UErrorCode status = U_ZERO_ERROR;
    int32_t written = ucnv_fromUChars(
        converter.get(), reinterpret_cast<char*>(bytes.data()), static_cast<int32_t>(bytes.size()),
        reinterpret_cast<const UChar*>(text.units().data()), static_cast<int32_t>(text.length()), &status);
    if (U_FAILURE(status)) return std::nullopt;
    bytes.resize(static_cast<std::size_t>(written));
    return bytes;
}

}  // namespace bv
