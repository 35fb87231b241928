/// CxMemFile: an archive in memory.
#pragma once

#include "TAVIX20/support/cx_archive.h"

#include <cstdint>
#include <cstdlib>
#include <memory>

/// Bytes in one growing block, and a position. It holds at most 2 GB - 1; what would make it larger
/// fails as if memory had run out, and leaves it as it was.
///
/// Writing always appends behind the valid bytes, wherever the position stands, while the position
/// moves on from where it stood. Programs rely on it; SetCurPos is for reading.
class TAVIX_API CxMemFile : public CxArchive {
public:
    /// An empty file with room for initialCapacity bytes; none when it is negative or memory runs
    /// out.
    explicit CxMemFile(int initialCapacity = 0);
    ~CxMemFile() override;
    CxMemFile(const CxMemFile &) = delete;
    CxMemFile &operator=(const CxMemFile &) = delete;

    int Flush() override; ///< Does nothing; 1.
    /// Copies what lies between the position and the size, at most count bytes, and moves the
    /// position behind it. Returns how many; 0 when the position stands at the size or past it.
    unsigned int Read(void *buffer, unsigned int count) override;
    /// Appends count bytes, not of this file's own, and moves the position on by count; where the
    /// position then lies past the size, the size becomes the position, and zeros fill what was
    /// never written. Returns count, or 0 when memory runs out.
    unsigned int Write(const void *buffer, unsigned int count) override;
    int IsLoading() override; ///< 1.
    int IsStoring() override; ///< 1.
    /// Writes the text without its terminating zero; null counts as empty.
    virtual unsigned int WriteString(const char *text);

    /// Makes the capacity at least position bytes and sets the position; the size stays. Returns
    /// the position, or -1 and no change when it is negative or memory runs out.
    int SetCurPos(int position);
    int GetCurPos() const { return m_position; }
    int GetSize() const { return m_size; }
    /// The capacity by the rule of growth: the first block is exactly as large as asked for, later
    /// ones are rounded up to a multiple of 1024.
    int GetCapacity() const { return m_capacity; }

    /// The bytes, GetSize() of them are valid; null while there is no block. Growing moves them.
    void *GetDataPointer() const { return m_block.get(); }
    operator const void *() const { return m_block.get(); }
    operator const char *() const { return m_block.get(); }

    /// Size and position become 0; the block is kept.
    void Empty();

private:
    struct Free {
        void operator()(char *block) const { std::free(block); }
    };

    bool ExpandMemory(int capacity);
    bool Reallocate(int capacity);
    bool Allocate(int length);

    std::int32_t m_growth = 1024;
    std::int32_t m_size = 0;
    std::int32_t m_position = 0;
    std::int32_t m_capacity = 0;
    std::unique_ptr<char, Free> m_block;
    /// What the block really holds: it doubles, so that appending costs O(1) a byte.
    std::int32_t m_allocated = 0;
};
