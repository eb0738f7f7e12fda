// The XML property-list writer and reader: exact document text, round trips of every kind, escaping,
// and the reader's rejection of malformed documents.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/PropertyList.hpp"

using bv::Number;
using bv::Text;
using bv::Value;
using bv::ValueArray;
using bv::ValueDictionary;
namespace plist = bv::PropertyList;

namespace {

std::string asString(const bv::ByteData& data) {
    return std::string(data.begin(), data.end());
}

const std::string kHeader =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";

}  // namespace

TEST(PropertyList, WritesTheExactDocumentWithSortedKeysAndTabs) {
    ValueDictionary inner{{Text("flag"), Value(false)}};
    ValueDictionary root{{Text("name"), Value("Tom & <Jerry>")},
                         {Text("count"), Value(42)},
                         {Text("ratio"), Value(0.5)},
                         {Text("on"), Value(true)},
                         {Text("when"), Value(bv::Date::fromTimeIntervalSinceReferenceDate(86400.75))},
                         {Text("bytes"), Value(bv::ByteData{0, 1, 2, 0xFF})},
                         {Text("list"), Value(ValueArray{Value(-7), Value(ValueArray{}), Value(inner)})},
                         {Text("empty"), Value(ValueDictionary{})}};
    EXPECT_EQ(
        asString(plist::xmlData(root)),
        kHeader +
            "<dict>\n\t<key>bytes</key>\n\t<data>AAEC/w==</data>\n\t<key>count</key>\n"
            "\t<integer>42</integer>\n\t<key>empty</key>\n\t<dict/>\n\t<key>list</key>\n\t<array>\n"
            "\t\t<integer>-7</integer>\n\t\t<array/>\n\t\t<dict>\n\t\t\t<key>flag</key>\n\t\t\t<false/>\n"
            "\t\t</dict>\n\t</array>\n\t<key>name</key>\n\t<string>Tom &amp; &lt;Jerry&gt;</string>\n"
            "\t<key>on</key>\n\t<true/>\n\t<key>ratio</key>\n\t<real>0.5</real>\n\t<key>when</key>\n"
            "\t<date>2001-01-02T00:00:00Z</date>\n</dict>\n</plist>\n");
}

TEST(PropertyList, RoundTripKeepsEveryKind) {
    ValueDictionary root{
        {Text("text"), Value("caf\xC3\xA9 \xE2\x98\xBA\r\nline & <tag>\t")},
        {Text("blank"), Value("  ")},
        {Text("emptyText"), Value("")},
        {Text("big"), Value(Number::uint64(std::numeric_limits<std::uint64_t>::max()))},
        {Text("min"), Value(Number::int64(std::numeric_limits<std::int64_t>::min()))},
        {Text("third"), Value(1.0 / 3.0)},
        {Text("tiny"), Value(5e-324)},
        {Text("infinite"), Value(-HUGE_VAL)},
        {Text("before1970"), Value(bv::Date::fromTimeIntervalSince1970(-86400.0 * 365))},
        {Text("data"), Value(bv::ByteData{})},
        {Text("nested"),
         Value(ValueArray{Value(ValueDictionary{{Text("a&b"), Value(ValueArray{Value(1)})}})})}};
    bv::Error error;
    std::optional<Value> read = plist::fromXmlData(plist::xmlData(root), &error);
    ASSERT_TRUE(read.has_value()) << error.failureReason;
    EXPECT_EQ(*read, Value(root));
    EXPECT_EQ(read->dictionary()->at(Text("big")).number()->uint64Value(),
              std::numeric_limits<std::uint64_t>::max());
    // A NaN survives although it never equals itself.
    std::optional<Value> nan = plist::fromXmlData(plist::xmlData(Value(std::nan(""))));
    ASSERT_TRUE(nan && nan->number());
    EXPECT_TRUE(std::isnan(nan->number()->doubleValue()));
}

