// BVUtilities: digests, identifiers, numbers, geometry, validation and the states table.
#include "BrevantCocoaExtensions/dates/BVUtilities.hpp"

#include <gtest/gtest.h>

#include <string>

#include "BrevantCocoaExtensions/platform/Md5.hpp"

namespace {

using bv::BVUtilities;
using bv::Text;

TEST(BVUtilitiesDigest, MD5MatchesTheRfc1321TestSuite) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "d41d8cd98f00b204e9800998ecf8427e"},
        {"a", "0cc175b9c0f1b6a831c399e269772661"},
        {"abc", "900150983cd24fb0d6963f7d28e17f72"},
        {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
        {"abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
        {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789",
         "d174ab98d277d9f5a5611c2c9f419d9f"},
        {"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
         "57edf4a22be3c955ac49da2e2107b67a"},
    };
    for (const auto& [message, digest] : cases) {
        EXPECT_EQ(BVUtilities::MD5ForString(Text(message)), Text(digest)) << message;
        const std::string bytes(message);
        EXPECT_EQ(BVUtilities::MD5ForData(bv::ByteData(bytes.begin(), bytes.end())), Text(digest));
    }
}

TEST(BVUtilitiesDigest, StreamedPiecesGiveTheWholeDigest) {
    bv::Md5 md5;
    for (const char* piece :
         {"1234567890123456789012345678901234567890", "1234567890123456789", "012345678901234567890"})
        md5.update(piece, std::string(piece).size());
    EXPECT_EQ(bv::Md5::hex(md5.finish()), "57edf4a22be3c955ac49da2e2107b67a");
    EXPECT_EQ(bv::Md5::hex(md5.finish()), "d41d8cd98f00b204e9800998ecf8427e");  // starts afresh
    EXPECT_EQ(BVUtilities::MD5ForString(Text(u"\u00e9")), Text("66ddcd97cfdeabb2f6fb8a999b4bc76f"))
        << "UTF-8 bytes c3 a9";
}

}  // namespace
