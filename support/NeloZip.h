/// CUnZipper and CZipper: zip archives.
#pragma once

#include "TAVIX20/platform/export.h"

#include <cstdint>
#include <memory>

namespace tavix {
class ZipArchive;
}

/// What an archive says of one entry.
struct UZ_FileInfo {
    /// The longest name that is told; entries with longer ones have no record.
    static constexpr int LONGEST_NAME = 1023;

    char fileName[LONGEST_NAME + 1]; ///< With its folders, "/" between them; zero-terminated.
    std::uint64_t size;              ///< In bytes, unpacked.
    std::uint64_t packedSize;        ///< In bytes, in the archive.
};

/// Reads zip archives, also hostile ones. Copies share the open archive, which is closed with the
/// last of them; opening another archive in one copy does not change the others. An archive is read
/// by one thread at a time.
class TAVIX_API CUnZipper {
public:
    /// UnzipFile writes no file larger than this, 1 GB.
    static constexpr std::int64_t LARGEST_FILE = std::int64_t{1} << 30;
    /// Nor one larger than this, 16 MB, that is more than LARGEST_RATIO times its packed size.
    static constexpr std::int64_t ANY_RATIO_UP_TO = std::int64_t{16} << 20;
    static constexpr std::int64_t LARGEST_RATIO = 200;

    /// OpenZip(path), or no archive for null.
    explicit CUnZipper(const char *path = nullptr);
    virtual ~CUnZipper();
    CUnZipper(const CUnZipper &) = default;
    CUnZipper &operator=(const CUnZipper &) = default;

    /// Opens an archive in place of the one that was open. False, and no archive is open, when the
    /// file cannot be read, is no plain file, is no zip archive or is cut off.
    bool OpenZip(const char *path);
    int GetFileCount() const; ///< The number of entries; 0 when no archive is open.
    /// Fills in the record of an entry; false, and no change, for an index that there is not and
    /// for a name too long.
    bool GetFileInfo(int index, UZ_FileInfo &info) const;

    /// Writes an entry as a file below a folder that exists, under the entry's name. Folders that
    /// the name has are made, a file that exists is replaced; an entry that is a folder is made
    /// one. The flag has no meaning.
    ///
    /// False, and no file is changed, made or left incomplete, for: an index that there is not;
    /// names that are absolute, have "..", a backslash or a drive letter, or end in "."; folders
    /// with content; links and other special files; links met on the way, which are not followed;
    /// encrypted and damaged entries, those that share bytes with others, and those packed
    /// otherwise than stored, deflated or with bzip2; entries beyond the limits above; and when the
    /// system does not let the file be written.
    bool UnzipFile(int index, const char *folder, bool flag) const;
    /// The same, under another name without folders.
    bool UnzipFileAs(int index, const char *folder, const char *name) const;

private:
    std::shared_ptr<tavix::ZipArchive> m_archive;

protected:
    char m_path[261]{}; ///< Of the open archive; empty when it does not fit.
};

/// The counterpart that writes. The library writes no archives: an object keeps its archive's path
/// for those who derive from it, opens nothing and writes nothing.
class TAVIX_API CZipper {
public:
    explicit CZipper(const char *path = nullptr, const char *rootFolder = nullptr,
                     bool flag = false);
    virtual ~CZipper();
    CZipper(const CZipper &) = default;
    CZipper &operator=(const CZipper &) = default;

protected:
    void *m_archive = nullptr;
    char m_path[261]{};
    std::int32_t m_state[3]{};
};
