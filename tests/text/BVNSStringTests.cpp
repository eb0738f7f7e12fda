// BVNSString: trimming, the 8-bit narrowing, searching, splitting, escaping (with the rescanning
// unescaper checked against a literal model), base 36, the shared cursor, Base64 text and file writing.
#include "BrevantCocoaExtensions/text/BVNSString.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

namespace s = bv::BVNSString;
using bv::CharacterSet;
using bv::Text;

namespace {

Text units(std::u16string value) {
    return Text(std::move(value));
}

// Runs the shared cursor back to 0 from wherever an earlier check left it.
void resetCursor() {
    static const Text kLong(std::string(64, 'x'));
    while (s::nextStringChar(kLong)) {
    }
}

// The second unescaping pass exactly as described: search the whole text again after every replacement.
std::u16string rescanningModel(std::u16string work) {
    std::size_t last = 0;
    while (work.size() - last != 0) {
        std::size_t marker = work.find(u"&#x");
        std::size_t semicolon = work.find(u';');
        if (marker == std::u16string::npos || semicolon == std::u16string::npos) break;
        long long span = static_cast<long long>(semicolon + 1) - static_cast<long long>(marker);
        if (span >= 11) break;
        if (span < 4) throw bv::RangeException("negative span");
        std::string digits;
        for (char16_t unit : work.substr(marker + 3, static_cast<std::size_t>(span - 4)))
            digits += unit < 0x80 ? static_cast<char>(unit) : '!';
        long value = std::strtol(digits.c_str(), nullptr, 16);
        work.replace(marker, static_cast<std::size_t>(span), 1, static_cast<char16_t>(value & 0xFFFF));
        last = marker;
    }
    return work;
}

}  // namespace

TEST(BVNSString, TrimsOnlyTheEnds) {
    EXPECT_EQ(s::trimmedCSVString("  \"a, b\",\r\n"), Text("a, b"));
    EXPECT_EQ(s::trimmedString("\t x \r\n"), Text("x"));
    EXPECT_EQ(s::trimmedString(units(u"\u00A0\u2028a \u0085b\u3000")), units(u"a \u0085b"));
    EXPECT_EQ(s::trimmedString(" \n\t "), Text(""));
    EXPECT_EQ(s::stringTrimmedByCharactersInString("xyaxbyx", "xy"), Text("axb"));
    EXPECT_EQ(s::stringTrimmedByCharactersInString(" a ", "x"), Text(" a "));
    EXPECT_EQ(s::stringByTrimmingWhitespaceAndNewlineCharactersAndCharactersInString("-- a-b -\n", "-"),
              Text("a-b"));
    EXPECT_TRUE(
        s::isNullOrEmptyAfterTrimmingWhitespaceAndNewlineCharactersFromString(units(u"\u00A0\u2028")));
    EXPECT_TRUE(s::isNullOrEmptyAfterTrimmingWhitespaceAndNewlineCharactersFromString(std::nullopt));
    EXPECT_FALSE(s::isNullOrEmptyAfterTrimmingWhitespaceAndNewlineCharactersFromString(units(u"\uFEFF")));
    EXPECT_TRUE(s::isNullOrEmptyString(Text()));
    EXPECT_FALSE(s::isNullOrEmptyString(Text(" ")));
}

TEST(BVNSString, EightBitAppendKeepsOnlyTheLowByte) {
    CharacterSet smile = CharacterSet::fromCharactersInText(units(u"\u263A"));
    EXPECT_EQ(s::stringByRemovingCharactersOtherThanCharactersInSet(units(u"\u263A"), smile), Text(":"));
    EXPECT_EQ(
        s::stringByRemovingCharactersInSet(units(u"\u0141\u00E9-x"), CharacterSet::punctuationCharacterSet()),
        units(u"A\u00E9x"));
    EXPECT_EQ(s::cleanedString(units(u" a b\u2028c\u00A0d\r\n\u263A")), Text("abcd:"));
    // The leading-occurrence remover removes everywhere and keeps wide units whole.
    EXPECT_EQ(s::stringByRemovingLeadingOccurrencesOfCharacter("00120", u'0'), Text("12"));
    EXPECT_EQ(s::stringByRemovingLeadingOccurrencesOfCharacter(units(u"0\u263A0"), u'0'), units(u"\u263A"));
}

