// Whole-file writes (atomic through a temporary file and rename) and permission changes.
#include "BrevantCocoaExtensions/platform/FileWriting.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace bv {

namespace {

bool fail(Error* error, const std::string& path, int code) {
    return Error::report(error, Error{"NSPOSIXErrorDomain", code,
                                      Text("The file \u201C" + path + "\u201D couldn\u2019t be saved."),
                                      Text(std::strerror(code))});
}

bool writeAll(int descriptor, const void* bytes, std::size_t length) {
    const auto* cursor = static_cast<const char*>(bytes);
    while (length != 0) {
        ssize_t written = ::write(descriptor, cursor, length);
        if (written < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        cursor += written;
        length -= static_cast<std::size_t>(written);
    }
    return true;
}

// Writes into an open descriptor and closes it; answers 0 or the errno of the first failure.
int writeAndClose(int descriptor, const void* bytes, std::size_t length, bool sync) {
    int code = 0;
    if (!writeAll(descriptor, bytes, length) || (sync && ::fsync(descriptor) != 0)) code = errno;
    if (::close(descriptor) != 0 && code == 0) code = errno;
    return code;
}

bool writeAtomically(const std::string& path, const void* bytes, std::size_t length, Error* error,
                     unsigned mode) {
    std::filesystem::path target(path);
    std::string hidden = ".";
    hidden.append(target.filename().string()).append(".XXXXXX");
    std::string pattern =
        (target.parent_path().empty() ? std::filesystem::path(".") : target.parent_path()) / hidden;
    int descriptor = ::mkstemp(pattern.data());
    if (descriptor < 0) return fail(error, path, errno);
    ::fchmod(descriptor, static_cast<mode_t>(mode));
    if (int code = writeAndClose(descriptor, bytes, length, true); code != 0) {
        ::unlink(pattern.c_str());
        return fail(error, path, code);
    }
    if (::rename(pattern.c_str(), path.c_str()) != 0) {
        int code = errno;
        ::unlink(pattern.c_str());
        return fail(error, path, code);
    }
    return true;
}

}  // namespace

bool writeBytesToFile(const std::string& path, const void* bytes, std::size_t length, bool atomically,
                      Error* error, unsigned mode) {
    if (atomically) return writeAtomically(path, bytes, length, error, mode);
    int descriptor =
        ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, static_cast<mode_t>(mode));
    if (descriptor < 0) return fail(error, path, errno);
    if (int code = writeAndClose(descriptor, bytes, length, false); code != 0) return fail(error, path, code);
    return true;
}

bool setPosixPermissions(const std::string& path, unsigned mode) {
    return ::chmod(path.c_str(), static_cast<mode_t>(mode)) == 0;
}

}  // namespace bv
