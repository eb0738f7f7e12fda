// BVNSString: the library's toolbox of operations on any Text.
//
// Free functions, receiver first; the operations without a receiver (base36(), dashSymbol(), ...) are the
// factories of the type. Every length and index counts UTF-16 code units, and a "character" is one code
// unit: surrogate pairs and composed sequences are never treated as units.
//
// Lists of texts are std::vector<Text> (the element kind is always Text), never a ValueArray.
//
// Pitfalls that callers rely on, kept on purpose:
//   - The 8-bit character append. stringByRemovingCharactersInSet (and everything built on it),
//     stringByEscapingEntitiesAndControlCharacters and BVNSMutableString::replaceCharactersInSetWithChar
//     keep only the low byte of each code unit they write, read as Latin-1: U+263A becomes ":", U+0141
//     becomes "A". They are meant for ASCII text.
//   - stringByRemovingLeadingOccurrencesOfCharacter removes the character everywhere, not only in front.
//   - base36StringForValue(0) is the empty text, not "0".
//   - stringByUnescapingEntitiesAndControlCharacters searches again from the start after each replacement,
//     so a reference that decodes to "&" can join the following text into a new reference.
//   - nextStringChar keeps one process-wide cursor shared by every text (and so do charStrings,
//     reversedString and the base-36 conversions, which run it to its end). Use them from one thread at a
//     time; an abandoned iteration leaves the cursor in the middle, and a later call on a shorter text
//     throws RangeException.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "BrevantCocoaExtensions/platform/CharacterSet.hpp"
#include "BrevantCocoaExtensions/platform/Error.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/TextEncoding.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::BVNSString {

// --- Construction and tests ---------------------------------------------------------------------------

// Decodes the bytes in the encoding; nullopt when they are not valid in it.
[[nodiscard]] std::optional<Text> stringWithDataUsingEncoding(const ByteData& data, TextEncoding encoding);
// A text of exactly that one code unit (any value, also 0).
[[nodiscard]] Text stringWithUnichar(char16_t unit);
// True when the length is 0.
[[nodiscard]] bool isEmptyString(const Text& self);
// True when nothing is left after trimming white space and line breaks from both ends.
[[nodiscard]] bool isEmptyStringAfterTrimmingWhitespaceAndNewlineCharacters(const Text& self);
// True for null, else isEmptyString of the text.
[[nodiscard]] bool isNullOrEmptyString(const std::optional<Text>& text);
// True for null, else isEmptyStringAfterTrimmingWhitespaceAndNewlineCharacters of the text.
[[nodiscard]] bool isNullOrEmptyAfterTrimmingWhitespaceAndNewlineCharactersFromString(
    const std::optional<Text>& text);
// The last code unit; 0 for an empty text.
[[nodiscard]] char16_t lastCharacter(const Text& self);
// The last path component (trailing "/" ignored) without its extension: "/a/b.tar.gz/" gives "b.tar".
[[nodiscard]] Text lastPathComponentWithoutExtension(const Text& self);

// --- Searching and counting ---------------------------------------------------------------------------

// Whether the argument occurs anywhere (canonically equivalent sequences match); false for "".
[[nodiscard]] bool containsString(const Text& self, const Text& other);
// With true, both texts are upper-cased with the full mapping ("ß" is "SS") before the search.
[[nodiscard]] bool containsStringCaseInsensitiveCompare(const Text& self, const Text& other,
                                                        bool caseInsensitive);
// Whether the first occurrence of the argument (case-insensitive or literal) lies at index 0.
[[nodiscard]] bool startsWithStringCaseInsensitiveCompare(const Text& self, const Text& other,
                                                          bool caseInsensitive);
// startsWithStringCaseInsensitiveCompare with false (literal).
[[nodiscard]] bool startsWithString(const Text& self, const Text& other);
// Non-overlapping literal occurrences counted from the left ("aaaa" holds "aa" twice); 0 for "".
[[nodiscard]] std::uint64_t occurrencesOfString(const Text& self, const Text& other);
// Splits at every literal occurrence of each separator in turn, keeping empty pieces:
// "a,b;c" with {",", ";"} gives {"a", "b", "c"}; no separators give {self}.
[[nodiscard]] std::vector<Text> componentsSeparatedByStrings(const Text& self,
                                                             const std::vector<Text>& separators);

// --- Trimming (both ends only, never inside) ----------------------------------------------------------

// Trims exactly the characters of the argument.
[[nodiscard]] Text stringTrimmedByCharactersInString(const Text& self, const Text& characters);
// Trims white space, line breaks and the characters of the argument.
[[nodiscard]] Text stringByTrimmingWhitespaceAndNewlineCharactersAndCharactersInString(
    const Text& self, const Text& characters);
