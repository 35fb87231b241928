/// The regions of interest of a view: one element a stroke, combined in order into one region.
#pragma once

#include "TAVIX20/containers/point_array_array.h"
#include "TAVIX20/display/view_transform.h"
#include "TAVIX20/platform/collections.h"
#include "TAVIX20/platform/run_region.h"

#include <cstdint>
#include <vector>

/// One stroke: its outline in image coordinates, filled by the even-odd rule.
struct _stRoiElement {
    static constexpr std::int32_t SUBTRACT = 0;
    static constexpr std::int32_t ADD = 1;

    TavixArray::CPointArray Points;
    std::int32_t Method = ADD; ///< ADD, SUBTRACT; an element of any other method has no effect.
};

/// The elements in the order of their creation, and what is derived from them. The combined region
/// always belongs to the elements; its outlines are traced, and converted to client coordinates,
/// when they are asked for.
///
/// The first element that has points starts the region whatever its method, also when its polygon
/// is empty; callers rely on that. Pixels beyond 2^20 in any direction, where no image reaches, are
/// cut off, and an element with a point that no region can have (MAX_REGION_COORDINATE) is empty.
class TAVIX_API CRoiElementArray {
public:
    int GetCount() const { return static_cast<int>(m_elements.size()); }
    const _stRoiElement &GetAt(int index) const {
        return m_elements[static_cast<std::size_t>(index)];
    }

    /// Appends an element and combines it with what is there.
    void Add(_stRoiElement element);
    /// Replaces all elements.
    void Assign(std::vector<_stRoiElement> elements);
    void RemoveAll();

    /// The outlines of the combined region as pixel corners, parts clockwise and holes
    /// counter-clockwise, each from its top left on.
    const TavixArray::CPointArrayArray &OuterOutlines() const;
    const TavixArray::CPointArrayArray &HoleOutlines() const;
    /// The same outlines in client coordinates, as the view was at the last update, each closed by
    /// its first point.
    const TavixArray::CPointArrayArray &ClientOuterOutlines() const;
    const TavixArray::CPointArrayArray &ClientHoleOutlines() const;
    /// What they lie in.
    CRect ClientBounds() const;
    /// To be called after every zoom and scroll.
    void UpdateClientOutlines(const tavix::ViewTransform &view);

    /// The polygons of all outer outlines less those of all hole outlines: the combined region
    /// without the parts that lie in a hole of another part; callers rely on that. The caller
    /// deletes the region; null when the combined region is empty.
    HRGN CreateRegion() const;
    /// Appends, for each outer outline, the region of its polygon less the polygons of all holes,
    /// where any of it is left. The caller deletes the regions. Returns the array's count.
    int CreateRegions(CPtrArray &regions) const;
    /// Area of CreateRegion's region in pixels.
    double PixelCount() const;

private:
    void Changed();
    void Trace() const;
    void Convert() const;
    tavix::RunRegion WithoutIslands() const;

    std::vector<_stRoiElement> m_elements;
    tavix::RunRegion m_combined;
    bool m_isStarted = false; ///< An element with points was there.

    mutable bool m_isTraced = true;
    mutable TavixArray::CPointArrayArray m_outer;
    mutable TavixArray::CPointArrayArray m_holes;

    tavix::ViewTransform m_view;
    mutable bool m_isConverted = true;
    mutable TavixArray::CPointArrayArray m_clientOuter;
    mutable TavixArray::CPointArrayArray m_clientHoles;
};
