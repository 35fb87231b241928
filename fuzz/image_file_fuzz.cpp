// Any bytes as an image file: loading gives an image that is whole, or null, and leaves no file
// open.

#include <TAVIX20.h>

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <string>

namespace {

/// A file in memory that is written anew for each input.
class MemoryFile {
public:
    MemoryFile() : m_descriptor(memfd_create("input", 0)) {}

    /// The path of the file with these bytes.
    std::string Write(const std::uint8_t *data, std::size_t size) const {
        if (ftruncate(m_descriptor, 0) != 0 ||
            pwrite(m_descriptor, data, size, 0) != static_cast<ssize_t>(size))
            std::abort();
        return "/proc/self/fd/" + std::to_string(m_descriptor);
    }

private:
    int m_descriptor;
};

/// Reads every byte; a sanitizer sees those that are not there.
void CheckWhole(const CTavixImage *image) {
    if (!image || image->IsEmpty())
        return;
    const int stride = (image->GetBitCount() * image->GetWidth() + 31) / 32 * 4;
    if (image->GetImageLen() != stride * image->GetHeight())
        std::abort();
    volatile unsigned sum = 0;
    for (int i = 0; i < image->GetImageLen(); ++i)
        sum = sum + image->GetImagePtr()[i];
}

/// The lowest file descriptor that is free.
int FreeDescriptor() {
    const int descriptor = dup(STDIN_FILENO);
    close(descriptor);
    return descriptor;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const MemoryFile file;
    static const int freeAtStart = FreeDescriptor();
    const std::string path = file.Write(data, size);
    const std::unique_ptr<CTavixImage> own(CTavixImage::LoadImageA(path.c_str()));
    const std::unique_ptr<CTavixImage> grey(CTavixImage::LoadImage8(path.c_str()));
    const std::unique_ptr<CTavixImage> colour(CTavixImage::LoadImage24(path.c_str()));
    CheckWhole(own.get());
    CheckWhole(grey.get());
    CheckWhole(colour.get());
    if (!own != !grey || !own != !colour || FreeDescriptor() != freeAtStart)
        std::abort();
    return 0;
}
