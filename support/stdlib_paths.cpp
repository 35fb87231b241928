// Where the program, the library and the user's files are.

#include "TAVIX20/support/stdlib.h"

#include <filesystem>

CString CStdlib::GetTempFolder() {
    std::error_code error;
    std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    if (!error)
        folder = std::filesystem::absolute(folder, error).lexically_normal();
    if (error)
        return "/tmp";
    if (!folder.has_filename() && folder.has_relative_path())
        folder = folder.parent_path();
    return CString(folder.string());
}
