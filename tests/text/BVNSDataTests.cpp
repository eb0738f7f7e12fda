// BVNSData: Base64 line layout, hexadecimal both ways, and the universally writable writers.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <tuple>

#include "BrevantCocoaExtensions/platform/Base64.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/text/BVNSData.hpp"
#include "support/Scratch.hpp"

using bv::ByteData;
using bv::Text;
namespace BVNSData = bv::BVNSData;
namespace fs = std::filesystem;

namespace {

ByteData sequence(std::size_t length) {
    ByteData data(length);
    for (std::size_t i = 0; i < length; ++i)
        data[i] = static_cast<std::uint8_t>(i * 7 + 3);
    return data;
}

unsigned modeOf(const std::string& path) {
    struct stat status {};
    ::stat(path.c_str(), &status);
    return status.st_mode & 07777;
}

}  // namespace

TEST(BVNSData, Base64LinesOf64CharactersJoinedByCarriageReturnLineFeed) {
    EXPECT_EQ(BVNSData::encodedBase64StringWithNewLines(ByteData(), true), Text(""));
    EXPECT_EQ(BVNSData::encodedBase64StringWithNewLines(sequence(48), true),
              Text(bv::base64::encode(sequence(48))));  // one full line: no break

    const std::string oneLine = bv::base64::encode(sequence(49));
    EXPECT_EQ(BVNSData::encodedBase64StringWithNewLines(sequence(49), true),
              Text(oneLine.substr(0, 64) + "\r\n" + oneLine.substr(64)));

    // Exactly two full lines: one break between them, none after the last.
    const std::string twoLines = bv::base64::encode(sequence(96));
    EXPECT_EQ(BVNSData::newEncodedBase64StringWithNewLines(sequence(96), true),
              Text(twoLines.substr(0, 64) + "\r\n" + twoLines.substr(64)));

    const std::string longer = bv::base64::encode(sequence(500));
    EXPECT_EQ(BVNSData::encodedBase64StringWithNewLines(sequence(500), false), Text(longer));
    EXPECT_EQ(BVNSData::encodedBase64String(sequence(500)), Text(longer));
    EXPECT_EQ(BVNSData::newEncodedBase64String(sequence(2)), Text("Awo="));  // bytes 0x03 0x0A
}

TEST(BVNSData, HexadecimalWritingInBothCases) {
    const ByteData bytes{0x00, 0xAB, 0x0F};
    EXPECT_EQ(BVNSData::hexStringRepresentationUppercase(bytes, true), Text("00AB0F"));
    EXPECT_EQ(BVNSData::hexStringRepresentationUppercase(bytes, false), Text("00ab0f"));
    EXPECT_EQ(BVNSData::hexStringRepresentation(bytes), Text("00AB0F"));
    EXPECT_EQ(BVNSData::hexStringRepresentationUppercase(ByteData(), false), Text(""));

    ByteData every(256);
    for (std::size_t i = 0; i < 256; ++i)
        every[i] = static_cast<std::uint8_t>(i);
    const Text upper = BVNSData::hexStringRepresentation(every);
    ASSERT_EQ(upper.length(), 512u);
    EXPECT_EQ(upper.substring(2 * 0x9F, 2), Text("9F"));
    EXPECT_EQ(upper.substring(510, 2), Text("FF"));
    EXPECT_EQ(BVNSData::initWithHexStringIgnoreOtherCharacters(upper, false), every);
    EXPECT_EQ(BVNSData::initWithHexStringIgnoreOtherCharacters(
                  BVNSData::hexStringRepresentationUppercase(every, false), false),
              every);
}

