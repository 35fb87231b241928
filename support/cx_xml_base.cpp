#include "TAVIX20/support/cx_xml_base.h"

#include <tinyxml.h>

#include <cstring>

void CxXmlParsingData::Stamp(const char *now, CxXmlEncoding encoding) {
    if (m_tabSize < 1)
        return;
    const bool isUtf8 = encoding == CXXML_ENCODING_UTF8;
    const auto isBreak = [](const char *pair) {
        return std::memcmp(pair, "\r\n", 2) == 0 || std::memcmp(pair, "\n\r", 2) == 0;
    };
    const auto hasNoWidth = [](const char *at) {
        return std::strncmp(at, "\xEF\xBB\xBF", 3) == 0 ||
               std::strncmp(at, "\xEF\xBF\xBE", 3) == 0 || std::strncmp(at, "\xEF\xBF\xBF", 3) == 0;
    };
    while (m_stamp < now && *m_stamp != '\0') {
        if (*m_stamp == '\r' || *m_stamp == '\n') {
            ++m_cursor.row;
            m_cursor.col = 0;
            m_stamp += isBreak(m_stamp) ? 2 : 1;
        } else if (*m_stamp == '\t') {
            m_cursor.col = (m_cursor.col / m_tabSize + 1) * m_tabSize;
            ++m_stamp;
        } else if (isUtf8 && hasNoWidth(m_stamp)) {
            m_stamp += 3;
        } else {
            const int step =
                isUtf8 ? TiXmlBase::utf8ByteTable[static_cast<unsigned char>(*m_stamp)] : 1;
            ++m_cursor.col;
            // A character that the text's end cuts off.
            for (int i = 0; i < step && *m_stamp != '\0'; ++i)
                ++m_stamp;
        }
    }
}

CxXmlBase::~CxXmlBase() = default;

void CxXmlBase::SetCondenseWhiteSpace(bool condense) {
    TiXmlBase::SetCondenseWhiteSpace(condense);
}

bool CxXmlBase::IsWhiteSpaceCondensed() {
    return TiXmlBase::IsWhiteSpaceCondensed();
}

int CxXmlBase::Row() const {
    return m_base->Row();
}

int CxXmlBase::Column() const {
    return m_base->Column();
}
