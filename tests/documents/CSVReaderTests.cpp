// CSVReader: loading and encodings, line terminators, the field splitter, malformed lines and the header.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/documents/CSVReader.hpp"
#include "BrevantCocoaExtensions/platform/AlertCenter.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"

using bv::CSVReader;
using bv::Text;
namespace fs = std::filesystem;

namespace {

using Fields = std::vector<Text>;

Fields fields(std::initializer_list<const char*> texts) {
    Fields out;
    for (const char* text : texts)
        out.emplace_back(text);
    return out;
}

class CSVReaderFiles : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "csvreader-XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
    }
    void TearDown() override { fs::remove_all(folder_); }

    // Writes the bytes to a file in the temporary folder and answers its path.
    [[nodiscard]] Text write(const std::string& bytes) {
        const fs::path path = folder_ / ("file" + std::to_string(++files_) + ".csv");
        std::ofstream(path, std::ios::binary) << bytes;
        return Text(path.string());
    }
    [[nodiscard]] CSVReader readerFor(const std::string& bytes) { return CSVReader(write(bytes)); }

    fs::path folder_;
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
    struct Case {
        std::string contents;
        const char* lineBreak;
        Fields lines;
    };
    const std::vector<Case> cases = {
        {"a\r\nb\nc\r\n", "\r\n", fields({"a", "b\nc", ""})},  // lone line feeds stay inside their lines
        {"a\nb\r\nc", "\r\n", fields({"a\nb", "c"})},
        {"a\rb\rc", "\r", fields({"a", "b", "c"})},
        {"a\nb\n", "\n", fields({"a", "b", ""})},
        {"a\n\rb", "\n", fields({"a", "\rb"})},
        {"abc", "", fields({"abc"})},
        {"", "", fields({""})},
        {"\n\n", "\n", fields({"", "", ""})},
    };
    for (const Case& c : cases) {
        CSVReader reader = readerFor(c.contents);
        EXPECT_EQ(reader.lineBreak(), Text(c.lineBreak)) << c.contents;
        EXPECT_EQ(reader.lines(), c.lines) << c.contents;
        EXPECT_EQ(reader.countOfLines(), c.lines.size());
    }
}