TEST(BVNSData, HexadecimalReading) {
    const std::tuple<const char*, bool, std::optional<ByteData>> cases[] = {
        {"abc", true, ByteData{0xAB}},  // the odd last digit is dropped
        {"abc", false, std::nullopt},
        {"", false, ByteData{}},
        {"", true, ByteData{}},
        {"0a-FF 1", true, ByteData{0x0A, 0xFF}},
        {"a-b", true, ByteData{0xAB}},  // other characters may stand inside a pair
        {"<0a1b 2C3d>", true, ByteData{0x0A, 0x1B, 0x2C, 0x3D}},
        {"0aFF", false, ByteData{0x0A, 0xFF}},
        {"0a FF", false, std::nullopt},
        {"0aF", false, std::nullopt},
        {"0G", false, std::nullopt},
        {"g1h2", true, ByteData{0x12}},
        {"1-23", true, ByteData{0x12}},
        {"12-3-4 5", true, ByteData{0x12, 0x34}},
        {"\xEF\xBC\x91\xEF\xBC\x92", true, ByteData{}},  // full-width digits are not digits
        {"\xEF\xBC\x91\xEF\xBC\x92", false, std::nullopt}};
    for (const auto& [input, ignoreOthers, expected] : cases)
        EXPECT_EQ(BVNSData::initWithHexStringIgnoreOtherCharacters(Text(input), ignoreOthers), expected)
            << input << " " << ignoreOthers;
    EXPECT_EQ(BVNSData::initWithHexStringIgnoreOtherCharacters(std::nullopt, true), std::nullopt);
    EXPECT_EQ(BVNSData::dataWithHexString(Text("de:ad:be:ef")), (ByteData{0xDE, 0xAD, 0xBE, 0xEF}));
}

TEST(BVNSData, WritersLeaveTheFileUniversallyWritable) {
    const bvtest::ScratchFolder folder("bvnsdata");
    const ByteData bytes{'h', 'i', 0, '\n'};
    const mode_t previousMask = ::umask(022);
    EXPECT_TRUE(BVNSData::writeToUniversallyWritableFileAtomically(bytes, Text(folder.path("plain")), false));
    EXPECT_TRUE(BVNSData::writeToUniversallyWritableFileOptionsError(bytes, Text(folder.path("atomic")),
                                                                     BVNSData::DataWritingAtomic));
    EXPECT_TRUE(BVNSData::writeToUniversallyWritableURLAtomically(
        bytes, Text("file://" + folder.path("a%20b%C3%A9.bin")), true));
    for (const char* name : {"plain", "atomic", "a b\xC3\xA9.bin"}) {
        EXPECT_EQ(folder.read(name), std::string("hi\0\n", 4)) << name;
        EXPECT_EQ(modeOf(folder.path(name)), 0777u) << name;
    }
    EXPECT_FALSE(
        BVNSData::writeToUniversallyWritableURLAtomically(bytes, Text("http://example.com/x"), true));
    EXPECT_FALSE(
        BVNSData::writeToUniversallyWritableURLAtomically(bytes, Text("file://elsewhere/tmp/x"), true));
    ::umask(previousMask);
}

TEST(BVNSData, WriterAnswersTheWritesOwnOutcome) {
    const bvtest::ScratchFolder folder("bvnsdata");
    bv::Error error;
    EXPECT_FALSE(BVNSData::writeToUniversallyWritableFileOptionsError(
        ByteData{1}, Text(folder.path("missing/inner.bin")), 0, &error));
    EXPECT_EQ(error.code, ENOENT);

    // Refusing to overwrite still opens up the existing file's permissions, and leaves its bytes alone.
    const std::string existing = folder.path("existing.bin");
    std::ofstream(existing) << "old";
    ::chmod(existing.c_str(), 0600);
    EXPECT_FALSE(BVNSData::writeToUniversallyWritableFileOptionsError(
        ByteData{1}, Text(existing), BVNSData::DataWritingWithoutOverwriting, &error));
    EXPECT_EQ(error.code, EEXIST);
    EXPECT_EQ(folder.read("existing.bin"), "old");
    EXPECT_EQ(modeOf(existing), 0777u);
}
