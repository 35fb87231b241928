/// A zip archive that is read, from hands that need not be trusted.
#pragma once

#include "TAVIX20/platform/export.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

struct zip;

namespace tavix {

/// What an entry's name says, for names that stay below a folder.
struct EntryPath {
    std::vector<std::string> folders; ///< From the top downwards.
    std::string file;                 ///< Empty when the entry is a folder.
};

/// Takes an entry's name apart. Nothing for names that lead elsewhere or mean different things on
/// different systems: empty and absolute ones, those with "..", a backslash or a drive letter,
/// those that end in ".", and those with a part that no file system takes.
TAVIX_API std::optional<EntryPath> SplitEntryName(const std::string &name);

class ZipArchive {
public:
    /// Opens a file; null when it is not a plain file, not a zip archive, or one whose directory
    /// can be read in two ways.
    static std::shared_ptr<ZipArchive> Open(const char *path);
    ZipArchive(const ZipArchive &) = delete;
    ZipArchive &operator=(const ZipArchive &) = delete;

    int GetCount() const { return static_cast<int>(m_isSound.size()); }

    struct Entry {
        std::string name; ///< The bytes of the archive, not converted.
        unsigned long size = 0;
        unsigned long packedSize = 0;
    };
    /// What the directory says; nothing for an index outside it.
    std::optional<Entry> GetEntry(int index) const;

    /// Writes an entry below a folder that exists, under its own name. See CUnZipper::UnzipFile.
    bool Extract(int index, const char *folder) const;
    /// The same as a file of this name, a plain one, in the folder.
    bool ExtractAs(int index, const char *folder, const std::string &name) const;

private:
    struct Discard {
        void operator()(zip *archive) const;
    };

    ZipArchive() = default;
    bool IsAccepted(int index) const;
    bool ExtractTo(int index, const char *folder, const EntryPath &path) const;

    std::unique_ptr<zip, Discard> m_zip;
    std::vector<bool> m_isSound; ///< By entry: shares no byte with another one.
};

} // namespace tavix
