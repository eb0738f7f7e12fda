// BVNSMutableString: in-place edits of a mutable Text.
#include "BrevantCocoaExtensions/text/BVNSMutableString.hpp"

#include <algorithm>

namespace bv::BVNSMutableString {

void replaceCharactersInSetWithChar(Text& self, const CharacterSet& set, char16_t replacement) {
    const char16_t narrowed = static_cast<char16_t>(replacement & 0xFF);
    std::u16string& units = self.units();
    std::replace_if(
        units.begin(), units.end(), [&set](char16_t unit) { return set.contains(unit); }, narrowed);
}

void deleteCharactersInSet(Text& self, const CharacterSet& set) {
    std::erase_if(self.units(), [&set](char16_t unit) { return set.contains(unit); });
}

void appendCSV(Text& self, const std::optional<Text>& value) {
    std::u16string& units = self.units();
    if (!units.empty()) units.push_back(u',');
    units.push_back(u'"');
    if (value) {
        for (char16_t unit : value->units()) {
            if (unit == u'"') units.push_back(u'"');  // an inner quote is written twice
            units.push_back(unit);
        }
    }
    units.push_back(u'"');
}

}  // namespace bv::BVNSMutableString
