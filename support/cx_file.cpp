#include "TAVIX20/support/cx_file.h"

#include "TAVIX20/platform/file_handle.h"
#include "TAVIX20/platform/last_error.h"
#include "TAVIX20/support/cx_string.h"

#include <algorithm>
#include <bit>
#include <climits>
#include <new>
#include <string>

using tavix::FileCreation;
using tavix::FileHandle;
using tavix::FileMode;

static_assert(std::endian::native == std::endian::little, "numbers are stored as they are");

namespace {

DWORD AccessOf(unsigned int flags) {
    switch (flags & 3) {
    case CxFile::modeRead:
        return GENERIC_READ;
    case CxFile::modeWrite:
        return GENERIC_WRITE;
    case CxFile::modeReadWrite:
        return GENERIC_READ | GENERIC_WRITE;
    default:
        return 0;
    }
}

DWORD ShareOf(unsigned int flags) {
    switch (flags & 0x70) {
    case CxFile::shareDenyWrite:
        return FILE_SHARE_READ;
    case CxFile::shareDenyRead:
        return FILE_SHARE_WRITE;
    case CxFile::shareDenyNone:
        return FILE_SHARE_READ | FILE_SHARE_WRITE;
    default:
        return 0;
    }
}

FileCreation CreationOf(unsigned int flags) {
    if ((flags & CxFile::modeCreate) == 0)
        return FileCreation::OpenExisting;
    return (flags & CxFile::modeNoTruncate) != 0 ? FileCreation::OpenAlways
                                                 : FileCreation::CreateAlways;
}

/// What of a text is asked for at a time, so that a false length costs no memory.
constexpr std::size_t TEXT_PIECE = std::size_t{1} << 16;

} // namespace

CxFile::CxFile() = default;

CxFile::CxFile(void *handle) : m_isLoading(1), m_handle(handle) {}

CxFile::CxFile(const char *name)
    : m_isLoading(1),
      m_handle(FileHandle::Open(name, {.share = 0, .isInherited = true}).Get()),
      m_access(GENERIC_READ),
      m_ownsHandle(1) {}

CxFile::CxFile(const char *name, unsigned int flags) {
    CxFile::Open(name, flags);
}

CxFile::~CxFile() {
    CxFile::Close();
}

int CxFile::Open(const char *name, unsigned int flags) {
    Close();
    const DWORD access = AccessOf(flags);
    m_isLoading = access == GENERIC_READ ? 1 : 0;
    const FileHandle file = FileHandle::Open(name, {.access = access,
                                                    .share = ShareOf(flags),
                                                    .isInherited = (flags & modeNoInherit) == 0,
                                                    .creation = CreationOf(flags)});
    if (!file.IsValid())
        return 0;
    m_handle = file.Get();
    m_access = access;
    m_ownsHandle = 1;
    return 1;
}

void CxFile::Close() {
    if (m_handle != nullptr && (m_access & GENERIC_WRITE) != 0)
        Flush();
    if (const FileHandle file(m_handle); m_ownsHandle != 0 && file.IsValid())
        file.Close();
    m_handle = nullptr;
    m_access = 0;
    m_ownsHandle = 0;
}

int CxFile::Flush() {
    return m_handle != nullptr && FileHandle(m_handle).Flush() ? 1 : 0;
}

unsigned int CxFile::Read(void *buffer, unsigned int count) {
    return FileHandle(m_handle).Read(buffer, count);
}

unsigned int CxFile::Write(const void *buffer, unsigned int count) {
    return FileHandle(m_handle).Write(buffer, count);
}

int CxFile::IsLoading() {
    return m_handle != nullptr && (m_access & GENERIC_READ) != 0 ? m_isLoading : 0;
}

int CxFile::IsStoring() {
    return m_handle != nullptr && (m_access & GENERIC_WRITE) != 0 && m_isLoading == 0 ? 1 : 0;
}

unsigned long CxFile::GetPosition() {
    return static_cast<unsigned long>(FileHandle(m_handle).Seek(0, 1));
}

long CxFile::Seek(long offset, unsigned int from) {
    return FileHandle(m_handle).Seek(offset, from);
}

int CxFile::SetLength(unsigned long length) {
    if (length > LONG_MAX) {
        SetLastError(ERROR_NEGATIVE_SEEK);
        return 0;
    }
    return Seek(static_cast<long>(length), 0) != -1 && FileHandle(m_handle).SetEnd() ? 1 : 0;
}

unsigned long CxFile::GetLength() {
    return static_cast<unsigned long>(m_handle != nullptr ? SeekToEnd() : -1);
}

bool CxFile::Read(int &value) {
    int read = 0;
    if (Read(&read, sizeof read) != sizeof read)
        return false;
    value = read;
    return true;
}

bool CxFile::Read(unsigned long &value) {
    unsigned int read = 0;
    if (Read(&read, sizeof read) != sizeof read)
        return false;
    value = read;
    return true;
}

bool CxFile::Read(CxString &text) try {
    int length = 0;
    if (!Read(length) || length < 0 || length > INT_MAX - text.GetLength())
        return false;
    const auto wanted = static_cast<std::size_t>(length);
    std::string read;
    while (read.size() < wanted) {
        const std::size_t start = read.size();
        const std::size_t piece = std::min(wanted - start, TEXT_PIECE);
        read.resize(start + piece);
        if (Read(read.data() + start, static_cast<unsigned int>(piece)) != piece)
            return false;
    }
    text += CString(std::move(read));
    return true;
} catch (const std::bad_alloc &) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return false;
}

bool CxFile::Write(int &value) {
    return Write(&value, sizeof value) == sizeof value;
}

bool CxFile::Write(unsigned long &value) {
    const auto written = static_cast<unsigned int>(value);
    return Write(&written, sizeof written) == sizeof written;
}

bool CxFile::Write(CxString &text) {
    int length = text.GetLength();
    const auto count = static_cast<unsigned int>(length);
    return Write(length) && Write(text.GetString(), count) == count;
}
