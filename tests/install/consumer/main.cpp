// Uses the installed headers and library; prints what the install test expects.
#include <BrevantCocoaExtensions/platform/CharacterSet.hpp>
#include <BrevantCocoaExtensions/platform/Text.hpp>

#include <iostream>

int main() {
    bv::Text answer("Stra\xC3\x9F" "e");
    std::cout << answer.uppercased() << ' '
              << bv::CharacterSet::whitespaceCharacterSet().contains(u'\t') << '\n';
}
