// Text: the library's string type, a sequence of UTF-16 code units.
//
// Every length, index and range counts code units; one code unit is one character throughout, so
// surrogate pairs and composed sequences are never treated as units. Text is built from UTF-8 (each
// invalid sequence becomes U+FFFD) and read back as UTF-8. A mutable text is simply a non-const Text.
//
// Three comparison modes occur in the library:
//   - Literal: code unit by code unit.
//   - Default: case-sensitive, but canonically equivalent sequences match ("é" matches "e" + U+0301).
//   - CaseInsensitive: characters compared after Unicode case folding (and canonical equivalence).
// A search for the empty text never matches in any mode.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace bv {

// The index answered when nothing is found: the largest signed 64-bit integer.
inline constexpr std::uint64_t NotFound = 0x7FFFFFFFFFFFFFFFULL;

// A location and a length in code units (or list elements).
struct Range {
    std::uint64_t location = 0;
    std::uint64_t length = 0;
    friend bool operator==(const Range&, const Range&) = default;
};

enum class CompareMode { Literal, Default, CaseInsensitive };

class Text {
  public:
    Text() = default;
    Text(const char* utf8) : Text(std::string_view(utf8)) {}         // NOLINT: implicit by design
    Text(std::string_view utf8);                                     // NOLINT: implicit by design
    Text(const std::string& utf8) : Text(std::string_view(utf8)) {}  // NOLINT
    Text(std::u16string units) : units_(std::move(units)) {}         // NOLINT
    Text(const char16_t* units) : units_(units) {}                   // NOLINT
    Text(std::u16string_view units) : units_(units) {}               // NOLINT

    // A text of one code unit (any value, also 0).
    [[nodiscard]] static Text fromUnit(char16_t unit) { return Text(std::u16string(1, unit)); }
    // Builds from bytes that are meant as UTF-8; invalid sequences become U+FFFD.
    [[nodiscard]] static Text fromUtf8(std::string_view utf8) { return Text(utf8); }
    // Builds from Latin-1 bytes: each byte is the code unit of the same value.
    [[nodiscard]] static Text fromLatin1(std::string_view bytes);

    [[nodiscard]] std::string toUtf8() const;
    [[nodiscard]] const std::u16string& units() const noexcept { return units_; }
    [[nodiscard]] std::u16string& units() noexcept { return units_; }
    [[nodiscard]] std::u16string_view view() const noexcept { return units_; }

    [[nodiscard]] std::size_t length() const noexcept { return units_.size(); }
    [[nodiscard]] std::size_t size() const noexcept { return units_.size(); }
    [[nodiscard]] bool empty() const noexcept { return units_.empty(); }
    // The code unit at an index; throws RangeException past the end.
    [[nodiscard]] char16_t at(std::size_t index) const;
    [[nodiscard]] char16_t operator[](std::size_t index) const noexcept { return units_[index]; }

    // The code units in [location, location + length); throws RangeException when out of bounds.
    [[nodiscard]] Text substring(std::size_t location, std::size_t length) const;
    [[nodiscard]] Text substringFrom(std::size_t location) const;

    Text& append(const Text& other) {
        units_ += other.units_;
        return *this;
    }
    Text& append(char16_t unit) {
        units_.push_back(unit);
        return *this;
    }
    Text& operator+=(const Text& other) { return append(other); }
    Text& operator+=(char16_t unit) { return append(unit); }
    friend Text operator+(Text left, const Text& right) { return left.append(right); }

    friend bool operator==(const Text&, const Text&) = default;
    friend std::strong_ordering operator<=>(const Text& a, const Text& b) { return a.units_ <=> b.units_; }

    // --- Comparison and search through ICU ------------------------------------------------------

    // Compares in the given mode; answers -1, 0 or 1.
    [[nodiscard]] int compare(const Text& other, CompareMode mode) const;
    // Equality in the given mode (Literal is operator==).
    [[nodiscard]] bool equals(const Text& other, CompareMode mode) const { return compare(other, mode) == 0; }
    // The first occurrence of needle at or after `from`, in the given mode; location NotFound when absent
    // and always for an empty needle. The range is in this text's code units (a match in Default or
    // CaseInsensitive mode may differ in length from the needle).
    [[nodiscard]] Range find(const Text& needle, CompareMode mode = CompareMode::Literal,
                             std::size_t from = 0) const;
    [[nodiscard]] bool contains(const Text& needle, CompareMode mode = CompareMode::Literal) const {
        return find(needle, mode).location != NotFound;
    }

    // Full Unicode upper-case mapping ("ß" becomes "SS"), root locale.
    [[nodiscard]] Text uppercased() const;
    // Full Unicode lower-case mapping, root locale.
    [[nodiscard]] Text lowercased() const;
    // Full Unicode case folding: the key under which case-insensitive texts are equal.
    [[nodiscard]] Text caseFolded() const;
    // Canonical decomposition (NFD): the key under which canonically equivalent texts are equal.
    [[nodiscard]] Text canonicalDecomposition() const;
    // The key under which two texts are equal in a mode: the text itself (Literal), its NFD form
    // (Default) or NFD of its case-folded NFD form (CaseInsensitive). Use it to index texts by mode.
    [[nodiscard]] Text comparisonKey(CompareMode mode) const;

  private:
    std::u16string units_;
};

// Writes a text as UTF-8 (for tests and diagnostics).
std::ostream& operator<<(std::ostream& out, const Text& text);

}  // namespace bv

template <>
struct std::hash<bv::Text> {
    std::size_t operator()(const bv::Text& text) const noexcept {
        return std::hash<std::u16string>{}(text.units());
    }
};
