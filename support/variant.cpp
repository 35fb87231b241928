#include "TAVIX20/support/variant.h"

#include "TAVIX20/support/std_string.h"
#include "TAVIX20/support/text_number.h"

CVariant::CVariant(short number) : CVariant(long{number}) {}

CVariant::CVariant(int number) : CVariant(long{number}) {}

CVariant::CVariant(long number) : m_text(tavix::WriteLong(number)) {}

CVariant::CVariant(double number) : m_text(tavix::WriteDouble(number)) {}

CStdString CVariant::ToStdString() const {
    return m_text;
}

int CVariant::ToInt() const {
    return tavix::ReadInt(m_text);
}

long CVariant::ToLong() const {
    return tavix::ReadLong(m_text);
}

double CVariant::ToDouble() const {
    return tavix::ReadDouble(m_text);
}
