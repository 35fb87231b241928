/// Writes nodes as text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

class CxArchive;
class CxOStream;
class TiXmlAttribute;
class TiXmlDeclaration;
class TiXmlElement;
class TiXmlNode;

namespace tavix {

/// Over an archive it indents by four blanks a level, breaks lines with CR LF and declares a
/// document that has no declaration as "euc-kr". Over a stream it writes everything in one line,
/// and no declaration that is not there. It walks the tree without recursion; only objects of
/// classes that programs derive from ours print themselves.
class XmlPrinter {
public:
    explicit XmlPrinter(CxArchive &archive) : m_archive(&archive) {}
    explicit XmlPrinter(CxOStream &stream) : m_stream(&stream) {}
    XmlPrinter(const XmlPrinter &) = delete;
    XmlPrinter &operator=(const XmlPrinter &) = delete;

    void Print(const TiXmlNode &root, int depth);
    void Print(const TiXmlAttribute &attribute);

private:
    /// These return whether children are to be printed next.
    bool Begin(const TiXmlNode &node, int depth);
    bool BeginDocument(const TiXmlNode &document);
    bool BeginElement(const TiXmlElement &element);
    void PutAttribute(const TiXmlAttribute &attribute);
    void EndElement(const TiXmlNode &element, int depth);
    void PutDeclaration(const TiXmlDeclaration &declaration);
    bool PrintDerived(const TiXmlNode &node, int depth);

    /// Room for so many bytes behind the text.
    char *Reserve(std::size_t size);
    void MakeRoom(std::size_t size);
    void Put(std::string_view text);
    void PutEscaped(std::string_view text);
    void BreakLine();
    void Indent(int depth);
    void Flush();

    CxArchive *m_archive = nullptr;
    CxOStream *m_stream = nullptr;
    std::string m_text; ///< The first m_used bytes of it.
    std::size_t m_used = 0;
};

} // namespace tavix
