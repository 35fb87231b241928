#include "TAVIX20/support/cx_xml_tree.h"

#include "TAVIX20/support/cx_xml.h"

#include <typeinfo>

namespace tavix {

namespace {

/// Reaches the fields of TinyXML's nodes that it keeps for derived classes.
struct Fields : TiXmlNode {
    static TiXmlCursor &Location(TiXmlNode &node) { return node.*(&Fields::location); }
    static const TiXmlCursor &Location(const TiXmlNode &node) { return node.*(&Fields::location); }
    static TiXmlNode *&Parent(TiXmlNode &node) { return node.*(&Fields::parent); }
    static TiXmlNode *&FirstChild(TiXmlNode &node) { return node.*(&Fields::firstChild); }
    static TiXmlNode *&LastChild(TiXmlNode &node) { return node.*(&Fields::lastChild); }
};

void CopyAttributes(const TiXmlElement &source, TiXmlElement &target) {
    for (const TiXmlAttribute *each = source.FirstAttribute(); each != nullptr; each = each->Next())
        target.SetAttribute(each->Name(), each->Value());
}

/// Values are cut at a zero, as TinyXML's own copies are.
TiXmlNode *CopyWithoutChildren(const TiXmlNode &source) {
    TiXmlNode *copy = nullptr;
    if (const TiXmlElement *element = source.ToElement()) {
        auto *const newElement = new TiXmlElement(element->Value());
        CopyAttributes(*element, *newElement);
        copy = newElement;
    } else if (source.ToDocument() != nullptr) {
        copy = new TiXmlDocument(source.Value());
    } else {
        copy = source.Clone();
        copy->SetUserData(nullptr);
    }
    Fields::Location(*copy) = Fields::Location(source);
    return copy;
}

TiXmlNode *CopyChild(const TiXmlNode &source) {
    if (const CxXmlNode *derived = XmlLink::DerivedObjectOf(source)) {
        if (CxXmlNode *clone = derived->Clone())
            return &XmlLink::NodeOf(*clone);
    }
    TiXmlNode *const copy = CopyWithoutChildren(source);
    const CxXmlNode *const object = XmlLink::ExistingObjectOf(source);
    if (object != nullptr && object->GetUserData() != nullptr)
        XmlLink::CopyUserData(*object, *XmlLink::ObjectOf(copy));
    return copy;
}

} // namespace

TiXmlAttribute &XmlLink::AttributeOf(const CxXmlAttribute &object) {
    return static_cast<TiXmlAttribute &>(BaseOf(object));
}

CxXmlNode *XmlLink::ObjectOf(TiXmlNode *node) {
    if (node == nullptr)
        return nullptr;
    if (CxXmlNode *object = ExistingObjectOf(*node))
        return object;
    if (TiXmlElement *element = node->ToElement())
        return new CxXmlElement(*element);
    if (TiXmlText *text = node->ToText())
        return new CxXmlText(*text);
    if (TiXmlComment *comment = node->ToComment())
        return new CxXmlComment(*comment);
    if (TiXmlDeclaration *declaration = node->ToDeclaration())
        return new CxXmlDeclaration(*declaration);
    return new CxXmlUnknown(*node->ToUnknown());
}

const CxXmlNode *XmlLink::DerivedObjectOf(const TiXmlNode &node) {
    const CxXmlNode *const object = ExistingObjectOf(node);
    if (object == nullptr)
        return nullptr;
    const std::type_info &type = typeid(*object);
    const bool isOurs = type == typeid(CxXmlElement) || type == typeid(CxXmlText) ||
                        type == typeid(CxXmlComment) || type == typeid(CxXmlDeclaration) ||
                        type == typeid(CxXmlUnknown) || type == typeid(CxXmlDocument);
    return isOurs ? nullptr : object;
}

void XmlLink::DeleteObject(TiXmlNode &node) {
    if (CxXmlNode *object = ExistingObjectOf(node)) {
        object->m_isGoing = true;
        delete object;
    }
}

void DeleteChildren(TiXmlNode &root) {
    TiXmlNode *node = &root;
    for (;;) {
        if (TiXmlNode *child = node->LastChild()) {
            node = child;
            continue;
        }
        if (node == &root)
            return;
        TiXmlNode *const parent = node->Parent();
        XmlLink::DeleteObject(*node);
        parent->RemoveChild(node);
        node = parent;
    }
}

void DeleteNode(TiXmlNode *node) {
    DeleteChildren(*node);
    if (TiXmlNode *parent = node->Parent())
        parent->RemoveChild(node);
    else
        delete node;
}

TiXmlNode *CopyNode(const TiXmlNode &root) {
    TiXmlNode *const copyOfRoot = CopyWithoutChildren(root);
    const TiXmlNode *source = &root;
    TiXmlNode *copy = copyOfRoot;
    for (;;) {
        // A derived object's clone comes with its children.
        const bool isDone = source != &root && XmlLink::DerivedObjectOf(*source) != nullptr;
        if (source->FirstChild() != nullptr && !isDone) {
            source = source->FirstChild();
        } else {
            while (source != &root && source->NextSibling() == nullptr) {
                source = source->Parent();
                copy = copy->Parent();
            }
            if (source == &root)
                return copyOfRoot;
            source = source->NextSibling();
            copy = copy->Parent();
        }
        copy = copy->LinkEndChild(CopyChild(*source));
    }
}

void TakeContent(TiXmlNode &target, TiXmlNode &source) {
    DeleteChildren(target);
    if (TiXmlDeclaration *declaration = target.ToDeclaration())
        TakeTexts(*declaration, *source.ToDeclaration());
    if (TiXmlElement *element = target.ToElement()) {
        while (const TiXmlAttribute *attribute = element->FirstAttribute())
            element->RemoveAttribute(attribute->Name());
        CopyAttributes(*source.ToElement(), *element);
    }
    target.SetValue(source.Value());
    Fields::Location(target) = Fields::Location(source);

    TiXmlNode *child = source.FirstChild();
    Fields::FirstChild(source) = nullptr;
    Fields::LastChild(source) = nullptr;
    while (child != nullptr) {
        TiXmlNode *const next = child->NextSibling();
        Fields::Parent(*child) = nullptr;
        target.LinkEndChild(child);
        child = next;
    }
}

void TakeTexts(TiXmlDeclaration &target, const TiXmlDeclaration &source) {
    const TiXmlCursor location = Fields::Location(target);
    void *const object = target.GetUserData();
    target = source;
    target.SetUserData(object);
    Fields::Location(target) = location;
}

} // namespace tavix
