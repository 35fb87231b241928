/// The selected overlay object. There is one for the whole process, because tools are process-wide:
/// the select tool edits it, whichever view it belongs to.
#pragma once

#include "TAVIX20/platform/export.h"

class CDrawObj;
class CDrawObjArray;

namespace tavix {

class TAVIX_API Selection {
public:
    /// Null while nothing is selected.
    static CDrawObj *Object();
    /// The array that holds the selected object; null while nothing is selected.
    static CDrawObjArray *Array();

    /// Selects an object of the array in place of the one before.
    static void Select(CDrawObjArray &array, CDrawObj &object);
    static void Clear();

    /// Clear the selection if it is this object, or one of this array.
    static void ForgetObject(const CDrawObj &object);
    static void ForgetArray(const CDrawObjArray &array);
};

} // namespace tavix
