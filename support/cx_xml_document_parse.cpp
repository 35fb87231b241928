// CxXmlDocument: reading a text. The scanner goes ahead of TinyXML's parser; where programs expect
// what TinyXML's older releases made of a text, the text is altered before parsing and the tree
// after it (see cx_xml_scan.h).

#include "TAVIX20/support/cx_xml_document.h"

#include "TAVIX20/support/cx_xml_error.h"
#include "TAVIX20/support/cx_xml_scan.h"
#include "TAVIX20/support/cx_xml_tree.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <exception>
#include <string>

#include <strings.h>

using tavix::XmlRepair;
using tavix::XmlScan;

namespace {

/// The number of a parser's error in our table.
int TableNumber(int error) {
    if (error < TiXmlBase::TIXML_ERROR_PARSING_ELEMENT)
        return error;
    // The table has "Memory allocation failed." before them.
    return error <= TiXmlBase::TIXML_ERROR_EMBEDDED_NULL ? error + 1 : tavix::XML_ERROR_OTHER;
}

/// Makes the ranges that are to be repaired read as one tag or one bare value.
void Neutralize(std::string &text, const std::vector<XmlRepair> &repairs) {
    for (const XmlRepair &repair : repairs) {
        const auto first = text.begin() + static_cast<std::ptrdiff_t>(repair.first);
        const auto end = text.begin() + static_cast<std::ptrdiff_t>(repair.end);
        if (repair.name.empty()) {
            first[2] = 'x'; // "<!xCDATA[" is an unknown tag.
            std::replace(first, end - 1, '>', 'x');
        } else {
            std::replace_if(
                first, end, [](char ch) { return ch == '"' || ch == '\''; }, 'x');
        }
    }
}

void SetDeclared(TiXmlDeclaration &declaration, const XmlRepair &repair) {
    const auto choose = [&repair](const char *name, const char *other) {
        const bool isMeant = strncasecmp(repair.name.c_str(), name, std::strlen(name)) == 0;
        return isMeant ? repair.value.c_str() : other;
    };
    tavix::TakeTexts(declaration, TiXmlDeclaration(choose("version", declaration.Version()),
                                                   choose("encoding", declaration.Encoding()),
                                                   choose("standalone", declaration.Standalone())));
}

void Repair(TiXmlNode &node, const XmlRepair &repair) {
    if (repair.name.empty())
        node.SetValue(repair.value.c_str());
    else if (TiXmlDeclaration *declaration = node.ToDeclaration())
        SetDeclared(*declaration, repair);
    else if (TiXmlElement *element = node.ToElement())
        element->SetAttribute(repair.name.c_str(), repair.value.c_str());
}

TiXmlNode *NextInText(TiXmlNode *node) {
    if (node->FirstChild() != nullptr)
        return node->FirstChild();
    while (node != nullptr && node->NextSibling() == nullptr)
        node = node->Parent();
    return node != nullptr ? node->NextSibling() : nullptr;
}

/// Gives the nodes from first on, in the text's order, their right values.
void RepairNodes(TiXmlNode *first, const std::vector<XmlRepair> &repairs) {
    std::size_t number = 0;
    auto repair = repairs.begin();
    for (TiXmlNode *node = first; node != nullptr && repair != repairs.end();
         node = NextInText(node)) {
        if (node->ToText() != nullptr)
            continue;
        for (; repair != repairs.end() && repair->node == number; ++repair)
            Repair(*node, *repair);
        ++number;
    }
}

TiXmlElement *LastElement(TiXmlNode &root) {
    TiXmlNode *node = &root;
    while (node->LastChild() != nullptr)
        node = node->LastChild();
    return node->ToElement();
}

} // namespace

const char *CxXmlDocument::ParseText(std::string &text, CxXmlEncoding encoding) {
    ClearError();
    const std::size_t length = text.size();
    if (length > INT_MAX) {
        SetError(tavix::XML_ERROR_OUT_OF_MEMORY, 0, 0);
        return nullptr;
    }
    text.append(tavix::XML_PADDING, '\0');
    const int columns = INT_MAX / std::max(m_tabSize, 1);
    const int tabSize = static_cast<int>(length) < columns ? m_tabSize : 0;

    const XmlScan scan =
        tavix::ScanXml(std::string_view(text).substr(0, length),
                       static_cast<TiXmlEncoding>(encoding), MAX_DEPTH, MAX_ATTRIBUTES);
    const bool isTooDeep = scan.stop == XmlScan::Stop::TooDeep;
    if (isTooDeep || scan.stop == XmlScan::Stop::TooManyAttributes) {
        CxXmlParsingData place(text.c_str(), tabSize);
        place.Stamp(text.c_str() + scan.at, static_cast<CxXmlEncoding>(scan.encoding));
        SetError(tavix::XML_ERROR_OTHER, place.Cursor().row + 1, place.Cursor().col + 1,
                 isTooDeep ? tavix::XML_TOO_DEEP : tavix::XML_TOO_MANY_ATTRIBUTES);
        return nullptr;
    }

    Neutralize(text, scan.repairs);
    TiXmlDocument &document = *tavix::XmlLink::NodeOf(*this).ToDocument();
    TiXmlNode *const before = document.LastChild();
    document.SetTabSize(tabSize);
    const char *const end =
        document.Parse(text.c_str(), nullptr, static_cast<TiXmlEncoding>(encoding));
    RepairNodes(before != nullptr ? before->NextSibling() : document.FirstChild(), scan.repairs);

    if (scan.stop == XmlScan::Stop::DuplicateAttribute) {
        // The older releases take the second value and stop there, as if the text ended; only an
        // element around it notices.
        if (TiXmlElement *element = LastElement(document))
            element->SetAttribute(scan.name.c_str(), scan.value.c_str());
        if (!scan.isTopLevel)
            SetError(tavix::XML_ERROR_READING_ELEMENT_VALUE, 0, 0);
        return nullptr;
    }
    m_errorRow = document.ErrorRow();
    m_errorColumn = document.ErrorCol();
    if (document.Error()) {
        const int id = TableNumber(document.ErrorId());
        SetError(id, m_errorRow, m_errorColumn,
                 id == tavix::XML_ERROR_OTHER ? document.ErrorDesc() : nullptr);
    }
    return end;
}

const char *CxXmlDocument::Parse(const char *text, CxXmlParsingData *, CxXmlEncoding encoding) {
    try {
        std::string copy;
        const std::size_t length = std::strlen(tavix::TextOrEmpty(text));
        copy.reserve(length + tavix::XML_PADDING);
        copy.append(tavix::TextOrEmpty(text), length);
        const char *const end = ParseText(copy, encoding);
        return end != nullptr ? text + (end - copy.c_str()) : nullptr;
    } catch (const std::exception &) {
        ClearError();
        SetError(tavix::XML_ERROR_OUT_OF_MEMORY, 0, 0);
        return nullptr;
    }
}
