// Files and folders. Paths are the system's own: "/" separates, and no byte is converted.

#include "TAVIX20/platform/collections.h"
#include "TAVIX20/support/stdlib.h"
#include "TAVIX20/support/text_view.h"
#include "TAVIX20/support/wildcard.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <optional>
#include <vector>

namespace fs = std::filesystem;

namespace {

fs::path PathFrom(const char *path) {
    return tavix::ViewOf(path);
}

/// When the file was changed, counted from any fixed time: whole seconds, since the difference of
/// two times in nanoseconds need not fit.
std::optional<std::int64_t> SecondsOf(const char *path) {
    std::error_code error;
    const fs::file_time_type time = fs::last_write_time(PathFrom(path), error);
    if (error)
        return std::nullopt;
    return std::chrono::floor<std::chrono::seconds>(time.time_since_epoch()).count();
}

/// The files that the last part of the pattern matches, in byte order; links count as what they
/// lead to, and a link that leads nowhere as a file.
std::vector<fs::path> FilesMatching(const char *pattern) {
    const fs::path whole = PathFrom(pattern);
    const std::string name = whole.filename().string();
    const fs::path folder = whole.has_parent_path() ? whole.parent_path() : fs::path(".");
    std::vector<fs::path> files;
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        std::error_code unknown;
        const fs::path file = entry->path().filename();
        if (!entry->is_directory(unknown) && tavix::MatchesWildcards(file.native(), name))
            files.push_back(whole.parent_path() / file);
    }
    std::sort(files.begin(), files.end());
    return files;
}

/// A folder that may be removed with all it holds: it is given by its name, is no link, and is
/// neither the root nor the current folder or one around it.
bool IsRemovable(const fs::path &folder) {
    std::error_code error;
    if (folder.filename() == "." || folder.filename() == ".." ||
        fs::symlink_status(folder, error).type() != fs::file_type::directory)
        return false;
    const fs::path real = fs::canonical(folder, error);
    if (error || real == real.root_path())
        return false;
    const fs::path current = fs::current_path(error);
    return error || std::mismatch(real.begin(), real.end(), current.begin(), current.end()).first !=
                        real.end();
}

} // namespace

int CStdlib::FileExist(const char *path) {
    std::error_code error;
    const fs::file_status status = fs::status(PathFrom(path), error);
    return fs::exists(status) && !fs::is_directory(status) ? 1 : 0;
}

long CStdlib::FileLength(const char *path) {
    std::error_code error;
    const std::uintmax_t length = fs::file_size(PathFrom(path), error);
    return error ? -1 : static_cast<long>(length);
}

long CStdlib::GetFileTimeDiff(const char *first, const char *second) {
    const auto firstTime = SecondsOf(first);
    const auto secondTime = SecondsOf(second);
    return firstTime && secondTime ? static_cast<long>(*firstTime - *secondTime) : 0;
}

int CStdlib::ExistFolder(const char *path) {
    std::error_code error;
    return fs::is_directory(PathFrom(path), error) ? 1 : 0;
}

int CStdlib::MakeFolder(const char *path) {
    std::error_code error;
    fs::create_directories(PathFrom(path), error);
    return ExistFolder(path);
}

int CStdlib::RemoveFolder(const char *path) {
    fs::path folder = PathFrom(path);
    while (!folder.has_filename() && folder.has_relative_path())
        folder = folder.parent_path(); // With a separator behind it a link would be followed.
    if (!IsRemovable(folder))
        return 0;
    std::error_code error;
    fs::remove_all(folder, error);
    return error ? 0 : 1;
}

CString CStdlib::GetFileVersion(const char *path) {
    constexpr std::string_view mark = ".so.";
    std::error_code error;
    const std::string name = fs::canonical(PathFrom(path), error).filename().string();
    const std::size_t found = name.rfind(mark);
    const std::string version =
        found != std::string::npos ? name.substr(found + mark.size()) : std::string();
    return version.find_first_not_of("0123456789.") == std::string::npos ? version : CString();
}

int CStdlib::DeleteFiles(const char *pattern) {
    int deleted = 0;
    for (const fs::path &file : FilesMatching(pattern)) {
        std::error_code error;
        deleted += fs::remove(file, error) ? 1 : 0;
    }
    return deleted;
}

int CStdlib::GetFindFiles(const char *pattern, CStringArray &files) {
    const std::vector<fs::path> found = FilesMatching(pattern);
    for (const fs::path &file : found)
        files.Add(file.native());
    return static_cast<int>(found.size());
}

int CStdlib::GetFileCount(const char *pattern) {
    return static_cast<int>(FilesMatching(pattern).size());
}

int CStdlib::CreateLink(const char *target, const char *link) {
    std::error_code error;
    fs::create_symlink(PathFrom(target), PathFrom(link), error);
    return error ? 0 : 1;
}

int CStdlib::LogWrite(const char *path, const char *text) {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char time[32];
    const std::size_t length = std::strftime(time, sizeof time, "%Y-%m-%d %H:%M:%S ", &local);
    std::string line(time, length);
    line.append(tavix::ViewOf(text)).append("\r\n");
    std::ofstream file(PathFrom(path), std::ios::binary | std::ios::app);
    file.write(line.data(), static_cast<std::streamsize>(line.size())).flush();
    return file.good() ? 1 : 0;
}