TEST(BVNSString, NonAlphaNumericRemovalFlags) {
    const Text text = units(u"a-b c\r\nd!$\u00E9\u0301");
    EXPECT_EQ(s::stringByRemovingNonAlphaNumericCharactersWhilePreservingWhiteSpaces(text, false),
              units(u"abcd\u00E9\u0001"));  // the combining mark is kept, then narrowed
    EXPECT_EQ(s::stringByRemovingNonAlphaNumericCharactersWhilePreservingWhiteSpaces(text, true),
              units(u"ab c\nd\u00E9\u0001"));
    EXPECT_EQ(
        s::stringByRemovingNonAlphaNumericCharactersWhilePreservingWhiteSpacesPreservePunctuationPreserveSymbols(
            text, false, true, false),
        units(u"a-bcd!\u00E9\u0001"));
    EXPECT_EQ(
        s::stringByRemovingNonAlphaNumericCharactersWhilePreservingWhiteSpacesPreservePunctuationPreserveSymbols(
            text, false, false, true),
        units(u"abcd$\u00E9\u0001"));
}

TEST(BVNSString, SearchModes) {
    const Text cafe = units(u"caf\u00E9");
    EXPECT_TRUE(s::containsString(cafe, units(u"e\u0301")));  // canonically equivalent
    EXPECT_FALSE(s::containsString(cafe, ""));
    EXPECT_FALSE(s::containsStringCaseInsensitiveCompare("STRASSE", units(u"\u00DF"), false));
    EXPECT_TRUE(s::containsStringCaseInsensitiveCompare("STRASSE", units(u"stra\u00DF"), true));
    EXPECT_FALSE(s::containsStringCaseInsensitiveCompare("abc", "", true));
    EXPECT_TRUE(s::startsWithString("abc", "ab"));
    EXPECT_FALSE(s::startsWithString("abc", "AB"));
    EXPECT_FALSE(s::startsWithString("abc", ""));
    EXPECT_FALSE(s::startsWithString("ab", "abc"));
    EXPECT_TRUE(s::startsWithStringCaseInsensitiveCompare("ABC", "ab", true));
    EXPECT_FALSE(s::startsWithStringCaseInsensitiveCompare("xABC", "ab", true));
    EXPECT_EQ(s::occurrencesOfString("aaaa", "aa"), 2u);
    EXPECT_EQ(s::occurrencesOfString("aaa", "aa"), 1u);
    EXPECT_EQ(s::occurrencesOfString("abcabc", "c"), 2u);
    EXPECT_EQ(s::occurrencesOfString("abc", ""), 0u);
}

TEST(BVNSString, ComponentsSeparatedByStrings) {
    using List = std::vector<Text>;
    EXPECT_EQ(s::componentsSeparatedByStrings("a,b;c", {",", ";"}), (List{"a", "b", "c"}));
    EXPECT_EQ(s::componentsSeparatedByStrings(",a", {","}), (List{"", "a"}));
    EXPECT_EQ(s::componentsSeparatedByStrings("a,,", {","}), (List{"a", "", ""}));
    EXPECT_EQ(s::componentsSeparatedByStrings("a;b", {}), (List{"a;b"}));
    EXPECT_EQ(s::componentsSeparatedByStrings("", {","}), (List{""}));
    EXPECT_EQ(s::componentsSeparatedByStrings("a--b-c", {"--", "-"}), (List{"a", "b", "c"}));
    EXPECT_EQ(s::componentsSeparatedByStrings("a--b-c", {"-", "--"}), (List{"a", "", "b", "c"}));
    EXPECT_EQ(s::componentsSeparatedByStrings("a b", {""}), (List{"a b"}));
}

