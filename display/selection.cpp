#include "TAVIX20/display/selection.h"

#include "TAVIX20/display/draw_obj_array.h"

#include <utility>

namespace tavix {

namespace {

struct Selected {
    CDrawObjArray *array = nullptr;
    CDrawObj *object = nullptr;
};
Selected g_selected;

} // namespace

CDrawObj *Selection::Object() {
    return g_selected.object;
}

CDrawObjArray *Selection::Array() {
    return g_selected.array;
}

void Selection::Select(CDrawObjArray &array, CDrawObj &object) {
    Clear();
    g_selected = {&array, &object};
    array.NotifyListener();
}

void Selection::Clear() {
    const Selected before = std::exchange(g_selected, {});
    if (before.array)
        before.array->NotifyListener(); // Its handles disappear.
}

void Selection::ForgetObject(const CDrawObj &object) {
    if (g_selected.object == &object)
        Clear();
}

void Selection::ForgetArray(const CDrawObjArray &array) {
    if (g_selected.array == &array)
        Clear();
}

} // namespace tavix
