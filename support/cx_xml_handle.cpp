#include "TAVIX20/support/cx_xml_handle.h"

#include "TAVIX20/support/cx_xml_element.h"

CxXmlHandle CxXmlHandle::FirstChild() const {
    return m_node != nullptr ? m_node->FirstChild() : nullptr;
}

CxXmlHandle CxXmlHandle::FirstChild(const char *value) const {
    return m_node != nullptr ? m_node->FirstChild(value) : nullptr;
}

CxXmlHandle CxXmlHandle::FirstChildElement() const {
    return m_node != nullptr ? m_node->FirstChildElement() : nullptr;
}

CxXmlHandle CxXmlHandle::FirstChildElement(const char *value) const {
    return m_node != nullptr ? m_node->FirstChildElement(value) : nullptr;
}

CxXmlHandle CxXmlHandle::Child(int index) const {
    CxXmlNode *child = FirstChild().Node();
    for (int i = 0; child != nullptr && i < index; ++i)
        child = child->NextSibling();
    return child;
}

CxXmlHandle CxXmlHandle::Child(const char *value, int index) const {
    CxXmlNode *child = FirstChild(value).Node();
    for (int i = 0; child != nullptr && i < index; ++i)
        child = child->NextSibling(value);
    return child;
}

CxXmlHandle CxXmlHandle::ChildElement(int index) const {
    CxXmlElement *child = FirstChildElement().Element();
    for (int i = 0; child != nullptr && i < index; ++i)
        child = child->NextSiblingElement();
    return child;
}

CxXmlHandle CxXmlHandle::ChildElement(const char *value, int index) const {
    CxXmlElement *child = FirstChildElement(value).Element();
    for (int i = 0; child != nullptr && i < index; ++i)
        child = child->NextSiblingElement(value);
    return child;
}
