/// The nodes without children: CxXmlText, CxXmlComment, CxXmlDeclaration and CxXmlUnknown.
#pragma once

#include "TAVIX20/support/cx_xml_node.h"

class TiXmlComment;
class TiXmlDeclaration;
class TiXmlText;
class TiXmlUnknown;

/// Character data.
class TAVIX_API CxXmlText : public CxXmlNode {
public:
    CxXmlText(const char *text);
    CxXmlText(const CxXmlText &copy);
    CxXmlText &operator=(const CxXmlText &base);

    CxXmlNode *Clone() const override;

private:
    friend struct tavix::XmlLink;
    explicit CxXmlText(TiXmlText &text);
};

/// A comment; its value is what stands between the markers.
class TAVIX_API CxXmlComment : public CxXmlNode {
public:
    CxXmlComment();
    CxXmlComment(const char *text);
    CxXmlComment(const CxXmlComment &copy);
    CxXmlComment &operator=(const CxXmlComment &base);

    CxXmlNode *Clone() const override;

private:
    friend struct tavix::XmlLink;
    explicit CxXmlComment(TiXmlComment &comment);
};

/// The XML declaration. What is not given is empty.
class TAVIX_API CxXmlDeclaration : public CxXmlNode {
public:
    CxXmlDeclaration();
    CxXmlDeclaration(const char *version, const char *encoding, const char *standalone);
    CxXmlDeclaration(const CxXmlDeclaration &copy);
    CxXmlDeclaration &operator=(const CxXmlDeclaration &base);

    const char *Version() const;
    const char *Encoding() const;
    const char *Standalone() const;

    CxXmlNode *Clone() const override;

private:
    friend struct tavix::XmlLink;
    explicit CxXmlDeclaration(TiXmlDeclaration &declaration);
};

/// Any other tag, a CDATA section too: its value is what stands between "<" and ">", verbatim.
class TAVIX_API CxXmlUnknown : public CxXmlNode {
public:
    CxXmlUnknown();
    CxXmlUnknown(const CxXmlUnknown &copy);
    CxXmlUnknown &operator=(const CxXmlUnknown &base);

    CxXmlNode *Clone() const override;

private:
    friend struct tavix::XmlLink;
    explicit CxXmlUnknown(TiXmlUnknown &unknown);
};