TEST_F(CSVReaderFiles, DetectsTheEncoding) {
    struct Case {
        std::string bytes;
        const char* firstLine;
    };
    const std::vector<Case> cases = {
        {"caf\xC3\xA9,1\n", "caf\xC3\xA9,1"},  // valid UTF-8
        {"\xEF\xBB\xBF"
         "caf\xC3\xA9\n",
         "caf\xC3\xA9"},                                 // UTF-8 mark, not kept
        {"caf\xE9 \x80\n", "caf\xC3\xA9 \xE2\x82\xAC"},  // not UTF-8: Windows-1252
        {"\xEF\xBB\xBF"
         "caf\xE9\n",
         "\xC3\xAF\xC2\xBB\xC2\xBF"
         "caf\xC3\xA9"},  // broken after the mark
        {std::string("\xFF\xFE"
                     "a\0,\0\xE9\0\n\0",
                     10),
         "a,\xC3\xA9"},                                               // UTF-16 little-endian
        {std::string("\xFE\xFF\0a\0,\0\xE9\0\n", 10), "a,\xC3\xA9"},  // UTF-16 big-endian
        {std::string("\xFF\xFE\0\0"
                     "a\0\0\0\xE9\0\0\0",
                     12),
         "a\xC3\xA9"},                                 // UTF-32 little-endian
        {std::string("\0\0\xFE\xFF\0\0\0a", 8), "a"},  // UTF-32 big-endian
    };
    for (const Case& c : cases) {
        CSVReader reader = readerFor(c.bytes);
        ASSERT_TRUE(reader.lines().has_value()) << c.firstLine;
        EXPECT_EQ(reader.lines()->front(), Text(c.firstLine));
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

TEST_F(CSVReaderFiles, BinaryInputNeverCrashes) {
    std::string bytes;
    for (int i = 0; i < 4096; ++i)
        bytes += static_cast<char>((i * 131 + 7) % 256);
    bv::AlertRecorder alerts;
    CSVReader reader = readerFor(bytes);
    ASSERT_TRUE(reader.lines().has_value());  // not UTF-8, so read as Windows-1252
    for (int guard = 0; guard < 10000 && reader.currentRecord() < reader.countOfLines(); ++guard) {
        const std::uint64_t before = reader.currentRecord();
        try {
            if (!reader.readRecord() && reader.currentRecord() == before) reader.setCurrentRecord(before + 1);
        } catch (const bv::RangeException&) {
            reader.setCurrentRecord(before + 1);
        }
    }
    EXPECT_EQ(reader.currentRecord(), reader.countOfLines());
}

TEST(CSVReader, SplitsFieldsHonouringQuotes) {
    struct Case {
        const char* line;
        char separator;
        std::optional<Fields> expected;
    };
    const std::vector<Case> cases = {
        {"a,b,", ',', fields({"a", "b", ""})},  // a trailing separator ends with an empty field
        {",", ',', fields({"", ""})},
        {"a,,b", ',', fields({"a", "", "b"})},
        {"  a ,\tb  ", ',', fields({"a", "b"})},
        {"x,\xC2\xA0y\xE3\x80\x80", ',', fields({"x", "y"})},  // no-break and ideographic spaces
        {"\"x,y\",z", ',', fields({"x,y", "z"})},
        {"\"say \"\"hi\"\"\",z", ',', fields({"say \"hi\"", "z"})},
        {"\"\"\"q\"\"\",z", ',', fields({"\"q\"", "z"})},  // opens with an escaped quote: still quoted
        {"\"\",z", ',', fields({"\"", "z"})},              // an empty quoted field collapses to one quote
        {"a,\"\"", ',', fields({"a", "\""})},
        {"a\"b,c", ',', fields({"a\"b", "c"})},          // lone quotes stay in an unquoted field
        {"ab\"\"\"c,d", ',', fields({"ab\"\"c", "d"})},  // pairs collapse left to right
        {"\" padded \" , b", ',', fields({"padded", "b"})},
        {"\"a\"\t,b", ',', fields({"a", "b"})},
        {"\"a\" x,b", ',', std::nullopt},  // text after a closing quote
        {"\"a\"b,c", ',', std::nullopt},
        {"a;b,c", ';', fields({"a", "b,c"})},
        {"a,b;", ';', fields({"a,b", ""})},
    };
    for (const Case& c : cases)
        EXPECT_EQ(split(c.line, c.separator), c.expected) << c.line;
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
              fields({"a\xC3\xA9"
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
    EXPECT_EQ(reader.readRecord(Text("a,b")), fields({"a", "b"}));
    EXPECT_EQ(reader.numFields(), 2u);
    EXPECT_EQ(reader.currentFields(), fields({"a", "b"}));
    EXPECT_EQ(reader.readRecord(Text("a,b,c")), std::nullopt);
    EXPECT_TRUE(reader.currentFields().empty());
    EXPECT_EQ(reader.currentRecord(), 3u);
}

TEST_F(CSVReaderFiles, MalformedLineShowsAnAlertAndReadingGoesOn) {
    bv::AlertRecorder alerts;
    CSVReader reader = readerFor("Name,Age\r\nAnn,12\r\nBob,13,x\r\n\"Cy\"z,14\r\nDee,15\r\n");
    reader.readHeaders();
    EXPECT_EQ(reader.readRecord(), fields({"Ann", "12"}));
    EXPECT_EQ(reader.readRecord(), std::nullopt);
    EXPECT_EQ(reader.readRecord(), std::nullopt);
    EXPECT_EQ(reader.readRecord(), fields({"Dee", "15"}));
    EXPECT_EQ(reader.readRecord(), std::nullopt);  // the empty last line
    ASSERT_EQ(alerts.alerts().size(), 2u);
    for (std::size_t i = 0; i < 2; ++i) {
        const bv::Alert& alert = alerts.alerts()[i];
        EXPECT_EQ(alert.title, Text("Brevant Tolvern"));
        EXPECT_EQ(alert.message, Text(i == 0 ? "Line #3 is malformed." : "Line #4 is malformed."));
        EXPECT_EQ(alert.buttons, fields({"Ok"}));
    }
}

TEST_F(CSVReaderFiles, BlankLineEndsTheData) {
    CSVReader reader = readerFor("a,b\n1,2\n \t\n3,4\n");
    EXPECT_EQ(reader.readRecord(), fields({"a", "b"}));
    EXPECT_EQ(reader.readRecord(), fields({"1", "2"}));
    for (int call = 0; call < 3; ++call) {
        EXPECT_EQ(reader.readRecord(), std::nullopt);
        EXPECT_EQ(reader.currentRecord(), 2u);
    }
    EXPECT_EQ(reader.currentFields(), fields({"1", "2"}));
    reader.setCurrentRecord(3);  // only moving the position by hand gets past it
    EXPECT_EQ(reader.readRecord(), fields({"3", "4"}));
    reader.setCurrentRecord(9);
    EXPECT_THROW((void)reader.readRecord(), bv::RangeException);
}

TEST_F(CSVReaderFiles, UnterminatedQuoteInAFileThrowsWithoutAlert) {
    bv::AlertRecorder alerts;
    CSVReader reader = readerFor("a,b\n\"multi\nline\",c\nd,e\n");
    EXPECT_EQ(reader.readRecord(), fields({"a", "b"}));
    EXPECT_THROW((void)reader.readRecord(), bv::RangeException);
    EXPECT_EQ(reader.currentRecord(), 1u);
    EXPECT_TRUE(alerts.alerts().empty());
}

TEST_F(CSVReaderFiles, FieldValueForNameUsesTheFirstMatchingHeader) {
    CSVReader reader = readerFor("Name, Age ,Name\nAnn,12,Other\n");
    reader.readHeaders();
    EXPECT_TRUE(reader.firstLineIsHeader());
    EXPECT_EQ(reader.headers(), fields({"Name", "Age", "Name"}));
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
    struct Expected {
        int line;
        const char* description;
    };
    auto expectAssertion = [](const CSVReader& reader, Expected expected) {
        try {
            (void)reader.fieldValueForName(Text("Name"));
            ADD_FAILURE() << "no assertion failure";
        } catch (const bv::InternalInconsistencyException& failure) {
            EXPECT_EQ(failure.fileStem(), "CSVReader");
            EXPECT_EQ(failure.line(), expected.line);
            EXPECT_EQ(failure.description(), expected.description);
            EXPECT_EQ(failure.operation(), "fieldValueForName:");
        }
    };
    CSVReader reader = readerFor("Name,Age\nAnn,12\n");
    ASSERT_TRUE(reader.readRecord());
    expectAssertion(reader, {260, "fieldValueForName: First line must be a header"});

    CSVReader headed = readerFor("Name,Age\nAnn,12\nBob\n");
    headed.readHeaders();
    ASSERT_TRUE(headed.readRecord());
    EXPECT_EQ(headed.readRecord(), std::nullopt);  // malformed: no current fields
    expectAssertion(headed, {261, "fieldValueForName: Bad record"});
}

TEST_F(CSVReaderFiles, HeaderEdgeCases) {
    CSVReader blankHeader = readerFor("  \nAnn,12\n");
    blankHeader.readHeaders();
    EXPECT_TRUE(blankHeader.firstLineIsHeader());
    EXPECT_TRUE(blankHeader.headers().empty());
    EXPECT_EQ(blankHeader.numFields(), 0u);
    EXPECT_EQ(blankHeader.currentRecord(), 1u);
    EXPECT_EQ(blankHeader.readRecord(), fields({"Ann", "12"}));  // the first record fixes the count

    CSVReader none;
    none.readHeaders();
    EXPECT_FALSE(none.firstLineIsHeader());

    // Loading again keeps the lines already there.
    CSVReader reader = readerFor("a\n");
    reader.readLinesFromFileAtPath(write("b\n"));
    EXPECT_EQ(reader.lines(), fields({"a", ""}));
    reader.setLines(fields({}));
    reader.readLinesFromFileAtPath(write("b\n"));
    EXPECT_EQ(reader.lines(), fields({"b", ""}));
}

TEST(CSVReader, CollectionAccessorsCheckTheirBounds) {
    CSVReader reader;
    EXPECT_EQ(reader.countOfHeaders(), 0u);
    EXPECT_THROW((void)reader.objectInHeadersAtIndex(0), bv::RangeException);
    reader.insertObjectInCurrentFieldsAtIndex(Text("b"), 0);
    reader.insertObjectInCurrentFieldsAtIndex(Text("a"), 0);
    reader.insertObjectInCurrentFieldsAtIndex(Text("c"), 2);
    EXPECT_THROW(reader.insertObjectInCurrentFieldsAtIndex(Text("x"), 5), bv::RangeException);
    EXPECT_EQ(reader.currentFields(), fields({"a", "b", "c"}));
    Text copied[2];
    reader.getCurrentFieldsRange(copied, bv::Range{1, 2});
    EXPECT_EQ(copied[0], Text("b"));
    EXPECT_EQ(copied[1], Text("c"));
    EXPECT_THROW(reader.getCurrentFieldsRange(copied, bv::Range{2, 2}), bv::RangeException);
    reader.removeObjectFromCurrentFieldsAtIndex(1);
    EXPECT_EQ(reader.objectInCurrentFieldsAtIndex(1), Text("c"));
    EXPECT_THROW(reader.removeObjectFromCurrentFieldsAtIndex(2), bv::RangeException);
    EXPECT_EQ(reader.countOfCurrentFields(), 2u);
}
