/// CStdlib: the static helpers that the library and its host programs share.
#pragma once

#include "TAVIX20/platform/cstring.h"
#include "TAVIX20/platform/export.h"

/// Null text counts as the empty text everywhere. Nothing depends on the locale.
class TAVIX_API CStdlib {
public:
    /// Number of processors that this process may run on; at least 1.
    static int GetNumOfProcessors();

    /// Euclidean distance of two points, computed in double precision and truncated toward 0.
    static long Distance(int x1, int y1, int x2, int y2);

    // Token strings: entries of a key, "=" and a value, separated by ";". The first occurrence of
    // the key anywhere in the text counts, even inside another key's name; case counts. The empty
    // key is found at the start of every text.

    /// The value stored for the key; "" when there is none.
    static CString GetTokenValue(const char *text, const char *key);
    /// The text with "key=value" at its end; the entry that held the key before is removed. An
    /// entry whose value is empty is not, so the key then stands twice.
    static CString SetTokenValue(const char *text, const char *key, const char *value);
    /// The text without what goes from the key through the next ";", or through the end.
    static CString RemoveTokenValue(const char *text, const char *key);

    /// The folder for temporary files, absolute and without a separator at its end.
    static CString GetTempFolder();
};
