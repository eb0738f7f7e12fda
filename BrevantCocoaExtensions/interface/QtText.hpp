// bv::toQString and bv::fromQString: the library's Text and Qt's QString, both UTF-16, converted unit for
// unit.
#pragma once

#include <QString>

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv {

[[nodiscard]] inline QString toQString(const Text& text) {
    return QString::fromUtf16(text.units().data(), static_cast<qsizetype>(text.length()));
}

[[nodiscard]] inline Text fromQString(const QString& string) {
    return Text(std::u16string(reinterpret_cast<const char16_t*>(string.utf16()),
                               static_cast<std::size_t>(string.size())));
}

}  // namespace bv