TEST(PropertyList, WriterRefusesWhatAPropertyListCannotHold) {
    const Value unwritable[] = {Value(),
                                Value(bv::Point{1, 2}),
                                Value(bv::Range{1, 2}),
                                Value(std::make_shared<bv::Object>()),
                                Value(ValueArray{Value("ok"), Value()}),
                                Value("bell\x07"),
                                Value(Text(std::u16string(1, u'\uFFFE'))),
                                Value(bv::Date::fromTimeIntervalSince1970(1e300)),
                                Value(bv::Date::fromTimeIntervalSince1970(std::nan("")))};
    for (const Value& value : unwritable) {
        EXPECT_THROW((void)plist::xmlData(value), bv::InvalidArgumentException) << value.description();
        EXPECT_FALSE(plist::isValidPropertyList(value));
    }
    ValueDictionary badKey{{Text("a\x01"), Value(1)}};
    EXPECT_THROW((void)plist::xmlData(badKey), bv::InvalidArgumentException);
    EXPECT_TRUE(plist::isValidPropertyList(Value(ValueArray{Value("x"), Value(1)})));
}

TEST(PropertyList, ReaderAcceptsTheFormatsOtherWritersUse) {
    std::string document =
        "<?xml version=\"1.0\"?>\n<!-- note -->\n<plist version=\"1.0\"><dict>"
        "<key>hex</key><integer> 0x1F </integer>"
        "<key>plus</key><integer>+5</integer>"
        "<key>inf</key><real>+infinity</real>"
        "<key>exp</key><real>1E3</real>"
        "<key>cdata</key><string><![CDATA[a<b]]></string>"
        "<key>wrapped</key><data>AAEC\n\t/w==\n</data>"
        "<key>empty</key><string/>"
        "</dict></plist>";
    bv::Error error;
    std::optional<Value> read = plist::fromXmlData(std::string_view(document), &error);
    ASSERT_TRUE(read) << error.failureReason;
    EXPECT_EQ(*read, Value(ValueDictionary{{Text("hex"), Value(31)},
                                           {Text("plus"), Value(5)},
                                           {Text("inf"), Value(HUGE_VAL)},
                                           {Text("exp"), Value(1000)},
                                           {Text("cdata"), Value("a<b")},
                                           {Text("wrapped"), Value(bv::ByteData{0, 1, 2, 0xFF})},
                                           {Text("empty"), Value("")}}));
    // A bare value without the <plist> wrapper is read too.
    EXPECT_EQ(plist::fromXmlData(std::string_view("<array><true/><string> x </string></array>")),
              Value(ValueArray{Value(true), Value(" x ")}));
}

TEST(PropertyList, ReaderRejectsMalformedDocuments) {
    std::vector<std::string> documents = {"", "not xml"};
    for (const char* body :
         {"<dict><key>a</key></dict>", "<dict><string>a</string><string>b</string></dict>",
          "<integer>12x</integer>", "<integer>18446744073709551616</integer>",
          "<integer>-9223372036854775809</integer>", "<real>1.5.2</real>", "<real>+-1</real>",
          "<date>2001-02-30T00:00:00Z</date>", "<date>2001-01-01 00:00:00Z</date>",
          "<date>2001-01-01T24:00:00Z</date>", "<data>!!!</data>", "<unknown/>", "<string>a<b/></string>",
          "<array>text<true/></array>", "<true/><false/>", ""}) {
        documents.push_back(std::string("<plist>") + body + "</plist>");
    }
    for (const std::string& document : documents) {
        bv::Error error;
        EXPECT_FALSE(plist::fromXmlData(std::string_view(document), &error).has_value()) << document;
        EXPECT_EQ(error.domain, "NSCocoaErrorDomain") << document;
        EXPECT_EQ(error.code, 3840) << document;
        EXPECT_FALSE(error.failureReason.empty()) << document;
    }
    EXPECT_FALSE(
        plist::fromXmlData(std::string_view("<x"), nullptr).has_value());  // no error object asked for
}

TEST(PropertyList, ReaderLoadsNoExternalResources) {
    // The external entity is never fetched: it stays unexpanded and the text reads as empty.
    EXPECT_EQ(plist::fromXmlData(std::string_view(
                  "<!DOCTYPE plist [<!ENTITY remote SYSTEM \"http://127.0.0.1:9/secret\">]>\n"
                  "<plist><string>&remote;</string></plist>")),
              Value(""));
}
