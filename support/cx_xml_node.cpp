#include "TAVIX20/support/cx_xml_node.h"

#include "TAVIX20/support/cx_xml.h"
#include "TAVIX20/support/cx_xml_error.h"
#include "TAVIX20/support/cx_xml_printer.h"
#include "TAVIX20/support/cx_xml_tree.h"
#include "TAVIX20/support/text_number.h"

#include <memory>

using tavix::TextOrEmpty;
using tavix::XmlLink;

namespace {

TiXmlNode &Of(const CxXmlNode &node) {
    return XmlLink::NodeOf(node);
}

CxXmlNode *ObjectOf(const TiXmlNode *node) {
    return XmlLink::ObjectOf(node);
}

CxXmlElement *ElementObjectOf(const TiXmlElement *element) {
    return static_cast<CxXmlElement *>(XmlLink::ObjectOf(element));
}

} // namespace

CxXmlNode::CxXmlNode(TiXmlNode &node) : CxXmlBase(&node) {
    node.SetUserData(this);
}

CxXmlNode::CxXmlNode(const CxXmlNode &copy) : CxXmlNode(*tavix::CopyNode(Of(copy))) {
    XmlLink::CopyUserData(copy, *this);
}

CxXmlNode::~CxXmlNode() {
    Of(*this).SetUserData(nullptr);
    if (!m_isGoing)
        tavix::DeleteNode(&Of(*this));
}

void CxXmlNode::Assign(const CxXmlNode &source) {
    if (&source == this)
        return;
    // The source may lie below this node, so it is copied before anything is deleted.
    const std::unique_ptr<TiXmlNode> copy(tavix::CopyNode(Of(source)));
    XmlLink::CopyUserData(source, *this);
    tavix::TakeContent(Of(*this), *copy);
}

void CxXmlNode::Print(CxArchive &archive, int depth) const {
    tavix::XmlPrinter(archive).Print(Of(*this), depth);
}

void CxXmlNode::StreamOut(CxOStream *stream) const {
    if (stream != nullptr)
        tavix::XmlPrinter(*stream).Print(Of(*this), 0);
}

const char *CxXmlNode::Value() const {
    return Of(*this).Value();
}

void CxXmlNode::SetValue(const char *value) {
    Of(*this).SetValue(TextOrEmpty(value));
}

CStdString CxXmlNode::ToStdString() const {
    return CStdString(Value());
}

CString CxXmlNode::ToString() const {
    return CString(Value());
}

int CxXmlNode::ToInt() const {
    return tavix::ReadInt(Value());
}

double CxXmlNode::ToDouble() const {
    return tavix::ReadDouble(Value());
}

int CxXmlNode::Type() const {
    return Of(*this).Type();
}

CxXmlDocument *CxXmlNode::ToDocument() const {
    return static_cast<CxXmlDocument *>(ObjectOf(Of(*this).ToDocument()));
}

CxXmlElement *CxXmlNode::ToElement() const {
    return ElementObjectOf(Of(*this).ToElement());
}

CxXmlComment *CxXmlNode::ToComment() const {
    return static_cast<CxXmlComment *>(ObjectOf(Of(*this).ToComment()));
}

CxXmlUnknown *CxXmlNode::ToUnknown() const {
    return static_cast<CxXmlUnknown *>(ObjectOf(Of(*this).ToUnknown()));
}

CxXmlText *CxXmlNode::ToText() const {
    return static_cast<CxXmlText *>(ObjectOf(Of(*this).ToText()));
}

CxXmlDeclaration *CxXmlNode::ToDeclaration() const {
    return static_cast<CxXmlDeclaration *>(ObjectOf(Of(*this).ToDeclaration()));
}

CxXmlNode *CxXmlNode::Parent() {
    return ObjectOf(Of(*this).Parent());
}

const CxXmlNode *CxXmlNode::Parent() const {
    return ObjectOf(Of(*this).Parent());
}