// Trims white space and line breaks.
[[nodiscard]] Text trimmedString(const Text& self);
// Trims white space, line breaks, commas and double quotes.
[[nodiscard]] Text trimmedCSVString(const Text& self);

// --- Removing and replacing characters ----------------------------------------------------------------

// With remove true keeps the code units not in the set, with false those in it; each kept code unit is
// narrowed to its low byte (8-bit append).
[[nodiscard]] Text stringByRemovingCharactersInSet(const Text& self, bool remove, const CharacterSet& set);
// Removes the code units in the set (8-bit append for the others).
[[nodiscard]] Text stringByRemovingCharactersInSet(const Text& self, const CharacterSet& set);
// Keeps only the code units in the set (8-bit append).
[[nodiscard]] Text stringByRemovingCharactersOtherThanCharactersInSet(const Text& self,
                                                                      const CharacterSet& set);
// The next operation with punctuation and symbols removed.
[[nodiscard]] Text stringByRemovingNonAlphaNumericCharactersWhilePreservingWhiteSpaces(
    const Text& self, bool preserveWhiteSpaces);
// Keeps letters, marks and numbers, plus white space and U+000A (never U+000D), punctuation and symbols as
// the flags say (8-bit append).
[[nodiscard]] Text
stringByRemovingNonAlphaNumericCharactersWhilePreservingWhiteSpacesPreservePunctuationPreserveSymbols(
    const Text& self, bool preserveWhiteSpaces, bool preservePunctuation, bool preserveSymbols);
// Removes every white space and line break anywhere (8-bit append for the others).
[[nodiscard]] Text cleanedString(const Text& self);
// Removes the code unit everywhere, not only at the front; the others are kept whole.
[[nodiscard]] Text stringByRemovingLeadingOccurrencesOfCharacter(const Text& self, char16_t character);
// A copy without the code unit at the index; throws RangeException at or past the length.
[[nodiscard]] Text stringByRemovingCharacterAtIndex(const Text& self, std::uint64_t index);
// nullopt for a null text; the text unchanged when it is empty or the argument is not found (canonical
// equivalence, so "e" is not found in "e" + U+0301); otherwise every literal occurrence removed.
[[nodiscard]] std::optional<Text> stringByStrippingSubstring(const std::optional<Text>& self,
                                                             const Text& substring);
// Removes every "-".
[[nodiscard]] Text stringByStrippingHyphens(const Text& self);
// The code units in reverse order (a surrogate pair comes out swapped); runs the shared cursor.
[[nodiscard]] Text reversedString(const Text& self);
// Each code unit as a one-unit text, by calling nextStringChar until it yields nullopt. Starts at the
// shared cursor, so after an abandoned iteration it starts in the middle (or throws RangeException).
[[nodiscard]] std::vector<Text> charStrings(const Text& self);
// The code unit at the process-wide cursor, advancing it; at the end nullopt, and the cursor is back
// at 0. Throws RangeException (cursor unchanged) when the cursor lies past the text's end.
[[nodiscard]] std::optional<Text> nextStringChar(const Text& self);

// --- Escaping -----------------------------------------------------------------------------------------

// Every '"' becomes '\"'; backslashes already present are not touched.
[[nodiscard]] Text stringByEscapingQuotes(const Text& self);
// Every '\"' becomes '"'.
[[nodiscard]] Text stringByUnescapingQuotes(const Text& self);
// Replaces & < > " ' by &amp; &lt; &gt; &quot; &apos;. Nothing else changes.
[[nodiscard]] Text stringByEscapingEntities(const Text& self);
// Replaces the five entity references and decimal ("&#65;") and hexadecimal ("&#x41;") character
// references by their characters in one left-to-right pass; anything else (unknown or malformed
// references, values past U+10FFFF) is kept as it stands.
[[nodiscard]] Text stringByUnescapingEntities(const Text& self);
// stringByEscapingEntities, then each code unit below 32 becomes "&#x%X;" ("&#x9;", "&#x0;") and every
// other code unit is narrowed to its low byte (8-bit append).
[[nodiscard]] Text stringByEscapingEntitiesAndControlCharacters(const Text& self);
// stringByUnescapingEntities, then repeatedly: the first "&#x" and the first ";" of the whole text
// (searched again from the start each time) with at most 6 characters between them become one code unit
// (hex value by strtol, low 16 bits). Stops when either is missing or the span is 11 or more; throws
// RangeException when the first ";" stands before the first "&#x".
[[nodiscard]] Text stringByUnescapingEntitiesAndControlCharacters(const Text& self);

