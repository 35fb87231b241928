// Transforms, planes and arithmetic of images beside memcpy and the bare OpenCV calls.

#include "comparison.h"
#include "pictures.h"

#include <TAVIX20.h>
#include <TAVIX20/image/image_interop.h>

#include <benchmark/benchmark.h>
#include <opencv2/imgproc.hpp>

#include <cstring>
#include <memory>
#include <random>
#include <string>

namespace {

const std::string SIZE = ", 2048 x 2048";

/// The bare call may cost at most 1.25 times less.
constexpr double BRIDGED = 0.8;
/// The same kernel on both sides, so that only noise tells them apart.
constexpr double SAME_KERNEL = 0.9;
/// memcpy of the same bytes may cost at most 1.2 times less.
constexpr double COPYING = 0.83;

/// An image on which an operation works in place, and the matrix with the same bytes for its peer.
template <typename Image>
struct Pair {
    std::shared_ptr<Image> image = Noise<Image>(1);
    std::shared_ptr<Image> other = Noise<Image>(2);
    cv::Mat matrix = tavix::ViewAsMat(*image).clone();
    cv::Mat otherMatrix = tavix::ViewAsMat(*other).clone();
};

template <typename Image>
void AddTransforms(const std::string &depth) {
    const Pair<Image> pair;
    const auto image = pair.image;
    const cv::Mat matrix = pair.matrix;
    const struct {
        const char *name;
        int mode, interpolation;
    } resizes[] = {{"nearest", 0, cv::INTER_NEAREST},
                   {"area", 1, cv::INTER_AREA},
                   {"bilinear", 2, cv::INTER_LINEAR}};
    for (const auto &resize : resizes)
        AddComparison({"Resize to 1500, " + std::string(resize.name) + SIZE + depth, "cv::resize",
                       BRIDGED,
                       [image, mode = resize.mode, copy = std::make_shared<Image>()] {
                           *copy = *image;
                           copy->Resize(1500, 1500, mode);
                       },
                       [matrix, interpolation = resize.interpolation] {
                           cv::Mat copy, out;
                           matrix.copyTo(copy);
                           cv::resize(copy, out, {1500, 1500}, 0, 0, interpolation);
                       }});
    AddComparison(
        {"Rotate" + SIZE + depth, "cv::warpAffine", BRIDGED, [image] { image->Rotate(17, 0); },
         [matrix] {
             cv::Mat out;
             cv::warpAffine(matrix, out, cv::getRotationMatrix2D({SIDE / 2, SIDE / 2}, 17, 1),
                            matrix.size());
         }});
    for (const int code : {0, 1})
        AddComparison({(code ? "RotateHorzFlip" : "RotateVertFlip") + SIZE + depth, "cv::flip",
                       BRIDGED,
                       [image, code] { code ? image->RotateHorzFlip() : image->RotateVertFlip(); },
                       [matrix, code] {
                           cv::Mat out;
                           cv::flip(matrix, out, code);
                       }});
    AddComparison({"CropImage2 of all" + SIZE + depth, "memcpy into a new buffer", COPYING,
                   [image] {
                       const std::unique_ptr<CTavixImage> crop(
                           image->CropImage2(0, 0, SIDE - 1, SIDE - 1));
                   },
                   MemcpyOf(image)});
    AddComparison({"Offset" + SIZE + depth, "memcpy into a new buffer", COPYING,
                   [image] { image->Offset(3, 5); }, MemcpyOf(image)});
}

/// The peers work in place as the operators do.
template <typename Image>
void AddArithmetic(const std::string &depth) {
    const Pair<Image> pair;
    const auto add = [&](const char *name, Image &(Image::*ours)(const Image &), auto theirs) {
        AddComparison({name + SIZE + depth, "the same of cv", SAME_KERNEL,
                       [pair, ours] { (pair.image.get()->*ours)(*pair.other); },
                       [pair, theirs] {
                           cv::Mat result = pair.matrix;
                           theirs(result, pair.otherMatrix, result);
                       }});
    };
    using M = cv::Mat;
    add("operator+", &Image::operator+, [](M &a, const M &b, M &to) { cv::add(a, b, to); });
    add("operator-", &Image::operator-, [](M &a, const M &b, M &to) { cv::subtract(a, b, to); });
    add("operator*", &Image::operator*, [](M &a, const M &b, M &to) { cv::multiply(a, b, to); });
    add("operator/", &Image::operator/, [](M &a, const M &b, M &to) { cv::divide(a, b, to); });
    add("operator&", &Image::operator&, [](M &a, const M &b, M &to) { cv::bitwise_and(a, b, to); });
    add("operator|", &Image::operator|, [](M &a, const M &b, M &to) { cv::bitwise_or(a, b, to); });
}

void AddPlane(const char *name, CTavixImage8 *(CTavixImage24::*ours)() const, int code) {
    const Pair<CTavixImage24> pair;
    AddComparison(
        {name + SIZE, "cv::cvtColor and cv::split", BRIDGED,
         [pair, ours] { const std::unique_ptr<CTavixImage8> plane((pair.image.get()->*ours)()); },
         [pair, code] {
             cv::Mat converted;
             cv::cvtColor(pair.matrix, converted, code);
             cv::Mat planes[3];
             cv::split(converted, planes);
         }});
}

} // namespace

void AddTransformComparisons() {
    AddTransforms<CTavixImage8>(" grey");
    AddTransforms<CTavixImage24>(" colour");
    AddArithmetic<CTavixImage8>(" grey");
    AddArithmetic<CTavixImage24>(" colour");
    AddPlane("GetRedSpace", &CTavixImage24::GetRedSpace, cv::COLOR_BGR2RGB);
    AddPlane("GetYSpace", &CTavixImage24::GetYSpace, cv::COLOR_BGR2YUV);
    AddPlane("GetHSpaceOfHLS", &CTavixImage24::GetHSpaceOfHLS, cv::COLOR_RGB2HLS);
    AddPlane("GetHSpaceOfHSV", &CTavixImage24::GetHSpaceOfHSV, cv::COLOR_RGB2HSV);
}
