/// CPixelArray: grey samples taken from an image.
#pragma once

#include "TAVIX20/containers/sample_array.h"
#include "TAVIX20/platform/export.h"

class CTavixImage8;

namespace TavixArray {

class CPointArray;
class CSortByteArray;

/// A grey sample.
struct _stPixel {
    std::int32_t x;
    std::int32_t y;
    std::uint8_t grayLevel;
    double parameter; ///< Set by the operation that fills the array.
};

/// Samples in insertion order. A full array grows by one. Indices are trusted.
class TAVIX_API CPixelArray : private detail::SampleArray<_stPixel> {
public:
    CPixelArray() = default;

    using SampleArray::Add;
    virtual void Add(int x, int y, unsigned char level, double parameter);
    using SampleArray::GetElementCount;
    using SampleArray::Init;
    using SampleArray::Insert;
    virtual void Insert(int index, int x, int y, unsigned char level, double parameter);
    using SampleArray::Remove;
    using SampleArray::RemoveAll;
    using SampleArray::SetAt;
    using SampleArray::SetElementIndex;
    using SampleArray::SetSize;
    using SampleArray::operator[];

    /// A new image as large as the bounds, their top-left corner at (0, 0), with each sample's grey
    /// level on the background; the last of several samples at one place shows. The caller deletes
    /// it. Null without samples, when the bounds are too large for an image or when memory runs
    /// out.
    virtual CTavixImage8 *GetImage(unsigned char background) const;
    using SampleArray::GetBounds;
    /// Replaces the points by the samples' coordinates.
    virtual void GetPointArray(CPointArray &points) const;
    /// Replaces the values by the samples' grey levels.
    virtual void GetLevelArray(CSortByteArray &levels) const;

    /// Ascending; equal keys keep their order.
    using SampleArray::SortX;
    using SampleArray::SortY;
    virtual void SortGrayLevel();
    virtual void SortParameter();

    /// 0 without samples.
    virtual int GetMinLevel() const;
    virtual int GetMaxLevel() const;
    /// Mean of the grey levels, truncated; 0 without samples.
    virtual int GetAvgLevel() const;
};

} // namespace TavixArray
