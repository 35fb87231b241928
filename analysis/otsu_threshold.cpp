// Automatic thresholds by Otsu's method, computed by OpenCV's cvThreshold.

#include "TAVIX20/image/ipl_bridge.h"
#include "TAVIX20/image/tavix_image8.h"

#include <opencv2/imgproc/imgproc_c.h>

namespace {

constexpr int BINARY_AT_OTSU = CV_THRESH_BINARY | CV_THRESH_OTSU;
constexpr double SET = 255.0;

} // namespace

long CTavixImage8::GetAutoThreshold() const {
    double threshold = 0;
    // The copy takes the two-level picture.
    CTavixImage8 copy(*this);
    tavix::CallBridged(copy, [&threshold](IplImage *pixels) {
        threshold = cvThreshold(pixels, pixels, 0.0, SET, BINARY_AT_OTSU);
    });
    return static_cast<long>(threshold);
}

void CTavixImage8::Threshold(int threshold) {
    tavix::CallBridged(*this, [threshold](IplImage *pixels) {
        cvThreshold(pixels, pixels, threshold, SET, BINARY_AT_OTSU);
    });
}

long CTavixImage8::GetAutoThreshold(int x1, int y1, int x2, int y2) const {
    const std::unique_ptr<CTavixImage8> crop(CropImage2(x1, y1, x2, y2));
    return crop ? crop->GetAutoThreshold() : 0;
}

long CTavixImage8::GetAutoPolygonThreshold(const POINT * /*points*/, int /*count*/) const {
    return 0;
}

long CTavixImage8::GetAutoEllipseThreshold(int /*x1*/, int /*y1*/, int /*x2*/, int /*y2*/) const {
    return 0;
}

void CTavixImage8::SmartThreshold(int columns, int rows) {
    if (m_imageLen == 0 || columns < 1 || rows < 1)
        return;
    const std::unique_ptr<CTavixImage8> source(GetImage8());
    const int tileWidth = m_width / columns;
    const int tileHeight = m_height / rows;
    for (int j = 0; j < rows; ++j)
        for (int i = 0; i < columns; ++i) {
            const int x = i * tileWidth;
            const int y = j * tileHeight;
            const int right = x + tileWidth + (i + 1 == columns ? m_width % columns : 0);
            const int bottom = y + tileHeight + (j + 1 == rows ? m_height % rows : 0);
            const std::unique_ptr<CTavixImage8> tile(source->CropImage2(x, y, right, bottom));
            if (!tile)
                continue;
            tile->Threshold(0);
            Copy(x, y, *tile);
        }
}
