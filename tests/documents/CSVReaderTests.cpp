// CSVReader: loading and encodings, line terminators, the field splitter, malformed lines and the header.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

#include "BrevantCocoaExtensions/documents/CSVReader.hpp"
#include "BrevantCocoaExtensions/platform/AlertCenter.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"
#include "support/Scratch.hpp"

using bv::CSVReader;
using bv::Text;
namespace fs = std::filesystem;

namespace {

using Fields = std::vector<Text>;
using namespace std::string_literals;

class CSVReaderFiles : public ::testing::Test {
  protected:
    // Writes the bytes to a new file in the temporary folder and answers its path.
    [[nodiscard]] Text write(const std::string& bytes) {
        return Text(scratch_.write("file" + std::to_string(++files_) + ".csv", bytes));
    }
    [[nodiscard]] CSVReader readerFor(const std::string& bytes) { return CSVReader(write(bytes)); }

    bvtest::ScratchFolder scratch_{"csvreader"};
    const fs::path& folder_ = scratch_.root();
    int files_ = 0;
};

// Splits one line with a fresh reader (no field count fixed yet).
std::optional<Fields> split(const char* line, char separator = ',') {
    CSVReader reader;
    reader.setFieldSeparator(static_cast<std::int8_t>(separator));
    return reader.readRecord(Text(line));
}

}  // namespace

TEST_F(CSVReaderFiles, LinesSplitAtTheFirstTerminatorFoundAnywhere) {
    const std::tuple<std::string, const char*, Fields> cases[] = {
        {"a\r\nb\nc\r\n", "\r\n", Fields{"a", "b\nc", ""}},  // lone line feeds stay inside their lines
        {"a\nb\r\nc", "\r\n", Fields{"a\nb", "c"}},
        {"a\rb\rc", "\r", Fields{"a", "b", "c"}},
        {"a\nb\n", "\n", Fields{"a", "b", ""}},
        {"a\n\rb", "\n", Fields{"a", "\rb"}},
        {"abc", "", Fields{"abc"}},
        {"", "", Fields{""}},
        {"\n\n", "\n", Fields{"", "", ""}},
    };
    for (const auto& [contents, lineBreak, lines] : cases) {
        CSVReader reader = readerFor(contents);
        EXPECT_EQ(reader.lineBreak(), Text(lineBreak)) << contents;
        EXPECT_EQ(reader.lines(), lines) << contents;
        EXPECT_EQ(reader.countOfLines(), lines.size());
    }
}

TEST_F(CSVReaderFiles, DetectsTheEncoding) {
    const std::string bom = "\xEF\xBB\xBF";
    const std::pair<std::string, const char*> cases[] = {
        {"caf\xC3\xA9,1\n", "caf\xC3\xA9,1"},            // valid UTF-8
        {bom + "caf\xC3\xA9\n", "caf\xC3\xA9"},          // UTF-8 mark, not kept
        {"caf\xE9 \x80\n", "caf\xC3\xA9 \xE2\x82\xAC"},  // not UTF-8: Windows-1252
        {bom + "caf\xE9\n",
         "\xC3\xAF\xC2\xBB\xC2\xBF"
         "caf\xC3\xA9"},                                        // broken after the mark
        {"\xFF\xFE"s + "a\0,\0\xE9\0\n\0"s, "a,\xC3\xA9"},      // UTF-16 little-endian
        {"\xFE\xFF\0a\0,\0\xE9\0\n"s, "a,\xC3\xA9"},            // UTF-16 big-endian
        {"\xFF\xFE\0\0"s + "a\0\0\0\xE9\0\0\0"s, "a\xC3\xA9"},  // UTF-32 little-endian
        {"\0\0\xFE\xFF\0\0\0a"s, "a"}};                         // UTF-32 big-endian
    for (const auto& [bytes, firstLine] : cases) {
        CSVReader reader = readerFor(bytes);
        ASSERT_TRUE(reader.lines().has_value()) << firstLine;
        EXPECT_EQ(reader.lines()->front(), Text(firstLine));
    }
}

