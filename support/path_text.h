/// Paths taken apart as text, without looking at any file.
///
/// The separator of a path is "\" where it holds one, else "/". Dots at the start of a file name
/// belong to the name: ".profile" and ".." have no extension.
#pragma once

#include <string>
#include <string_view>

namespace tavix {

/// What stands before the last separator; the whole text when there is none.
std::string_view PathOf(std::string_view text);
/// What stands behind the last separator; the whole text when there is none.
std::string_view FileNameOf(std::string_view text);
/// The file name up to its last "."; the whole file name when it has no extension.
std::string_view FileNameNoExtOf(std::string_view text);
/// What stands behind the last "." of the file name, without it.
std::string_view ExtOf(std::string_view text);
/// The text, with "." and the extension behind it unless it has this extension already, in upper or
/// lower case. A "." at the start of the extension does not count; an empty one adds nothing.
std::string WithExt(std::string_view text, std::string_view extension);

std::string UnixPathOf(std::string_view text);    ///< Every "\" becomes "/".
std::string WindowsPathOf(std::string_view text); ///< Every "/" becomes "\".

} // namespace tavix
