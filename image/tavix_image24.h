/// CTavixImage24: a 24-bit colour image.
#pragma once

#include "TAVIX20/image/tavix_image.h"

class CBlobRectArray;

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
    using CTavixImage::PaintImage;
    using CTavixImage::Resize;
    unsigned char *GetImagePtr(int x1, int y1, int x2, int y2) const override;
    void SetImagePtr(void *image) override;
    void SetImagePtr(int width, int height, const unsigned char *bytes) override;
    int SaveImage(const char *path) const override;
    void *GetIplImage() const override;
    int Create(int width, int height) override;
    void PaintImage(CDC *dc, const CRect &rect) const override;
    void Resize(int width, int height, int mode) override;
    void CropImage(int x1, int y1, int x2, int y2) override;
    void GetHistogramData(ColorLevel level, long *histogram) const override;
    void AutoContrast() override;
    CTavixImage8 *GetImage8() const override;
    CTavixImage24 *GetImage24() const override;
    void Gray() override {}
    void Emboss() override {}
    void Roberts() override {}
    void Prewitt() override {}
    void LogEdge() override {}
    void HistoEqualize() override {}
    void HistoNormalize() override {}
    void HistoLog() override {}
    void HistoRoot() override {}
    void HistoStretch() override {}
    CTavixImage *Clone() const override;

    /// A deep copy into this object.
    virtual CTavixImage24 &operator=(const CTavixImage24 &source);
    /// Image arithmetic, channel by channel; as the operators of CTavixImage8.
    virtual CTavixImage24 &operator+(const CTavixImage24 &other);
    virtual CTavixImage24 &operator-(const CTavixImage24 &other);
    virtual CTavixImage24 &operator*(const CTavixImage24 &other);
    virtual CTavixImage24 &operator/(const CTavixImage24 &other);
    virtual CTavixImage24 &operator&(const CTavixImage24 &other);
    virtual CTavixImage24 &operator|(const CTavixImage24 &other);

    /// As CTavixImage8::CropImage2.
    CTavixImage24 *CropImage2(int x1, int y1, int x2, int y2) const;

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

    /// Blob analysis as in CTavixImage8, of the pixels whose red, green and blue each lie within
    /// the tolerance of the reference. Blobs are accepted by minW - 1 <= right - left <= maxW - 1
    /// and minH - 1 <= bottom - top <= maxH - 1: the lower bounds count pixels.
    int GetBlobList(unsigned char red, unsigned char green, unsigned char blue,
                    unsigned char redTolerance, unsigned char greenTolerance,
                    unsigned char blueTolerance, long minW, long maxW, long minH, long maxH,
                    CBlobRectArray &blobs) const;
    int GetBlobList(int x1, int y1, int x2, int y2, unsigned char red, unsigned char green,
                    unsigned char blue, unsigned char redTolerance, unsigned char greenTolerance,
                    unsigned char blueTolerance, long minW, long maxW, long minH, long maxH,
                    CBlobRectArray &blobs) const;
    int GetPieceBlobAtPoint(int x, int y, unsigned char tolerance,
                            TavixArray::CPointArray &points) const override;

    /// One plane as a new grey image of the same size, which the caller deletes; of an image
    /// without pixels an empty one. Null when memory runs out.
    CTavixImage8 *GetRedSpace() const;
    CTavixImage8 *GetGreenSpace() const;
    CTavixImage8 *GetBlueSpace() const;
    /// OpenCV's 8-bit YUV.
    CTavixImage8 *GetYSpace() const;
    CTavixImage8 *GetUSpace() const;
    CTavixImage8 *GetVSpace() const;
    /// OpenCV's 8-bit HLS and HSV, hue from 0 to 180, of the pixel with red and blue exchanged: a
    /// red pixel has the hue of blue, 120. Thresholds of callers rely on that.
    CTavixImage8 *GetHSpaceOfHLS() const;
    CTavixImage8 *GetLSpaceOfHLS() const;
    CTavixImage8 *GetSSpaceOfHLS() const;
    CTavixImage8 *GetHSpaceOfHSV() const;
    CTavixImage8 *GetSSpaceOfHSV() const;
    CTavixImage8 *GetVSpaceOfHSV() const;
    /// GetImage8.
    CTavixImage8 *GetGraySpace() const;

    /// Multiplies one channel of every pixel by the gain, rounded to nearest (ties to even) and
    /// limited to 255. A gain that is negative or not finite changes nothing.
    void SetRedGain(double gain);
    void SetGreenGain(double gain);
    void SetBlueGain(double gain);
    /// Gives the three channels the same mean, that of all of them: the grey-world rule (Buchsbaum,
    /// "A spatial processor model for object colour perception", 1980). A channel that is 0
    /// throughout stays so.
    void WhiteBalance();
    /// Takes one colour out: sets that channel of every pixel to 0. The grey level is no colour and
    /// changes nothing.
    void AbandonColorCell(ColorLevel level);
};