CxXmlNode *CxXmlNode::FirstChild() {
    return ObjectOf(Of(*this).FirstChild());
}

const CxXmlNode *CxXmlNode::FirstChild() const {
    return ObjectOf(Of(*this).FirstChild());
}

CxXmlNode *CxXmlNode::FirstChild(const char *value) {
    return ObjectOf(Of(*this).FirstChild(TextOrEmpty(value)));
}

const CxXmlNode *CxXmlNode::FirstChild(const char *value) const {
    return ObjectOf(Of(*this).FirstChild(TextOrEmpty(value)));
}

CxXmlNode *CxXmlNode::LastChild() {
    return ObjectOf(Of(*this).LastChild());
}

const CxXmlNode *CxXmlNode::LastChild() const {
    return ObjectOf(Of(*this).LastChild());
}

CxXmlNode *CxXmlNode::LastChild(const char *value) {
    return ObjectOf(Of(*this).LastChild(TextOrEmpty(value)));
}

const CxXmlNode *CxXmlNode::LastChild(const char *value) const {
    return ObjectOf(Of(*this).LastChild(TextOrEmpty(value)));
}

CxXmlNode *CxXmlNode::IterateChildren(const CxXmlNode *previous) {
    return previous == nullptr ? FirstChild() : ObjectOf(Of(*previous).NextSibling());
}

const CxXmlNode *CxXmlNode::IterateChildren(const CxXmlNode *previous) const {
    return previous == nullptr ? FirstChild() : previous->NextSibling();
}

CxXmlNode *CxXmlNode::IterateChildren(const char *value, const CxXmlNode *previous) {
    return previous == nullptr ? FirstChild(value)
                               : ObjectOf(Of(*previous).NextSibling(TextOrEmpty(value)));
}

const CxXmlNode *CxXmlNode::IterateChildren(const char *value, const CxXmlNode *previous) const {
    return previous == nullptr ? FirstChild(value) : previous->NextSibling(value);
}

CxXmlNode *CxXmlNode::PreviousSibling() {
    return ObjectOf(Of(*this).PreviousSibling());
}

const CxXmlNode *CxXmlNode::PreviousSibling() const {
    return ObjectOf(Of(*this).PreviousSibling());
}

CxXmlNode *CxXmlNode::PreviousSibling(const char *value) {
    return ObjectOf(Of(*this).PreviousSibling(TextOrEmpty(value)));
}

const CxXmlNode *CxXmlNode::PreviousSibling(const char *value) const {
    return ObjectOf(Of(*this).PreviousSibling(TextOrEmpty(value)));
}

CxXmlNode *CxXmlNode::NextSibling() {
    return ObjectOf(Of(*this).NextSibling());
}

const CxXmlNode *CxXmlNode::NextSibling() const {
    return ObjectOf(Of(*this).NextSibling());
}

CxXmlNode *CxXmlNode::NextSibling(const char *value) {
    return ObjectOf(Of(*this).NextSibling(TextOrEmpty(value)));
}

const CxXmlNode *CxXmlNode::NextSibling(const char *value) const {
    return ObjectOf(Of(*this).NextSibling(TextOrEmpty(value)));
}

CxXmlElement *CxXmlNode::NextSiblingElement() {
    return ElementObjectOf(Of(*this).NextSiblingElement());
}

const CxXmlElement *CxXmlNode::NextSiblingElement() const {
    return ElementObjectOf(Of(*this).NextSiblingElement());
}

CxXmlElement *CxXmlNode::NextSiblingElement(const char *value) {
    return ElementObjectOf(Of(*this).NextSiblingElement(TextOrEmpty(value)));
}

const CxXmlElement *CxXmlNode::NextSiblingElement(const char *value) const {
    return ElementObjectOf(Of(*this).NextSiblingElement(TextOrEmpty(value)));
}

CxXmlElement *CxXmlNode::FirstChildElement() {
    return ElementObjectOf(Of(*this).FirstChildElement());
}

