/// The pictures that operations are measured on.
#pragma once

#include <TAVIX20.h>

#include <benchmark/benchmark.h>

#include <cstring>
#include <functional>
#include <memory>
#include <random>
#include <string>

inline constexpr int SIDE = 2048;

/// SIDE * SIDE random pixels.
template <typename Image>
std::shared_ptr<Image> Noise(unsigned seed) {
    auto image = std::make_shared<Image>(SIDE, SIDE);
    std::mt19937 random(seed);
    for (int i = 0; i < image->GetImageLen(); ++i)
        image->GetImagePtr()[i] = static_cast<unsigned char>(random());
    return image;
}

/// An example picture, repeated over SIDE * SIDE pixels.
inline std::shared_ptr<CTavixImage8> Photograph(const std::string &name) {
    const std::unique_ptr<CTavixImage8> photograph(
        CTavixImage::LoadImage8((TAVIX_EXAMPLE_DATA "/" + name).c_str()));
    auto image = std::make_shared<CTavixImage8>(SIDE, SIDE);
    for (int y = 0; y < SIDE; y += photograph->GetHeight())
        for (int x = 0; x < SIDE; x += photograph->GetWidth())
            image->Copy(x, y, photograph.get());
    return image;
}

/// The peer of operations that copy an image.
template <typename Image>
std::function<void()> MemcpyOf(const std::shared_ptr<Image> &image) {
    return [image] {
        const auto length = static_cast<std::size_t>(image->GetImageLen());
        const std::unique_ptr<unsigned char[]> copy(new unsigned char[length]);
        std::memcpy(copy.get(), image->GetImagePtr(), length);
        benchmark::DoNotOptimize(copy.get());
        benchmark::ClobberMemory();
    };
}