// --- Fixed forms --------------------------------------------------------------------------------------

// "{text}".
[[nodiscard]] Text stringEnclosedInBraces(const Text& self);
// "text:".
[[nodiscard]] Text stringByAppendingColon(const Text& self);
// The text followed by U+2026 (horizontal ellipsis).
[[nodiscard]] Text stringByAppendingEllipses(const Text& self);
// The text unchanged when count is 1 or it ends in "s" or "S"; otherwise with "s" appended (0 is plural).
[[nodiscard]] Text stringByAppendingPluralBasedOnCount(const Text& self, std::int64_t count);
// Every "/" replaced by ":" ("/Users/a/b.txt" is ":Users:a:b.txt").
[[nodiscard]] Text applescriptFileReference(const Text& self);
// The text unchanged when it holds "http://" or "https://" anywhere (any case), else "http://" + text.
[[nodiscard]] Text stringURLBeginningWithHTTP(const Text& self);

// --- Numbers from text --------------------------------------------------------------------------------

// False for ""; true when the first code unit is T, t, Y or y; otherwise whether the leading decimal
// integer is not 0 ("2abc" true, " true" false, " 1" true).
[[nodiscard]] bool boolValue(const Text& self);
// strtol, strtoul, strtoll, strtoull with base 0 on the UTF-8 form: "0x1F" is 31, "010" is 8;
// out-of-range values saturate.
[[nodiscard]] std::int64_t longValue(const Text& self);
[[nodiscard]] std::uint64_t unsignedLongValue(const Text& self);
[[nodiscard]] std::int64_t longLongValue(const Text& self);
[[nodiscard]] std::uint64_t unsignedLongLongValue(const Text& self);

// --- Base 36 ------------------------------------------------------------------------------------------

// The 36 digits "0" to "9" then "A" to "Z"; a digit's value is its position.
[[nodiscard]] std::vector<Text> base36();
// One base-36 digit picked uniformly at random (by BVNSArray::randomObject).
[[nodiscard]] Text randomBase36Char();
// Most significant digit first; 0 gives the empty text, not "0". 2^64-1 gives "3W5E11264SGSF".
[[nodiscard]] Text base36StringForValue(std::uint64_t value);
// The value of base-36 digits (either case), wrapping modulo 2^64 and read as signed. A character that
// is not a digit counts as digit value 2^63-1 (no error); "" is 0. Past 13 digits the result is
// meaningless (the digit weights wrap too).
[[nodiscard]] std::int64_t valueForBase36String(const Text& text);

// --- Symbols (one code unit each) ---------------------------------------------------------------------

[[nodiscard]] Text dashSymbol();       // U+2212 minus sign
[[nodiscard]] Text writingSymbol();    // U+270D writing hand
[[nodiscard]] Text smileFaceSymbol();  // U+263A white smiling face
[[nodiscard]] Text boxSymbol();        // U+2610 ballot box
[[nodiscard]] Text checkSymbol();      // U+2714 heavy check mark
[[nodiscard]] Text crossSymbol();      // U+2718 heavy ballot X
[[nodiscard]] Text heartSymbol();      // U+2661 white heart suit

// --- Base64 text --------------------------------------------------------------------------------------

// Decodes standard Base64. With true, characters outside the alphabet (line breaks and any other) are
// skipped; with false any such character gives nullopt.
[[nodiscard]] std::optional<ByteData> newDecodedDataWithNewLines(const Text& self, bool ignoreNewLines);
[[nodiscard]] std::optional<ByteData> decodedDataWithNewLines(const Text& self, bool ignoreNewLines);
// The two above, strict.
[[nodiscard]] std::optional<ByteData> newDecodedData(const Text& self);
[[nodiscard]] std::optional<ByteData> decodedData(const Text& self);
// decodedData read as UTF-8; nullopt when decoding fails or the bytes are not valid UTF-8.
[[nodiscard]] std::optional<Text> decodedString(const Text& self);

// --- Files --------------------------------------------------------------------------------------------

// Writes the text to the path in the encoding, then makes the file readable, writable and executable by
// everyone (0777) whether or not the write succeeded, ignoring a failure of that step. Answers the
// write's result; on failure fills *error when given.
bool writeToUniversallyWritableFileAtomicallyEncodingError(const Text& self, const Text& path,
                                                           bool atomically, TextEncoding encoding,
                                                           Error* error = nullptr);

}  // namespace bv::BVNSString
