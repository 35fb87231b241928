#include "TAVIX20/display/draw_text.h"

#include "TAVIX20/display/object_canvas.h"
#include "TAVIX20/display/object_keys.h"

static_assert(CDrawTextObj::BOLD == tavix::TextStyle::BOLD &&
              CDrawTextObj::ITALIC == tavix::TextStyle::ITALIC &&
              CDrawTextObj::UNDERLINE == tavix::TextStyle::UNDERLINE);

CDrawTextObj::CDrawTextObj(const tagPOINT &topLeft, int flags, int size, const char *text)
    : Cloneable(topLeft), m_text(text ? text : ""), m_flags(flags & (BOLD | ITALIC | UNDERLINE)) {
    m_fontSize = size;
}

void CDrawTextObj::Draw(tavix::ObjectCanvas &canvas) const {
    const QRect block = canvas.Block(m_anchor.x, m_anchor.y, m_anchor.x, m_anchor.y);
    canvas.Text(block.topLeft(), m_text, {GetFontFace(), m_fontSize, m_flags, m_colour});
}

void CDrawTextObj::CopyShape(const CDrawObj &other) {
    if (const auto *text = dynamic_cast<const CDrawTextObj *>(&other)) {
        m_text = text->m_text;
        m_flags = text->m_flags;
    }
}

int CDrawTextObj::GetDrawMargin() const {
    return tavix::ObjectCanvas::TextMargin(m_text, m_fontSize);
}

void CDrawTextObj::WriteKeys(tavix::KeyWriter &writer) const {
    writer.Text("SHAPE", "TEXT");
    writer.Pair("POINT", m_anchor.x, m_anchor.y);
    writer.Colour("TEXT_COLOR", m_colour);
    writer.Integer("FONT_SIZE", m_fontSize);
    writer.EscapedText("FONT_FACE", GetFontFace());
    writer.Integer("FONT_FLAGS", m_flags);
    writer.EscapedText("TEXT", m_text);
}

void CDrawTextObj::ReadKey(const tavix::KeyEntry &entry) {
    if (entry.key == "POINT") {
        tavix::ReadPoint(entry.value, m_anchor);
    } else if (entry.key == "TEXT_COLOR") {
        tavix::ReadColour(entry.value, m_colour);
    } else if (entry.key == "FONT_SIZE") {
        tavix::ReadInteger(entry.value, m_fontSize);
    } else if (entry.key == "FONT_FACE") {
        SetFont(m_fontSize, tavix::Unescape(entry.value).c_str());
    } else if (entry.key == "FONT_FLAGS") {
        std::int32_t flags = 0;
        if (tavix::ReadInteger(entry.value, flags) && (flags & ~(BOLD | ITALIC | UNDERLINE)) == 0)
            m_flags = flags;
    } else if (entry.key == "TEXT") {
        m_text = tavix::Unescape(entry.value);
    }
}