TEST_F(CSVReaderFiles, UnreadableFilesGiveAReaderWithoutLines) {
    bv::AlertRecorder alerts;
    const std::vector<Text> paths = {Text((folder_ / "missing.csv").string()), Text(folder_.string())};
    for (const Text& path : paths) {
        CSVReader reader(path);
        EXPECT_EQ(reader.lines(), std::nullopt) << path;
        EXPECT_EQ(reader.lineBreak(), std::nullopt);
        EXPECT_EQ(reader.readRecord(), std::nullopt);
        reader.readHeaders();
        EXPECT_FALSE(reader.firstLineIsHeader());
        EXPECT_EQ(reader.currentRecord(), 0u);
    }
    EXPECT_TRUE(alerts.alerts().empty());
}

TEST(CSVReader, SplitsFieldsHonouringQuotes) {
    const std::tuple<const char*, char, std::optional<Fields>> cases[] = {
        {"a,b,", ',', Fields{"a", "b", ""}},  // a trailing separator ends with an empty field
        {",", ',', Fields{"", ""}},
        {"a,,b", ',', Fields{"a", "", "b"}},
        {"  a ,\tb  ", ',', Fields{"a", "b"}},
        {"x,\xC2\xA0y\xE3\x80\x80", ',', Fields{"x", "y"}},  // no-break and ideographic spaces
        {"\"x,y\",z", ',', Fields{"x,y", "z"}},
        {"\"say \"\"hi\"\"\",z", ',', Fields{"say \"hi\"", "z"}},
        {"\"\"\"q\"\"\",z", ',', Fields{"\"q\"", "z"}},  // opens with an escaped quote: still quoted
        {"\"\",z", ',', Fields{"\"", "z"}},              // an empty quoted field collapses to one quote
        {"a,\"\"", ',', Fields{"a", "\""}},
        {"a\"b,c", ',', Fields{"a\"b", "c"}},          // lone quotes stay in an unquoted field
        {"ab\"\"\"c,d", ',', Fields{"ab\"\"c", "d"}},  // pairs collapse left to right
        {"\" padded \" , b", ',', Fields{"padded", "b"}},
        {"\"a\"\t,b", ',', Fields{"a", "b"}},
        {"\"a\" x,b", ',', std::nullopt},  // text after a closing quote
        {"\"a\"b,c", ',', std::nullopt},
        {"a;b,c", ';', Fields{"a", "b,c"}},
        {"a,b;", ';', Fields{"a,b", ""}},
    };
    for (const auto& [line, separator, expected] : cases)
        EXPECT_EQ(split(line, separator), expected) << line;
}

TEST(CSVReader, FieldsAreTrimmedExactlyAsTrimmedStringTrims) {
    for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
        if (unit == u',' || unit == u'"') continue;
        const auto c = static_cast<char16_t>(unit);
        const Text line(std::u16string{c, u'x', c, u',', c, c, u'y'});
        CSVReader reader;
        const std::optional<Fields> record = reader.readRecord(line);
        const Fields expected = {bv::BVNSString::trimmedString(Text(std::u16string{c, u'x', c})),
                                 bv::BVNSString::trimmedString(Text(std::u16string{c, c, u'y'}))};
        ASSERT_EQ(record, expected) << "U+" << std::hex << static_cast<unsigned>(unit);
    }
}

TEST(CSVReader, SeparatorIsSignExtendedSoOnlyAsciiSeparatorsMatch) {
    CSVReader reader;
    reader.setFieldSeparator(static_cast<std::int8_t>(0xE9));  // not "é" (U+00E9)
    EXPECT_EQ(reader.readRecord(Text("a\xC3\xA9"
                                     "b,c")),
              (Fields{"a\xC3\xA9"
                      "b,c"}));
}

TEST(CSVReader, UnterminatedQuotedFieldThrowsRangeException) {
    CSVReader reader;
    for (const char* line : {"\"abc", "a,\"b,c", "\"a\"\"", "\"a\"\"b", "x,\"\"\""}) {
        EXPECT_THROW((void)reader.readRecord(Text(line)), bv::RangeException) << line;
        EXPECT_EQ(reader.currentRecord(), 0u) << line;
    }
}

