#include "TAVIX20/support/cx_xml_attribute.h"

#include "TAVIX20/support/cx_xml_element.h"
#include "TAVIX20/support/cx_xml_printer.h"
#include "TAVIX20/support/cx_xml_tree.h"
#include "TAVIX20/support/text_number.h"

using tavix::TextOrEmpty;

namespace {

TiXmlAttribute &Of(const CxXmlAttribute &attribute) {
    return tavix::XmlLink::AttributeOf(attribute);
}

CxXmlAttribute *ExistingObjectOf(TiXmlAttribute *attribute) {
    return attribute != nullptr ? static_cast<CxXmlAttribute *>(attribute->GetUserData()) : nullptr;
}

} // namespace

CxXmlAttribute::CxXmlAttribute(TiXmlAttribute &attribute, CxXmlElement *element)
    : CxXmlBase(&attribute), m_element(element) {
    attribute.SetUserData(this);
}

CxXmlAttribute::CxXmlAttribute() : CxXmlAttribute(*new TiXmlAttribute, nullptr) {}

CxXmlAttribute::CxXmlAttribute(const char *name, const char *value)
    : CxXmlAttribute(*new TiXmlAttribute(TextOrEmpty(name), TextOrEmpty(value)), nullptr) {}

CxXmlAttribute::~CxXmlAttribute() {
    if (m_set != nullptr)
        m_set->Remove(this);
    Of(*this).SetUserData(nullptr);
    if (m_element == nullptr)
        delete &Of(*this);
}

const char *CxXmlAttribute::Name() const {
    return Of(*this).Name();
}

const char *CxXmlAttribute::Value() const {
    return Of(*this).Value();
}

int CxXmlAttribute::IntValue() const {
    return tavix::ReadInt(Value());
}

double CxXmlAttribute::DoubleValue() const {
    return tavix::ReadDouble(Value());
}

int CxXmlAttribute::QueryIntValue(int *value) const {
    return tavix::QueryInt(Value(), *value) ? CXXML_SUCCESS : CXXML_WRONG_TYPE;
}

int CxXmlAttribute::QueryDoubleValue(double *value) const {
    return tavix::QueryDouble(Value(), *value) ? CXXML_SUCCESS : CXXML_WRONG_TYPE;
}

void CxXmlAttribute::SetName(const char *name) {
    Of(*this).SetName(TextOrEmpty(name));
}

void CxXmlAttribute::SetValue(const char *value) {
    Of(*this).SetValue(TextOrEmpty(value));
}

void CxXmlAttribute::SetIntValue(int value) {
    Of(*this).SetIntValue(value);
}

void CxXmlAttribute::SetDoubleValue(double value) {
    SetValue(tavix::WriteFixed(value).c_str());
}

CxXmlAttribute *CxXmlAttribute::Next() {
    if (m_element != nullptr)
        return m_element->ObjectOf(Of(*this).Next());
    return m_set != nullptr ? ExistingObjectOf(Of(*this).Next()) : nullptr;
}

const CxXmlAttribute *CxXmlAttribute::Next() const {
    return const_cast<CxXmlAttribute *>(this)->Next();
}

CxXmlAttribute *CxXmlAttribute::Previous() {
    if (m_element != nullptr)
        return m_element->ObjectOf(Of(*this).Previous());
    return m_set != nullptr ? ExistingObjectOf(Of(*this).Previous()) : nullptr;
}

const CxXmlAttribute *CxXmlAttribute::Previous() const {
    return const_cast<CxXmlAttribute *>(this)->Previous();
}

bool CxXmlAttribute::operator==(const CxXmlAttribute &other) const {
    return Of(*this) == Of(other);
}

bool CxXmlAttribute::operator<(const CxXmlAttribute &other) const {
    return Of(*this) < Of(other);
}

bool CxXmlAttribute::operator>(const CxXmlAttribute &other) const {
    return Of(*this) > Of(other);
}

void CxXmlAttribute::Print(CxArchive &archive, int) const {
    tavix::XmlPrinter(archive).Print(Of(*this));
}

void CxXmlAttribute::StreamOut(CxOStream *stream) const {
    if (stream != nullptr)
        tavix::XmlPrinter(*stream).Print(Of(*this));
}

CxXmlAttributeSet::CxXmlAttributeSet() : m_set(std::make_unique<TiXmlAttributeSet>()) {}

CxXmlAttributeSet::~CxXmlAttributeSet() {
    while (CxXmlAttribute *attribute = First())
        Remove(attribute);
}

void CxXmlAttributeSet::Add(CxXmlAttribute *attribute) {
    if (attribute == nullptr || attribute->m_element != nullptr || attribute->m_set != nullptr ||
        Find(attribute->Name()) != nullptr)
        return;
    m_set->Add(&Of(*attribute));
    attribute->m_set = this;
}

void CxXmlAttributeSet::Remove(CxXmlAttribute *attribute) {
    if (attribute == nullptr || attribute->m_set != this)
        return;
    m_set->Remove(&Of(*attribute));
    attribute->m_set = nullptr;
}

CxXmlAttribute *CxXmlAttributeSet::First() {
    return ExistingObjectOf(m_set->First());
}

const CxXmlAttribute *CxXmlAttributeSet::First() const {
    return ExistingObjectOf(m_set->First());
}

CxXmlAttribute *CxXmlAttributeSet::Last() {
    return ExistingObjectOf(m_set->Last());
}

const CxXmlAttribute *CxXmlAttributeSet::Last() const {
    return ExistingObjectOf(m_set->Last());
}

CxXmlAttribute *CxXmlAttributeSet::Find(const char *name) {
    return ExistingObjectOf(m_set->Find(TextOrEmpty(name)));
}

const CxXmlAttribute *CxXmlAttributeSet::Find(const char *name) const {
    return ExistingObjectOf(m_set->Find(TextOrEmpty(name)));
}
