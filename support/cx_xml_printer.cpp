#include "TAVIX20/support/cx_xml_printer.h"

#include "TAVIX20/support/cx_archive.h"
#include "TAVIX20/support/cx_xml_string.h"
#include "TAVIX20/support/cx_xml_tree.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace tavix {

namespace {

/// Text is handed on in pieces of at least this size.
constexpr std::size_t PIECE = 1 << 16;

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

const Escapes &AllEscapes() {
    static const Escapes escapes;
    return escapes;
}

} // namespace

void XmlPrinter::Put(const char *first, const char *second, const char *third) {
    m_text += first;
    m_text += second;
    m_text += third;
}

void XmlPrinter::PutEscaped(const std::string &text) {
    const Escapes &escapes = AllEscapes();
    const char *run = text.data();
    const char *const end = run + text.size();
    for (const char *at = run; at != end; ++at) {
        const auto byte = static_cast<unsigned char>(*at);
        if (escapes.length[byte] == 0)
            continue;
        m_text.append(run, at);
        m_text.append(escapes.text[byte].data(), escapes.length[byte]);
        run = at + 1;
    }
    m_text.append(run, end);
}

void XmlPrinter::BreakLine() {
    if (m_archive != nullptr)
        m_text += "\r\n";
}

void XmlPrinter::Indent(int depth) {
    if (m_archive != nullptr && depth > 0)
        m_text.append(static_cast<std::size_t>(depth) * 4, ' ');
}

void XmlPrinter::Flush() {
    if (m_archive != nullptr && !m_text.empty())
        m_archive->Write(m_text.data(), static_cast<unsigned int>(m_text.size()));
    if (m_stream != nullptr)
        *m_stream << CString(std::move(m_text));
    m_text.clear();
}

void XmlPrinter::Print(const TiXmlNode &root, int depth) {
    const TiXmlNode *node = &root;
    for (;;) {
        if (node != &root && node->Parent()->ToElement() != nullptr && node->ToText() == nullptr)
            BreakLine();
        const bool isPrinted = node != &root && PrintDerived(*node, depth);
        if (!isPrinted && Begin(*node, depth)) {
            // The children of a document stand on its own level.
            depth += node->ToElement() != nullptr ? 1 : 0;
            node = node->FirstChild();
            continue;
        }
        for (;;) {
            if (m_text.size() >= PIECE)
                Flush();
            if (node == &root)
                return;
            const TiXmlElement *const element = node->Parent()->ToElement();
            if (element == nullptr)
                BreakLine();
            if (node->NextSibling() != nullptr) {
                node = node->NextSibling();
                break;
            }
            node = node->Parent();
            if (element != nullptr)
                EndElement(*element, --depth);
        }
    }
}

void XmlPrinter::Print(const TiXmlAttribute &attribute) {
    const char quote = attribute.ValueStr().find('"') == std::string::npos ? '"' : '\'';
    Put(attribute.Name());
    m_text += '=';
    m_text += quote;
    PutEscaped(attribute.ValueStr());
    m_text += quote;
}

bool XmlPrinter::PrintDerived(const TiXmlNode &node, int depth) {
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
        return BeginElement(*node.ToElement());
    case TiXmlNode::TINYXML_TEXT:
        PutEscaped(node.ValueStr());
        return false;
    case TiXmlNode::TINYXML_COMMENT:
        Indent(depth);
        Put("<!--", node.Value(), "-->");
        return false;
    case TiXmlNode::TINYXML_DECLARATION:
        PutDeclaration(*node.ToDeclaration());
        return false;
    default:
        Indent(depth);
        Put("<", node.Value(), ">");
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
    Put("<", element.Value());
    for (const TiXmlAttribute *each = element.FirstAttribute(); each != nullptr;
         each = each->Next()) {
        m_text += ' ';
        Print(*each);
    }
    Put(element.NoChildren() ? " />" : ">");
    return !element.NoChildren();
}

void XmlPrinter::EndElement(const TiXmlElement &element, int depth) {
    const TiXmlNode *const child = element.FirstChild();
    const bool isOnOneLine = child == element.LastChild() && child->ToText() != nullptr;
    if (!isOnOneLine) {
        BreakLine();
        Indent(depth);
    }
    Put("</", element.Value(), ">");
}

void XmlPrinter::PutDeclaration(const TiXmlDeclaration &declaration) {
    const auto putPart = [this](const char *before, const char *value) {
        if (*value != '\0')
            Put(before, value, "\" ");
    };
    Put("<?xml ");
    putPart("version=\"", declaration.Version());
    putPart("encoding=\"", declaration.Encoding());
    putPart("standalone=\"", declaration.Standalone());
    Put("?>");
}

} // namespace tavix
