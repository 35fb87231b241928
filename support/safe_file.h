/// Files that take their name only when they are complete.
#pragma once

#include "TAVIX20/platform/export.h"

#include <cstddef>
#include <string>

namespace tavix {

/// A new file under a name that nobody else uses, in a folder; it is deleted unless it is moved to
/// its final name.
class TAVIX_API TemporaryFile {
public:
    /// Creates the file in the folder of this descriptor, which must stay open for as long as the
    /// object lives. AT_FDCWD means the current folder.
    explicit TemporaryFile(int folder);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;

    /// Appends the bytes; false, with the last error set, when not all could be written, now or
    /// earlier.
    bool Write(const void *data, std::size_t size);
    /// Waits until the bytes lie on the storage device; false when any are missing.
    bool Flush();
    /// Gives the file its final name in the folder of this descriptor, on the same file system, and
    /// replaces the file that has it. A link of that name is replaced itself, not followed. False,
    /// with the last error set, when something could not be written or the name cannot be taken.
    bool MoveTo(int folder, const char *name);
    /// Takes over the access rights of a file; false when that fails.
    bool SetPermissions(unsigned int mode);

private:
    int m_folder;
    int m_descriptor = -1;
    std::string m_name; ///< Empty when there is no file to be deleted.
    bool m_isWhole = false;
};

/// Writes a file as a whole: afterwards it has the new contents, on the storage device, and true is
/// returned; or it is what it was before, or not there, the last error is set, and false is
/// returned. The access rights of a file that is replaced are kept, and a link leads to the file
/// that is written. What is not a plain file, and a file that may not be written, is not replaced.
TAVIX_API bool SaveWholeFile(const char *name, const void *data, std::size_t size);

} // namespace tavix
