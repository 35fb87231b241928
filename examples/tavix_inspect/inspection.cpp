#include "inspection.h"

#include <cstdio>
#include <fstream>

#include <fcntl.h>
#include <unistd.h>

namespace {

/// Decoders of damaged files write to standard error by themselves; while this lives they do not,
/// so that the program's own message is the only one.
class MutedStandardError {
public:
    MutedStandardError() : m_saved(dup(STDERR_FILENO)) {
        const int null = open("/dev/null", O_WRONLY);
        dup2(null, STDERR_FILENO);
        close(null);
    }
    ~MutedStandardError() {
        dup2(m_saved, STDERR_FILENO);
        close(m_saved);
    }
    MutedStandardError(const MutedStandardError &) = delete;
    MutedStandardError &operator=(const MutedStandardError &) = delete;

private:
    int m_saved;
};

std::unique_ptr<CTavixImage8> LoadQuietly(const std::string &path) {
    const MutedStandardError muted;
    return std::unique_ptr<CTavixImage8>(CTavixImage::LoadImage8(path.c_str()));
}

} // namespace

std::optional<Inspection> Inspect(const Options &options, HRGN region) {
    Inspection inspection;
    inspection.picture = LoadQuietly(options.image);
    if (!inspection.picture || inspection.picture->IsEmpty()) {
        std::fprintf(stderr, "tavix-inspect: cannot read '%s' as a grey or colour picture\n",
                     options.image.c_str());
        return std::nullopt;
    }

    CTavixImage8 twoLevel(*inspection.picture);
    inspection.threshold = twoLevel.GetAutoThreshold();
    twoLevel.Threshold(static_cast<int>(inspection.threshold));
    twoLevel.SetROI(region);
    const unsigned char value = options.dark ? 0 : 255;
    const long minWidth = options.minWidth.value_or(1);
    const long maxWidth = options.maxWidth.value_or(twoLevel.GetWidth());
    const long minHeight = options.minHeight.value_or(1);
    const long maxHeight = options.maxHeight.value_or(twoLevel.GetHeight());
    twoLevel.GetRangeBlobList(value, value, minWidth, maxWidth, minHeight, maxHeight,
                              inspection.blobs);
    if (!options.points.empty())
        twoLevel.GetRangeBlobList(value, value, minWidth, maxWidth, minHeight, maxHeight,
                                  inspection.points);
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

bool WritePoints(const TavixArray::CPixelArrayArray &blobs, const std::string &path) {
    std::ofstream file(path, std::ios::trunc);
    for (int i = 0; i < blobs.GetElementCount(); ++i) {
        const TavixArray::CPixelArray &blob = blobs[i];
        for (int k = 0; k < blob.GetElementCount(); ++k)
            file << blob[k].x << ',' << blob[k].y << ';';
        file << '\n';
    }
    file.close();
    return !file.fail();
}