TEST(BVNSString, RemovingAndStripping) {
    EXPECT_EQ(s::stringByRemovingCharacterAtIndex("abc", 1), Text("ac"));
    EXPECT_THROW((void)s::stringByRemovingCharacterAtIndex("abc", 3), bv::RangeException);
    EXPECT_THROW((void)s::stringByRemovingCharacterAtIndex("", 0), bv::RangeException);
    EXPECT_EQ(s::stringByStrippingSubstring(std::nullopt, "a"), std::nullopt);
    EXPECT_EQ(s::stringByStrippingSubstring(Text("aabb"), "ab"), Text("ab"));
    EXPECT_EQ(s::stringByStrippingSubstring(Text("xyz"), "q"), Text("xyz"));
    // Found only literally inside a composed character: the text comes back unchanged.
    EXPECT_EQ(s::stringByStrippingSubstring(units(u"e\u0301"), "e"), units(u"e\u0301"));
    EXPECT_EQ(s::stringByStrippingHyphens("12-34--5"), Text("12345"));
}

TEST(BVNSString, EscapingEntitiesAndQuotes) {
    EXPECT_EQ(s::stringByEscapingQuotes("say \"hi\" \\\""), Text("say \\\"hi\\\" \\\\\""));
    EXPECT_EQ(s::stringByUnescapingQuotes("say \\\"hi\\\""), Text("say \"hi\""));
    EXPECT_EQ(s::stringByEscapingEntities("<a href='x'>&\"</a>"),
              Text("&lt;a href=&apos;x&apos;&gt;&amp;&quot;&lt;/a&gt;"));
    EXPECT_EQ(s::stringByUnescapingEntities("&lt;&gt;&quot;&apos;&amp;lt;"), Text("<>\"'&lt;"));
    EXPECT_EQ(s::stringByUnescapingEntities("&#65;&#x42;&#x1F600;"), units(u"AB\U0001F600"));
    EXPECT_EQ(s::stringByUnescapingEntities("& &x; &#; &#x; &#12 &#x110000; &#X41;"),
              Text("& &x; &#; &#x; &#12 &#x110000; &#X41;"));
    EXPECT_EQ(s::stringByEscapingEntitiesAndControlCharacters("a<b\tc"), Text("a&lt;b&#x9;c"));
    EXPECT_EQ(s::stringByEscapingEntitiesAndControlCharacters(units(std::u16string(1, u'\0'))),
              Text("&#x0;"));
    EXPECT_EQ(s::stringByEscapingEntitiesAndControlCharacters(units(u"\n\r\x1F\x7F \u263A")),
              units(u"&#xA;&#xD;&#x1F;\x7F :"));
}

TEST(BVNSString, UnescapingControlCharactersScansAgainFromTheStart) {
    auto unescape = [](const Text& text) { return s::stringByUnescapingEntitiesAndControlCharacters(text); };
    EXPECT_EQ(unescape("x&#x41;y"), Text("xAy"));
    EXPECT_EQ(unescape("a&#x26;#x42;"), Text("aB"));
    EXPECT_EQ(unescape("&#x26;#x26;#x41;"), Text("A"));
    // References the first pass leaves alone: strtol reads what it can, and a long span stops.
    EXPECT_EQ(unescape("&#xZZZZZZ;"), units(std::u16string(1, u'\0')));
    EXPECT_EQ(unescape("&#x 4g;"), units(u"\u0004"));
    EXPECT_EQ(unescape("&#x-1;"), units(u"\uFFFF"));
    EXPECT_EQ(unescape("&#xZZZZZZZ;"), Text("&#xZZZZZZZ;"));
    EXPECT_EQ(unescape("&#xZ  &x41;"), Text("&#xZ  &x41;"));
    EXPECT_EQ(unescape("&#xZ &x41;"), units(std::u16string(1, u'\0')));
    EXPECT_EQ(unescape(""), Text(""));
    // The first ";" of the whole text stands before the first surviving "&#x".
    EXPECT_THROW((void)unescape("a;&#xZ;"), bv::RangeException);
    EXPECT_THROW((void)unescape("&#x3B;&#xQ;"), bv::RangeException);
}

