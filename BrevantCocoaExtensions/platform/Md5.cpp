// The streaming MD5 digest over OpenSSL EVP.
#include "BrevantCocoaExtensions/platform/Md5.hpp"

#include <openssl/evp.h>

#include <new>

namespace bv {

namespace {

EVP_MD_CTX* asContext(void* context) {
    return static_cast<EVP_MD_CTX*>(context);
}

void begin(EVP_MD_CTX* context) {
    if (EVP_DigestInit_ex(context, EVP_md5(), nullptr) != 1) throw std::bad_alloc();
}

}  // namespace

Md5::Md5() : context_(EVP_MD_CTX_new()) {
    if (context_ == nullptr) throw std::bad_alloc();
    begin(asContext(context_));
}

Md5::~Md5() {
    EVP_MD_CTX_free(asContext(context_));
}

void Md5::update(const void* bytes, std::size_t length) {
    if (length > 0) EVP_DigestUpdate(asContext(context_), bytes, length);
}

Md5::Digest Md5::finish() {
    Digest digest{};
    unsigned int size = 0;
    EVP_DigestFinal_ex(asContext(context_), digest.data(), &size);
    begin(asContext(context_));
    return digest;
}

std::string Md5::hex(const Digest& digest) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string text(digest.size() * 2, '0');
    for (std::size_t i = 0; i < digest.size(); ++i) {
        text[2 * i] = kDigits[digest[i] >> 4];
        text[2 * i + 1] = kDigits[digest[i] & 0xF];
    }
    return text;
}

std::string Md5::hexOf(const void* bytes, std::size_t length) {
    Md5 md5;
    md5.update(bytes, length);
    return hex(md5.finish());
}

}  // namespace bv
