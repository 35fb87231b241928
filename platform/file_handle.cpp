#include "TAVIX20/platform/file_handle.h"

#include "TAVIX20/platform/last_error.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <string>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tavix {

namespace {

static_assert(sizeof(off_t) == sizeof(long), "positions are passed on unconverted");

/// One call of the system transfers a little less than 2 GB at most.
constexpr std::size_t LARGEST_TRANSFER = std::size_t{1} << 30;

constexpr int NEW_FILE_MODE = 0666; // less what the program's mask takes away

/// Sets the last error from errno, and tells a file that lacks the access from one that is closed.
void SetErrorOfFile(int descriptor) {
    const int number = errno;
    const bool isAccess = number == EBADF || number == EINVAL;
    SetLastError(isAccess && fcntl(descriptor, F_GETFD) != -1 ? ERROR_ACCESS_DENIED
                                                              : ErrorFromErrno(number));
}

DWORD ErrorOfOpen(const std::string &name) {
    if (errno != ENOENT)
        return ErrorFromErrno(errno);
    const std::size_t slash = name.rfind('/');
    const std::string folder = slash == std::string::npos ? "./" : name.substr(0, slash + 1);
    return access(folder.c_str(), F_OK) == 0 ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
}

int OpenFlags(const FileMode &mode) {
    int flags = O_NOCTTY;
    if (mode.access == (GENERIC_READ | GENERIC_WRITE))
        flags |= O_RDWR;
    else
        flags |= mode.access == GENERIC_WRITE ? O_WRONLY : O_RDONLY;
    if (mode.creation != FileCreation::OpenExisting)
        flags |= O_CREAT;
    return mode.isInherited ? flags : flags | O_CLOEXEC;
}

int OpenUninterrupted(const char *name, int flags) {
    int descriptor = -1;
    do
        descriptor = open(name, flags, NEW_FILE_MODE);
    while (descriptor == -1 && errno == EINTR);
    return descriptor;
}

/// Waits for nobody at the other end of a named pipe, but for another program to give up a lease.
int OpenDescriptor(const char *name, int flags) {
    int descriptor = OpenUninterrupted(name, flags | O_NONBLOCK);
    if (descriptor == -1 && errno == EWOULDBLOCK)
        descriptor = OpenUninterrupted(name, flags);
    if (descriptor != -1)
        fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
    return descriptor;
}

bool IsFolder(int descriptor) {
    struct stat status {};
    return fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

/// What remains to be done with a file that was opened: 0, or the error.
DWORD Prepare(int descriptor, const char *name, const FileMode &mode) {
    if (IsFolder(descriptor))
        return ERROR_ACCESS_DENIED;
    const int lock = mode.share == 0 ? LOCK_EX : LOCK_SH;
    if (flock(descriptor, lock | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return ERROR_SHARING_VIOLATION;
    if (mode.creation != FileCreation::CreateAlways)
        return ERROR_SUCCESS;
    // Only now, under the lock. A file that is opened for reading only is emptied by its name.
    const bool isWritable = (mode.access & GENERIC_WRITE) != 0;
    const int result = isWritable ? ftruncate(descriptor, 0) : truncate(name, 0);
    const bool isDevice = result != 0 && errno == EINVAL;
    return result == 0 || isDevice ? ERROR_SUCCESS : ErrorFromErrno(errno);
}

} // namespace

HANDLE HandleFromDescriptor(int descriptor) {
    return descriptor < 0 ? INVALID_HANDLE_VALUE
                          : reinterpret_cast<HANDLE>(std::intptr_t{descriptor} + 1);
}

int DescriptorFromHandle(HANDLE handle) {
    return static_cast<int>(reinterpret_cast<std::intptr_t>(handle) - 1);
}

FileHandle FileHandle::Open(const char *name, const FileMode &mode) {
    const FileHandle none(INVALID_HANDLE_VALUE);
    if (name == nullptr || (mode.access & (GENERIC_READ | GENERIC_WRITE)) == 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return none;
    }
    const int descriptor = OpenDescriptor(name, OpenFlags(mode));
    if (descriptor == -1) {
        SetLastError(ErrorOfOpen(name));
        return none;
    }
    if (const DWORD error = Prepare(descriptor, name, mode); error != ERROR_SUCCESS) {
        close(descriptor);
        SetLastError(error);
        return none;
    }
    return FileHandle(HandleFromDescriptor(descriptor));
}

unsigned int FileHandle::Read(void *buffer, unsigned int count) const {
    const int descriptor = DescriptorFromHandle(m_handle);
    auto *const bytes = static_cast<std::byte *>(buffer);
    std::size_t done = 0;
    while (done < count) {
        const std::size_t wanted = std::min(count - done, LARGEST_TRANSFER);
        const ssize_t moved = read(descriptor, bytes + done, wanted);
        if (moved == -1 && errno == EINTR)
            continue;
        if (moved == -1)
            SetErrorOfFile(descriptor);
        done += static_cast<std::size_t>(std::max<ssize_t>(moved, 0));
        if (moved < static_cast<ssize_t>(wanted))
            break;
    }
    return static_cast<unsigned int>(done);
}

unsigned int FileHandle::Write(const void *buffer, unsigned int count) const {
    const int descriptor = DescriptorFromHandle(m_handle);
    const auto *const bytes = static_cast<const std::byte *>(buffer);
    std::size_t done = 0;
    while (done < count) {
        const std::size_t wanted = std::min(count - done, LARGEST_TRANSFER);
        const ssize_t moved = write(descriptor, bytes + done, wanted);
        if (moved == -1 && errno == EINTR)
            continue;
        if (moved <= 0) {
            SetErrorOfFile(descriptor);
            break;
        }
        done += static_cast<std::size_t>(moved);
    }
    return static_cast<unsigned int>(done);
}

long FileHandle::Seek(long offset, unsigned int from) const {
    constexpr int origins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
    if (from > 2) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return -1;
    }
    const off_t position = lseek(DescriptorFromHandle(m_handle), offset, origins[from]);
    if (position == -1)
        SetLastError(errno == EINVAL ? ERROR_NEGATIVE_SEEK : ErrorFromErrno(errno));
    return position;
}

bool FileHandle::SetEnd() const {
    const int descriptor = DescriptorFromHandle(m_handle);
    const long position = Seek(0, 1);
    if (position == -1)
        return false;
    if (ftruncate(descriptor, position) == 0)
        return true;
    SetErrorOfFile(descriptor);
    return false;
}

bool FileHandle::Flush() const {
    const int descriptor = DescriptorFromHandle(m_handle);
    // Pipes and terminals have no storage device, and say so.
    if (fdatasync(descriptor) == 0 || errno == EINVAL || errno == EROFS)
        return true;
    SetLastError(ErrorFromErrno(errno));
    return false;
}

bool FileHandle::Close() const {
    // Interrupted or not, the descriptor is gone, and may be somebody else's already.
    if (close(DescriptorFromHandle(m_handle)) == 0 || errno == EINTR)
        return true;
    SetLastError(ErrorFromErrno(errno));
    return false;
}

} // namespace tavix
