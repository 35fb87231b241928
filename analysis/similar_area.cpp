// All pixels of the class of similar levels are labelled by runs; the area is made of the runs of
// the seed's component. That costs one pass over the picture whatever the area's shape.

#include "TAVIX20/analysis/similar_area.h"

#include "TAVIX20/analysis/run_labeling.h"
#include "TAVIX20/image/tavix_image24.h"

#include <algorithm>
#include <memory>
#include <optional>

namespace tavix {

namespace {

constexpr int GREY_RANGE = 255;

std::unique_ptr<PixelClass> SimilarTo(const CTavixImage &image, const POINT &seed, int percent) {
    const int tolerance = std::clamp(percent, 0, 100) * GREY_RANGE / 100;
    if (const auto *grey = dynamic_cast<const CTavixImage8 *>(&image)) {
        const int level = grey->GetPixel(seed.x, seed.y);
        return std::make_unique<BandClass>(*grey, level - tolerance, level + tolerance);
    }
    if (const auto *colour = dynamic_cast<const CTavixImage24 *>(&image)) {
        const auto level = static_cast<COLORREF>(colour->GetPixel(seed.x, seed.y));
        const auto around = [tolerance](int channel) {
            return ColourClass::Bounds{channel - tolerance, channel + tolerance};
        };
        return std::make_unique<ColourClass>(*colour, std::array{around(GetBValue(level)),
                                                                 around(GetGValue(level)),
                                                                 around(GetRValue(level))});
    }
    return nullptr;
}

/// The rows of runs of a picture, made again from its class.
template <typename Process>
void ForEachRow(const PixelClass &pixels, int width, int height, Process process) {
    std::vector<std::uint64_t> words(WordsOf(width));
    std::vector<PixelRun> runs;
    for (int y = 0; y < height; ++y) {
        pixels.MarkRow(y, words.data());
        runs.clear();
        ForEachRun(words.data(), words.size(), width, [&runs](int start, int end) {
            runs.push_back({start, end});
        });
        process(y, std::span<const PixelRun>(runs));
    }
}

RunRegion AreaAround(const PixelClass &pixels, int width, int height, const POINT &seed) {
    RunLabeling::Scratch scratch;
    const RunLabeling labeling(pixels, width, height, RunLabeling::Runs::Noted, scratch);
    const auto componentOf = [&labeling](int y, std::size_t run) {
        return labeling.ComponentsOfRuns()[labeling.Rows()[static_cast<std::size_t>(y)] + run];
    };
    std::optional<std::uint32_t> wanted;
    ForEachRow(pixels, width, seed.y + 1, [&](int y, std::span<const PixelRun> runs) {
        for (std::size_t i = 0; y == seed.y && i < runs.size(); ++i)
            if (runs[i].left <= seed.x && seed.x < runs[i].right)
                wanted = componentOf(y, i);
    });
    RunRegion area;
    std::vector<PixelRun> taken;
    ForEachRow(pixels, width, height, [&](int y, std::span<const PixelRun> runs) {
        taken.clear();
        for (std::size_t i = 0; i < runs.size(); ++i)
            if (componentOf(y, i) == wanted)
                taken.push_back(runs[i]);
        area.AppendBand(y, y + 1, taken);
    });
    return area;
}

} // namespace

RunRegion SimilarArea(const CTavixImage &image, const POINT &seed, int percent) {
    const int width = image.GetWidth();
    const int height = image.GetHeight();
    if (image.GetImageLen() == 0 || seed.x < 0 || seed.y < 0 || seed.x >= width || seed.y >= height)
        return {};
    try {
        const std::unique_ptr<PixelClass> pixels = SimilarTo(image, seed, percent);
        return pixels ? AreaAround(*pixels, width, height, seed) : RunRegion();
    } catch (const std::bad_alloc &) {
        return {};
    }
}

} // namespace tavix
