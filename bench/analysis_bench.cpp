// Point operations, filters and thresholds beside the OpenCV call that does the same, on 2048 x
// 2048 pixels and one thread unless said.

#include "comparison.h"
#include "pictures.h"

#include <TAVIX20.h>
#include <TAVIX20/analysis/byte_kernels.h>
#include <TAVIX20/image/image_interop.h>

#include <benchmark/benchmark.h>
#include <opencv2/imgproc.hpp>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

using Grey = std::shared_ptr<CTavixImage8>;

const std::string SIZE = ", 2048 x 2048";

/// OpenCV may be at most 1.25 times faster.
constexpr double BRIDGED = 0.8;

cv::Mat MatrixOf(const Grey &image) {
    return tavix::ViewAsMat(*image).clone();
}

/// The rules of AdaptiveThreshold as they are told.
void AdaptPlainly(CTavixImage8 &image, unsigned char fill) {
    const int width = image.GetWidth();
    for (int y = 0; y < image.GetHeight(); ++y) {
        unsigned char *const row = image.GetImagePtr() + std::ptrdiff_t{y} * width;
        long means = 0;
        long edges = 0;
        for (int x = 0; x < width;) {
            int length = 1;
            int sum = row[x];
            for (; x + length < width && row[x + length] > row[x + length - 1]; ++length)
                sum += row[x + length];
            if (length >= 5 && row[x + length - 1] - row[x] > 2 * length) {
                means += sum / length;
                ++edges;
            }
            x += length;
        }
        for (int x = 0; x < width; ++x)
            row[x] = edges == 0 ? fill : row[x] > means / edges ? 255 : 0;
    }
}

void AddTables() {
    const Grey image = Noise<CTavixImage8>(1);
    const cv::Mat matrix = MatrixOf(image);
    cv::Mat table(1, 256, CV_8U);
    cv::randu(table, 0, 256);
    const auto lut = [matrix, table] {
        cv::Mat out;
        cv::LUT(matrix, table, out);
    };
    AddComparison({"Light" + SIZE, "cv::LUT", 2.0, [image] { image->Light(1, 0); }, lut});
    AddComparison({"Gamma" + SIZE, "cv::LUT", 2.0, [image] { image->Gamma(1.01); }, lut});
}

void AddHistograms() {
    const auto add = [](const std::string &name, const Grey &image, double target) {
        AddComparison({"GetHistogramData, " + name, "cv::calcHist", target,
                       [image] {
                           long histogram[256];
                           image->GetHistogramData(ColorLevelGray, histogram);
                           benchmark::DoNotOptimize(histogram[0]);
                       },
                       [matrix = MatrixOf(image)] {
                           cv::Mat histogram;
                           const int channel = 0, size = 256;
                           const float range[] = {0, 256};
                           const float *ranges = range;
                           cv::calcHist(&matrix, 1, &channel, cv::Mat(), histogram, 1, &size,
                                        &ranges);
                       }});
    };
    const Grey coins = Photograph("coins.png");
    const auto twoLevels = std::make_shared<CTavixImage8>(*coins);
    twoLevels->Threshold(0);
    const auto twoLevelNoise = Noise<CTavixImage8>(2);
    twoLevelNoise->DoubleThreshold(0, 127, 1);
    add("photograph", coins, 1.25);
    add("two-level photograph", twoLevels, 3.0);
    add("two-level noise", twoLevelNoise, 3.0);
    add("noise", Noise<CTavixImage8>(3), 1.0);
    add("one level", std::make_shared<CTavixImage8>(SIDE, SIDE), 1.0);
}

void AddFilters() {
    for (const int size : {3, 7})
        for (const bool isSmall : {true, false}) {
            const Grey image = Noise<CTavixImage8>(4);
            std::vector<long> weights(static_cast<std::size_t>(size * size));
            cv::Mat kernel(size, size, CV_32F);
            const long divisor = isSmall ? 4 : 5000;
            for (int i = 0; i < size * size; ++i) {
                // None is 0: those would cost nothing.
                const long weight =
                    isSmall ? (i % 2 == 0 ? 1 + i % 3 : -1 - i % 3) : 7 + i * 37 % 200 * 50 - 4000;
                weights[static_cast<std::size_t>(i)] = weight;
                kernel.at<float>(i / size, i % size) =
                    static_cast<float>(weight) / static_cast<float>(divisor);
            }
            const double target = isSmall ? 3.0 : size == 3 ? 1.7 : 1.5;
            AddComparison({"Filter " + std::to_string(size) + " x " + std::to_string(size) +
                               (isSmall ? ", small weights" : ", 16-bit weights"),
                           "cv::filter2D", target,
                           [=] { image->Filter(weights.data(), size, divisor, 3); },
                           [kernel, matrix = MatrixOf(image)] {
                               cv::Mat out;
                               cv::filter2D(matrix, out, -1, kernel, {-1, -1}, 3);
                           }});
        }
}

