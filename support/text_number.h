/// Numbers read from text and written as text, the same in every locale.
///
/// The readers take the number at the start of the text, white space before it skipped, whatever
/// follows; 0 when there is none or text is null.
#pragma once

#include "TAVIX20/platform/export.h"

#include <string>

namespace tavix {

/// Decimal, with an optional sign. A number beyond the type's range gives the nearest in it.
TAVIX_API int ReadInt(const char *text);
TAVIX_API long ReadLong(const char *text);

/// What atof reads in the "C" locale: decimal or hexadecimal, "inf", "nan". A number beyond the
/// range gives an infinity, one that is too small 0 or the nearest denormal.
TAVIX_API double ReadDouble(const char *text);

/// The same, but false and no change where the text starts with no number.
bool QueryInt(const char *text, int &value);
bool QueryDouble(const char *text, double &value);

std::string WriteLong(long value);

/// The fewest digits that read back as exactly this value. Without exponent from 1e-5 up to below
/// 1e17; "inf", "-inf", "nan" for what is no number.
std::string WriteDouble(double value);

/// What printf's "%f" writes in the "C" locale.
std::string WriteFixed(double value);

} // namespace tavix
