/// CDrawObjArray: the overlay objects of a view, in insertion order.
#pragma once

#include "TAVIX20/display/draw_obj.h"
#include "TAVIX20/display/object_canvas.h"
#include "TAVIX20/display/place_index.h"

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

class CDC;

/// Owns its objects. Objects are found by index, by name (always the first one of a name) and by
/// place. An object that changes tells its array, so all of them stay findable.
///
/// Objects lie in slots, empty ones where an object was removed, which are closed now and then. The
/// place index is built when something is drawn, and again when many objects were added or changed
/// since; until then those are looked at one by one.
class TAVIX_API CDrawObjArray {
public:
    CDrawObjArray() = default;
    ~CDrawObjArray();
    CDrawObjArray(const CDrawObjArray &) = delete;
    CDrawObjArray &operator=(const CDrawObjArray &) = delete;

    /// Called after every change of what is drawn.
    void SetChangeListener(std::function<void()> listener) { m_listener = std::move(listener); }
    void NotifyListener() const;

    int GetCount() const { return static_cast<int>(m_slots.size() - m_emptySlots); }
    /// Null for an index below 0 or not below the count.
    CDrawObj *GetAt(int index) const;
    /// The first object with exactly this name, or null. Null stands for the empty name.
    CDrawObj *Find(const char *name) const;

    /// Appends the object; null is refused.
    CDrawObj *Add(std::unique_ptr<CDrawObj> object);
    /// Remove operations return how many objects they removed. A removed object is not selected any
    /// more.
    int RemoveAt(int index);
    int RemoveFirst(const char *name);
    int RemoveEach(const char *name);
    int RemoveAll();

    /// Draws, in insertion order, what may touch the client rectangle, then the handles of the
    /// selected object if it is one of these.
    void Draw(CDC &dc, const tavix::ViewTransform &view, const CRect &client);

private:
    friend class CDrawObj;

    struct NameList {
        CDrawObj *first = nullptr;
        CDrawObj *last = nullptr;
    };

    void LinkName(CDrawObj &object);
    void UnlinkName(CDrawObj &object);
    void ObjectChanged(CDrawObj &object);
    void Remove(CDrawObj &object);
    void CloseSlots();
    void BuildIndex();
    void FindTouched(const tavix::PlaceQuery &query);

    std::vector<std::unique_ptr<CDrawObj>> m_slots;
    std::vector<std::uint64_t> m_usedSlots; ///< A bit each.
    std::size_t m_emptySlots = 0;
    /// The objects of a name are chained in insertion order.
    std::unordered_map<std::string, NameList> m_names;
    tavix::PlaceIndex m_index;
    std::size_t m_indexedSlots = 0;       ///< The slots below were there when the index was built.
    std::vector<std::uint32_t> m_loose;   ///< Of these, those that changed since.
    std::vector<std::uint64_t> m_touched; ///< What a frame draws, a bit each.
    tavix::CanvasStorage m_canvasStorage;
    std::function<void()> m_listener;
};
