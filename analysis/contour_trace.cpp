// Borders of bright parts, followed by OpenCV.

#include "TAVIX20/containers/point_array_array.h"
#include "TAVIX20/image/layout.h"
#include "TAVIX20/image/tavix_image8.h"

#include <opencv2/imgproc.hpp>

#include <vector>

int CTavixImage8::ContourTrace(TavixArray::CPointArrayArray &contours) const {
    if (m_imageLen == 0)
        return 0;
    std::vector<std::vector<cv::Point>> borders;
    try {
        // Only read.
        const cv::Mat pixels(m_height, m_width, CV_8UC1, const_cast<unsigned char *>(GetImagePtr()),
                             static_cast<std::size_t>(Stride()));
        cv::findContours(pixels, borders, cv::RETR_LIST, cv::CHAIN_APPROX_NONE);
    } catch (const std::exception &) {
        return 0;
    }
    for (const std::vector<cv::Point> &border : borders) {
        TavixArray::CPointArray points;
        points.SetSize(0);
        for (const cv::Point &point : border)
            points.Add(point.x, point.y);
        contours.Add(points);
    }
    return static_cast<int>(borders.size());
}
