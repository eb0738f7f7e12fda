// BVEncryption and the provider helpers: byte-identical vectors, damaged input, the ASCII read-back, the
// cipher-context rule, Diffie-Hellman agreement and digests.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "BrevantCocoaExtensions/files/BVEncryption.hpp"
#include "BrevantCocoaExtensions/files/CDSA.hpp"
#include "BrevantCocoaExtensions/text/BVNSData.hpp"

using bv::BVEncryption;
using bv::ByteData;
using bv::Text;

namespace {

ByteData bytesOf(const std::string& text) {
    return ByteData(text.begin(), text.end());
}

std::string hexOf(const ByteData& data) {
    return bv::BVNSData::hexStringRepresentationUppercase(data, false).toUtf8();
}

}  // namespace

// Computed with the openssl command line, independently of the library:
//   K=$(openssl kdf -keylen 8 -kdfopt digest:SHA1 -kdfopt pass:KEY -kdfopt salt:dustyOwl
//         -kdfopt iter:1000 PBKDF2 | tr -d ':')
//   printf '%s' 'PLAIN' | openssl enc -des-cbc -provider legacy -provider default -K $K
//         -iv 3a91c4e07d5b2f68 | xxd -p
// (each command on one line)
TEST(BVEncryption, CipherBytesMatchTheOpenSSLCommandLine) {
    struct Vector {
        const char* key;
        const char* plain;
        const char* cipherHex;
    };
    const Vector vectors[] = {
        {"hR5kt2v9", "", "7f2520e551622b2e"},                          // empty in, one padding block out
        {"hR5kt2v9", "12345678", "10118cb94564943893fa075a26ce5bda"},  // 8 in, 16 out
        {"hR5kt2v9", "teacher@example.org", "c7a34d638bfc8d5328f750fa99d7d68356a6025a77bfaa93"},
        {"hR5kt2v9", "S3cret!pass", "7cc170d0b6f531ca2dcdedea5b5f16fd"},
        {"quiz key", "Brevant Tolvern", "298235132f72757066769fa8f8ca0f5b"},
    };
    for (const Vector& v : vectors) {
        SCOPED_TRACE(v.plain);
        const auto cipher = BVEncryption::encryptDataUsingKey(bytesOf(v.plain), Text(v.key));
        ASSERT_TRUE(cipher.has_value());
        EXPECT_EQ(hexOf(*cipher), v.cipherHex);
        EXPECT_EQ(BVEncryption::encryptStringUsingKey(Text(v.plain), Text(v.key)), cipher);
        EXPECT_EQ(BVEncryption::decryptDataUsingKey(*cipher, Text(v.key)), bytesOf(v.plain));
    }
    // The pass phrase ends at its first zero byte.
    EXPECT_EQ(BVEncryption::encryptDataUsingKey({}, Text(std::string("hR5kt2v9\0tail", 13))),
              BVEncryption::encryptDataUsingKey({}, Text("hR5kt2v9")));
}

TEST(BVEncryption, DamagedCipherOrWrongKeyGivesNullAndOneLine) {
    const ByteData good = *BVEncryption::encryptStringUsingKey(Text("12345678"), Text("hR5kt2v9"));
    ASSERT_EQ(good.size(), 16u);
    testing::internal::CaptureStderr();
    EXPECT_EQ(BVEncryption::decryptDataUsingKey(good, Text("hR5kt2v8")), std::nullopt);
    const std::string line = testing::internal::GetCapturedStderr();
    EXPECT_EQ(line.rfind("Error in cdsaDecrypt(): ", 0), 0u) << line;
    EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1);

    testing::internal::CaptureStderr();
    for (std::size_t length = 0; length <= 17; ++length) {
        if (length == 16) continue;
        ByteData cut(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(std::min(length, good.size())));
        if (length == 17) cut.push_back(0);
        EXPECT_EQ(BVEncryption::decryptDataUsingKey(cut, Text("hR5kt2v9")), std::nullopt) << length;
    }
    for (std::size_t bit = 0; bit < 64; ++bit) {  // every single flipped bit of the padding block
        ByteData flipped = good;
        flipped[8 + bit / 8] ^= static_cast<std::uint8_t>(1u << (bit % 8));
        EXPECT_EQ(BVEncryption::decryptDataUsingKey(flipped, Text("hR5kt2v9")), std::nullopt) << bit;
    }
    (void)testing::internal::GetCapturedStderr();
}

TEST(BVEncryption, TextComesBackAsAsciiOnly) {
    const Text key("hR5kt2v9");
    EXPECT_EQ(BVEncryption::stringDecryptionForEncryptedDataUsingKey(
                  *BVEncryption::encryptStringUsingKey(Text("Zoe"), key), key),
              Text("Zoe"));
    // UTF-8 in, ASCII out: a name beyond ASCII does not come back.
    EXPECT_EQ(BVEncryption::stringDecryptionForEncryptedDataUsingKey(
                  *BVEncryption::encryptStringUsingKey(Text("Zo\xC3\xAB"), key), key),
              std::nullopt);
    EXPECT_EQ(
        BVEncryption::decryptDataUsingKey(*BVEncryption::encryptStringUsingKey(Text("Zo\xC3\xAB"), key), key),
        bytesOf("Zo\xC3\xAB"));
}

