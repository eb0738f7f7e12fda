// bv::RTF: styled text written as RTF, and RTF read into styled text.
//
// The writer produces 7-bit ASCII: characters outside printable ASCII are written as \uN with a "?" for
// readers that know no Unicode; "\n" is \par, U+2028 \line, a tab \tab. Each styled run is its own group
// ({\b\i\ul\strike\fsN\cfN\fN text}); a link is a HYPERLINK field whose result holds the linked runs.
// The mouse cursor and the paragraph's line-break mode have no RTF form: the reader gives them back to
// every link, as a hyperlink always carries them.
//
// The reader takes what this writer and the common word processors write: groups, control words with
// parameters, \'hh bytes in the document's code page (\ansicpgN, or a font's \fcharsetN), \uN with its
// \ucN replacement skipped, the font and colour tables, \b \i \ul \ulnone \strike \fs \cf \f \plain,
// \par \line \tab and the typographic characters, HYPERLINK fields, and \bin data. Other destinations
// (style sheets, document information, pictures, headers, "\*" destinations) are skipped; unknown control
// words are ignored. Raw bytes of 0x80 and above are read in the code page too, as RTF requires.
//
// Damaged input (not starting with "{\rtf", groups nested deeper than MaximumNesting, input that ends
// inside a group, an overlong control word or parameter) gives nullopt and one log line. Text after the
// outermost group is ignored.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "BrevantCocoaExtensions/interface/AttributedString.hpp"

namespace bv::RTF {

// Deeper nesting than this is treated as damage (it bounds the reader's memory and stack of states).
inline constexpr std::size_t MaximumNesting = 256;

// The styled text as an RTF document (ASCII only).
[[nodiscard]] std::string write(const AttributedString& text);
// The RTF document's text and character formats; nullopt, with a log line, when the input is damaged.
[[nodiscard]] std::optional<AttributedString> read(std::string_view rtf);

}  // namespace bv::RTF
