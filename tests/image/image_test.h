/// The fixture of the tests that grey and colour images share.
#pragma once

#include "image/image_samples.h"

#include <gtest/gtest.h>

namespace tavix_test {

template <typename Image>
class ImageTest : public testing::Test {
protected:
    static constexpr int PIXEL_BYTES = std::is_same_v<Image, CTavixImage8> ? 1 : 3;

    int Within(int low, int high) { return std::uniform_int_distribution(low, high)(m_random); }
    Image Random(int width, int height) { return RandomImage<Image>(width, height, m_random); }

    /// Calls check(image) with images of random odd sizes.
    template <typename Check>
    void ForRandomImages(int rounds, int largest, Check check) {
        for (int round = 0; round < rounds; ++round) {
            const int width = Within(1, largest), height = Within(1, largest);
            SCOPED_TRACE(testing::Message() << width << " x " << height);
            check(Random(width, height));
        }
    }

    std::mt19937 m_random{20};
};

using ImageTypes = testing::Types<CTavixImage8, CTavixImage24>;

} // namespace tavix_test
