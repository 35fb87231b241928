/// CVariant: a value held as text that converts to numbers on demand.
#pragma once

#include "TAVIX20/platform/cstring.h"
#include "TAVIX20/platform/export.h"

#include <concepts>
#include <utility>

class CStdString;

/// Whatever it was made from, its text is what it holds. Null text counts as the empty text.
/// Numbers are those at the start of the text, white space before them skipped, whatever the
/// locale; 0 when there is none, and the nearest of the type's range for one beyond it.
class TAVIX_API CVariant {
public:
    CVariant() = default;
    CVariant(short number);
    CVariant(int number);
    CVariant(long number);
    /// The fewest digits that read back as exactly this number.
    CVariant(double number);
    CVariant(const char *text) : m_text(text) {}
    CVariant(CString text) : m_text(std::move(text)) {}

    const CString &ToString() const { return m_text; }
    CStdString ToStdString() const;
    int ToInt() const;
    /// The low 16 bits of ToInt.
    short ToShort() const { return static_cast<short>(ToInt()); }
    long ToLong() const;
    double ToDouble() const;
    /// 1 when the text reads as the whole number 0, which every text that is no number does; else
    /// 0. It is the other way round than its name says, and programs rely on that.
    int ToBOOL() const { return ToInt() == 0 ? 1 : 0; }
    bool ToBool() const { return ToInt() == 0; } ///< true where ToBOOL gives 1.
    bool IsEmpty() const { return m_text.IsEmpty(); }
    bool Equals(const CVariant &other) const { return m_text == other.m_text; } ///< Case counts.

    // Templates, so that each converts to exactly its own type and CString(variant), which could
    // also take a character, is not ambiguous.
    operator const CString &() const { return m_text; }
    template <std::same_as<int> T>
    operator T() const {
        return ToInt();
    }
    template <std::same_as<short> T>
    operator T() const {
        return ToShort();
    }
    template <std::same_as<long> T>
    operator T() const {
        return ToLong();
    }
    template <std::same_as<double> T>
    operator T() const {
        return ToDouble();
    }

    // With text, texts are compared; with a number, the number that this text reads as.
    bool operator==(const CVariant &other) const { return Equals(other); }
    bool operator==(const CString &text) const { return m_text == text; }
    bool operator==(const char *text) const { return m_text == text; }
    bool operator==(short number) const { return ToShort() == number; }
    bool operator==(int number) const { return ToInt() == number; }
    bool operator==(long number) const { return ToLong() == number; }
    bool operator==(double number) const { return ToDouble() == number; }

private:
    CString m_text;
};