TEST(BVNSString, UnescapingControlCharactersMatchesTheRescanningModel) {
    const std::u16string alphabet = u"&#x;3B6a2F1 Z-\u263A";
    std::mt19937 random(12345);
    for (int round = 0; round < 20000; ++round) {
        std::u16string input;
        std::size_t length = random() % 24;
        for (std::size_t i = 0; i < length; ++i)
            input += alphabet[random() % alphabet.size()];
        const std::u16string firstPass = s::stringByUnescapingEntities(Text(input)).units();
        std::optional<std::u16string> expected;
        try {
            expected = rescanningModel(firstPass);
        } catch (const bv::RangeException&) {
        }
        if (expected) {
            ASSERT_EQ(s::stringByUnescapingEntitiesAndControlCharacters(Text(input)).units(), *expected)
                << Text(input);
        } else {
            ASSERT_THROW((void)s::stringByUnescapingEntitiesAndControlCharacters(Text(input)),
                         bv::RangeException)
                << Text(input);
        }
    }
}

TEST(BVNSString, FixedForms) {
    EXPECT_EQ(s::stringEnclosedInBraces("a"), Text("{a}"));
    EXPECT_EQ(s::stringByAppendingColon("Name"), Text("Name:"));
    EXPECT_EQ(s::stringByAppendingEllipses("Wait"), units(u"Wait\u2026"));
    auto plural = [](const char* text, int count) {
        return s::stringByAppendingPluralBasedOnCount(text, count);
    };
    EXPECT_EQ((std::vector<Text>{plural("Question", 0), plural("Question", 1), plural("Question", -1),
                                 plural("Class", 2), plural("BOSS", 2), plural("", 2)}),
              (std::vector<Text>{"Questions", "Question", "Questions", "Class", "BOSS", "s"}));
    EXPECT_EQ(s::applescriptFileReference("/Users/a/b.txt"), Text(":Users:a:b.txt"));
    for (const auto& [url, expected] : {std::pair{"see HTTPS://x.org", "see HTTPS://x.org"},
                                        {"a http://b", "a http://b"},
                                        {"brevant.com", "http://brevant.com"},
                                        {"http:/x", "http://http:/x"}}) {
        EXPECT_EQ(s::stringURLBeginningWithHTTP(url), Text(expected));
    }
}

TEST(BVNSString, PathComponentAndLastCharacter) {
    const std::pair<const char*, const char*> cases[] = {
        {"/tmp/scratch.tiff", "scratch"}, {"/a/b.tar.gz/", "b.tar"}, {"name", "name"}, {"/", "/"}, {"", ""},
        {"dir.d/file", "file"},           {".hidden", ""},           {"a//", "a"},
    };
    for (const auto& [path, expected] : cases)
        EXPECT_EQ(s::lastPathComponentWithoutExtension(path), Text(expected));
    EXPECT_EQ(s::lastCharacter(""), u'\0');
    EXPECT_EQ(s::lastCharacter(units(u"ab\u263A")), u'\u263A');
    EXPECT_EQ(s::stringWithUnichar(0).length(), 1u);
}

TEST(BVNSString, Base36BothWays) {
    const std::pair<std::uint64_t, const char*> cases[] = {
        {0, ""}, {35, "Z"}, {36, "10"}, {1295, "ZZ"}, {18446744073709551615ULL, "3W5E11264SGSF"},
    };
    for (const auto& [value, digits] : cases) {
        EXPECT_EQ(s::base36StringForValue(value), Text(digits));
        EXPECT_EQ(static_cast<std::uint64_t>(s::valueForBase36String(digits)), value);
    }
    EXPECT_EQ(s::valueForBase36String("z"), 35);
    EXPECT_EQ(s::valueForBase36String("3w5e11264sgsf"), -1);
    // A character outside the alphabet counts as the not-found index, weighted like a digit.
    EXPECT_EQ(s::valueForBase36String("!"), 0x7FFFFFFFFFFFFFFFLL);
    EXPECT_EQ(static_cast<std::uint64_t>(s::valueForBase36String("1!")), 0x7FFFFFFFFFFFFFFFULL + 36);
    std::mt19937_64 random(7);
    for (int i = 0; i < 1000; ++i) {
        std::uint64_t value = random() >> (random() % 64);
        ASSERT_EQ(static_cast<std::uint64_t>(s::valueForBase36String(s::base36StringForValue(value))), value);
    }
    const std::vector<Text> alphabet = s::base36();
    ASSERT_EQ(alphabet.size(), 36u);
    EXPECT_EQ(alphabet.front() + alphabet[10] + alphabet.back(), Text("0AZ"));
    for (int i = 0; i < 200; ++i)
        EXPECT_NE(std::find(alphabet.begin(), alphabet.end(), s::randomBase36Char()), alphabet.end());
}

