// bv::Md5: the MD5 message digest through OpenSSL's EVP interface, fed in pieces so that input of any size
// (a file larger than memory) streams through it. MD5 is for checksums and identifiers, not for security.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace bv {

class Md5 {
  public:
    using Digest = std::array<std::uint8_t, 16>;

    Md5();
    ~Md5();
    Md5(const Md5&) = delete;
    Md5& operator=(const Md5&) = delete;

    // Adds bytes to the message.
    void update(const void* bytes, std::size_t length);
    // The digest of everything added so far; the object starts a new message afterwards.
    [[nodiscard]] Digest finish();

    // The digest as 32 lower-case hexadecimal digits, byte by byte in digest order.
    [[nodiscard]] static std::string hex(const Digest& digest);
    // The digest of one buffer, in hexadecimal.
    [[nodiscard]] static std::string hexOf(const void* bytes, std::size_t length);

  private:
    void* context_;  // EVP_MD_CTX, kept out of the header
};

}  // namespace bv
