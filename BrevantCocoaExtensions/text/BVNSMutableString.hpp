// BVNSMutableString: in-place edits of a mutable Text, among them the CSV field writer appendCSV.
//
// Each operation changes the receiver and returns nothing; the caller needs exclusive access to it.
#pragma once

#include <optional>

#include "BrevantCocoaExtensions/platform/CharacterSet.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BVNSMutableString {

// Replaces every code unit in the set by the replacement narrowed to its low byte (8-bit append, read as
// Latin-1): a replacement above U+00FF loses its high byte (U+263A writes ":").
void replaceCharactersInSetWithChar(Text& self, const CharacterSet& set, char16_t replacement);

// Deletes every code unit in the set.
void deleteCharactersInSet(Text& self, const CharacterSet& set);

// Appends one CSV field, always quoted: "," first when the text is not empty (whatever it ends with, so
// build each line in a text of its own), then "\"\"" for a null or empty value, else the value in double
// quotes with each inner double quote doubled. Nothing is trimmed; commas and line breaks stay.
void appendCSV(Text& self, const std::optional<Text>& value);

}  // namespace bv::BVNSMutableString
