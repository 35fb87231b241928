#include "TAVIX20/support/cx_xml_leaves.h"

#include "TAVIX20/support/cx_xml_tree.h"

using tavix::TextOrEmpty;

CxXmlText::CxXmlText(const char *text) : CxXmlNode(*new TiXmlText(TextOrEmpty(text))) {}

CxXmlText::CxXmlText(TiXmlText &text) : CxXmlNode(text) {}

CxXmlText::CxXmlText(const CxXmlText &copy) = default;

CxXmlText &CxXmlText::operator=(const CxXmlText &base) {
    Assign(base);
    return *this;
}

CxXmlNode *CxXmlText::Clone() const {
    return new CxXmlText(*this);
}

CxXmlComment::CxXmlComment() : CxXmlNode(*new TiXmlComment) {}

CxXmlComment::CxXmlComment(const char *text) : CxXmlNode(*new TiXmlComment(TextOrEmpty(text))) {}

CxXmlComment::CxXmlComment(TiXmlComment &comment) : CxXmlNode(comment) {}

CxXmlComment::CxXmlComment(const CxXmlComment &copy) = default;

CxXmlComment &CxXmlComment::operator=(const CxXmlComment &base) {
    Assign(base);
    return *this;
}

CxXmlNode *CxXmlComment::Clone() const {
    return new CxXmlComment(*this);
}

CxXmlDeclaration::CxXmlDeclaration() : CxXmlNode(*new TiXmlDeclaration) {}

CxXmlDeclaration::CxXmlDeclaration(const char *version, const char *encoding,
                                   const char *standalone)
    : CxXmlNode(*new TiXmlDeclaration(TextOrEmpty(version), TextOrEmpty(encoding),
                                      TextOrEmpty(standalone))) {}

CxXmlDeclaration::CxXmlDeclaration(TiXmlDeclaration &declaration) : CxXmlNode(declaration) {}

CxXmlDeclaration::CxXmlDeclaration(const CxXmlDeclaration &copy) = default;

CxXmlDeclaration &CxXmlDeclaration::operator=(const CxXmlDeclaration &base) {
    Assign(base);
    return *this;
}

const char *CxXmlDeclaration::Version() const {
    return tavix::XmlLink::NodeOf(*this).ToDeclaration()->Version();
}

const char *CxXmlDeclaration::Encoding() const {
    return tavix::XmlLink::NodeOf(*this).ToDeclaration()->Encoding();
}

const char *CxXmlDeclaration::Standalone() const {
    return tavix::XmlLink::NodeOf(*this).ToDeclaration()->Standalone();
}

CxXmlNode *CxXmlDeclaration::Clone() const {
    return new CxXmlDeclaration(*this);
}

CxXmlUnknown::CxXmlUnknown() : CxXmlNode(*new TiXmlUnknown) {}

CxXmlUnknown::CxXmlUnknown(TiXmlUnknown &unknown) : CxXmlNode(unknown) {}

CxXmlUnknown::CxXmlUnknown(const CxXmlUnknown &copy) = default;

CxXmlUnknown &CxXmlUnknown::operator=(const CxXmlUnknown &base) {
    Assign(base);
    return *this;
}

CxXmlNode *CxXmlUnknown::Clone() const {
    return new CxXmlUnknown(*this);
}
