// Blob lists beside OpenCV's labelling.

#include "comparison.h"
#include "pictures.h"

#include <TAVIX20.h>
#include <TAVIX20/image/image_interop.h>

#include <opencv2/imgproc.hpp>

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

std::shared_ptr<CTavixImage8> NoiseOfDensity(double density) {
    auto image = std::make_shared<CTavixImage8>(SIDE, SIDE);
    std::mt19937 random(2);
    std::bernoulli_distribution set(density);
    for (int i = 0; i < image->GetImageLen(); ++i)
        image->GetImagePtr()[i] = set(random) ? 255 : 0;
    return image;
}

std::shared_ptr<CTavixImage8> TwoLevel(const std::string &name) {
    auto photograph = Photograph(name);
    photograph->Threshold(0);
    return photograph;
}

std::shared_ptr<CTavixImage8> Discs() {
    auto image = std::make_shared<CTavixImage8>(SIDE, SIDE);
    cv::Mat pixels = tavix::ViewAsMat(*image);
    std::mt19937 random(5);
    for (int i = 0; i < 4000; ++i)
        cv::circle(pixels, {static_cast<int>(random() % SIDE), static_cast<int>(random() % SIDE)},
                   2 + static_cast<int>(random() % 14), cv::Scalar(255), cv::FILLED);
    return image;
}

/// The pixels of each component, in raster order.
std::vector<std::vector<cv::Point>> Gather(const cv::Mat &pixels) {
    cv::Mat labels;
    const int count = cv::connectedComponents(pixels, labels, 4, CV_32S);
    std::vector<std::vector<cv::Point>> lists(static_cast<std::size_t>(count));
    for (int y = 0; y < labels.rows; ++y) {
        const int *const row = labels.ptr<int>(y);
        for (int x = 0; x < labels.cols; ++x)
            if (row[x] != 0)
                lists[static_cast<std::size_t>(row[x])].emplace_back(x, y);
    }
    return lists;
}

struct Targets {
    double rectangles;
    double labels;
    double points;
};

void Add(const std::string &picture, const std::shared_ptr<CTavixImage8> &image,
         const Targets &targets) {
    const auto blobs = std::make_shared<CBlobRectArray>();
    const auto rectangles = [image, blobs] { image->GetBlobList(255, 1, SIDE, 1, SIDE, *blobs); };
    const cv::Mat pixels = tavix::ViewAsMat(*image);
    AddComparison({"GetBlobList, rectangles, " + picture, "cv::connectedComponentsWithStats",
                   targets.rectangles, rectangles, [image, pixels] {
                       cv::Mat labels;
                       cv::Mat stats;
                       cv::Mat centroids;
                       cv::connectedComponentsWithStats(pixels, labels, stats, centroids, 4,
                                                        CV_32S);
                   }});
    AddComparison({"the same, " + picture, "cv::connectedComponents alone", targets.labels,
                   rectangles, [image, pixels] {
                       cv::Mat labels;
                       cv::connectedComponents(pixels, labels, 4, CV_32S);
                   }});
    AddComparison({"GetBlobList, point lists, " + picture, "cv::connectedComponents and gathering",
                   targets.points,
                   [image] {
                       TavixArray::CPointArrayArray lists;
                       image->GetBlobList(255, 1, SIDE * SIDE, lists);
                   },
                   [image, pixels] { Gather(pixels); }});
}

} // namespace

void AddBlobComparisons() {
    Add("4,000 discs", Discs(), {40, 10, 8});
    Add("noise 50 %", NoiseOfDensity(0.5), {3.5, 2, 1.5});
    Add("noise 5 %", NoiseOfDensity(0.05), {11, 2.5, 4});
    Add("coins", TwoLevel("coins.png"), {12, 4.5, 4});
    Add("brick", TwoLevel("brick.png"), {12, 4.5, 4});
}
