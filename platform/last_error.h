/// The last error of the calling thread, as the numbers that programs of this interface know.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/types.h"

inline constexpr DWORD ERROR_SUCCESS = 0;
inline constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
inline constexpr DWORD ERROR_PATH_NOT_FOUND = 3; ///< A folder on the way to the file is missing.
inline constexpr DWORD ERROR_TOO_MANY_OPEN_FILES = 4;
inline constexpr DWORD ERROR_ACCESS_DENIED = 5; ///< Forbidden, or a folder where a file is needed.
inline constexpr DWORD ERROR_INVALID_HANDLE = 6;
inline constexpr DWORD ERROR_NOT_ENOUGH_MEMORY = 8;
inline constexpr DWORD ERROR_WRITE_PROTECT = 19;
inline constexpr DWORD ERROR_GEN_FAILURE = 31;       ///< What has no number of its own.
inline constexpr DWORD ERROR_SHARING_VIOLATION = 32; ///< Another program does not share the file.
inline constexpr DWORD ERROR_NOT_SUPPORTED = 50;
inline constexpr DWORD ERROR_FILE_EXISTS = 80;
inline constexpr DWORD ERROR_INVALID_PARAMETER = 87;
inline constexpr DWORD ERROR_DISK_FULL = 112;
inline constexpr DWORD ERROR_NEGATIVE_SEEK = 131; ///< A position before the beginning of the file.
inline constexpr DWORD ERROR_FILENAME_EXCED_RANGE = 206;
inline constexpr DWORD ERROR_FILE_TOO_LARGE = 223;

/// The code that the calling thread's last failed operation left. Operations that succeed leave it
/// as it was. Every thread starts with ERROR_SUCCESS.
TAVIX_API DWORD GetLastError();

/// Sets the calling thread's code.
TAVIX_API void SetLastError(DWORD code);

namespace tavix {

/// The code for a value of errno; ERROR_GEN_FAILURE for those without one.
TAVIX_API DWORD ErrorFromErrno(int number);

} // namespace tavix