TEST(BVNSString, SharedCursorResetsOnlyAtTheEnd) {
    resetCursor();
    EXPECT_EQ(s::charStrings("ab\u263A"), (std::vector<Text>{"a", "b", units(u"\u263A")}));
    EXPECT_TRUE(s::charStrings("").empty());
    EXPECT_EQ(s::reversedString(units(u"a\U0001F600")), units(u"\xDE00\xD83D"
                                                              u"a"));  // the pair swaps
    // An abandoned iteration leaves the cursor in the middle for the next text.
    EXPECT_EQ(s::nextStringChar("abcd"), Text("a"));
    EXPECT_EQ(s::nextStringChar("abcd"), Text("b"));
    EXPECT_EQ(s::charStrings("wxyz"), (std::vector<Text>{"y", "z"}));
    EXPECT_EQ(s::charStrings("wxyz").size(), 4u);  // the full run reset the cursor
    for (int i = 0; i < 3; ++i)
        (void)s::nextStringChar("abcd");
    EXPECT_THROW((void)s::nextStringChar("ab"), bv::RangeException);
    EXPECT_THROW((void)s::base36StringForValue(1), bv::RangeException);
    resetCursor();
    EXPECT_EQ(s::base36StringForValue(36), Text("10"));
}

TEST(BVNSString, Base64Text) {
    EXPECT_EQ(s::decodedData("aGk="), (bv::ByteData{'h', 'i'}));
    EXPECT_EQ(s::decodedData("aG\nk="), std::nullopt);
    EXPECT_EQ(s::decodedDataWithNewLines("aG\r\nk=", true), (bv::ByteData{'h', 'i'}));
    EXPECT_EQ(s::decodedString("aGk="), Text("hi"));
    EXPECT_EQ(s::decodedString("/w=="), std::nullopt);  // the byte 0xFF is not UTF-8
    EXPECT_EQ(s::decodedString("a"), std::nullopt);
}

TEST(BVNSString, WritesUniversallyWritableFiles) {
    const std::filesystem::path folder = std::filesystem::path(::testing::TempDir()) / "bvnsstring-write";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    const std::string file = (folder / "a.txt").string();
    for (bool atomically : {true, false}) {
        bv::Error error;
        ASSERT_TRUE(s::writeToUniversallyWritableFileAtomicallyEncodingError(
            units(u"caf\u00E9"), file, atomically, bv::TextEncoding::ISOLatin1, &error));
        struct stat info {};
        ASSERT_EQ(::stat(file.c_str(), &info), 0);
        EXPECT_EQ(info.st_mode & 07777, 0777u);
        std::ifstream in(file, std::ios::binary);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), "caf\xE9");
    }
    bv::Error error;
    EXPECT_FALSE(s::writeToUniversallyWritableFileAtomicallyEncodingError(units(u"\u263A"), file, false,
                                                                          bv::TextEncoding::ASCII, &error));
    EXPECT_EQ(error.code, 517);
    EXPECT_FALSE(s::writeToUniversallyWritableFileAtomicallyEncodingError(
        "x", (folder / "missing" / "b.txt").string(), true, bv::TextEncoding::UTF8, &error));
    EXPECT_EQ(error.domain, "NSPOSIXErrorDomain");
    std::filesystem::remove_all(folder);
}
