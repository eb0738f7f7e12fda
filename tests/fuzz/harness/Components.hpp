// Harness: splitting a text at several separators in turn.
#pragma once

#include <algorithm>

#include "BrevantCocoaExtensions/text/BVNSString.hpp"
#include "Common.hpp"

namespace bv::fuzz {

// The input up to its first NUL byte lists the separators, one per line (an empty line is an empty
// separator); the rest is the text split. Without separators the result is the text alone; no piece
// holds a separator; with one non-empty separator, joining the pieces with it gives the text back.
inline void components(const std::uint8_t* data, std::size_t size) {
    const std::string_view input = asChars(data, size);
    const std::size_t nul = input.find('\0');
    std::vector<Text> separators;
    Text text = Text::fromUtf8(input);
    if (nul != std::string_view::npos) {
        text = Text::fromUtf8(input.substr(nul + 1));
        std::string_view list = input.substr(0, nul);
        for (std::size_t end; (end = list.find('\n')) != std::string_view::npos; list.remove_prefix(end + 1))
            separators.emplace_back(list.substr(0, end));
        separators.emplace_back(list);
    }
    const std::vector<Text> pieces = BVNSString::componentsSeparatedByStrings(text, separators);
    if (separators.empty()) {
        check(pieces == std::vector<Text>{text}, "no separators give the text alone");
        return;
    }
    for (const Text& piece : pieces)
        for (const Text& separator : separators)
            check(separator.empty() || !piece.contains(separator), "no piece holds a separator");
    if (separators.size() == 1 && !separators[0].empty()) {
        Text joined;
        for (std::size_t i = 0; i < pieces.size(); ++i)
            joined += i == 0 ? pieces[i] : separators[0] + pieces[i];
        check(joined == text, "joining the pieces with the separator gives the text");
    }
}

}  // namespace bv::fuzz
