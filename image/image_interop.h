/// Images beside the picture types of hosts: cv::Mat, QImage, QPixmap. Not part of TAVIX20.h, for
/// it needs the headers of OpenCV and Qt.
///
/// A view shows the same bytes as what it was made of: each sees what the other writes. It holds
/// until the buffer goes, that is until the image is destroyed or changes its size.
#pragma once

#include "TAVIX20/image/tavix_image.h"
#include "TAVIX20/platform/export.h"

#include <opencv2/core/mat.hpp>

#include <QImage>
#include <QPixmap>

#include <memory>

namespace tavix {

/// The image's buffer as a matrix of type CV_8UC1 or CV_8UC3 (blue, green, red); nothing is copied.
/// Empty for an image without pixels. The matrix of a const image is for reading only.
TAVIX_API cv::Mat ViewAsMat(CTavixImage &image);
TAVIX_API cv::Mat ViewAsMat(const CTavixImage &image);

/// The image's buffer as a QImage of Format_Grayscale8 or Format_BGR888; nothing is copied. Null
/// for an image without pixels. Writing through that of a const image makes it a copy first.
TAVIX_API QImage ViewAsQImage(CTavixImage &image);
TAVIX_API QImage ViewAsQImage(const CTavixImage &image);

/// A QImage with pixels of its own.
TAVIX_API QImage ToQImage(const CTavixImage &image);
/// A pixmap for widgets; needs a QGuiApplication.
TAVIX_API QPixmap ToQPixmap(const CTavixImage &image);

/// An image over the matrix's own pixels, which it keeps alive; nothing is copied where the matrix
/// is of type CV_8UC1 or CV_8UC3 and its rows follow each other without a gap and are a multiple of
/// 4 bytes long. Other rows are copied. A matrix over memory of the host does not own it: the host
/// keeps that memory as long as the image. Null for other types, an empty matrix, more than 2
/// dimensions, a size too large for an image and when memory runs out.
TAVIX_API std::unique_ptr<CTavixImage> ViewMat(const cv::Mat &matrix);
/// The same, always a copy.
TAVIX_API std::unique_ptr<CTavixImage> CopyMat(const cv::Mat &matrix);

/// An image over the QImage's own pixels, which it keeps alive; nothing is copied where the format
/// is Format_Grayscale8, Format_Indexed8 (the indices become grey values) or Format_BGR888 and each
/// row takes its bytes rounded up to a multiple of 4. The QImage is detached from other copies of
/// itself first, and detaches from the image when it is written to later. Other formats are copied
/// as CopyQImage does. Null for a null image and as CopyQImage.
TAVIX_API std::unique_ptr<CTavixImage> ViewQImage(QImage &image);
/// A copy: of the three formats above as they are, of all other grey formats as CTavixImage8, of
/// colours as CTavixImage24, alpha dropped. Null for a null image, a size too large for an image
/// and when memory runs out.
TAVIX_API std::unique_ptr<CTavixImage> CopyQImage(const QImage &image);

} // namespace tavix
