/// CxString: the string that CxFile reads and writes and that XML is printed with.
#pragma once

#include "TAVIX20/platform/cstring.h"

#include <utility>

/// A CString by another name, with all of its operations; both convert to each other.
class CxString : public CString {
public:
    using CString::CString;
    using CString::operator=;
    CxString() = default;
    CxString(CString text) : CString(std::move(text)) {}
};
