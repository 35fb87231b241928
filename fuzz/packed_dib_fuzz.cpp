// Any bytes as a packed bitmap: the header is taken from the input, and behind it lie exactly as
// many pixel bytes as the caller of LoadImageA guarantees for such a header.

#include <TAVIX20.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

/// More is skipped: it would test the machine's memory.
constexpr std::int64_t MOST_PIXELS = 1 << 20;

/// What the caller guarantees for a header that may be accepted; 0 where no pixel may be read.
std::int64_t GuaranteedBytes(const BITMAPINFOHEADER &header) {
    const std::int64_t width = header.biWidth;
    const std::int64_t height = header.biHeight;
    if (width < 1 || height < 1)
        return 0;
    if (header.biBitCount == 32 && header.biSizeImage != 0)
        return std::min<std::int64_t>(header.biSizeImage, width * 4 * height);
    if (header.biBitCount != 8 && header.biBitCount != 24 && header.biBitCount != 32)
        return 0;
    return (header.biBitCount * width + 31) / 32 * 4 * height;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    BITMAPINFOHEADER header{};
    std::copy_n(data, std::min(size, sizeof header), reinterpret_cast<std::uint8_t *>(&header));
    const std::int64_t area = std::int64_t{header.biWidth} * header.biHeight;
    if (std::abs(area) > MOST_PIXELS)
        return 0;
    const std::int64_t guaranteed = GuaranteedBytes(header);
    const auto bytes = static_cast<std::size_t>(guaranteed);
    const std::unique_ptr<void, decltype(&std::free)> packed(std::malloc(sizeof header + bytes),
                                                             &std::free);
    auto *const at = static_cast<std::uint8_t *>(packed.get());
    std::memcpy(at, &header, sizeof header);
    for (std::size_t i = 0; i < bytes; ++i)
        at[sizeof header + i] = size > 0 ? data[i % size] : std::uint8_t{0};

    const std::unique_ptr<CTavixImage> image(
        CTavixImage::LoadImageA(reinterpret_cast<const BITMAPINFOHEADER *>(at)));
    const bool isRightSize =
        image && image->GetWidth() == header.biWidth && image->GetHeight() == header.biHeight;
    if (image && (!isRightSize || guaranteed == 0))
        std::abort();
    return 0;
}
