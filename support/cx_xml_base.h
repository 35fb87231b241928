/// CxXmlBase: what nodes and attributes of an XML document have in common.
#pragma once

#include "TAVIX20/platform/export.h"

class CxArchive;
class CxOStream;
class TiXmlBase;

/// How the bytes of a text are read. With unknown, a byte-order mark or the declaration decides.
enum CxXmlEncoding { CXXML_ENCODING_UNKNOWN, CXXML_ENCODING_UTF8, CXXML_ENCODING_LEGACY };

constexpr CxXmlEncoding CXXML_DEFAULT_ENCODING = CXXML_ENCODING_UNKNOWN;

/// What the Query members return.
enum { CXXML_SUCCESS, CXXML_NO_ATTRIBUTE, CXXML_WRONG_TYPE };

/// A place in a text, counted from 0; -1 where there is none.
struct CxXmlCursor {
    int row = -1;
    int col = -1;

    void Clear() { row = col = -1; }
};

/// Counts rows and columns along a text. Only documents make one.
class TAVIX_API CxXmlParsingData {
public:
    /// Moves on to now, which is not before the last place: row and column as the parser counts
    /// them, a byte-order mark without a width, a tab up to the next tab stop.
    void Stamp(const char *now, CxXmlEncoding encoding);
    const CxXmlCursor &Cursor() const { return m_cursor; }

private:
    friend class CxXmlDocument;
    CxXmlParsingData(const char *text, int tabSize) : m_stamp(text), m_tabSize(tabSize) {}

    CxXmlCursor m_cursor{0, 0};
    const char *m_stamp;
    int m_tabSize;
};

namespace tavix {
struct XmlLink;
}

/// The objects of a document are made when they are asked for: one for each node or attribute, the
/// same one every time, until the node or attribute is gone. A document is therefore used by one
/// thread at a time, even for reading. Null text counts as the empty text everywhere.
class TAVIX_API CxXmlBase {
public:
    CxXmlBase(const CxXmlBase &) = delete;
    CxXmlBase &operator=(const CxXmlBase &) = delete;
    virtual ~CxXmlBase();

    /// Writes the text of this object, indented by four blanks a level of depth, lines ended by CR
    /// LF.
    virtual void Print(CxArchive &archive, int depth) const = 0;
    /// Appends the text of this object without line ends and indentation of its own.
    virtual void StreamOut(CxOStream *stream) const = 0;

    /// Whether reading makes one blank of each run of white space in text and drops it at the ends;
    /// on at the start. One switch for the whole program.
    static void SetCondenseWhiteSpace(bool condense);
    static bool IsWhiteSpaceCondensed();

    /// Where this was read, counted from 1; 0 where it was not read.
    int Row() const;
    int Column() const;

    /// A pointer that belongs to the caller; nothing is done with it. Copies of nodes carry it.
    void SetUserData(void *user) { m_userData = user; }
    void *GetUserData() { return m_userData; }
    const void *GetUserData() const { return m_userData; }

protected:
    explicit CxXmlBase(TiXmlBase *base) : m_base(base) {}

private:
    friend struct tavix::XmlLink;

    TiXmlBase *m_base; ///< Never null.
    void *m_userData = nullptr;
};
