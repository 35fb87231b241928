/// CxStdString and CxOStream: the string and the output stream in memory of the XML classes.
#pragma once

#include "TAVIX20/support/cx_string.h"

/// A CxString by another name, with all of its operations.
class CxStdString : public CxString {
public:
    using CxString::CxString;
    using CxString::operator=;
    CxStdString() = default;
    CxStdString(CString text) : CxString(std::move(text)) {}

    const char *c_str() const { return GetString(); }
    int length() const { return GetLength(); }
    bool empty() const { return IsEmpty(); }
    /// Appends the first count bytes, which may include zeros.
    CxStdString &append(const char *text, int count) {
        *this += CString(text, count);
        return *this;
    }
};

/// Text that grows by what is put into it.
class CxOStream : public CxStdString {
public:
    using CxStdString::CxStdString;

    CxOStream &operator<<(const CString &text) {
        *this += text;
        return *this;
    }
    CxOStream &operator<<(const char *text) {
        *this += text;
        return *this;
    }
};
