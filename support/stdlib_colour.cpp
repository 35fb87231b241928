// Colour codes: three components of another colour model in the three bytes of a COLORREF.

#include "TAVIX20/platform/types.h"
#include "TAVIX20/support/stdlib.h"

#include <algorithm>
#include <cmath>

namespace {

/// The byte nearest to the truncated value.
int ToByte(double value) {
    return std::clamp(static_cast<int>(value), 0, 255);
}

/// Hue in degrees, 0 < result <= 360: pure red gives 360.
double HueOf(int red, int green, int blue, int largest, double delta) {
    double hue = 0.0;
    if (red == largest)
        hue = 60.0 * ((green - blue) / delta) + 360.0;
    if (green == largest)
        hue = 60.0 * ((blue - red) / delta + 2.0);
    if (blue == largest)
        hue = 60.0 * ((red - green) / delta + 4.0);
    return hue > 360.0 ? hue - 360.0 : hue;
}

/// How far a channel is turned up at an angle from its own hue: 1 within 60 degrees, -1 from 120.
double ShareAt(double degrees) {
    const double apart = std::abs(std::remainder(degrees, 360.0)) / 60.0;
    return std::clamp(3.0 - 2.0 * apart, -1.0, 1.0);
}

} // namespace

// The weights are single-precision numbers; everything else is computed in double precision.
COLORREF CStdlib::RGBtoYUV(COLORREF colour) {
    const double red = GetRValue(colour), green = GetGValue(colour), blue = GetBValue(colour);
    const int y = ToByte(double{0.587f} * green + double{0.299f} * red + double{0.114f} * blue);
    const int v = ToByte(128.0 + (red - y) * double{0.713f});
    const int u = ToByte((blue - y) * double{0.565f} + 128.0);
    return RGB(y, u, v);
}

COLORREF CStdlib::YUVtoRGB(COLORREF colour) {
    const double y = GetRValue(colour), u = GetGValue(colour) - 128.0,
                 v = GetBValue(colour) - 128.0;
    return RGB(ToByte(y + double{1.403f} * v), ToByte(y - double{0.344f} * u - double{0.714f} * v),
               ToByte(y + double{1.77f} * u));
}

COLORREF CStdlib::RGBtoHLS(COLORREF colour) {
    const int red = GetRValue(colour), green = GetGValue(colour), blue = GetBValue(colour);
    const int largest = std::max({red, green, blue});
    const int smallest = std::min({red, green, blue});
    const double delta = largest - smallest;
    const double sum = largest + smallest;
    const double lightness = sum / 510.0;
    double hue = 0.0;
    double saturation = 0.0;
    if (largest != smallest) {
        saturation = lightness <= 0.5 ? delta / sum : delta / (510.0 - sum);
        hue = HueOf(red, green, blue, largest, delta);
    }
    return RGB(static_cast<int>(255.0 * hue / 360.0), static_cast<int>(255.0 * lightness),
               static_cast<int>(255.0 * saturation));
}

// A byte stands for all values that were cut off to it; what comes back is the middle of them.
// Values that colours reach exactly, and that nothing was cut off from, stay as they are: no and
// full saturation, and the hues of pure red, green and blue. A lightness byte stands for two sums
// of the largest and the smallest channel, so its middle lies a quarter above it.
COLORREF CStdlib::HLStoRGB(COLORREF colour) {
    const int hueByte = GetRValue(colour), saturationByte = GetBValue(colour);
    const bool isPure = hueByte % 85 == 0;
    const double hue = (hueByte + (isPure ? 0.0 : 0.5)) * 360.0 / 255.0;
    const bool isWhole = saturationByte % 255 == 0;
    const double saturation = (saturationByte + (isWhole ? 0.0 : 0.5)) / 255.0;
    const double lightness = std::min(GetGValue(colour) + 0.25, 255.0);
    const double swing = saturation * std::min(lightness, 255.0 - lightness);
    const auto channel = [&](double ownHue) {
        return ToByte(lightness + swing * ShareAt(hue - ownHue) + 0.5);
    };
    return RGB(channel(0.0), channel(120.0), channel(240.0));
}

COLORREF CStdlib::RGBtoCMYK(COLORREF) {
    return 0;
}

COLORREF CStdlib::CMYKtoRGB(COLORREF) {
    return 0;
}
