#include "TAVIX20/display/draw_obj_array.h"

#include "TAVIX20/display/selection.h"
#include "TAVIX20/platform/dc.h"

#include <algorithm>
#include <bit>

namespace {

constexpr std::size_t WORD_BITS = 64;
/// So few objects are faster looked at one by one than indexed.
constexpr std::size_t MAX_LOOSE = 512;
constexpr std::size_t MAX_LOOSE_FRACTION = 16;
constexpr std::size_t MIN_EMPTY_SLOTS = 64;

std::string NameOf(const char *name) {
    return name ? name : "";
}

tavix::Placed PlaceOf(const CDrawObj &object) {
    return {object.GetBoundRect(), object.GetDrawMargin()};
}

std::uint64_t BitOf(std::size_t slot) {
    return std::uint64_t{1} << (slot % WORD_BITS);
}

/// Calls with the number of each bit that is set, in ascending order.
template <typename Function>
void ForEachBit(const std::vector<std::uint64_t> &words, Function call) {
    for (std::size_t word = 0; word < words.size(); ++word)
        for (std::uint64_t bits = words[word]; bits != 0; bits &= bits - 1)
            call(word * WORD_BITS + static_cast<std::size_t>(std::countr_zero(bits)));
}

} // namespace

CDrawObjArray::~CDrawObjArray() {
    m_listener = nullptr;
    RemoveAll();
}

void CDrawObjArray::NotifyListener() const {
    if (m_listener)
        m_listener();
}

CDrawObj *CDrawObjArray::GetAt(int index) const {
    if (index < 0 || index >= GetCount())
        return nullptr;
    auto left = static_cast<std::size_t>(index);
    if (m_emptySlots == 0)
        return m_slots[left].get();
    std::size_t word = 0;
    for (std::size_t used;
         (used = static_cast<std::size_t>(std::popcount(m_usedSlots[word]))) <= left; ++word)
        left -= used;
    std::uint64_t bits = m_usedSlots[word];
    for (; left > 0; --left)
        bits &= bits - 1;
    return m_slots[word * WORD_BITS + static_cast<std::size_t>(std::countr_zero(bits))].get();
}

CDrawObj *CDrawObjArray::Find(const char *name) const {
    const auto found = m_names.find(NameOf(name));
    return found == m_names.end() ? nullptr : found->second.first;
}

CDrawObj *CDrawObjArray::Add(std::unique_ptr<CDrawObj> object) {
    if (!object)
        return nullptr;
    const std::size_t slot = m_slots.size();
    CDrawObj *const added = object.get();
    m_slots.push_back(std::move(object));
    if (slot % WORD_BITS == 0)
        m_usedSlots.push_back(0);
    m_usedSlots.back() |= BitOf(slot);
    added->m_array = this;
    added->m_slot = static_cast<std::uint32_t>(slot);
    LinkName(*added);
    NotifyListener();
    return added;
}

int CDrawObjArray::RemoveAt(int index) {
    CDrawObj *const object = GetAt(index);
    if (!object)
        return 0;
    Remove(*object);
    NotifyListener();
    return 1;
}

int CDrawObjArray::RemoveFirst(const char *name) {
    CDrawObj *const object = Find(name);
    if (!object)
        return 0;
    Remove(*object);
    NotifyListener();
    return 1;
}

int CDrawObjArray::RemoveEach(const char *name) {
    const std::string kept = NameOf(name); // The text may be a removed object's own name.
    int removed = 0;
    for (; CDrawObj *const object = Find(kept.c_str()); ++removed)
        Remove(*object);
    if (removed > 0)
        NotifyListener();
    return removed;
}

int CDrawObjArray::RemoveAll() {
    const int removed = GetCount();
    tavix::Selection::ForgetArray(*this);
    m_names.clear();
    m_index.Clear();
    m_indexedSlots = 0;
    m_loose.clear();
    m_usedSlots.clear();
    m_emptySlots = 0;
    m_slots.clear();
    if (removed > 0)
        NotifyListener();
    return removed;
}

void CDrawObjArray::Remove(CDrawObj &object) {
    tavix::Selection::ForgetObject(object);
    UnlinkName(object);
    const std::size_t slot = object.m_slot;
    m_usedSlots[slot / WORD_BITS] &= ~BitOf(slot);
    m_slots[slot].reset();
    ++m_emptySlots;
    if (m_emptySlots > std::max(MIN_EMPTY_SLOTS, m_slots.size() / 2))
        CloseSlots();
}

