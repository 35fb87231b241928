#include "TAVIX20/support/safe_file.h"

#include "TAVIX20/platform/descriptor.h"
#include "TAVIX20/platform/file_handle.h"
#include "TAVIX20/platform/last_error.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tavix {

namespace {

constexpr int MOST_TRIES = 100;
constexpr std::size_t LARGEST_WRITE = std::size_t{1} << 30;

bool FailWith(int number) {
    SetLastError(ErrorFromErrno(number));
    return false;
}

/// Short, so that it is valid wherever the final name is.
std::string RandomName() {
    static thread_local std::minstd_rand random{std::random_device{}()};
    char name[32];
    std::snprintf(name, sizeof name, ".%08lx%08lx.tmp", static_cast<unsigned long>(random()),
                  static_cast<unsigned long>(getpid()));
    return name;
}

/// The path with its links followed, whether or not its last part exists.
std::string ResolveLinks(const char *name) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(realpath(name, nullptr), &std::free);
    return resolved ? resolved.get() : name;
}

} // namespace

TemporaryFile::TemporaryFile(int folder) : m_folder(folder) {
    for (int i = 0; i < MOST_TRIES && m_descriptor == -1; ++i) {
        m_name = RandomName();
        m_descriptor = openat(folder, m_name.c_str(),
                              O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
        if (m_descriptor == -1 && errno != EEXIST && errno != EINTR)
            break;
    }
    m_isWhole = m_descriptor != -1;
    if (!m_isWhole) {
        FailWith(errno);
        m_name.clear();
    }
}

TemporaryFile::~TemporaryFile() {
    if (m_descriptor != -1)
        close(m_descriptor);
    if (!m_name.empty())
        unlinkat(m_folder, m_name.c_str(), 0);
}

bool TemporaryFile::Write(const void *data, std::size_t size) {
    const FileHandle file(HandleFromDescriptor(m_descriptor));
    const auto *const bytes = static_cast<const std::byte *>(data);
    for (std::size_t done = 0; m_isWhole && done < size;) {
        const auto piece = static_cast<unsigned int>(std::min(size - done, LARGEST_WRITE));
        m_isWhole = file.Write(bytes + done, piece) == piece;
        done += piece;
    }
    return m_isWhole;
}

bool TemporaryFile::Flush() {
    m_isWhole = m_isWhole && FileHandle(HandleFromDescriptor(m_descriptor)).Flush();
    return m_isWhole;
}

bool TemporaryFile::SetPermissions(unsigned int mode) {
    return (m_isWhole && fchmod(m_descriptor, mode & 07777) == 0) || FailWith(errno);
}

bool TemporaryFile::MoveTo(int folder, const char *name) {
    if (!m_isWhole)
        return false;
    // Some file systems tell only now that there was no room.
    m_isWhole = FileHandle(HandleFromDescriptor(m_descriptor)).Close();
    m_descriptor = -1;
    if (!m_isWhole)
        return false;
    if (renameat(m_folder, m_name.c_str(), folder, name) != 0)
        return FailWith(errno);
    m_name.clear();
    return true;
}

bool SaveWholeFile(const char *name, const void *data, std::size_t size) {
    if (name == nullptr || *name == '\0' || (data == nullptr && size > 0)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return false;
    }
    const std::string path = ResolveLinks(name);
    struct stat old {};
    const bool isThere = lstat(path.c_str(), &old) == 0;
    if (isThere && (!S_ISREG(old.st_mode) || access(path.c_str(), W_OK) != 0)) {
        SetLastError(ERROR_ACCESS_DENIED);
        return false;
    }
    const std::size_t slash = path.rfind('/');
    const std::string folderPath = slash == std::string::npos ? "./" : path.substr(0, slash + 1);
    const std::string fileName = slash == std::string::npos ? path : path.substr(slash + 1);
    const Descriptor folder(open(folderPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder.IsOpen()) {
        SetLastError(errno == ENOENT ? ERROR_PATH_NOT_FOUND : ErrorFromErrno(errno));
        return false;
    }
    TemporaryFile file(folder.Get());
    return file.Write(data, size) && (!isThere || file.SetPermissions(old.st_mode)) &&
           file.Flush() && file.MoveTo(folder.Get(), fileName.c_str());
}

} // namespace tavix
