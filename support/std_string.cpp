#include "TAVIX20/support/std_string.h"

#include "TAVIX20/support/text_number.h"

#include <utility>

CStdString::CStdString(const char *text) : m_text(text) {}

CStdString::CStdString(CString text) : m_text(std::move(text)) {}

CStdString::CStdString(int number) : CStdString(long{number}) {}

CStdString::CStdString(long number) : m_text(tavix::WriteLong(number)) {}

CStdString::CStdString(double number) : m_text(tavix::WriteDouble(number)) {}

CStdString::~CStdString() = default;

int CStdString::ToInt() const {
    return tavix::ReadInt(m_text);
}

long CStdString::ToLong() const {
    return tavix::ReadLong(m_text);
}

double CStdString::ToDouble() const {
    return tavix::ReadDouble(m_text);
}
