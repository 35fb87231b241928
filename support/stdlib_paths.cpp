// Where the program, the library, the user's files and temporary files are.

#include "TAVIX20/support/stdlib.h"
#include "TAVIX20/support/text_view.h"

#include <QFile>
#include <QStandardPaths>

#include <cstdlib>
#include <filesystem>

#include <dlfcn.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

CString FolderOf(QStandardPaths::StandardLocation location) {
    return QFile::encodeName(QStandardPaths::writableLocation(location)).toStdString();
}

/// A name in the folder for temporary files for mkstemp and mkdtemp; "" for a prefix that leads to
/// another folder.
std::string TempTemplate(const char *prefix) {
    const std::string_view start = tavix::ViewOf(prefix);
    if (start.find('/') != std::string_view::npos)
        return {};
    return std::string(CStdlib::GetTempFolder()) + '/' + std::string(start) + "XXXXXX";
}

} // namespace

CString CStdlib::GetTempFolder() {
    std::error_code error;
    fs::path folder = fs::temp_directory_path(error);
    if (!error)
        folder = fs::absolute(folder, error).lexically_normal();
    if (error)
        return "/tmp";
    return CString((folder.has_filename() ? folder : folder.parent_path()).string());
}

CString CStdlib::GetTempFileNameA(const char *prefix) {
    std::string path = TempTemplate(prefix);
    const int file = path.empty() ? -1 : mkstemp(path.data());
    if (file < 0)
        return {};
    close(file);
    return path;
}

CString CStdlib::GetTempFolderName(const char *prefix) {
    std::string path = TempTemplate(prefix);
    return path.empty() || !mkdtemp(path.data()) ? CString() : CString(path);
}

CString CStdlib::GetInstancePath() {
    std::error_code error;
    return CString(fs::read_symlink("/proc/self/exe", error).parent_path().string());
}

CString CStdlib::GetDllPath() {
    Dl_info library{};
    const void *const inside = reinterpret_cast<const void *>(&CStdlib::GetDllPath);
    std::error_code error;
    if (dladdr(inside, &library) == 0 || !library.dli_fname)
        return {};
    return CString(fs::canonical(library.dli_fname, error).parent_path().string());
}

CString CStdlib::GetDesktopFolder() {
    return FolderOf(QStandardPaths::DesktopLocation);
}

CString CStdlib::GetMyDocumentFolder() {
    return FolderOf(QStandardPaths::DocumentsLocation);
}

CString CStdlib::GetMyMusicFolder() {
    return FolderOf(QStandardPaths::MusicLocation);
}

CString CStdlib::GetMyPictureFolder() {
    return FolderOf(QStandardPaths::PicturesLocation);
}
