/// Files by handle: the one place that knows access, sharing, inheritance and creation of files.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/types.h"

/// What an open file is passed around as. It carries the number of a file descriptor, so that it
/// needs no memory, and a handle that was closed already makes operations fail, no worse. A program
/// makes one of its own descriptor with tavix::HandleFromDescriptor. Null stands for no file.
using HANDLE = void *;

/// What a failed open gives.
inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(std::intptr_t{-1});

inline constexpr DWORD GENERIC_READ = 0x80000000;
inline constexpr DWORD GENERIC_WRITE = 0x40000000;
inline constexpr DWORD FILE_SHARE_READ = 1;
inline constexpr DWORD FILE_SHARE_WRITE = 2;

namespace tavix {

/// The handle of a descriptor, which stays the caller's to close; a negative one gives
/// INVALID_HANDLE_VALUE.
TAVIX_API HANDLE HandleFromDescriptor(int descriptor);
/// The descriptor of a handle; a negative number for null and INVALID_HANDLE_VALUE.
TAVIX_API int DescriptorFromHandle(HANDLE handle);

/// What is done about a file that exists, and about one that does not.
enum class FileCreation {
    CreateAlways, ///< Emptied; created.
    OpenExisting, ///< Opened; fails.
    OpenAlways    ///< Opened; created.
};

/// How a file is opened.
struct FileMode {
    DWORD access = GENERIC_READ;                      ///< GENERIC_READ, GENERIC_WRITE or both.
    DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE; ///< FILE_SHARE_ flags; 0 shares nothing.
    bool isInherited = false;                         ///< Whether programs that are started get it.
    FileCreation creation = FileCreation::OpenExisting;
};

/// The operations on a handle. A FileHandle is as little an owner as the handle itself: copies are
/// the same file, and whoever opened it closes it. Failures set the last error.
class TAVIX_API FileHandle {
public:
    FileHandle() = default;
    explicit FileHandle(HANDLE handle) : m_handle(handle) {}

    /// Opens a file; INVALID_HANDLE_VALUE on failure. A folder is not a file (ERROR_ACCESS_DENIED).
    /// A named pipe opens at once: for reading also without a writer, and then is at its end; for
    /// writing only where somebody reads.
    ///
    /// Sharing is an advisory lock on the whole file: a shared one, or an exclusive one when
    /// nothing is shared. Two opens conflict (ERROR_SHARING_VIOLATION) when one of them is
    /// exclusive, also within one program, and the loser leaves the file unchanged. The system has
    /// no notion of sharing for reading or writing only, and a program that takes no lock is not
    /// kept out. File systems without locks share everything.
    static FileHandle Open(const char *name, const FileMode &mode);

    HANDLE Get() const { return m_handle; }
    /// Neither null nor INVALID_HANDLE_VALUE.
    bool IsValid() const { return m_handle != nullptr && m_handle != INVALID_HANDLE_VALUE; }

    /// Transfer up to count bytes at the file's position; return how many. Read returns fewer at
    /// the end of the file, and as soon as there are some where it is a pipe.
    unsigned int Read(void *buffer, unsigned int count) const;
    unsigned int Write(const void *buffer, unsigned int count) const;
    /// Moves the position, from 0 the beginning, 1 where it is, 2 the end; returns the new one, or
    /// -1 and no change.
    long Seek(long offset, unsigned int from) const;
    /// The file ends at its position from now on, longer or shorter.
    bool SetEnd() const;
    /// Waits until what was written lies on the storage device, where the file has one.
    bool Flush() const;
    bool Close() const;

private:
    HANDLE m_handle = nullptr;
};

} // namespace tavix
