#include "TAVIX20/support/drawing_document.h"

#include "TAVIX20/support/NeloZip.h"
#include "TAVIX20/support/cx_xml.h"
#include "TAVIX20/support/stdlib.h"

#include <unistd.h>

namespace tavix {

namespace {

constexpr char CONTENT_FILE[] = "Content.xml";

/// The index of the first entry with the content's name; -1 when there is none.
int FindContent(const CUnZipper &archive) {
    UZ_FileInfo info;
    for (int i = 0; i < archive.GetFileCount(); ++i)
        if (archive.GetFileInfo(i, info) && CString(info.fileName).CompareNoCase(CONTENT_FILE) == 0)
            return i;
    return -1;
}

} // namespace

bool LoadDrawingContent(const char *archivePath, const CString &temporaryFolder,
                        const ContentLoader &load) {
    const CString contentPath = temporaryFolder + "/" + CONTENT_FILE;
    CUnZipper archive;
    if (!archive.OpenZip(archivePath))
        return false;
    const int content = FindContent(archive);
    if (content != -1 && !archive.UnzipFileAs(content, temporaryFolder, CONTENT_FILE))
        return false;
    if (!load(contentPath))
        return false;
    unlink(contentPath);
    return true;
}

bool LoadDrawingDocument(const char *archivePath, CxXmlDocument &document) {
    return LoadDrawingContent(archivePath, CStdlib::GetTempFolder(), [&](const CString &path) {
        return document.LoadFile(path, CXXML_ENCODING_UNKNOWN) != 0;
    });
}

} // namespace tavix
