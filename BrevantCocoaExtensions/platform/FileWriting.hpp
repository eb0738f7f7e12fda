// Writing whole files the way the platform's data and string writers do, and setting permissions.
//
// An atomic write never leaves a torn file: the bytes go to a temporary file beside the target, which is
// flushed to disk and then renamed over the target, so a reader sees either the old file or the whole new
// one. A non-atomic write truncates the target and writes in place.
#pragma once

#include <cstddef>
#include <string>

#include "BrevantCocoaExtensions/platform/Error.hpp"

namespace bv {

// Writes the bytes to the path; false with *error (POSIX domain, errno code) on failure. A new file (and
// the temporary file of an atomic write) gets the mode from its creation on, so an owner-only file is never
// readable by others, not even for a moment.
bool writeBytesToFile(const std::string& path, const void* bytes, std::size_t length, bool atomically,
                      Error* error = nullptr, unsigned mode = 0644);

// Sets the POSIX permission bits of a path; false on failure (errno left set).
bool setPosixPermissions(const std::string& path, unsigned mode);

}  // namespace bv
