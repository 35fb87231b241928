/// Overlay objects that mark one pixel of the image.
#pragma once

#include "TAVIX20/display/draw_obj.h"

/// One client pixel at the centre of the image pixel's block.
class TAVIX_API CDrawPointObj : public tavix::Cloneable<CDrawPointObj> {
public:
    CDrawPointObj() = default;
    explicit CDrawPointObj(const tagPOINT &point) : Cloneable(point) {}
    void Draw(tavix::ObjectCanvas &canvas) const override;

protected:
    void WriteKeys(tavix::KeyWriter &writer) const override;
    void ReadKey(const tavix::KeyEntry &entry) override;
};

/// An upright cross over the image pixels x - armX to x + armX and y - armY to y + armY. On the
/// screen an arm has at least MIN_ARM client pixels, so that the mark is seen at every zoom; an arm
/// of 0 or less is left out.
class TAVIX_API CDrawCrossPointObj : public tavix::Cloneable<CDrawCrossPointObj> {
public:
    static constexpr int MIN_ARM = 3;

    CDrawCrossPointObj() = default;
    CDrawCrossPointObj(const tagPOINT &centre, const tagSIZE &arms);
    void Draw(tavix::ObjectCanvas &canvas) const override;
    CRect GetBoundRect() const override;
    void CopyShape(const CDrawObj &other) override;
    int GetDrawMargin() const override { return CDrawObj::GetDrawMargin() + MIN_ARM; }

protected:
    void WriteKeys(tavix::KeyWriter &writer) const override;
    void ReadKey(const tavix::KeyEntry &entry) override;

private:
    CSize m_arms;
};
