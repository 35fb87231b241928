#include "TAVIX20/support/cx_xml_element.h"

#include "TAVIX20/support/cx_xml_attribute.h"
#include "TAVIX20/support/cx_xml_tree.h"
#include "TAVIX20/support/text_number.h"

#include <algorithm>

using tavix::TextOrEmpty;

CxXmlElement::CxXmlElement(const char *name) : CxXmlNode(*new TiXmlElement(TextOrEmpty(name))) {}

CxXmlElement::CxXmlElement(TiXmlElement &element) : CxXmlNode(element) {}

CxXmlElement::CxXmlElement(const CxXmlElement &copy) : CxXmlNode(copy) {}

CxXmlElement &CxXmlElement::operator=(const CxXmlElement &base) {
    if (this != &base) {
        m_attributes.clear();
        Assign(base);
    }
    return *this;
}

CxXmlElement::~CxXmlElement() = default;

TiXmlElement &CxXmlElement::Element() const {
    return static_cast<TiXmlElement &>(tavix::XmlLink::NodeOf(*this));
}

CxXmlAttribute *CxXmlElement::ObjectOf(TiXmlAttribute *attribute) const {
    if (attribute == nullptr)
        return nullptr;
    if (attribute->GetUserData() == nullptr) {
        auto *const self = const_cast<CxXmlElement *>(this);
        m_attributes.emplace_back(new CxXmlAttribute(*attribute, self));
    }
    return static_cast<CxXmlAttribute *>(attribute->GetUserData());
}

const char *CxXmlElement::Attribute(const char *name) const {
    return Element().Attribute(TextOrEmpty(name));
}

const char *CxXmlElement::Attribute(const char *name, int *number) const {
    const char *const value = Attribute(name);
    if (number != nullptr)
        *number = tavix::ReadInt(value);
    return value;
}

const char *CxXmlElement::Attribute(const char *name, double *number) const {
    const char *const value = Attribute(name);
    if (number != nullptr)
        *number = tavix::ReadDouble(value);
    return value;
}

int CxXmlElement::QueryIntAttribute(const char *name, int *value) const {
    const char *const text = Attribute(name);
    if (text == nullptr)
        return CXXML_NO_ATTRIBUTE;
    return tavix::QueryInt(text, *value) ? CXXML_SUCCESS : CXXML_WRONG_TYPE;
}

int CxXmlElement::QueryDoubleAttribute(const char *name, double *value) const {
    const char *const text = Attribute(name);
    if (text == nullptr)
        return CXXML_NO_ATTRIBUTE;
    return tavix::QueryDouble(text, *value) ? CXXML_SUCCESS : CXXML_WRONG_TYPE;
}

void CxXmlElement::SetAttribute(const char *name, const char *value) {
    Element().SetAttribute(TextOrEmpty(name), TextOrEmpty(value));
}

void CxXmlElement::SetAttribute(const char *name, int value) {
    Element().SetAttribute(TextOrEmpty(name), value);
}

void CxXmlElement::SetDoubleAttribute(const char *name, double value) {
    SetAttribute(name, tavix::WriteFixed(value).c_str());
}

void CxXmlElement::RemoveAttribute(const char *name) {
    // Names need not be unique once attributes were renamed: the storage of the value tells which
    // attribute TinyXML is going to remove.
    const char *const value = Attribute(name);
    std::erase_if(m_attributes, [value](const auto &each) { return each->Value() == value; });
    Element().RemoveAttribute(TextOrEmpty(name));
}

CxXmlAttribute *CxXmlElement::FirstAttribute() {
    return ObjectOf(Element().FirstAttribute());
}

const CxXmlAttribute *CxXmlElement::FirstAttribute() const {
    return ObjectOf(Element().FirstAttribute());
}

CxXmlAttribute *CxXmlElement::LastAttribute() {
    return ObjectOf(Element().LastAttribute());
}

const CxXmlAttribute *CxXmlElement::LastAttribute() const {
    return ObjectOf(Element().LastAttribute());
}

CxXmlNode *CxXmlElement::Clone() const {
    return new CxXmlElement(*this);
}
