/// The plain records and scalar types that the exported interfaces speak. Field widths are fixed:
/// LONG is 32 bits on every platform.
#pragma once

#include <cstdint>

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using LONG = std::int32_t;
using COLORREF = std::uint32_t; ///< A colour as 0x00BBGGRR: red in the low byte.
using LPARAM = std::intptr_t;   ///< An integer as wide as a pointer.

/// A point in pixels; x grows to the right, y downwards.
struct tagPOINT {
    LONG x;
    LONG y;
};
using POINT = tagPOINT;

/// A rectangle by its four edges. Whether right and bottom belong to it is said where it is used.
struct tagRECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};
using RECT = tagRECT;

/// A width and a height.
struct tagSIZE {
    LONG cx;
    LONG cy;
};
using SIZE = tagSIZE;

constexpr bool operator==(const tagPOINT &a, const tagPOINT &b) {
    return a.x == b.x && a.y == b.y;
}
constexpr bool operator==(const tagRECT &a, const tagRECT &b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}
constexpr bool operator==(const tagSIZE &a, const tagSIZE &b) {
    return a.cx == b.cx && a.cy == b.cy;
}

/// Packs three channel values of 0 to 255 (low byte taken) into a COLORREF.
constexpr COLORREF RGB(int red, int green, int blue) {
    return static_cast<COLORREF>(red & 0xFF) | (static_cast<COLORREF>(green & 0xFF) << 8) |
           (static_cast<COLORREF>(blue & 0xFF) << 16);
}
constexpr BYTE GetRValue(COLORREF colour) {
    return static_cast<BYTE>(colour & 0xFF);
}
constexpr BYTE GetGValue(COLORREF colour) {
    return static_cast<BYTE>((colour >> 8) & 0xFF);
}
constexpr BYTE GetBValue(COLORREF colour) {
    return static_cast<BYTE>((colour >> 16) & 0xFF);
}

/// Header of a device-independent bitmap, 40 bytes. A positive biHeight says that the first row in
/// memory is the bottom row of the picture.
struct BITMAPINFOHEADER {
    DWORD biSize;
    LONG biWidth;
    LONG biHeight;
    WORD biPlanes;
    WORD biBitCount;
    DWORD biCompression;
    DWORD biSizeImage;
    LONG biXPelsPerMeter;
    LONG biYPelsPerMeter;
    DWORD biClrUsed;
    DWORD biClrImportant;
};
static_assert(sizeof(BITMAPINFOHEADER) == 40);

/// One palette entry of a device-independent bitmap.
struct RGBQUAD {
    BYTE rgbBlue;
    BYTE rgbGreen;
    BYTE rgbRed;
    BYTE rgbReserved;
};

inline constexpr DWORD BI_RGB = 0; ///< BITMAPINFOHEADER::biCompression: not compressed.

/// Header of the data of a region, 32 bytes.
struct RGNDATAHEADER {
    DWORD dwSize;   ///< Size of this header, 32.
    DWORD iType;    ///< RDH_RECTANGLES.
    DWORD nCount;   ///< Number of rectangles that follow.
    DWORD nRgnSize; ///< Their size in bytes.
    RECT rcBound;   ///< Bounding box of all of them.
};
static_assert(sizeof(RGNDATAHEADER) == 32);

/// The data of a region: the header, then nCount rectangles with exclusive right and bottom edges.
struct RGNDATA {
    RGNDATAHEADER rdh;
    char Buffer[1];
};

inline constexpr DWORD RDH_RECTANGLES = 1;
