// BVNSCharacterSet: the library's character-set factories.
#include "BrevantCocoaExtensions/text/BVNSCharacterSet.hpp"

namespace bv::BVNSCharacterSet {

CharacterSet illegalBrevantOnlineCharacterSet() {
    return CharacterSet::fromCharactersInText(Text("/\\:?\""));
}

CharacterSet characterSetFromArrayOfStrings(const std::vector<Text>& texts) {
    CharacterSet set;
    for (const Text& text : texts)
        set.addCharactersInText(text);
    return set;
}

}  // namespace bv::BVNSCharacterSet
