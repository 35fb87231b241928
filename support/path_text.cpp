#include "TAVIX20/support/path_text.h"

#include "TAVIX20/support/stdlib.h"
#include "TAVIX20/support/text_view.h"

#include <algorithm>

namespace tavix {

namespace {

std::size_t LastSeparator(std::string_view text) {
    const std::size_t backslash = text.rfind('\\');
    return backslash != std::string_view::npos ? backslash : text.rfind('/');
}

/// Where the "." of the extension stands in a file name; its length when it has none.
std::size_t ExtensionMark(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos || name.find_first_not_of('.') > dot ? name.size() : dot;
}

std::string Replaced(std::string_view text, char from, char to) {
    std::string result(text);
    std::replace(result.begin(), result.end(), from, to);
    return result;
}

} // namespace

std::string_view PathOf(std::string_view text) {
    return text.substr(0, LastSeparator(text));
}

std::string_view FileNameOf(std::string_view text) {
    return text.substr(LastSeparator(text) + 1); // npos + 1 is 0
}

std::string_view FileNameNoExtOf(std::string_view text) {
    const std::string_view name = FileNameOf(text);
    return name.substr(0, ExtensionMark(name));
}

std::string_view ExtOf(std::string_view text) {
    const std::string_view name = FileNameOf(text);
    return name.substr(std::min(ExtensionMark(name) + 1, name.size()));
}

std::string WithExt(std::string_view text, std::string_view extension) {
    if (extension.starts_with('.'))
        extension.remove_prefix(1);
    std::string result(text);
    if (extension.empty() || StringOf(ExtOf(text)).CompareNoCase(StringOf(extension)) == 0)
        return result;
    return result.append(1, '.').append(extension);
}

std::string UnixPathOf(std::string_view text) {
    return Replaced(text, '\\', '/');
}

std::string WindowsPathOf(std::string_view text) {
    return Replaced(text, '/', '\\');
}

} // namespace tavix

using tavix::StringOf;
using tavix::ViewOf;

CString CStdlib::GetParsePathName(const char *path) {
    return StringOf(tavix::PathOf(ViewOf(path)));
}

CString CStdlib::GetParseFileName(const char *path) {
    return StringOf(tavix::FileNameOf(ViewOf(path)));
}

CString CStdlib::GetParseFileNameNoExt(const char *path) {
    return StringOf(tavix::FileNameNoExtOf(ViewOf(path)));
}

CString CStdlib::GetParseExt(const char *path) {
    return StringOf(tavix::ExtOf(ViewOf(path)));
}

CString CStdlib::GetExtName(const char *path) {
    return GetParseExt(path);
}

CString CStdlib::GetAddExtName(const char *path, const char *extension) {
    return tavix::WithExt(ViewOf(path), ViewOf(extension));
}

CString CStdlib::ToUnixPath(const char *path) {
    return tavix::UnixPathOf(ViewOf(path));
}

CString CStdlib::ToWindowsPath(const char *path) {
    return tavix::WindowsPathOf(ViewOf(path));
}

void CStdlib::SplitPath(const char *path, CString &folder, CString &name, CString &extension) {
    const std::string whole(ViewOf(path)); // The path may be one of the results.
    const std::string_view file = tavix::FileNameOf(whole);
    folder = file.size() == whole.size() ? CString() : StringOf(tavix::PathOf(whole));
    name = StringOf(tavix::FileNameNoExtOf(whole));
    extension = StringOf(tavix::ExtOf(whole));
}
