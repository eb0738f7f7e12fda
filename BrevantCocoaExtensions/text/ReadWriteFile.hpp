// readFile and writeFile: a whole file into a malloc'ed buffer and back, with plain POSIX calls.
//
// Both answer 0 on success and an error number otherwise; they keep no state. A short read or write is
// reported as 5 (EIO) after printing "readFile: short read" or "writeFile: short write" on standard output.
#pragma once

#include <cstdint>

namespace bv {

// Creates or truncates the file (mode 0600 for a new file) and writes the buffer in one call. Answers 0
// when every byte was written, the system error number when the file cannot be opened or positioned,
// and 5 (EIO) when fewer bytes were written or the write failed.
[[nodiscard]] int writeFile(const char* path, const void* buffer, std::uint32_t length);

// Reads the whole file in one call into a buffer that the caller frees with std::free. *buffer and *length
// are null and 0 first and stay so on failure. Answers 0, the system error number when the file cannot be
// opened, -1 when its size or position cannot be had, 12 (ENOMEM) when no buffer can be allocated, 27
// (EFBIG) for a file whose size does not fit 32 bits, and 5 (EIO) for a short or failed read.
[[nodiscard]] int readFile(const char* path, unsigned char** buffer, std::uint32_t* length);

}  // namespace bv