const CxXmlElement *CxXmlNode::FirstChildElement() const {
    return ElementObjectOf(Of(*this).FirstChildElement());
}

CxXmlElement *CxXmlNode::FirstChildElement(const char *value) {
    return ElementObjectOf(Of(*this).FirstChildElement(TextOrEmpty(value)));
}

const CxXmlElement *CxXmlNode::FirstChildElement(const char *value) const {
    return ElementObjectOf(Of(*this).FirstChildElement(TextOrEmpty(value)));
}

CxXmlDocument *CxXmlNode::GetDocument() {
    return static_cast<CxXmlDocument *>(ObjectOf(Of(*this).GetDocument()));
}

const CxXmlDocument *CxXmlNode::GetDocument() const {
    return static_cast<CxXmlDocument *>(ObjectOf(Of(*this).GetDocument()));
}

bool CxXmlNode::NoChildren() const {
    return Of(*this).NoChildren();
}

CxXmlNode *CxXmlNode::Take(const CxXmlNode &addThis) {
    if (addThis.ToDocument() == nullptr)
        return addThis.Clone();
    if (CxXmlDocument *document = GetDocument())
        document->SetError(tavix::XML_ERROR_OTHER, 0, 0, tavix::XML_DOCUMENT_AS_CHILD);
    return nullptr;
}

CxXmlNode *CxXmlNode::InsertEndChild(const CxXmlNode &addThis) {
    CxXmlNode *const copy = Take(addThis);
    return copy != nullptr ? ObjectOf(Of(*this).LinkEndChild(&Of(*copy))) : nullptr;
}

CxXmlNode *CxXmlNode::InsertBeforeChild(CxXmlNode *beforeThis, const CxXmlNode &addThis) {
    if (beforeThis == nullptr || Of(*beforeThis).Parent() != &Of(*this))
        return nullptr;
    CxXmlNode *const copy = Take(addThis);
    if (copy != nullptr)
        Of(*this).InsertBeforeChild(&Of(*beforeThis), tavix::XmlHandOver(&Of(*copy)));
    return copy;
}

CxXmlNode *CxXmlNode::InsertAfterChild(CxXmlNode *afterThis, const CxXmlNode &addThis) {
    if (afterThis == nullptr || Of(*afterThis).Parent() != &Of(*this))
        return nullptr;
    CxXmlNode *const copy = Take(addThis);
    if (copy != nullptr)
        Of(*this).InsertAfterChild(&Of(*afterThis), tavix::XmlHandOver(&Of(*copy)));
    return copy;
}

CxXmlNode *CxXmlNode::ReplaceChild(CxXmlNode *replaceThis, const CxXmlNode &withThis) {
    CxXmlNode *const copy = InsertAfterChild(replaceThis, withThis);
    if (copy != nullptr)
        RemoveChild(replaceThis);
    return copy;
}

CxXmlNode *CxXmlNode::LinkEndChild(CxXmlNode *addThis) {
    if (addThis == nullptr || addThis == this || Of(*addThis).Parent() != nullptr)
        return nullptr;
    if (addThis->ToDocument() != nullptr) {
        Take(*addThis);
        delete addThis;
        return nullptr;
    }
    if (!addThis->NoChildren()) {
        for (const TiXmlNode *above = &Of(*this); above != nullptr; above = above->Parent()) {
            if (above == &Of(*addThis))
                return nullptr;
        }
    }
    Of(*this).LinkEndChild(&Of(*addThis));
    return addThis;
}

bool CxXmlNode::RemoveChild(CxXmlNode *removeThis) {
    if (removeThis == nullptr || Of(*removeThis).Parent() != &Of(*this))
        return false;
    delete removeThis;
    return true;
}

void CxXmlNode::Clear() {
    tavix::DeleteChildren(Of(*this));
}

CxOStream &operator<<(CxOStream &stream, const CxXmlNode &node) {
    node.StreamOut(&stream);
    return stream;
}
