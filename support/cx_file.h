/// CxFile: an archive in a file.
#pragma once

#include "TAVIX20/support/cx_archive.h"

class CxString;

/// A file that is read and written through the system, without a buffer of its own. Operations that
/// fail leave the reason in GetLastError. Numbers are 4 bytes in files, the lowest first.
///
/// Sharing is advisory: files opened through this library respect each other's wish, other programs
/// do not notice (see FileHandle::Open in platform/file_handle.h).
class TAVIX_API CxFile : public CxArchive {
public:
    /// The flags of Open. One access, one kind of sharing, and any of the last three.
    enum OpenFlags : unsigned int {
        modeRead = 0,
        modeWrite = 1,
        modeReadWrite = 2,
        shareCompat = 0,
        shareExclusive = 0x10,
        shareDenyWrite = 0x20,  ///< Others may read.
        shareDenyRead = 0x30,   ///< Others may write.
        shareDenyNone = 0x40,   ///< Others may read and write.
        modeNoInherit = 0x80,   ///< Programs that are started do not get the file.
        modeCreate = 0x1000,    ///< The file is created, or emptied where it exists.
        modeNoTruncate = 0x2000 ///< With modeCreate: a file that exists keeps its contents.
    };

    CxFile(); ///< A closed file.
    /// Wraps the handle of an open file, which stays the caller's to close. Neither loading nor
    /// storing, but both work as far as the handle allows. tavix::HandleFromDescriptor of
    /// platform/file_handle.h makes a handle.
    CxFile(void *handle);
    /// Opens an existing file for reading, sharing nothing. When that fails, the file counts as
    /// open all the same, as programs expect of this constructor; only that nothing can be read
    /// from it.
    CxFile(const char *name);
    CxFile(const char *name, unsigned int flags); ///< Open(name, flags).
    ~CxFile() override;                           ///< Close().
    CxFile(const CxFile &) = delete;
    CxFile &operator=(const CxFile &) = delete;

    /// Waits until what was written lies on the storage device; 1, or 0 on failure and when closed.
    int Flush() override;
    unsigned int Read(void *buffer, unsigned int count) override;
    unsigned int Write(const void *buffer, unsigned int count) override;
    int IsLoading() override; ///< 1 when opened for reading only.
    int IsStoring() override; ///< 1 when opened for writing, or for both.

    /// The position; -1 as unsigned on failure.
    virtual unsigned long GetPosition();
    /// Closes the file that was open and opens another, OpenFlags say how; 1, or 0 and closed on
    /// failure.
    virtual int Open(const char *name, unsigned int flags);
    /// Flushes a file that was opened for writing, closes the handle if it was opened here, and
    /// forgets it in any case. The destructor does the same, but with the Flush of this class.
    virtual void Close();
    /// Moves the position, from 0 the beginning, 1 where it is, 2 the end; returns the new one, or
    /// -1 and no change.
    virtual long Seek(long offset, unsigned int from);
    /// Seeks to length and ends the file there, longer or shorter; 1, or 0 on failure.
    virtual int SetLength(unsigned long length);
    /// Leaves the position at the end of the file, which is the length; -1 as unsigned on failure
    /// and when closed. Callers seek back themselves.
    virtual unsigned long GetLength();

    long SeekToBegin() { return Seek(0, 0); }
    long SeekToEnd() { return Seek(0, 2); }
    int IsOpen() const { return m_handle != nullptr ? 1 : 0; }

    /// Read 4 bytes, the second one without a sign; false, and no change, where there are fewer.
    bool Read(int &value);
    bool Read(unsigned long &value);
    /// Appends the text that Write(CxString &) wrote; false, and no change, where it is incomplete
    /// or its length negative.
    bool Read(CxString &text);
    /// Write the lowest 4 bytes; true when all were written.
    bool Write(int &value);
    bool Write(unsigned long &value);
    /// Writes the length as 4 bytes, then the characters; true when all were written.
    bool Write(CxString &text);

private:
    int m_isLoading = 0;
    void *m_handle = nullptr;
    unsigned int m_access = 0;
    int m_ownsHandle = 0;
};
