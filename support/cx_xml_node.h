/// CxXmlNode: a node of the tree of an XML document.
#pragma once

#include "TAVIX20/platform/cstring.h"
#include "TAVIX20/support/cx_xml_base.h"

class CStdString;
class CxXmlComment;
class CxXmlDeclaration;
class CxXmlDocument;
class CxXmlElement;
class CxXmlText;
class CxXmlUnknown;
class TiXmlNode;

/// Whoever makes a node owns it until it is linked into a tree; then it goes with its parent.
/// Deleting a node deletes its children, however deep, and takes it out of its parent. Pointers to
/// children, siblings and parents belong to the tree.
class TAVIX_API CxXmlNode : public CxXmlBase {
public:
    enum NodeType { DOCUMENT, ELEMENT, COMMENT, UNKNOWN, TEXT, DECLARATION, TYPECOUNT };

    ~CxXmlNode() override;

    void Print(CxArchive &archive, int depth) const override;
    void StreamOut(CxOStream *stream) const override;

    /// The name of a document's file or of an element, else the text; valid until it is set again.
    const char *Value() const;
    void SetValue(const char *value);
    CStdString ToStdString() const;
    CString ToString() const;
    /// The number at the start of the value, the nearest of the type's range for one beyond it; 0
    /// when there is none.
    int ToInt() const;
    double ToDouble() const;

    int Type() const; ///< A NodeType.
    /// This node as what it is; null when it is something else.
    CxXmlDocument *ToDocument() const;
    CxXmlElement *ToElement() const;
    CxXmlComment *ToComment() const;
    CxXmlUnknown *ToUnknown() const;
    CxXmlText *ToText() const;
    CxXmlDeclaration *ToDeclaration() const;

    /// Navigation gives null where there is nothing. With a value, only nodes of that value count.
    CxXmlNode *Parent();
    const CxXmlNode *Parent() const;
    CxXmlNode *FirstChild();
    const CxXmlNode *FirstChild() const;
    CxXmlNode *FirstChild(const char *value);
    const CxXmlNode *FirstChild(const char *value) const;
    CxXmlNode *LastChild();
    const CxXmlNode *LastChild() const;
    CxXmlNode *LastChild(const char *value);
    const CxXmlNode *LastChild(const char *value) const;
    /// The child after previous, the first one after null.
    CxXmlNode *IterateChildren(const CxXmlNode *previous);
    const CxXmlNode *IterateChildren(const CxXmlNode *previous) const;
    CxXmlNode *IterateChildren(const char *value, const CxXmlNode *previous);
    const CxXmlNode *IterateChildren(const char *value, const CxXmlNode *previous) const;
    CxXmlNode *PreviousSibling();
    const CxXmlNode *PreviousSibling() const;
    CxXmlNode *PreviousSibling(const char *value);
    const CxXmlNode *PreviousSibling(const char *value) const;
    CxXmlNode *NextSibling();
    const CxXmlNode *NextSibling() const;
    CxXmlNode *NextSibling(const char *value);
    const CxXmlNode *NextSibling(const char *value) const;
    CxXmlElement *NextSiblingElement();
    const CxXmlElement *NextSiblingElement() const;
    CxXmlElement *NextSiblingElement(const char *value);
    const CxXmlElement *NextSiblingElement(const char *value) const;
    CxXmlElement *FirstChildElement();
    const CxXmlElement *FirstChildElement() const;
    CxXmlElement *FirstChildElement(const char *value);
    const CxXmlElement *FirstChildElement(const char *value) const;
    /// The document that this node is in; null when it is in none.
    CxXmlDocument *GetDocument();
    const CxXmlDocument *GetDocument() const;
    bool NoChildren() const;

    /// Editing. A document cannot be a child: its copy is refused, and recorded as an error of the
    /// document that was to take it. A refusal gives null and changes nothing.
    ///
    /// These copy the node with all below it and return the copy.
    CxXmlNode *InsertEndChild(const CxXmlNode &addThis);
    /// Refused where the other node is not a child of this one.
    CxXmlNode *InsertBeforeChild(CxXmlNode *beforeThis, const CxXmlNode &addThis);
    CxXmlNode *InsertAfterChild(CxXmlNode *afterThis, const CxXmlNode &addThis);
    /// Deletes replaceThis, too.
    CxXmlNode *ReplaceChild(CxXmlNode *replaceThis, const CxXmlNode &withThis);
    /// Takes the node itself, which was made with new, and returns it. A document is deleted;
    /// refused where the node is in a tree already or this node is below it.
    CxXmlNode *LinkEndChild(CxXmlNode *addThis);
    /// Deletes a child; false where the node is not a child of this one.
    bool RemoveChild(CxXmlNode *removeThis);
    /// Deletes all children.
    void Clear();

    /// A copy of this node with all below it; the caller's to delete.
    virtual CxXmlNode *Clone() const = 0;

protected:
    explicit CxXmlNode(TiXmlNode &node);
    /// For copies: a new node of the same content, children included.
    CxXmlNode(const CxXmlNode &copy);
    void Assign(const CxXmlNode &source);

private:
    friend struct tavix::XmlLink;

    CxXmlNode *Take(const CxXmlNode &addThis);

    bool m_isGoing = false; ///< The tree is deleting the node by itself.
};

/// StreamOut as an operator.
TAVIX_API CxOStream &operator<<(CxOStream &stream, const CxXmlNode &node);
