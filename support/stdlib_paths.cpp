// Where the program, the library, the user's files and temporary files are.

#include "TAVIX20/support/stdlib.h"
#include "TAVIX20/support/text_view.h"

#include <QFile>
#include <QStandardPaths>

#include <cstdlib>
#include <filesystem>

#include <dlfcn.h>
#include <gnu/libc-version.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

CString FolderOf(QStandardPaths::StandardLocation location) {
    return QFile::encodeName(QStandardPaths::writableLocation(location)).toStdString();
}

/// The folder of the library or program that holds this address.
CString FolderAround(const void *inside) {
    Dl_info library{};
    std::error_code error;
    if (dladdr(inside, &library) == 0 || !library.dli_fname)
        return {};
    return CString(fs::canonical(library.dli_fname, error).parent_path().string());
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
    return FolderAround(reinterpret_cast<const void *>(&CStdlib::GetDllPath));
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

CString CStdlib::GetProgramFilesFolder() {
    return "/opt";
}

CString CStdlib::GetSystemFolder() {
    return FolderAround(gnu_get_libc_version()); // a text inside of the library
}

CString CStdlib::GetWindowsFolder() {
    return "/usr";
}

CString CStdlib::GetWindowsFontFolder() {
    return "/usr/share/fonts";
}

CString CStdlib::GetShellFolder(int number) {
    switch (number) {
    case CSIDL_DESKTOP:
    case CSIDL_DESKTOPDIRECTORY:
        return GetDesktopFolder();
    case CSIDL_PERSONAL:
        return GetMyDocumentFolder();
    case CSIDL_MYMUSIC:
        return GetMyMusicFolder();
    case CSIDL_MYVIDEO:
        return FolderOf(QStandardPaths::MoviesLocation);
    case CSIDL_FONTS:
        return GetWindowsFontFolder();
    case CSIDL_APPDATA:
        return FolderOf(QStandardPaths::GenericConfigLocation);
    case CSIDL_LOCAL_APPDATA:
        return FolderOf(QStandardPaths::GenericDataLocation);
    case CSIDL_WINDOWS:
        return GetWindowsFolder();
    case CSIDL_SYSTEM:
        return GetSystemFolder();
    case CSIDL_PROGRAM_FILES:
        return GetProgramFilesFolder();
    case CSIDL_MYPICTURES:
        return GetMyPictureFolder();
    case CSIDL_PROFILE:
        return FolderOf(QStandardPaths::HomeLocation);
    default:
        return {};
    }
}