TEST(CSVReader, FirstRecordFixesTheFieldCount) {
    CSVReader reader;
    EXPECT_EQ(reader.readRecord(Text("  ")), std::nullopt);  // blank: nothing changes
    EXPECT_EQ(reader.currentRecord(), 0u);
    EXPECT_EQ(reader.readRecord(Text("\"a\" x")), std::nullopt);  // malformed: no count fixed
    EXPECT_EQ(reader.numFields(), 0u);
    EXPECT_EQ(reader.currentRecord(), 1u);
    EXPECT_EQ(reader.readRecord(Text("a,b")), (Fields{"a", "b"}));
    EXPECT_EQ(reader.numFields(), 2u);
    EXPECT_EQ(reader.currentFields(), (Fields{"a", "b"}));
    EXPECT_EQ(reader.readRecord(Text("a,b,c")), std::nullopt);
    EXPECT_TRUE(reader.currentFields().empty());
    EXPECT_EQ(reader.currentRecord(), 3u);
}

TEST_F(CSVReaderFiles, MalformedLineShowsAnAlertAndReadingGoesOn) {
    bv::AlertRecorder alerts;
    CSVReader reader = readerFor("Name,Age\r\nAnn,12\r\nBob,13,x\r\n\"Cy\"z,14\r\nDee,15\r\n");
    reader.readHeaders();
    EXPECT_EQ(reader.readRecord(), (Fields{"Ann", "12"}));
    EXPECT_EQ(reader.readRecord(), std::nullopt);
    EXPECT_EQ(reader.readRecord(), std::nullopt);
    EXPECT_EQ(reader.readRecord(), (Fields{"Dee", "15"}));
    EXPECT_EQ(reader.readRecord(), std::nullopt);  // the empty last line
    Fields shown;
    for (const bv::Alert& alert : alerts.alerts()) {
        shown.push_back(alert.title + Text(": ") + alert.message + Text(" [") + alert.buttons.at(0) +
                        Text("]"));
    }
    EXPECT_EQ(shown, (Fields{"Brevant Tolvern: Line #3 is malformed. [Ok]",
                             "Brevant Tolvern: Line #4 is malformed. [Ok]"}));
}

TEST_F(CSVReaderFiles, BlankLineEndsTheData) {
    CSVReader reader = readerFor("a,b\n1,2\n \t\n3,4\n");
    EXPECT_EQ(reader.readRecord(), (Fields{"a", "b"}));
    EXPECT_EQ(reader.readRecord(), (Fields{"1", "2"}));
    for (int call = 0; call < 3; ++call) {
        EXPECT_EQ(reader.readRecord(), std::nullopt);
        EXPECT_EQ(reader.currentRecord(), 2u);
    }
    EXPECT_EQ(reader.currentFields(), (Fields{"1", "2"}));
    reader.setCurrentRecord(3);  // only moving the position by hand gets past it
    EXPECT_EQ(reader.readRecord(), (Fields{"3", "4"}));
    reader.setCurrentRecord(9);
    EXPECT_THROW((void)reader.readRecord(), bv::RangeException);
}

TEST_F(CSVReaderFiles, UnterminatedQuoteInAFileThrowsWithoutAlert) {
    bv::AlertRecorder alerts;
    CSVReader reader = readerFor("a,b\n\"multi\nline\",c\nd,e\n");
    EXPECT_EQ(reader.readRecord(), (Fields{"a", "b"}));
    EXPECT_THROW((void)reader.readRecord(), bv::RangeException);
    EXPECT_EQ(reader.currentRecord(), 1u);
    EXPECT_TRUE(alerts.alerts().empty());
}

TEST_F(CSVReaderFiles, FieldValueForNameUsesTheFirstMatchingHeader) {
    CSVReader reader = readerFor("Name, Age ,Name\nAnn,12,Other\n");
    reader.readHeaders();
    EXPECT_EQ(reader.headers(), (Fields{"Name", "Age", "Name"}));
    EXPECT_EQ(reader.numFields(), 3u);
    EXPECT_EQ(reader.currentRecord(), 1u);
    ASSERT_TRUE(reader.readRecord());
    EXPECT_EQ(reader.fieldValueForName(Text("Age")), Text("12"));
    EXPECT_EQ(reader.fieldValueForName(Text("Name")), Text("Ann"));
    EXPECT_EQ(reader.fieldValueForName(Text("age")), std::nullopt);
    EXPECT_EQ(reader.fieldValueForName(Text("Height")), std::nullopt);

    // Editing the headers is seen by the next lookup.
    reader.replaceObjectInHeadersAtIndexWithObject(1, Text("Years"));
    EXPECT_EQ(reader.fieldValueForName(Text("Years")), Text("12"));
    EXPECT_EQ(reader.fieldValueForName(Text("Age")), std::nullopt);
    reader.removeObjectFromHeadersAtIndex(0);
    reader.insertObjectInHeadersAtIndex(Text("First"), 0);
    EXPECT_EQ(reader.fieldValueForName(Text("First")), Text("Ann"));
    EXPECT_EQ(reader.fieldValueForName(Text("Name")), Text("Other"));
}

