#include "inspection.h"

#include <cstdio>
#include <fstream>

std::optional<Inspection> Inspect(const Options &options) {
    Inspection inspection;
    inspection.picture.reset(CTavixImage::LoadImage8(options.image.c_str()));
    if (!inspection.picture || inspection.picture->IsEmpty()) {
        std::fprintf(stderr, "tavix-inspect: cannot read '%s' as a grey or colour picture\n",
                     options.image.c_str());
        return std::nullopt;
    }

    CTavixImage8 twoLevel(*inspection.picture);
    inspection.threshold = twoLevel.GetAutoThreshold();
    twoLevel.Threshold(static_cast<int>(inspection.threshold));
    twoLevel.GetBlobList(options.dark ? 0 : 255, options.minWidth.value_or(1),
                         options.maxWidth.value_or(twoLevel.GetWidth()),
                         options.minHeight.value_or(1),
                         options.maxHeight.value_or(twoLevel.GetHeight()), inspection.blobs);
    return inspection;
}

void PrintReport(const Inspection &inspection) {
    std::printf("picture: %d x %d\n", inspection.picture->GetWidth(),
                inspection.picture->GetHeight());
    std::printf("automatic threshold: %ld\n\n", inspection.threshold);
    std::printf("%6s %6s %6s %6s %6s %9s\n", "blob", "left", "top", "right", "bottom", "pixels");
    for (int i = 0; i < inspection.blobs.GetElementCount(); ++i) {
        const _stBlobRect &blob = inspection.blobs[i];
        std::printf("%6d %6ld %6ld %6ld %6ld %9ld\n", i + 1, blob.left, blob.top, blob.right,
                    blob.bottom, blob.pixelCount);
    }
    const int count = inspection.blobs.GetElementCount();
    std::printf("\n%d blob%s\n", count, count == 1 ? "" : "s");
    std::fflush(stdout);
}

bool WriteCsv(const CBlobRectArray &blobs, const std::string &path) {
    std::ofstream file(path, std::ios::trunc);
    file << "left,top,right,bottom,pixels\n";
    for (int i = 0; i < blobs.GetElementCount(); ++i) {
        const _stBlobRect &blob = blobs[i];
        file << blob.left << ',' << blob.top << ',' << blob.right << ',' << blob.bottom << ','
             << blob.pixelCount << '\n';
    }
    file.close();
    return !file.fail();
}
