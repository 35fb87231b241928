/// Looks through a text before TinyXML parses it.
#pragma once

#include "TAVIX20/platform/export.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <tinyxml.h>

namespace tavix {

/// What TinyXML's current releases would read otherwise than the older ones that programs know: a
/// CDATA section, and a value without quotes that holds a quote. The range of the text is made
/// harmless before parsing, and what was read gets the value afterwards.
struct XmlRepair {
    /// For an attribute that the text's end cuts off, which the parser drops.
    static constexpr std::size_t NO_NODE = static_cast<std::size_t>(-1);

    std::size_t first; ///< Range of the text.
    std::size_t end;
    std::size_t node;  ///< The how-many-th node of the text, text nodes not counted.
    std::string name;  ///< The attribute's name; empty for a CDATA section.
    std::string value; ///< The right value.
};

/// Where and why the parser stops by a rule of ours, and what is to be repaired until there.
struct XmlScan {
    enum class Stop { None, TooDeep, TooManyAttributes, DuplicateAttribute };

    Stop stop = Stop::None;
    std::size_t at = 0;                              ///< Of the element or attribute.
    TiXmlEncoding encoding = TIXML_ENCODING_UNKNOWN; ///< The one in force at the stop.
    bool isTopLevel = false; ///< Whether the duplicate attribute's element has no parent.
    std::string name;        ///< The duplicate attribute.
    std::string value;
    std::vector<XmlRepair> repairs;
};

/// Room for zeros behind a text: TinyXML steps over the end of a text that ends within a character.
constexpr std::size_t XML_PADDING = 8;

/// What the parser does per node grows with the elements around it, and per attribute with those
/// before it: as many steps up, and as many comparisons beyond the first FEW_ATTRIBUTES of each
/// element, may be needed for a text as a whole.
constexpr std::uint64_t MAX_STEPS_UP = 500'000'000;
constexpr std::uint64_t MAX_COMPARISONS = 500'000'000;
constexpr std::size_t FEW_ATTRIBUTES = 100;

/// Goes the parser's way through a text without zeros, behind which lie XML_PADDING zeros, step for
/// step, so that it sees an element exactly where the parser would open one; it makes no nodes. At
/// most maxDepth elements may be open at a time, and each may have maxAttributes attributes; what
/// goes beyond the limits of a text as a whole stops it in the same way.
TAVIX_API XmlScan ScanXml(std::string_view text, TiXmlEncoding encoding, std::size_t maxDepth,
                          std::size_t maxAttributes);

} // namespace tavix
