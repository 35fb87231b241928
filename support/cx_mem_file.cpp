#include "TAVIX20/support/cx_mem_file.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::int32_t LARGEST = INT32_MAX;

} // namespace

CxMemFile::CxMemFile(int initialCapacity) {
    if (initialCapacity > 0)
        ExpandMemory(initialCapacity);
}

CxMemFile::~CxMemFile() = default;

int CxMemFile::Flush() {
    return 1;
}

int CxMemFile::IsLoading() {
    return 1;
}

int CxMemFile::IsStoring() {
    return 1;
}

unsigned int CxMemFile::Read(void *buffer, unsigned int count) {
    if (buffer == nullptr || m_position >= m_size)
        return 0;
    const unsigned int read = std::min(count, static_cast<unsigned int>(m_size - m_position));
    std::memcpy(buffer, m_block.get() + m_position, read);
    m_position += static_cast<std::int32_t>(read);
    return read;
}

unsigned int CxMemFile::Write(const void *buffer, unsigned int count) {
    if (buffer == nullptr || count == 0)
        return 0;
    if (count > static_cast<unsigned int>(LARGEST - std::max(m_size, m_position)))
        return 0;
    const auto length = static_cast<std::int32_t>(count);
    if (m_capacity - m_size < length &&
        (length > LARGEST - m_capacity || !ExpandMemory(m_capacity + length)))
        return 0;
    // The position may stand anywhere up to the capacity, and what lies before it becomes valid.
    const std::int32_t position = m_position + length;
    if (!ExpandMemory(position))
        return 0;

    const std::int32_t end = m_size + length;
    std::memcpy(m_block.get() + m_size, buffer, count);
    if (position > end)
        std::memset(m_block.get() + end, 0, static_cast<std::size_t>(position - end));
    m_position = position;
    m_size = std::max(m_size, m_position);
    return count;
}

unsigned int CxMemFile::WriteString(const char *text) {
    if (text == nullptr)
        return 0;
    const std::size_t length = std::strlen(text);
    return length <= LARGEST ? Write(text, static_cast<unsigned int>(length)) : 0;
}

int CxMemFile::SetCurPos(int position) {
    if (position < 0 || !ExpandMemory(position))
        return -1;
    m_position = position;
    return position;
}

void CxMemFile::Empty() {
    m_size = 0;
    m_position = 0;
}

/// Makes the capacity at least this many bytes. A capacity that cannot be told fails and changes
/// nothing; memory that runs out loses the bytes.
bool CxMemFile::ExpandMemory(int capacity) {
    if (m_capacity >= capacity)
        return true;
    if (m_block == nullptr)
        return Reallocate(capacity);
    const std::int32_t excess = capacity % m_growth;
    if (excess == 0)
        return Reallocate(capacity);
    return capacity - excess <= LARGEST - m_growth && Reallocate(capacity - excess + m_growth);
}

bool CxMemFile::Reallocate(int capacity) {
    if (capacity > m_allocated) {
        const std::int32_t doubled = m_allocated > LARGEST / 2 ? LARGEST : m_allocated * 2;
        if (!Allocate(std::max(doubled, capacity)) && !Allocate(capacity)) {
            m_block.reset();
            m_size = m_position = m_capacity = m_allocated = 0;
            return false;
        }
    }
    m_capacity = capacity;
    return true;
}

/// Changes the block's own length; the block stays as it is when memory runs out.
bool CxMemFile::Allocate(int length) {
    void *const block = std::realloc(m_block.get(), static_cast<std::size_t>(length));
    if (block == nullptr)
        return false;
    static_cast<void>(m_block.release());
    m_block.reset(static_cast<char *>(block));
    m_allocated = length;
    return true;
}
