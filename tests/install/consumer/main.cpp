// Uses the installed headers and library as the README shows; prints what the install test expects.
#include <BrevantCocoaExtensions/text/BVNSString.hpp>
#include <iostream>

int main() {
    bv::Text answer("  Paris \r\n");
    std::cout << bv::BVNSString::trimmedString(answer) << '\n';       // Paris
    std::cout << bv::BVNSString::base36StringForValue(1295) << '\n';  // ZZ
}
