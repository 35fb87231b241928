/// Text in the overlay.
#pragma once

#include "TAVIX20/display/draw_obj.h"

#include <string>

/// Text whose top-left corner is that of the anchor's block. It has the same size at every zoom.
/// Lines end with "\n"; the first 4,096 bytes are drawn.
class TAVIX_API CDrawTextObj : public tavix::Cloneable<CDrawTextObj> {
public:
    static constexpr int BOLD = 1;
    static constexpr int ITALIC = 2;
    static constexpr int UNDERLINE = 4;

    CDrawTextObj() = default;
    /// Flags is a sum of the above. Text is in the system's 8-bit encoding; null counts as empty.
    CDrawTextObj(const tagPOINT &topLeft, int flags, int size, const char *text);
    void Draw(tavix::ObjectCanvas &canvas) const override;
    void CopyShape(const CDrawObj &other) override;
    int GetDrawMargin() const override;
    const std::string &GetText() const { return m_text; }

protected:
    void WriteKeys(tavix::KeyWriter &writer) const override;
    void ReadKey(const tavix::KeyEntry &entry) override;

private:
    std::string m_text;
    std::int32_t m_flags = 0;
};
