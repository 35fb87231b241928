#include "TAVIX20/containers/color_pixel_array.h"

namespace TavixArray {

void CColorPixelArray::Add(int x, int y, unsigned long colour) {
    Add({x, y, static_cast<COLORREF>(colour), {}});
}

void CColorPixelArray::Add(int x, int y, int red, int green, int blue) {
    Add(x, y, RGB(red, green, blue));
}

} // namespace TavixArray