void AddThresholds() {
    const Grey image = Noise<CTavixImage8>(5);
    const auto inRange = [](const Grey &source) {
        // The result is made once: ours is made in place.
        return [matrix = MatrixOf(source), out = std::make_shared<cv::Mat>()] {
            cv::inRange(matrix, 50, 100, *out);
        };
    };
    AddComparison({"DoubleThreshold, one slice" + SIZE, "cv::inRange", 1.9,
                   [image] {
                       tavix::SplitByBand(image->GetImagePtr(),
                                          static_cast<std::size_t>(image->GetImageLen()), {50, 100},
                                          255, 0);
                   },
                   inRange(image)});
    AddComparison({"DoubleThreshold with the pool" + SIZE, "cv::inRange", 1.0,
                   [image] { image->DoubleThreshold(50, 100, 1); }, inRange(image)});
    const auto large = std::make_shared<CTavixImage8>(10240, 10240);
    AddComparison({"DoubleThreshold with the pool, 100 MB", "cv::inRange into a new matrix", 2.5,
                   [large] { large->DoubleThreshold(50, 100, 1); },
                   [matrix = MatrixOf(large)] {
                       cv::Mat out;
                       cv::inRange(matrix, 50, 100, out);
                   }});
    // Here memory sets the pace of both.
    AddComparison({"the same, 100 MB", "cv::inRange into the same matrix", 2.0,
                   [large] { large->DoubleThreshold(50, 100, 1); }, inRange(large)});

    const Grey coins = Photograph("coins.png");
    const auto target = std::make_shared<CTavixImage8>();
    AddComparison({"AdaptiveThreshold with the pool" + SIZE, "its rules, pixel by pixel", 3.0,
                   [coins, target] {
                       *target = *coins;
                       target->AdaptiveThreshold(0);
                   },
                   [coins, target] {
                       *target = *coins;
                       AdaptPlainly(*target, 0);
                   }});
}

void AddMarkings() {
    const Grey image = Noise<CTavixImage8>(6);
    const Grey other = Noise<CTavixImage8>(7);
    const auto copy = [image](int reads) {
        const auto length = static_cast<std::size_t>(image->GetImageLen());
        const auto source = std::make_shared<std::vector<unsigned char>>(length);
        const auto target = std::make_shared<std::vector<unsigned char>>(length);
        // A copy reads as much as it writes.
        const auto bytes = length * static_cast<std::size_t>(reads + 1) / 2;
        return [=] {
            for (std::size_t left = bytes; left > 0;) {
                const std::size_t part = std::min(left, length);
                std::memcpy(target->data(), source->data(), part);
                benchmark::ClobberMemory();
                left -= part;
            }
        };
    };
    AddComparison({"Marking of a band" + SIZE, "memcpy of the bytes", 0.5,
                   [image] { image->Marking(100, 150, 100); }, copy(1)});
    AddComparison({"MarkingDiffer" + SIZE, "memcpy of the bytes", 0.5,
                   [image, other] { image->MarkingDiffer(*other, 255, 10); }, copy(2)});
}

void AddBridged() {
    const Grey image = Noise<CTavixImage8>(8);
    const cv::Mat matrix = MatrixOf(image);
    const auto add = [&](const char *name, void (CTavixImage::*ours)(),
                         void (*theirs)(const cv::Mat &, cv::Mat &)) {
        // Both in place: what it takes depends on what earlier calls have made of the picture.
        const Grey own = std::make_shared<CTavixImage8>(*image);
        AddComparison({name + SIZE, "the same of cv, in place", BRIDGED,
                       [own, ours] { (own.get()->*ours)(); },
                       [same = matrix.clone(), theirs]() mutable { theirs(same, same); }});
    };
    using M = cv::Mat;
    add("Gaussian3x3", &CTavixImage::Gaussian3x3, [](const M &in, M &out) {
        cv::GaussianBlur(in, out, {3, 3}, 0);
    });
    add("Gaussian5x5", &CTavixImage::Gaussian5x5, [](const M &in, M &out) {
        cv::GaussianBlur(in, out, {5, 5}, 0);
    });
    add("Blur", &CTavixImage::Blur, [](const M &in, M &out) { cv::blur(in, out, {3, 3}); });
    add("Median", &CTavixImage::Median, [](const M &in, M &out) { cv::medianBlur(in, out, 3); });
    add("Sobel", &CTavixImage::Sobel, [](const M &in, M &out) { cv::Sobel(in, out, -1, 0, 1, 1); });
    add("Laplacian", &CTavixImage::Laplacian,
        [](const M &in, M &out) { cv::Laplacian(in, out, -1, 3); });
    add("Sharpen", &CTavixImage::Sharpen, [](const M &in, M &out) {
        cv::Mat edges;
        cv::Laplacian(in, edges, -1, 3);
        cv::add(in, edges, out);
    });
    add("Erode", &CTavixImage::Erode, [](const M &in, M &out) { cv::erode(in, out, M()); });
    add("Dilate", &CTavixImage::Dilate, [](const M &in, M &out) { cv::dilate(in, out, M()); });
    add("HistoEqualize", &CTavixImage::HistoEqualize,
        [](const M &in, M &out) { cv::equalizeHist(in, out); });
    AddComparison({"CannyEdge" + SIZE, "cv::threshold and cv::Canny", BRIDGED,
                   [image] { const std::unique_ptr<CTavixImage8> edges(image->CannyEdge()); },
                   [matrix] {
                       cv::Mat binary, edges;
                       const double t = cv::threshold(matrix, binary, 0, 255, 8);
                       cv::Canny(binary, edges, t / 2, t, 3);
                   }});
}

} // namespace

void AddAnalysisComparisons() {
    AddTables();
    AddHistograms();
    AddFilters();
    AddThresholds();
    AddMarkings();
    AddBridged();
}
