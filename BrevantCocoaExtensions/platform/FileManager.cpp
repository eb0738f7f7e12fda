// The file manager on POSIX calls: listing, existence, create, copy, move, remove and attributes.
#include "BrevantCocoaExtensions/platform/FileManager.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>

#include "BrevantCocoaExtensions/platform/PathRules.hpp"

namespace bv {

namespace {

constexpr const char* kHiddenExtensionAttribute = "user.bv.hidden-extension";

bool fail(Error* error, int code, const std::string& path) {
    return Error::report(error, Error{"NSPOSIXErrorDomain", code, Text(std::strerror(code)), Text(path)});
}

bool failWithErrno(Error* error, const std::string& path) {
    return fail(error, errno, path);
}

// A file descriptor closed when it goes out of scope.
class Descriptor {
  public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ >= 0) ::close(fd_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    [[nodiscard]] int get() const { return fd_; }
    [[nodiscard]] bool valid() const { return fd_ >= 0; }
    // Closes now and answers whether the close succeeded (a late write error shows here).
    bool close() { return ::close(std::exchange(fd_, -1)) == 0; }

  private:
    int fd_;
};

struct DirCloser {
    void operator()(DIR* dir) const { ::closedir(dir); }
};
using DirHandle = std::unique_ptr<DIR, DirCloser>;

bool isDotOrDotDot(const char* name) {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

// Reads the names of an open folder in the system's order.
template <class Visit>
bool forEachName(const std::string& folder, Visit visit) {
    DirHandle dir(::opendir(folder.c_str()));
    if (!dir) return false;
    errno = 0;
    while (const dirent* entry = ::readdir(dir.get())) {
        if (!isDotOrDotDot(entry->d_name)) visit(entry->d_name);
    }
    return errno == 0;
}

bool copyBytes(int from, int to) {
    for (;;) {
        ssize_t copied = ::copy_file_range(from, nullptr, to, nullptr, 1 << 30, 0);
        if (copied == 0) return true;
        if (copied > 0) continue;
        if (errno == EINTR) continue;
        if (errno != EXDEV && errno != ENOSYS && errno != EINVAL && errno != EOPNOTSUPP) return false;
        break;  // the file systems cannot copy between them: read and write
    }
    char buffer[1 << 16];
    for (;;) {
        ssize_t got = ::read(from, buffer, sizeof buffer);
        if (got == 0) return true;
        if (got < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        for (ssize_t written = 0; written < got;) {
            ssize_t put = ::write(to, buffer + written, static_cast<std::size_t>(got - written));
            if (put < 0 && errno != EINTR) return false;
            if (put > 0) written += put;
        }
    }
}

bool copyFile(const std::string& source, const std::string& target, mode_t mode, Error* error) {
    Descriptor from(::open(source.c_str(), O_RDONLY | O_CLOEXEC));
    if (!from.valid()) return failWithErrno(error, source);
    Descriptor to(::open(target.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode & 07777));
    if (!to.valid()) return failWithErrno(error, target);
    if (!copyBytes(from.get(), to.get()) || ::fchmod(to.get(), mode & 07777) != 0 || !to.close()) {
        return failWithErrno(error, target);
    }
    return true;
}

bool copyLink(const std::string& source, const std::string& target, Error* error) {
    std::string destination(PATH_MAX, '\0');
    ssize_t length = ::readlink(source.c_str(), destination.data(), destination.size());
    if (length < 0) return failWithErrno(error, source);
    destination.resize(static_cast<std::size_t>(length));
    if (::symlink(destination.c_str(), target.c_str()) != 0) return failWithErrno(error, target);
    return true;
}

bool copyNode(const std::string& source, const std::string& target, const struct stat& info, Error* error);

bool copyFolder(const std::string& source, const std::string& target, mode_t mode, Error* error) {
    if (::mkdir(target.c_str(), (mode & 07777) | S_IRWXU) != 0) return failWithErrno(error, target);
    bool copied = true;
    bool listed = forEachName(source, [&](const char* name) {
        if (!copied) return;
        std::string from = source + "/" + name;
        struct stat info {};
        if (::lstat(from.c_str(), &info) != 0) {
            copied = failWithErrno(error, from);
            return;
        }
        copied = copyNode(from, target + "/" + name, info, error);
    });
    if (!listed && copied) return failWithErrno(error, source);
    if (copied && ::chmod(target.c_str(), mode & 07777) != 0) return failWithErrno(error, target);
    return copied;
}

bool copyNode(const std::string& source, const std::string& target, const struct stat& info, Error* error) {
    if (S_ISREG(info.st_mode)) return copyFile(source, target, info.st_mode, error);
    if (S_ISLNK(info.st_mode)) return copyLink(source, target, error);
    if (S_ISDIR(info.st_mode)) return copyFolder(source, target, info.st_mode, error);
    return fail(error, ENOTSUP, source);
}

bool exists(const std::string& path) {
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0;
}

// Whether a path that does not exist yet would lie inside a folder (or be it), links resolved.
bool isWithin(const std::string& path, const std::string& folder) {
    namespace fs = std::filesystem;
    std::error_code ignored;
    const fs::path relative =
        fs::weakly_canonical(path, ignored).lexically_relative(fs::weakly_canonical(folder, ignored));
    return !relative.empty() && *relative.begin() != "..";
}

Text fileType(mode_t mode) {
    if (S_ISREG(mode)) return Text(FileTypeRegular);
    if (S_ISDIR(mode)) return Text(FileTypeDirectory);
    if (S_ISLNK(mode)) return Text(FileTypeSymbolicLink);
    return Text(FileTypeUnknown);
}

bool readHiddenExtension(const std::string& path) {
    char value[2] = {};
    return ::getxattr(path.c_str(), kHiddenExtensionAttribute, value, sizeof value) == 1 && value[0] == '1';
}

bool writeHiddenExtension(const std::string& path, bool hidden, Error* error) {
    if (hidden) {
        if (::setxattr(path.c_str(), kHiddenExtensionAttribute, "1", 1, 0) != 0)
            return failWithErrno(error, path);
        return true;
    }
    if (::removexattr(path.c_str(), kHiddenExtensionAttribute) != 0 && errno != ENODATA) {
        return failWithErrno(error, path);
    }
    return true;
}

bool writeModificationDate(const std::string& path, const Date& date, Error* error) {
    double seconds = date.timeIntervalSince1970();
    double whole = std::floor(seconds);
    struct timespec times[2] = {{0, UTIME_OMIT},
                                {static_cast<time_t>(whole), static_cast<long>((seconds - whole) * 1e9)}};
    if (::utimensat(AT_FDCWD, path.c_str(), times, 0) != 0) return failWithErrno(error, path);
    return true;
}

bool writePermissions(const std::string& path, const Number& permissions, Error* error) {
    if (::chmod(path.c_str(), static_cast<mode_t>(permissions.int64Value() & 07777)) != 0) {
        return failWithErrno(error, path);
    }
    return true;
}

}  // namespace

const FileManager& FileManager::defaultManager() {
    static const FileManager manager;
    return manager;
}

std::optional<std::vector<Text>> FileManager::contentsOfDirectoryAtPath(const Text& path,
                                                                        Error* error) const {
    std::vector<Text> names;
    const std::string folder = PathRules::nativePath(path);
    if (!forEachName(folder, [&names](const char* name) { names.emplace_back(std::string_view(name)); })) {
        failWithErrno(error, folder);
        return std::nullopt;
    }
    return names;
}

std::vector<Text> FileManager::subpathsAtPath(const Text& path) const {
    namespace fs = std::filesystem;
    std::vector<Text> subpaths;
    const fs::path root(PathRules::nativePath(path));
    std::error_code code;
    fs::recursive_directory_iterator walk(root, fs::directory_options::skip_permission_denied, code);
    for (; !code && walk != fs::recursive_directory_iterator(); walk.increment(code))
        subpaths.emplace_back(walk->path().lexically_relative(root).string());
    return subpaths;
}

bool FileManager::fileExistsAtPath(const Text& path, bool* isDirectory) const {
    struct stat info {};
    const bool found = ::stat(PathRules::nativePath(path).c_str(), &info) == 0;
    if (isDirectory != nullptr) *isDirectory = found && S_ISDIR(info.st_mode);
    return found;
}

bool FileManager::createDirectoryAtPath(const Text& path, bool withIntermediateDirectories,
                                        Error* error) const {
    const std::string folder = PathRules::nativePath(path);
    if (!withIntermediateDirectories) {
        if (::mkdir(folder.c_str(), 0777) != 0) return failWithErrno(error, folder);
        return true;
    }
    std::error_code code;
    std::filesystem::create_directories(folder, code);
    if (code) return fail(error, code.value(), folder);
    return true;
}

bool FileManager::copyItemAtPathToPath(const Text& source, const Text& target, Error* error) const {
    const std::string from = PathRules::nativePath(source);
    const std::string to = PathRules::nativePath(target);
    struct stat info {};
    if (::lstat(from.c_str(), &info) != 0) return failWithErrno(error, from);
    if (exists(to)) return fail(error, EEXIST, to);
    if (S_ISDIR(info.st_mode) && isWithin(to, from))
        return fail(error, EINVAL, to);  // would copy itself forever
    if (copyNode(from, to, info, error)) return true;
    std::error_code ignored;
    std::filesystem::remove_all(to, ignored);  // no half copy stays behind
    return false;
}

bool FileManager::moveItemAtPathToPath(const Text& source, const Text& target, Error* error) const {
    const std::string from = PathRules::nativePath(source);
    const std::string to = PathRules::nativePath(target);
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
    if (errno == EINVAL || errno == ENOSYS) {  // the file system cannot refuse to replace: look first
        if (exists(to)) return fail(error, EEXIST, to);
        if (::rename(from.c_str(), to.c_str()) == 0) return true;
    }
    if (errno != EXDEV) return failWithErrno(error, errno == EEXIST ? to : from);
    // Across file systems: copy, then remove the source only once the copy is whole.
    if (!copyItemAtPathToPath(source, target, error)) return false;
    return removeItemAtPath(source, error);
}

bool FileManager::removeItemAtPath(const Text& path, Error* error) const {
    const std::string item = PathRules::nativePath(path);
    struct stat info {};
    if (::lstat(item.c_str(), &info) != 0) return failWithErrno(error, item);
    if (!S_ISDIR(info.st_mode)) {
        if (::unlink(item.c_str()) != 0) return failWithErrno(error, item);
        return true;
    }
    std::error_code code;
    std::filesystem::remove_all(item, code);
    if (code) return fail(error, code.value(), item);
    return true;
}

std::optional<ValueDictionary> FileManager::attributesOfItemAtPath(const Text& path, Error* error) const {
    const std::string item = PathRules::nativePath(path);
    struct stat info {};
    if (::lstat(item.c_str(), &info) != 0) {
        failWithErrno(error, item);
        return std::nullopt;
    }
    const double modified =
        static_cast<double>(info.st_mtim.tv_sec) + static_cast<double>(info.st_mtim.tv_nsec) / 1e9;
    return ValueDictionary{
        {Text(FileType), Value(fileType(info.st_mode))},
        {Text(FileSize), Value(Number::uint64(static_cast<std::uint64_t>(info.st_size)))},
        {Text(FileModificationDate), Value(Date::fromTimeIntervalSince1970(modified))},
        {Text(FilePosixPermissions), Value(Number::uint16(static_cast<std::uint16_t>(info.st_mode & 07777)))},
        {Text(FileExtensionHidden), Value(Number::boolean(readHiddenExtension(item)))},
    };
}

bool FileManager::setAttributesOfItemAtPath(const ValueDictionary& attributes, const Text& path,
                                            Error* error) const {
    const std::string item = PathRules::nativePath(path);
    if (!exists(item)) return fail(error, ENOENT, item);
    for (const auto& [key, value] : attributes) {
        bool written = true;
        if (const Number* number = value.number(); number && key == Text(FilePosixPermissions)) {
            written = writePermissions(item, *number, error);
        } else if (const Number* flag = value.number(); flag && key == Text(FileExtensionHidden)) {
            written = writeHiddenExtension(item, flag->boolValue(), error);
        } else if (const Date* date = value.get<Date>(); date && key == Text(FileModificationDate)) {
            written = writeModificationDate(item, *date, error);
        }
        if (!written) return false;
    }
    return true;
}

std::optional<Text> FileManager::destinationOfSymbolicLinkAtPath(const Text& path, Error* error) const {
    const std::string link = PathRules::nativePath(path);
    std::string destination(PATH_MAX, '\0');
    ssize_t length = ::readlink(link.c_str(), destination.data(), destination.size());
    if (length < 0) {
        failWithErrno(error, link);
        return std::nullopt;
    }
    destination.resize(static_cast<std::size_t>(length));
    return Text(destination);
}

}  // namespace bv
