/// CTavixImage24: a 24-bit colour image.
#pragma once

#include "TAVIX20/image/tavix_image.h"

class TAVIX_API CTavixImage24 : public CTavixImage {
public:
    CTavixImage24() : CTavixImage(24) {}
    /// As Create.
    CTavixImage24(int width, int height);
    /// As SetImagePtr.
    CTavixImage24(int width, int height, const unsigned char *bytes);
    /// A deep copy.
    CTavixImage24(const CTavixImage24 &source);
    /// From an IplImage with three channels; empty for any other.
    explicit CTavixImage24(void *image);
    ~CTavixImage24() override;

    using CTavixImage::GetImagePtr;
    unsigned char *GetImagePtr(int x1, int y1, int x2, int y2) const override;
    void SetImagePtr(void *image) override;
    void SetImagePtr(int width, int height, const unsigned char *bytes) override;
    int SaveImage(const char *path) const override;
    void *GetIplImage() const override;
    int Create(int width, int height) override;
    void PaintImage(CDC *dc, const CRect &rect) const override;
    CTavixImage8 *GetImage8() const override;
    CTavixImage24 *GetImage24() const override;
    void Gray() override {}
    CTavixImage *Clone() const override;

    /// A deep copy into this object.
    virtual CTavixImage24 &operator=(const CTavixImage24 &source);

    /// The colour 0x00BBGGRR at y * stride + 3 * x. Not tested: (x, y) must lie in the image.
    unsigned long GetPixel(int x, int y) const;
    /// Writes that pixel; dropped whole when one of its three bytes lies outside the buffer. Only
    /// the offset is tested, so an x beyond the row writes padding or the neighbouring row.
    void SetPixel(int x, int y, unsigned long colour);
    void SetPixel(int x, int y, unsigned char red, unsigned char green, unsigned char blue);
    /// Sets every pixel; padding is left alone.
    void Fill(unsigned long colour);
    /// Sets every pixel that is exactly from to the colour to.
    void FillTo(unsigned long from, unsigned long to);

private:
    /// As in CTavixImage8.
    std::unique_ptr<unsigned char[]> m_visitMap;
};