TEST_F(CSVReaderFiles, FieldValueForNameAssertsAHeaderAndAWholeRecord) {
    auto expectAssertion = [](const CSVReader& reader, const std::string& expected) {
        try {
            (void)reader.fieldValueForName(Text("Name"));
            ADD_FAILURE() << "no assertion failure";
        } catch (const bv::InternalInconsistencyException& failure) {
            EXPECT_EQ(failure.fileStem() + ":" + std::to_string(failure.line()) + " " + failure.operation() +
                          " | " + failure.description(),
                      expected);
        }
    };
    CSVReader reader = readerFor("Name,Age\nAnn,12\n");
    ASSERT_TRUE(reader.readRecord());
    expectAssertion(reader,
                    "CSVReader:260 fieldValueForName: | fieldValueForName: First line must be a header");

    CSVReader headed = readerFor("Name,Age\nAnn,12\nBob\n");
    headed.readHeaders();
    ASSERT_TRUE(headed.readRecord());
    EXPECT_EQ(headed.readRecord(), std::nullopt);  // malformed: no current fields
    expectAssertion(headed, "CSVReader:261 fieldValueForName: | fieldValueForName: Bad record");
}

TEST_F(CSVReaderFiles, HeaderEdgeCases) {
    CSVReader blankHeader = readerFor("  \nAnn,12\n");
    blankHeader.readHeaders();
    EXPECT_TRUE(blankHeader.firstLineIsHeader());
    EXPECT_TRUE(blankHeader.headers().empty());
    EXPECT_EQ(blankHeader.numFields(), 0u);
    EXPECT_EQ(blankHeader.currentRecord(), 1u);
    EXPECT_EQ(blankHeader.readRecord(), (Fields{"Ann", "12"}));  // the first record fixes the count

    CSVReader none;
    none.readHeaders();
    EXPECT_FALSE(none.firstLineIsHeader());

    // Loading again keeps the lines already there.
    CSVReader reader = readerFor("a\n");
    reader.readLinesFromFileAtPath(write("b\n"));
    EXPECT_EQ(reader.lines(), (Fields{"a", ""}));
    reader.setLines(Fields{});
    reader.readLinesFromFileAtPath(write("b\n"));
    EXPECT_EQ(reader.lines(), (Fields{"b", ""}));
}

TEST(CSVReader, CollectionAccessorsCheckTheirBounds) {
    CSVReader reader;
    EXPECT_THROW((void)reader.objectInHeadersAtIndex(0), bv::RangeException);
    reader.insertObjectInCurrentFieldsAtIndex(Text("b"), 0);
    reader.insertObjectInCurrentFieldsAtIndex(Text("a"), 0);
    reader.insertObjectInCurrentFieldsAtIndex(Text("c"), 2);
    EXPECT_THROW(reader.insertObjectInCurrentFieldsAtIndex(Text("x"), 5), bv::RangeException);
    EXPECT_EQ(reader.currentFields(), (Fields{"a", "b", "c"}));
    Fields copied(2);
    reader.getCurrentFieldsRange(copied.data(), bv::Range{1, 2});
    EXPECT_EQ(copied, (Fields{"b", "c"}));
    EXPECT_THROW(reader.getCurrentFieldsRange(copied.data(), bv::Range{2, 2}), bv::RangeException);
    reader.removeObjectFromCurrentFieldsAtIndex(1);
    EXPECT_EQ(reader.objectInCurrentFieldsAtIndex(1), Text("c"));
    EXPECT_THROW(reader.removeObjectFromCurrentFieldsAtIndex(2), bv::RangeException);
}
