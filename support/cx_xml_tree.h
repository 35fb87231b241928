/// The seam between the objects of the XML interface and TinyXML's tree.
#pragma once

#include "TAVIX20/support/cx_xml_node.h"

#include <tinyxml.h>

class CxXmlAttribute;

namespace tavix {

/// A node of TinyXML carries its object as its user data, once the object was asked for, and so
/// does an attribute. The caller's user data lies in the object.
struct XmlLink {
    static TiXmlBase &BaseOf(const CxXmlBase &object) { return *object.m_base; }
    static TiXmlNode &NodeOf(const CxXmlNode &object) {
        return static_cast<TiXmlNode &>(*object.m_base);
    }
    static TiXmlAttribute &AttributeOf(const CxXmlAttribute &object);

    /// The object of a node, made now if need be; null for null.
    static CxXmlNode *ObjectOf(TiXmlNode *node);
    static CxXmlNode *ObjectOf(const TiXmlNode *node) {
        return ObjectOf(const_cast<TiXmlNode *>(node));
    }
    /// The object that a node has; null when it has none yet.
    static CxXmlNode *ExistingObjectOf(const TiXmlNode &node) {
        return static_cast<CxXmlNode *>(const_cast<void *>(node.GetUserData()));
    }
    /// The same, only if the object is of a class that a program derived from ours and that may
    /// thus print and clone in its own way.
    static const CxXmlNode *DerivedObjectOf(const TiXmlNode &node);

    /// Deletes the object that a node has; the node stays.
    static void DeleteObject(TiXmlNode &node);
    static void CopyUserData(const CxXmlBase &from, CxXmlBase &to) {
        to.m_userData = from.m_userData;
    }
};

/// Deletes all below a node, with their objects, children before parents and without recursion.
void DeleteChildren(TiXmlNode &node);

/// The same, and the node itself. It is taken out of its parent. Its own object must be gone.
void DeleteNode(TiXmlNode *node);

/// Copies a node with all below it, without recursion. The node itself gets no object.
TiXmlNode *CopyNode(const TiXmlNode &source);

/// Gives a node the value, place, attributes and children of another of the same type, which loses
/// its children.
void TakeContent(TiXmlNode &target, TiXmlNode &source);

/// Gives a declaration the texts of another; it keeps its place and object.
void TakeTexts(TiXmlDeclaration &target, const TiXmlDeclaration &source);

/// Inserts a node that TinyXML would copy: handed over in its place, it gives the node itself as
/// its copy.
class XmlHandOver : public TiXmlUnknown {
public:
    explicit XmlHandOver(TiXmlNode *node) : m_node(node) {}
    TiXmlNode *Clone() const override { return m_node; }

private:
    TiXmlNode *m_node;
};

inline const char *TextOrEmpty(const char *text) {
    return text != nullptr ? text : "";
}

} // namespace tavix
