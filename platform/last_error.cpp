#include "TAVIX20/platform/last_error.h"

#include <cerrno>

namespace {

thread_local DWORD t_lastError = ERROR_SUCCESS;

} // namespace

DWORD GetLastError() {
    return t_lastError;
}

void SetLastError(DWORD code) {
    t_lastError = code;
}

DWORD tavix::ErrorFromErrno(int number) {
    switch (number) {
    case 0:
        return ERROR_SUCCESS;
    case ENOENT:
        return ERROR_FILE_NOT_FOUND;
    case ENOTDIR:
        return ERROR_PATH_NOT_FOUND;
    case EMFILE:
    case ENFILE:
        return ERROR_TOO_MANY_OPEN_FILES;
    case EACCES:
    case EPERM:
    case EISDIR:
    case ELOOP:
    case ETXTBSY:
        return ERROR_ACCESS_DENIED;
    case EBADF:
        return ERROR_INVALID_HANDLE;
    case ENOMEM:
        return ERROR_NOT_ENOUGH_MEMORY;
    case EROFS:
        return ERROR_WRITE_PROTECT;
    case EWOULDBLOCK:
        return ERROR_SHARING_VIOLATION;
    case ENOSYS:
    case EOPNOTSUPP:
        return ERROR_NOT_SUPPORTED;
    case EEXIST:
        return ERROR_FILE_EXISTS;
    case EINVAL:
    case ESPIPE:
        return ERROR_INVALID_PARAMETER;
    case ENOSPC:
    case EDQUOT:
        return ERROR_DISK_FULL;
    case ENAMETOOLONG:
        return ERROR_FILENAME_EXCED_RANGE;
    case EFBIG:
    case EOVERFLOW:
        return ERROR_FILE_TOO_LARGE;
    default:
        return ERROR_GEN_FAILURE;
    }
}
