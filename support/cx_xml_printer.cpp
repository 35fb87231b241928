#include "TAVIX20/support/cx_xml_printer.h"

#include "TAVIX20/support/cx_archive.h"
#include "TAVIX20/support/cx_xml_string.h"
#include "TAVIX20/support/cx_xml_tree.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>

namespace tavix {

namespace {

/// Text is handed on in pieces of about this size.
constexpr std::size_t PIECE = 1 << 16;
constexpr std::size_t LONGEST_ESCAPE = 6;

/// What each byte is written as; empty for itself.
struct Escapes {
    std::array<std::array<char, 8>, 256> text{};
    std::array<unsigned char, 256> length{};

    Escapes() {
        for (unsigned byte = 0; byte < 32; ++byte)
            std::snprintf(text[byte].data(), text[byte].size(), "&#x%02X;", byte);
        Set('&', "&amp;");
        Set('<', "&lt;");
        Set('>', "&gt;");
        Set('"', "&quot;");
        Set('\'', "&apos;");
        for (std::size_t byte = 0; byte < text.size(); ++byte)
            length[byte] = static_cast<unsigned char>(std::string_view(text[byte].data()).size());
    }

    void Set(unsigned char byte, std::string_view entity) {
        std::copy(entity.begin(), entity.end(), text[byte].begin());
    }
};

bool IsElement(const TiXmlNode &node) {
    return node.Type() == TiXmlNode::TINYXML_ELEMENT;
}

/// The nodes of a large document lie scattered: the next one is on its way while this one is
/// printed.
void Prefetch(const TiXmlNode *node) {
    __builtin_prefetch(node);
    __builtin_prefetch(reinterpret_cast<const char *>(node) + 64);
}

} // namespace

void XmlPrinter::MakeRoom(std::size_t size) {
    if (m_archive != nullptr)
        Flush();
    if (m_text.size() - m_used < size)
        m_text.resize(std::max({m_used + size, m_text.size() * 2, PIECE}));
}

inline char *XmlPrinter::Reserve(std::size_t size) {
    if (m_text.size() - m_used < size) [[unlikely]]
        MakeRoom(size);
    return m_text.data() + m_used;
}

inline void XmlPrinter::Put(std::string_view text) {
    std::memcpy(Reserve(text.size()), text.data(), text.size());
    m_used += text.size();
}

void XmlPrinter::PutEscaped(std::string_view text) {
    static const Escapes escapes;
    while (!text.empty()) {
        const std::string_view part = text.substr(0, PIECE / LONGEST_ESCAPE);
        char *const first = Reserve(part.size() * LONGEST_ESCAPE);
        char *at = first;
        for (const char ch : part) {
            const auto byte = static_cast<unsigned char>(ch);
            *at++ = ch;
            if (escapes.length[byte] != 0) [[unlikely]] {
                std::memcpy(--at, escapes.text[byte].data(), escapes.length[byte]);
                at += escapes.length[byte];
            }
        }
        m_used += static_cast<std::size_t>(at - first);
        text.remove_prefix(part.size());
    }
}

void XmlPrinter::BreakLine() {
    if (m_archive != nullptr)
        Put("\r\n");
}

void XmlPrinter::Indent(int depth) {
    constexpr std::string_view blanks = "                                ";
    if (m_archive == nullptr || depth <= 0)
        return;
    std::size_t count = static_cast<std::size_t>(depth) * 4;
    for (; count > blanks.size(); count -= blanks.size())
        Put(blanks);
    Put(blanks.substr(0, count));
}

void XmlPrinter::Flush() {
    if (m_archive != nullptr && m_used > 0)
        m_archive->Write(m_text.data(), static_cast<unsigned int>(m_used));
    if (m_stream != nullptr)
        m_stream->append(m_text.data(), static_cast<int>(m_used));
    m_used = 0;
}

void XmlPrinter::Print(const TiXmlNode &root, int depth) {
    const TiXmlNode *node = &root;
    for (;;) {
        if (node != &root && node->Type() != TiXmlNode::TINYXML_TEXT && IsElement(*node->Parent()))
            BreakLine();
        const bool isPrinted = node != &root && PrintDerived(*node, depth);
        if (!isPrinted && Begin(*node, depth)) {
            // The children of a document stand on its own level.
            depth += IsElement(*node) ? 1 : 0;
            node = node->FirstChild();
            continue;
        }
        for (;;) {
            if (node == &root) {
                Flush();
                return;
            }
            const TiXmlNode *const parent = node->Parent();
            if (!IsElement(*parent))
                BreakLine();
            if (node->NextSibling() != nullptr) {
                node = node->NextSibling();
                break;
            }
            if (IsElement(*parent))
                EndElement(*parent, --depth);
            node = parent;
        }
    }
}

void XmlPrinter::Print(const TiXmlAttribute &attribute) {
    PutAttribute(attribute);
    Flush();
}

void XmlPrinter::PutAttribute(const TiXmlAttribute &attribute) {
    const std::string &value = attribute.ValueStr();
    const bool hasQuote = std::memchr(value.data(), '"', value.size()) != nullptr;
    Put(attribute.NameTStr());
    Put(hasQuote ? "='" : "=\"");
    PutEscaped(value);
    Put(hasQuote ? "'" : "\"");
}

bool XmlPrinter::PrintDerived(const TiXmlNode &node, int depth) {
    if (XmlLink::ExistingObjectOf(node) == nullptr)
        return false;
    const CxXmlNode *const object = XmlLink::DerivedObjectOf(node);
    if (object == nullptr)
        return false;
    Flush();
    if (m_archive != nullptr)
        object->Print(*m_archive, depth);
    else
        object->StreamOut(m_stream);
    return true;
}

bool XmlPrinter::Begin(const TiXmlNode &node, int depth) {
    switch (node.Type()) {
    case TiXmlNode::TINYXML_DOCUMENT:
        return BeginDocument(node);
    case TiXmlNode::TINYXML_ELEMENT:
        Indent(depth);
        return BeginElement(static_cast<const TiXmlElement &>(node));
    case TiXmlNode::TINYXML_TEXT:
        PutEscaped(node.ValueStr());
        return false;
    case TiXmlNode::TINYXML_COMMENT:
        Indent(depth);
        Put("<!--");
        Put(node.ValueStr());
        Put("-->");
        return false;
    case TiXmlNode::TINYXML_DECLARATION:
        PutDeclaration(static_cast<const TiXmlDeclaration &>(node));
        return false;
    default:
        Indent(depth);
        Put("<");
        Put(node.ValueStr());
        Put(">");
        return false;
    }
}

bool XmlPrinter::BeginDocument(const TiXmlNode &document) {
    const TiXmlNode *const first = document.FirstChild();
    if (m_archive != nullptr && first != nullptr && first->ToDeclaration() == nullptr)
        Put("<?xml version=\"1.0\" encoding=\"euc-kr\" ?>\r\n");
    return first != nullptr;
}

bool XmlPrinter::BeginElement(const TiXmlElement &element) {
    Prefetch(element.NextSibling());
    Put("<");
    Put(element.ValueStr());
    for (const TiXmlAttribute *each = element.FirstAttribute(); each != nullptr;
         each = each->Next()) {
        Put(" ");
        PutAttribute(*each);
    }
    Put(element.NoChildren() ? " />" : ">");
    return !element.NoChildren();
}

void XmlPrinter::EndElement(const TiXmlNode &element, int depth) {
    const TiXmlNode *const child = element.FirstChild();
    const bool isOnOneLine =
        child == element.LastChild() && child->Type() == TiXmlNode::TINYXML_TEXT;
    if (!isOnOneLine) {
        BreakLine();
        Indent(depth);
    }
    Put("</");
    Put(element.ValueStr());
    Put(">");
}

void XmlPrinter::PutDeclaration(const TiXmlDeclaration &declaration) {
    const auto putPart = [this](const char *before, std::string_view value) {
        if (value.empty())
            return;
        Put(before);
        Put(value);
        Put("\" ");
    };
    Put("<?xml ");
    putPart("version=\"", declaration.Version());
    putPart("encoding=\"", declaration.Encoding());
    putPart("standalone=\"", declaration.Standalone());
    Put("?>");
}

} // namespace tavix
