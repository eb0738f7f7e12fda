// The named character sets, built from ICU's general categories once, shared copy-on-write.
#include "BrevantCocoaExtensions/platform/CharacterSet.hpp"

#include <unicode/uchar.h>

namespace bv {

namespace {

using Bits = std::bitset<0x10000>;

// Every BMP code unit whose general category is in the mask (surrogate halves have category Cs).
Bits unitsInCategories(uint32_t categoryMask) {
    Bits bits;
    for (UChar32 c = 0; c <= 0xFFFF; ++c) {
        if ((U_MASK(u_charType(c)) & categoryMask) != 0) bits.set(static_cast<std::size_t>(c));
    }
    return bits;
}

std::shared_ptr<const Bits> makeShared(Bits bits) {
    return std::make_shared<const Bits>(bits);
}

}  // namespace

CharacterSet CharacterSet::whitespaceCharacterSet() {
    static const auto bits = [] {
        Bits b = unitsInCategories(U_GC_ZS_MASK);
        b.set(0x09);
        return makeShared(b);
    }();
    return CharacterSet(bits);
}

CharacterSet CharacterSet::whitespaceAndNewlineCharacterSet() {
    static const auto bits = [] {
        Bits b = unitsInCategories(U_GC_Z_MASK);
        for (char16_t c = 0x09; c <= 0x0D; ++c)
            b.set(c);
        b.set(0x85);
        return makeShared(b);
    }();
    return CharacterSet(bits);
}

CharacterSet CharacterSet::newlineCharacterSet() {
    static const auto bits = [] {
        Bits b = unitsInCategories(U_GC_ZL_MASK | U_GC_ZP_MASK);
        for (char16_t c = 0x0A; c <= 0x0D; ++c)
            b.set(c);
        b.set(0x85);
        return makeShared(b);
    }();
    return CharacterSet(bits);
}

CharacterSet CharacterSet::alphanumericCharacterSet() {
    static const auto bits = makeShared(unitsInCategories(U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK));
    return CharacterSet(bits);
}

CharacterSet CharacterSet::punctuationCharacterSet() {
    static const auto bits = makeShared(unitsInCategories(U_GC_P_MASK));
    return CharacterSet(bits);
}

CharacterSet CharacterSet::symbolCharacterSet() {
    static const auto bits = makeShared(unitsInCategories(U_GC_S_MASK));
    return CharacterSet(bits);
}

CharacterSet CharacterSet::decimalDigitCharacterSet() {
    static const auto bits = makeShared(unitsInCategories(U_GC_ND_MASK));
    return CharacterSet(bits);
}

CharacterSet CharacterSet::letterCharacterSet() {
    static const auto bits = makeShared(unitsInCategories(U_GC_L_MASK | U_GC_M_MASK));
    return CharacterSet(bits);
}

CharacterSet CharacterSet::fromCharactersInText(const Text& text) {
    CharacterSet set;
    set.addCharactersInText(text);
    return set;
}

void CharacterSet::addCharactersInText(const Text& text) {
    Bits& bits = mutableBits();
    for (char16_t unit : text.units())
        bits.set(unit);
}

CharacterSet::Bits& CharacterSet::mutableBits() {
    if (bits_.use_count() > 1) bits_ = std::make_shared<Bits>(*bits_);
    return *bits_;
}

}  // namespace bv