/// Moves the objects together; the index is of no use afterwards.
void CDrawObjArray::CloseSlots() {
    std::erase(m_slots, nullptr);
    m_emptySlots = 0;
    m_usedSlots.assign((m_slots.size() + WORD_BITS - 1) / WORD_BITS, 0);
    for (std::size_t slot = 0; slot < m_slots.size(); ++slot) {
        m_slots[slot]->m_slot = static_cast<std::uint32_t>(slot);
        m_slots[slot]->m_placedLoosely = false;
        m_usedSlots[slot / WORD_BITS] |= BitOf(slot);
    }
    m_index.Clear();
    m_indexedSlots = 0;
    m_loose.clear();
}

/// Chains the object to those of its name, by its place in the insertion order.
void CDrawObjArray::LinkName(CDrawObj &object) {
    NameList &list = m_names[object.GetName()];
    CDrawObj *before = list.last;
    while (before && before->m_slot > object.m_slot)
        before = before->m_previousOfName;
    CDrawObj *const after = before ? before->m_nextOfName : list.first;
    object.m_previousOfName = before;
    object.m_nextOfName = after;
    (before ? before->m_nextOfName : list.first) = &object;
    (after ? after->m_previousOfName : list.last) = &object;
}

void CDrawObjArray::UnlinkName(CDrawObj &object) {
    const auto found = m_names.find(object.GetName());
    CDrawObj *const before = object.m_previousOfName;
    CDrawObj *const after = object.m_nextOfName;
    (before ? before->m_nextOfName : found->second.first) = after;
    (after ? after->m_previousOfName : found->second.last) = before;
    object.m_previousOfName = object.m_nextOfName = nullptr;
    if (!found->second.first)
        m_names.erase(found);
}

void CDrawObjArray::ObjectChanged(CDrawObj &object) {
    if (object.m_slot < m_indexedSlots && !object.m_placedLoosely) {
        object.m_placedLoosely = true;
        m_loose.push_back(object.m_slot);
    }
    NotifyListener();
}

void CDrawObjArray::BuildIndex() {
    std::vector<tavix::Placed> boxes;
    std::vector<std::uint32_t> numbers;
    boxes.reserve(m_slots.size());
    numbers.reserve(m_slots.size());
    for (const auto &object : m_slots) {
        if (!object)
            continue;
        boxes.push_back(PlaceOf(*object));
        numbers.push_back(object->m_slot);
        object->m_placedLoosely = false;
    }
    m_index.Build(boxes, numbers);
    m_indexedSlots = m_slots.size();
    m_loose.clear();
}

/// Marks what may touch the part. Boxes in the index may be those of removed and of changed
/// objects: the former are masked out, the latter looked at once more.
void CDrawObjArray::FindTouched(const tavix::PlaceQuery &query) {
    const std::size_t loose = m_loose.size() + (m_slots.size() - m_indexedSlots);
    if (loose > std::max(MAX_LOOSE, m_index.Size() / MAX_LOOSE_FRACTION))
        BuildIndex();
    m_touched.assign(m_usedSlots.size(), 0);
    m_index.Find(query, m_touched);
    const auto test = [&](std::size_t slot) {
        const CDrawObj *const object = m_slots[slot].get();
        if (object && query.Touches(PlaceOf(*object)))
            m_touched[slot / WORD_BITS] |= BitOf(slot);
    };
    for (const std::uint32_t slot : m_loose)
        test(slot);
    for (std::size_t slot = m_indexedSlots; slot < m_slots.size(); ++slot)
        test(slot);
    for (std::size_t word = 0; word < m_touched.size(); ++word)
        m_touched[word] &= m_usedSlots[word];
}

void CDrawObjArray::Draw(CDC &dc, const tavix::ViewTransform &view, const CRect &client) {
    FindTouched(tavix::PlaceQuery(view, client));
    tavix::ObjectCanvas canvas(*dc.GetPainter(), view, client, m_canvasStorage);
    ForEachBit(m_touched, [&](std::size_t slot) { m_slots[slot]->Draw(canvas); });
    if (tavix::Selection::Array() == this) {
        const CDrawObj &selected = *tavix::Selection::Object();
        for (int handle = 1; handle <= selected.GetHandleCount(); ++handle)
            canvas.Handle(selected.GetHandle(handle));
    }
}
