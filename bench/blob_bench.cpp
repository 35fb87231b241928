// Blob lists beside OpenCV's labelling.

#include "comparison.h"
#include "pictures.h"

#include <TAVIX20.h>

#include <opencv2/imgproc.hpp>

#include <memory>
#include <random>

namespace {

std::shared_ptr<CTavixImage8> NoiseOfDensity(double density) {
    auto image = std::make_shared<CTavixImage8>(SIDE, SIDE);
    std::mt19937 random(2);
    std::bernoulli_distribution set(density);
    for (int i = 0; i < image->GetImageLen(); ++i)
        image->GetImagePtr()[i] = set(random) ? 255 : 0;
    return image;
}

std::shared_ptr<CTavixImage8> Coins() {
    auto coins = Photograph("coins.png");
    coins->Threshold(0);
    return coins;
}

void Add(const std::string &picture, const std::shared_ptr<CTavixImage8> &image, double target) {
    const auto blobs = std::make_shared<CBlobRectArray>();
    AddComparison({"GetBlobList, rectangles, " + picture, "cv::connectedComponentsWithStats",
                   target, [image, blobs] { image->GetBlobList(255, 1, SIDE, 1, SIDE, *blobs); },
                   [image] {
                       const cv::Mat pixels(SIDE, SIDE, CV_8UC1, image->GetImagePtr());
                       cv::Mat labels;
                       cv::Mat stats;
                       cv::Mat centroids;
                       cv::connectedComponentsWithStats(pixels, labels, stats, centroids, 4,
                                                        CV_32S);
                   }});
}

} // namespace

void AddBlobComparisons() {
    Add("coins, 2048 x 2048", Coins(), 1.0);
    Add("noise 10 %, 2048 x 2048", NoiseOfDensity(0.1), 1.0);
    Add("noise 50 %, 2048 x 2048", NoiseOfDensity(0.5), 0.8);
}
