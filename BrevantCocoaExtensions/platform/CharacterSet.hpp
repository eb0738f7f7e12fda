// bv::CharacterSet: a set of UTF-16 code units with O(1) membership, and the named sets.
//
// Membership is by code unit (a surrogate half is a member only when added as such). The named sets are
// read from ICU's Unicode data once and copied out; a copy is a flat 8 KiB bitmap.
#pragma once

#include <bitset>
#include <memory>
#include <vector>

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv {

class CharacterSet {
  public:
    CharacterSet() : bits_(std::make_shared<Bits>()) {}

    // Unicode general category Zs, and U+0009.
    [[nodiscard]] static CharacterSet whitespaceCharacterSet();
    // Categories Zs, Zl, Zp, U+0009 to U+000D, and U+0085.
    [[nodiscard]] static CharacterSet whitespaceAndNewlineCharacterSet();
    // Categories L*, M* and N*.
    [[nodiscard]] static CharacterSet alphanumericCharacterSet();
    // Category P*.
    [[nodiscard]] static CharacterSet punctuationCharacterSet();
    // Category S*.
    [[nodiscard]] static CharacterSet symbolCharacterSet();
    // Categories Zl and Zp, U+000A to U+000D, and U+0085.
    [[nodiscard]] static CharacterSet newlineCharacterSet();
    // Decimal digits (category Nd).
    [[nodiscard]] static CharacterSet decimalDigitCharacterSet();
    // Letters (L*) and marks (M*).
    [[nodiscard]] static CharacterSet letterCharacterSet();
    // Every code unit of the text.
    [[nodiscard]] static CharacterSet fromCharactersInText(const Text& text);

    [[nodiscard]] bool contains(char16_t unit) const noexcept { return (*bits_)[unit]; }
    void add(char16_t unit) { mutableBits().set(unit); }
    void addCharactersInText(const Text& text);
    void remove(char16_t unit) { mutableBits().reset(unit); }
    void formUnion(const CharacterSet& other) { mutableBits() |= *other.bits_; }
    void invert() { mutableBits().flip(); }
    [[nodiscard]] std::size_t count() const noexcept { return bits_->count(); }
    [[nodiscard]] bool empty() const noexcept { return bits_->none(); }

    friend bool operator==(const CharacterSet& a, const CharacterSet& b) { return *a.bits_ == *b.bits_; }

  private:
    using Bits = std::bitset<0x10000>;
    explicit CharacterSet(std::shared_ptr<const Bits> bits)
        : bits_(std::const_pointer_cast<Bits>(std::move(bits))) {}
    Bits& mutableBits();  // copies the bitmap first when it is shared (copy on write)

    std::shared_ptr<Bits> bits_;
};

}  // namespace bv
