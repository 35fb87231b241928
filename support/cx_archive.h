/// CxArchive: the byte sink and source that XML documents and programs read and write through.
#pragma once

#include "TAVIX20/platform/export.h"

/// What files and memory files have in common. Implementations never throw.
class TAVIX_API CxArchive {
public:
    /// Hands what was written to the system.
    virtual int Flush() = 0;
    /// Reads up to count bytes; returns how many were read, 0 at the end and on failure.
    virtual unsigned int Read(void *buffer, unsigned int count) = 0;
    /// Writes count bytes; returns how many were written, fewer on failure.
    virtual unsigned int Write(const void *buffer, unsigned int count) = 0;
    /// Not 0 where the archive is read from.
    virtual int IsLoading() = 0;
    /// Not 0 where the archive is written to.
    virtual int IsStoring() = 0;
    /// Both do nothing and return 0 in every class.
    virtual int Lock(int wait);
    virtual int Unlock(int wait);
    virtual ~CxArchive();
};
