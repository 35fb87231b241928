// CxXmlDocument: loading and saving.

#include "TAVIX20/support/cx_xml_document.h"

#include "TAVIX20/support/cx_file.h"
#include "TAVIX20/support/cx_mem_file.h"
#include "TAVIX20/support/cx_xml_error.h"
#include "TAVIX20/support/cx_xml_scan.h"
#include "TAVIX20/support/cx_xml_tree.h"

#include <algorithm>
#include <climits>
#include <exception>
#include <vector>

namespace {

/// A file is taken in pieces of this size, each up to its first zero.
constexpr std::size_t PIECE = 2047;
/// So many pieces are read at once.
constexpr std::size_t PIECES = 32;

/// A file that is closed without waiting for the storage device: the system has it by then.
class QuickFile : public CxFile {
public:
    ~QuickFile() override { QuickFile::Close(); }
    int Flush() override { return 1; }
};

} // namespace

void CxXmlDocument::PrepareLoad() {
    Clear();
    m_errorRow = m_errorColumn = -1;
}

template <typename Archive>
int CxXmlDocument::LoadText(Archive &file, unsigned long length, CxXmlEncoding encoding) {
    if (length == 0)
        return 0;
    if (length == static_cast<unsigned long>(-1)) {
        SetError(tavix::XML_ERROR_OPENING_FILE, -1, -1);
        return 0;
    }
    try {
        std::string text;
        text.reserve(std::min<unsigned long>(length, INT_MAX) + tavix::XML_PADDING);
        std::vector<char> pieces(PIECE * PIECES);
        while (const std::size_t count =
                   file.Read(pieces.data(), static_cast<unsigned int>(pieces.size()))) {
            for (std::size_t first = 0; first < count; first += PIECE) {
                const char *const piece = pieces.data() + first;
                text.append(piece, strnlen(piece, std::min(PIECE, count - first)));
            }
            if (text.size() > INT_MAX)
                break;
        }
        ParseText(text, encoding);
    } catch (const std::exception &) {
        ClearError();
        SetError(tavix::XML_ERROR_OUT_OF_MEMORY, 0, 0);
    }
    return Error() ? 0 : 1;
}

int CxXmlDocument::LoadFile(const char *path, CxXmlEncoding encoding) {
    SetValue(path);
    return LoadFile(encoding);
}

int CxXmlDocument::LoadFile(CxXmlEncoding encoding) {
    PrepareLoad();
    CxFile file;
    if (!file.Open(Value(), CxFile::modeRead | CxFile::shareDenyWrite)) {
        SetError(tavix::XML_ERROR_OPENING_FILE, -1, -1);
        return 0;
    }
    const unsigned long length = file.GetLength();
    file.SeekToBegin();
    return LoadText(file, length, encoding);
}

int CxXmlDocument::LoadFile(CxFile &file, CxXmlEncoding encoding) {
    PrepareLoad();
    const unsigned long length = file.GetLength();
    file.SeekToBegin();
    return LoadText(file, length, encoding);
}

int CxXmlDocument::LoadFile(CxMemFile &file, CxXmlEncoding encoding) {
    PrepareLoad();
    file.SetCurPos(0);
    return LoadText(file, static_cast<unsigned long>(file.GetSize()), encoding);
}

int CxXmlDocument::SaveFile(CxArchive &archive) const {
    Print(archive, 0);
    return 1;
}

int CxXmlDocument::SaveFile(const char *path) const {
    QuickFile file;
    if (!file.Open(tavix::TextOrEmpty(path), CxFile::modeWrite | CxFile::modeCreate))
        return 0;
    return SaveFile(file);
}

int CxXmlDocument::SaveFile() const {
    return SaveFile(Value());
}
