/// The private messages that tools send to views.
#pragma once

#include "TAVIX20/platform/types.h"

#include <QEvent>

namespace TavixArray {
class CPointArray;
}

namespace tavix {

/// A tool has a result; sent, so that the points live as long as the message.
class ToolFinishEvent : public QEvent {
public:
    static constexpr auto TYPE = static_cast<QEvent::Type>(QEvent::User + 1010);

    /// The point is packed, x in the low and y in the high 16 bits: hosts get these halves without
    /// sign.
    ToolFinishEvent(const POINT &point, const TavixArray::CPointArray &result)
        : QEvent(TYPE),
          m_packed((static_cast<DWORD>(point.x) & 0xFFFF) | (static_cast<DWORD>(point.y) << 16)),
          m_result(result) {}

    int X() const { return static_cast<int>(m_packed & 0xFFFF); }
    int Y() const { return static_cast<int>(m_packed >> 16); }
    const TavixArray::CPointArray &Result() const { return m_result; }

private:
    DWORD m_packed;
    const TavixArray::CPointArray &m_result;
};

/// A tool was left; posted.
class ToolCancelledEvent : public QEvent {
public:
    static constexpr auto TYPE = static_cast<QEvent::Type>(QEvent::User + 1020);

    ToolCancelledEvent() : QEvent(TYPE) {}
};

} // namespace tavix
