#include "TAVIX20/support/NeloZip.h"

#include "TAVIX20/support/zip_archive.h"

#include <cstring>
#include <new>

namespace {

/// Keeps a path where it fits; null counts as empty.
template <std::size_t Size>
void KeepPath(char (&kept)[Size], const char *path) {
    const std::size_t length = path != nullptr ? std::strlen(path) : 0;
    std::memset(kept, 0, Size);
    if (length < Size)
        std::memcpy(kept, path != nullptr ? path : "", length);
}

} // namespace

CUnZipper::CUnZipper(const char *path) {
    if (path != nullptr)
        OpenZip(path);
}

CUnZipper::~CUnZipper() = default;

bool CUnZipper::OpenZip(const char *path) {
    try {
        m_archive = tavix::ZipArchive::Open(path);
    } catch (const std::bad_alloc &) {
        m_archive.reset();
    }
    KeepPath(m_path, m_archive ? path : nullptr);
    return m_archive != nullptr;
}

int CUnZipper::GetFileCount() const {
    return m_archive ? m_archive->GetCount() : 0;
}

bool CUnZipper::GetFileInfo(int index, UZ_FileInfo &info) const {
    const auto entry = m_archive ? m_archive->GetEntry(index) : std::nullopt;
    if (!entry || entry->name.size() > UZ_FileInfo::LONGEST_NAME)
        return false;
    info = {};
    std::memcpy(info.fileName, entry->name.data(), entry->name.size());
    info.size = entry->size;
    info.packedSize = entry->packedSize;
    return true;
}

bool CUnZipper::UnzipFile(int index, const char *folder, bool) const {
    return m_archive && m_archive->Extract(index, folder);
}

bool CUnZipper::UnzipFileAs(int index, const char *folder, const char *name) const {
    return m_archive && name != nullptr && m_archive->ExtractAs(index, folder, name);
}

CZipper::CZipper(const char *path, const char *, bool) {
    KeepPath(m_path, path);
}

CZipper::~CZipper() = default;
