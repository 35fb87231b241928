/// CxXmlAttribute: a name and a value. CxXmlAttributeSet: attributes in a row.
#pragma once

#include "TAVIX20/support/cx_xml_base.h"

#include <memory>

class CxXmlAttributeSet;
class CxXmlElement;
class TiXmlAttribute;
class TiXmlAttributeSet;

/// Attributes of an element belong to it and go with it. Others are their maker's.
class TAVIX_API CxXmlAttribute : public CxXmlBase {
public:
    CxXmlAttribute();
    CxXmlAttribute(const char *name, const char *value);
    ~CxXmlAttribute() override;

    const char *Name() const;
    const char *Value() const;
    /// The number at the start of the value, the nearest of the type's range for one beyond it; 0
    /// when there is none.
    int IntValue() const;
    double DoubleValue() const;
    /// CXXML_SUCCESS and the number, or CXXML_WRONG_TYPE and no change.
    int QueryIntValue(int *value) const;
    int QueryDoubleValue(double *value) const;

    void SetName(const char *name);
    void SetValue(const char *value);
    void SetIntValue(int value);
    void SetDoubleValue(double value); ///< With six digits behind the point, as printf's "%f".

    /// The neighbours in the element or set; null at its end and outside of any.
    CxXmlAttribute *Next();
    const CxXmlAttribute *Next() const;
    CxXmlAttribute *Previous();
    const CxXmlAttribute *Previous() const;

    /// Attributes compare by their names.
    bool operator==(const CxXmlAttribute &other) const;
    bool operator<(const CxXmlAttribute &other) const;
    bool operator>(const CxXmlAttribute &other) const;

    void Print(CxArchive &archive, int depth) const override;
    void StreamOut(CxOStream *stream) const override;

private:
    friend class CxXmlAttributeSet;
    friend class CxXmlElement;
    friend struct tavix::XmlLink;
    CxXmlAttribute(TiXmlAttribute &attribute, CxXmlElement *element);

    CxXmlElement *m_element = nullptr;  ///< Whose attribute it is; null for an attribute by itself.
    CxXmlAttributeSet *m_set = nullptr; ///< The set that an attribute by itself is in.
};

/// A circular list of attributes, which stay their makers'.
class TAVIX_API CxXmlAttributeSet {
public:
    CxXmlAttributeSet();
    /// Takes the attributes out of the set.
    ~CxXmlAttributeSet();
    CxXmlAttributeSet(const CxXmlAttributeSet &) = delete;
    CxXmlAttributeSet &operator=(const CxXmlAttributeSet &) = delete;

    /// Does nothing where the attribute is in an element or set, or its name in this one.
    void Add(CxXmlAttribute *attribute);
    /// Does nothing where the attribute is not in this set.
    void Remove(CxXmlAttribute *attribute);
    CxXmlAttribute *First();
    const CxXmlAttribute *First() const;
    CxXmlAttribute *Last();
    const CxXmlAttribute *Last() const;
    CxXmlAttribute *Find(const char *name);
    const CxXmlAttribute *Find(const char *name) const;

private:
    std::unique_ptr<TiXmlAttributeSet> m_set;
};
