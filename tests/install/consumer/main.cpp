// Uses the installed headers and library as the README shows; prints what the install test expects.
#include <BrevantCocoaExtensions/dates/BVUtilities.hpp>
#include <BrevantCocoaExtensions/text/BVNSString.hpp>
#include <iostream>

int main() {
    bv::Text answer("  Paris \r\n");
    std::cout << bv::BVNSString::trimmedString(answer) << '\n';       // Paris
    std::cout << bv::BVNSString::base36StringForValue(1295) << '\n';  // ZZ
    // The states table comes from the installed share/BrevantCocoaExtensions.
    std::cout << bv::BVUtilities::abbreviationForState("new york").value_or("missing") << '\n';  // NY
}
