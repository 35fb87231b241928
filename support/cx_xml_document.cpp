#include "TAVIX20/support/cx_xml_document.h"

#include "TAVIX20/support/cx_xml_error.h"
#include "TAVIX20/support/cx_xml_printer.h"
#include "TAVIX20/support/cx_xml_tree.h"

using tavix::TextOrEmpty;

CxXmlDocument::CxXmlDocument() : CxXmlDocument("") {}

CxXmlDocument::CxXmlDocument(const char *name) : CxXmlNode(*new TiXmlDocument(TextOrEmpty(name))) {}

CxXmlDocument::CxXmlDocument(const CxXmlDocument &copy) = default;

CxXmlDocument &CxXmlDocument::operator=(const CxXmlDocument &copy) {
    Assign(copy);
    m_errorId = copy.m_errorId;
    m_errorText = copy.m_errorText;
    m_errorRow = copy.m_errorRow;
    m_errorColumn = copy.m_errorColumn;
    m_tabSize = copy.m_tabSize;
    return *this;
}

CxXmlElement *CxXmlDocument::RootElement() {
    return FirstChildElement();
}

const CxXmlElement *CxXmlDocument::RootElement() const {
    return FirstChildElement();
}

void CxXmlDocument::ClearError() {
    m_errorId = 0;
    m_errorText = "";
    // What TinyXML gives where nothing has gone wrong.
    m_errorRow = m_errorColumn = 1;
}

void CxXmlDocument::SetError(int id, int row, int column, const char *text) {
    if (Error())
        return;
    m_errorId = id;
    m_errorText = text != nullptr ? text : tavix::XML_ERROR_TEXTS[id];
    m_errorRow = row;
    m_errorColumn = column;
}

void CxXmlDocument::Print(CxArchive &archive, int depth) const {
    CxXmlNode::Print(archive, depth);
}

CxXmlNode *CxXmlDocument::Clone() const {
    return new CxXmlDocument(*this);
}
