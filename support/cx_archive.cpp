#include "TAVIX20/support/cx_archive.h"

int CxArchive::Lock(int) {
    return 0;
}

int CxArchive::Unlock(int) {
    return 0;
}

CxArchive::~CxArchive() = default;