TEST(CDSA, CipherContextRuleFollowsTheKeyAlgorithm) {
    using namespace bv;
    struct Row {
        CssmAlgorithm algorithm;
        CssmReturn status;
        CssmContextKind kind;
        CssmMode mode;
        CssmPadding padding;
    };
    const Row rows[] = {
        {CssmAlgorithm::DES, CssmOK, CssmContextKind::Symmetric, CssmMode::CBCPadIV8, CssmPadding::PKCS5},
        {CssmAlgorithm::TripleDES3KeyEDE, CssmOK, CssmContextKind::Symmetric, CssmMode::CBCPadIV8,
         CssmPadding::PKCS5},
        {CssmAlgorithm::RC5, CssmOK, CssmContextKind::Symmetric, CssmMode::CBCPadIV8, CssmPadding::PKCS5},
        {CssmAlgorithm::AES, CssmOK, CssmContextKind::Symmetric, CssmMode::CBCPadIV8, CssmPadding::PKCS7},
        {CssmAlgorithm::RC4, CssmOK, CssmContextKind::Symmetric, CssmMode::None, CssmPadding::None},
        {CssmAlgorithm::ASC, CssmOK, CssmContextKind::Symmetric, CssmMode::None, CssmPadding::None},
        {CssmAlgorithm::RSA, CssmOK, CssmContextKind::Asymmetric, CssmMode::None, CssmPadding::PKCS1},
        {CssmAlgorithm::SHA1, CssmErrInvalidAlgorithm, CssmContextKind::None, CssmMode::None,
         CssmPadding::None},
    };
    for (const Row& row : rows) {
        CssmContextChoice choice;
        EXPECT_EQ(genCryptHandle(row.algorithm, &choice), row.status);
        EXPECT_EQ(choice.kind, row.kind);
        EXPECT_EQ(choice.mode, row.mode);
        EXPECT_EQ(choice.padding, row.padding);
    }
}

TEST(CDSA, HelpersDeriveAgreeAndDigest) {
    using namespace bv;
    CspHandle handle = nullptr;
    ASSERT_EQ(cdsaCspAttach(&handle), CssmOK);
    CssmKey key;
    EXPECT_EQ(cdsaDeriveKey(handle, "hR5kt2v9", 8, CssmAlgorithm::DES, 56, &key), CssmErrInvalidKeySize);
    ASSERT_EQ(cdsaDeriveKey(handle, "hR5kt2v9", 8, CssmAlgorithm::DES, 64, &key), CssmOK);
    EXPECT_EQ(hexOf(key.keyData), "2fb92cc0ce436ff4");  // the kdf command above
    EXPECT_EQ(key.label, "tempKey");
    ByteData out;
    CssmKey rsa{CssmAlgorithm::RSA, 64, "", key.keyData, nullptr};
    EXPECT_EQ(cdsaEncrypt(handle, rsa, bytesOf("x"), &out), CssmErrInvalidAlgorithm);
    EXPECT_EQ(cdsaFreeKey(handle, &key), CssmOK);
    EXPECT_TRUE(key.keyData.empty());
    EXPECT_EQ(cdsaEncrypt(handle, key, bytesOf("x"), &out), CssmErrInvalidKey);

    // printf abc | openssl dgst -sha1
    ASSERT_EQ(cdsaDigest(handle, CssmAlgorithm::SHA1, bytesOf("abc"), &out), CssmOK);
    EXPECT_EQ(hexOf(out), "a9993e364706816aba3e25717850c26c9cd0d89d");
    EXPECT_EQ(cdsaDigest(handle, CssmAlgorithm::DES, bytesOf("abc"), &out), CssmErrInvalidAlgorithm);

    CssmKey alicePrivate, alicePublic, bobPrivate, bobPublic, aliceShared, bobShared;
    EXPECT_EQ(cdsaDhGenerateKeyPair(handle, 1024, &alicePrivate, &alicePublic), CssmErrInvalidKeySize);
    ASSERT_EQ(cdsaDhGenerateKeyPair(handle, 2048, &alicePrivate, &alicePublic), CssmOK);
    ASSERT_EQ(cdsaDhGenerateKeyPair(handle, 2048, &bobPrivate, &bobPublic), CssmOK);
    EXPECT_EQ(alicePublic.keyData.size(), 256u);
    ASSERT_EQ(
        cdsaDhKeyExchange(handle, alicePrivate, bobPublic.keyData, CssmAlgorithm::AES, 256, &aliceShared),
        CssmOK);
    ASSERT_EQ(cdsaDhKeyExchange(handle, bobPrivate, alicePublic.keyData, CssmAlgorithm::AES, 256, &bobShared),
              CssmOK);
    EXPECT_EQ(aliceShared.keyData, bobShared.keyData);
    EXPECT_EQ(aliceShared.keyData.size(), 32u);
    // A peer value of 1 is no valid group element.
    ByteData one(256, 0);
    one.back() = 1;
    EXPECT_EQ(cdsaDhKeyExchange(handle, alicePrivate, one, CssmAlgorithm::AES, 256, &aliceShared),
              CssmErrKeyExchangeFailed);
    EXPECT_EQ(cdsaCspDetach(handle), CssmOK);
    EXPECT_EQ(cdsaCspDetach(nullptr), CssmErrInvalidHandle);
}
