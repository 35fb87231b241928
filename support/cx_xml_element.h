/// CxXmlElement: a node with a name, attributes and children.
#pragma once

#include "TAVIX20/support/cx_xml_node.h"

#include <memory>
#include <vector>

class CxXmlAttribute;
class TiXmlAttribute;
class TiXmlElement;

class TAVIX_API CxXmlElement : public CxXmlNode {
public:
    CxXmlElement(const char *name);
    CxXmlElement(const CxXmlElement &copy);
    CxXmlElement &operator=(const CxXmlElement &base);
    ~CxXmlElement() override;

    /// The value of an attribute, valid until it is set again; null where there is none.
    const char *Attribute(const char *name) const;
    /// The number at the start of the value goes to the second argument, unless it is null; 0 where
    /// there is no such number and where there is no such attribute. Here and below, a number
    /// beyond the type's range gives the nearest in it.
    const char *Attribute(const char *name, int *number) const;
    const char *Attribute(const char *name, double *number) const;
    /// CXXML_SUCCESS and the number, else CXXML_NO_ATTRIBUTE or CXXML_WRONG_TYPE and no change.
    int QueryIntAttribute(const char *name, int *value) const;
    int QueryDoubleAttribute(const char *name, double *value) const;

    /// Sets an attribute's value; a new attribute comes last.
    void SetAttribute(const char *name, const char *value);
    void SetAttribute(const char *name, int value);
    /// With six digits behind the point, as printf's "%f".
    void SetDoubleAttribute(const char *name, double value);
    void RemoveAttribute(const char *name);
    CxXmlAttribute *FirstAttribute();
    const CxXmlAttribute *FirstAttribute() const;
    CxXmlAttribute *LastAttribute();
    const CxXmlAttribute *LastAttribute() const;

    CxXmlNode *Clone() const override;

private:
    friend class CxXmlAttribute;
    friend struct tavix::XmlLink;
    explicit CxXmlElement(TiXmlElement &element);

    TiXmlElement &Element() const;
    CxXmlAttribute *ObjectOf(TiXmlAttribute *attribute) const;

    /// The attributes that were asked for.
    mutable std::vector<std::unique_ptr<CxXmlAttribute>> m_attributes;
};
