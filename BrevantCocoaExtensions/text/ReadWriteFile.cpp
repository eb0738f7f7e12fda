// readFile and writeFile over open/lseek/read/write.
#include "BrevantCocoaExtensions/text/ReadWriteFile.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace bv {

namespace {

constexpr int kIOError = EIO;         // 5
constexpr int kOutOfMemory = ENOMEM;  // 12

// Opens the path; a descriptor below 1 is a failure, answered as the system error number (a descriptor
// 0 means standard input was closed: it is given back and reported as EBADF).
int openDescriptor(const char* path, int flags, int* descriptor) {
    errno = 0;
    *descriptor = ::open(path, flags | O_CLOEXEC, 0600);
    if (*descriptor >= 1) return 0;
    const int code = errno != 0 ? errno : EBADF;
    if (*descriptor == 0) ::close(*descriptor);
    return code;
}

}  // namespace

int writeFile(const char* path, const void* buffer, std::uint32_t length) {
    int descriptor = -1;
    if (int code = openDescriptor(path, O_RDWR | O_CREAT | O_TRUNC, &descriptor); code != 0) return code;
    if (::lseek(descriptor, 0, SEEK_SET) < 0) {
        const int code = errno;
        ::close(descriptor);
        return code;
    }
    const ssize_t written = ::write(descriptor, buffer, length);
    if (written >= 0 && static_cast<std::uint64_t>(written) < length)
        std::fputs("writeFile: short write\n", stdout);
    ::close(descriptor);
    return written >= 0 && static_cast<std::uint64_t>(written) == length ? 0 : kIOError;
}

int readFile(const char* path, unsigned char** buffer, std::uint32_t* length) {
    *buffer = nullptr;
    *length = 0;
    int descriptor = -1;
    if (int code = openDescriptor(path, O_RDONLY, &descriptor); code != 0) return code;
    struct stat status {};
    if (int result = ::fstat(descriptor, &status); result != 0) {
        ::close(descriptor);
        return result;
    }
    // The length is a 32-bit count: a larger file is refused rather than read in part.
    if (static_cast<std::uint64_t>(status.st_size) > UINT32_MAX) {
        ::close(descriptor);
        return EFBIG;
    }
    const auto size = static_cast<std::uint32_t>(status.st_size);
    auto* bytes = static_cast<unsigned char*>(std::malloc(size == 0 ? 1 : size));
    if (bytes == nullptr) {
        ::close(descriptor);
        return kOutOfMemory;
    }
    if (::lseek(descriptor, 0, SEEK_SET) < 0) {
        std::free(bytes);
        ::close(descriptor);
        return -1;
    }
    const ssize_t got = ::read(descriptor, bytes, size);
    ::close(descriptor);
    if (got >= 0 && static_cast<std::uint64_t>(got) == size) {
        *buffer = bytes;
        *length = size;
        return 0;
    }
    std::free(bytes);
    if (got >= 0) std::fputs("readFile: short read\n", stdout);
    return kIOError;
}

}  // namespace bv
