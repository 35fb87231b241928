/// Key lists: the text form of overlay objects that host programs read and write.
///
///     list   = [ entry { ";" entry } [ ";" ] ]
///     entry  = key "=" value
///     point  = number ", " number           "%.2f, %.2f", image pixels
///     length = number [ " um" ]             "%.2f um", image pixels times the calibration
///     area   = number [ " um2" ]            "%.2f um2"
///     colour = "0x" six hexadecimal digits  0x00BBGGRR; a decimal number is read as well
///
/// Numbers are written with two decimals and a point, whatever the locale. Blanks around keys and
/// values do not count. A key may stand several times: the points of a polygon are one "POINT="
/// each, in order. In a "TEXT=" value ";" and "%" are written %3B and %25.
///
/// SHAPE=... and its keys, beside STROKE_COLOR, PEN_WIDTH and PEN_STYLE:
///
///     POINT                            POINT
///     CROSS_POINT                      POINT, SIZE (the arms)
///     LINE, RETICLE_LINE               START, END
///     H_STYLE_LINE                     START, END, TICK
///     ARROW_LINE                       START, END, HEAD (length, breadth), HEADS
///     RECTANGLE, FILL_RECTANGLE,
///     ELLIPSE, FILL_ELLIPSE            POINT, SIZE
///     POLYLINE, POLYGON, FILL_POLYGON  POINT...
///     HATCH_POLYGON                    POINT..., HATCH
///     TEXT                             POINT, TEXT_COLOR, FONT_SIZE, FONT_FACE, FONT_FLAGS, TEXT;
///                                      no pen
///
/// The measurement objects have TEXT_COLOR and FONT_SIZE as well. Results, in parentheses, are
/// ignored when they are set:
///
///     MEASURE_POINT     POINT
///     MEASURE_DISTANCE  START, END, (DISTANCE)
///     MEASURE_CYCLE     CENTER, DIAMETER, RADIUS, START Angle, END Angle, (LENGTH), (AREA)
///     MEASURE_POLYLINE  POINT..., (LENGTH)
///     MEASURE_POLYGON   POINT..., (LENGTH), (AREA)
///
/// Setting a list changes what differs from the object's own list, so an object's own list changes
/// nothing. SHAPE and unknown keys are ignored; a damaged value, one out of range or not a number,
/// leaves its field as it was. "POINT=" number i of a polygon replaces its point i; further ones
/// are appended.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/types.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tavix {

inline constexpr const char *LENGTH_UNIT = " um";
inline constexpr const char *AREA_UNIT = " um2";

/// The number with two decimals.
std::string FormatNumber(double value);

/// Builds a key list.
class KeyWriter {
public:
    void Text(std::string_view key, std::string_view value);
    void EscapedText(std::string_view key, std::string_view value);
    void Integer(std::string_view key, std::int64_t value);
    void Number(std::string_view key, double value, std::string_view unit = {});
    void Pair(std::string_view key, double first, double second);
    void Colour(std::string_view key, COLORREF colour);
    std::string Take() { return std::move(m_list); }

private:
    std::string m_list;
};

/// One entry of a key list; the views are into the list.
struct KeyEntry {
    std::string_view key;
    std::string_view value;
    int occurrence; ///< How many entries with this key stand before it.
};

/// The entries of a list; text without "=" is skipped.
TAVIX_API std::vector<KeyEntry> ParseKeys(std::string_view list);

/// The entries of list that do not stand, with the same occurrence and value, in current.
std::vector<KeyEntry> ChangedKeys(std::string_view list, std::string_view current);

/// The readers leave the field as it was, and give false, for a damaged value.
bool ReadInteger(std::string_view value, std::int32_t &field);
bool ReadColour(std::string_view value, COLORREF &field);
/// A finite number, with or without the unit behind it.
bool ReadNumber(std::string_view value, double &field, std::string_view unit = {});
bool ReadPair(std::string_view value, double &first, double &second);
/// Rounded to whole pixels; out of the 32-bit range is damaged.
bool ReadPoint(std::string_view value, tagPOINT &field);
bool ReadSize(std::string_view value, tagSIZE &field);
std::string Unescape(std::string_view value);

} // namespace tavix
