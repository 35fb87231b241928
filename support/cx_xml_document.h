/// CxXmlDocument: the root of an XML document, which reads and writes it.
#pragma once

#include "TAVIX20/support/cx_xml_node.h"

#include <string>

class CxFile;
class CxMemFile;

/// Its value is the name of its file.
///
/// Reading is tolerant; what it cannot make out ends it with an error and leaves what was read so
/// far. Some things are refused as a whole, with error 15, because they would exhaust the stack or
/// take forever: elements nested deeper than MAX_DEPTH, which take less than 1 MB of stack, and
/// more than MAX_ATTRIBUTES attributes of one element; also texts in which the numbers of elements
/// around each node come to more than 500 million in sum, or the squares of the numbers of
/// attributes that elements have beyond 100 to twice as much. Texts of 2 GB and more are refused as
/// if memory had run out. Trees that programs build may have any depth; they are copied, written
/// and deleted without recursion, except that nodes of classes that programs derive from ours print
/// and clone what is below them.
class TAVIX_API CxXmlDocument : public CxXmlNode {
public:
    static constexpr int MAX_DEPTH = 4000;
    static constexpr int MAX_ATTRIBUTES = 10000;

    CxXmlDocument();
    CxXmlDocument(const char *name);
    CxXmlDocument(const CxXmlDocument &copy);
    CxXmlDocument &operator=(const CxXmlDocument &copy);

    /// Replaces the children by what the file holds and takes its name; 1, or 0 on failure and for
    /// an empty file, which is no error. A file that cannot be opened is error 2 at row and column
    /// -1, unless an error is recorded already. The file is taken in pieces of 2047 bytes, each up
    /// to its first zero.
    int LoadFile(const char *path, CxXmlEncoding encoding = CXXML_DEFAULT_ENCODING);
    /// The same with the document's own name.
    int LoadFile(CxXmlEncoding encoding = CXXML_DEFAULT_ENCODING);
    /// The same from the beginning of an open file, which stays open; the name stays, too.
    int LoadFile(CxFile &file, CxXmlEncoding encoding = CXXML_DEFAULT_ENCODING);
    int LoadFile(CxMemFile &file, CxXmlEncoding encoding = CXXML_DEFAULT_ENCODING);

    /// Print at depth 0; always 1.
    int SaveFile(CxArchive &archive) const;
    /// The same into a file, created or emptied; 0 where it cannot be opened. Nobody waits for the
    /// storage device.
    int SaveFile(const char *path) const;
    /// The same with the document's own name.
    int SaveFile() const;

    /// Reads a text up to its zero and adds what it holds to the children. Returns where reading
    /// ended within the text, or null at its end and on failure. Programs pass null for previous.
    virtual const char *Parse(const char *text, CxXmlParsingData *previous = nullptr,
                              CxXmlEncoding encoding = CXXML_DEFAULT_ENCODING);

    CxXmlElement *RootElement(); ///< The first element; null where there is none.
    const CxXmlElement *RootElement() const;

    /// The first error since the last Parse or ClearError. The number is its place in the table of
    /// texts, 15 for texts that are not in it; row and column count from 1 and are 0 where the
    /// parser knows none.
    bool Error() const { return m_errorId != 0; }
    const char *ErrorDesc() const { return m_errorText; }
    int ErrorId() const { return m_errorId; }
    int ErrorRow() const { return m_errorRow; }
    int ErrorCol() const { return m_errorColumn; }
    void ClearError();

    /// How many columns a tab takes while reading, 4 at the start; below 1, rows and columns are
    /// not counted. Nor are they where a text is so long that a column might exceed 31 bits.
    void SetTabSize(int size) { m_tabSize = size; }
    int TabSize() const { return m_tabSize; }

    /// Writes the children one by one at the given depth, each ended by CR LF; nothing where there
    /// are none. Where the first one is not a declaration, it writes one that says "euc-kr".
    void Print(CxArchive &archive, int depth = 0) const override;
    /// Does nothing: nothing is written to the console.
    void Print() const {}

    CxXmlNode *Clone() const override;

private:
    friend class CxXmlNode;

    void SetError(int id, int row, int column, const char *text = nullptr);
    void PrepareLoad();
    template <typename Archive>
    int LoadText(Archive &file, unsigned long length, CxXmlEncoding encoding);
    const char *ParseText(std::string &text, CxXmlEncoding encoding);

    int m_errorId = 0;
    const char *m_errorText = "";
    int m_errorRow = 1;
    int m_errorColumn = 1;
    int m_tabSize = 4;
};
