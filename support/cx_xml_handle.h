/// CxXmlHandle: navigation that needs no tests for null on the way.
#pragma once

#include "TAVIX20/support/cx_xml_node.h"

/// A pointer to a node, or null. What does not exist gives an empty handle, and so does everything
/// that is asked of one.
class TAVIX_API CxXmlHandle {
public:
    CxXmlHandle(CxXmlNode *node) : m_node(node) {}

    CxXmlHandle FirstChild() const;
    CxXmlHandle FirstChild(const char *value) const;
    CxXmlHandle FirstChildElement() const;
    CxXmlHandle FirstChildElement(const char *value) const;
    /// The child with that number, counted from 0; with a value, only nodes of that value count.
    CxXmlHandle Child(int index) const;
    CxXmlHandle Child(const char *value, int index) const;
    CxXmlHandle ChildElement(int index) const;
    CxXmlHandle ChildElement(const char *value, int index) const;

    CxXmlNode *Node() const { return m_node; }
    /// The node as what it is; null when it is something else.
    CxXmlElement *Element() const { return m_node != nullptr ? m_node->ToElement() : nullptr; }
    CxXmlText *Text() const { return m_node != nullptr ? m_node->ToText() : nullptr; }
    CxXmlUnknown *Unknown() const { return m_node != nullptr ? m_node->ToUnknown() : nullptr; }

private:
    CxXmlNode *m_node;
};
