#include "TAVIX20/display/roi_file.h"

#include "TAVIX20/support/cx_xml.h"
#include "TAVIX20/support/safe_file.h"
#include "TAVIX20/support/text_number.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <string>
#include <string_view>

namespace tavix {

namespace {

void AppendPair(std::string &text, LONG first, LONG second) {
    constexpr std::size_t longest = 11;
    char pair[2 * longest + 1];
    char *end = std::to_chars(pair, pair + longest, first).ptr;
    *end++ = ',';
    end = std::to_chars(end, end + longest, second).ptr;
    text.append(pair, end);
}

void AppendElement(std::string &text, const _stRoiElement &element) {
    text += "<Element><Method>" + std::to_string(element.Method) + "</Method><Points>";
    for (int i = 0; i < element.Points.GetElementCount(); ++i) {
        const POINT &point = element.Points.GetAt(i);
        AppendPair(text, point.x, point.y);
        text += ';';
    }
    text += "</Points></Element>";
}

/// All text of a node, which comments may interrupt.
std::string TextIn(const CxXmlNode &node) {
    std::string text;
    for (const CxXmlNode *child = node.FirstChild(); child; child = child->NextSibling())
        if (child->ToText())
            text += child->Value();
    return text;
}

/// The number at the start of a text as ReadInt reads it, which needs a zero behind it.
LONG NumberIn(std::string_view text) {
    const bool isPlain = !text.empty() && text.front() >= '0' && text.front() <= '9';
    LONG value = 0;
    if (isPlain && std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc())
        return value;
    return ReadInt(std::string(text).c_str());
}

/// The pair of values in a text "x,y", where it holds exactly two.
std::optional<POINT> PairIn(std::string_view text) {
    while (text.ends_with(','))
        text.remove_suffix(1);
    const std::size_t comma = text.find(',');
    if (comma == std::string_view::npos || text.find(',', comma + 1) != std::string_view::npos)
        return std::nullopt;
    return POINT{NumberIn(text.substr(0, comma)), NumberIn(text.substr(comma + 1))};
}

void AddPoints(std::string_view text, TavixArray::CPointArray &points) {
    std::vector<POINT> added;
    added.reserve(static_cast<std::size_t>(std::ranges::count(text, ';')) + 1);
    while (!text.empty()) {
        const std::string_view piece = text.substr(0, text.find(';'));
        if (const std::optional<POINT> point = PairIn(piece))
            added.push_back(*point);
        text.remove_prefix(std::min(text.size(), piece.size() + 1));
    }
    points.AddPoints(added.data(), static_cast<int>(added.size()));
}

_stRoiElement ElementOf(const CxXmlElement &node) {
    _stRoiElement element;
    for (const CxXmlElement *child = node.FirstChildElement(); child;
         child = child->NextSiblingElement()) {
        if (std::strcmp(child->Value(), "Method") == 0)
            element.Method = ReadInt(TextIn(*child).c_str());
        else if (std::strcmp(child->Value(), "Points") == 0)
            AddPoints(TextIn(*child), element.Points);
    }
    return element;
}

} // namespace

bool SaveRoiFile(const char *path, SIZE imageSize, const CRoiElementArray &elements) {
    std::string text = "<?xml version=\"1.0\" encoding=\"euc-kr\"?><Tavix_ROI><ImageSize>";
    AppendPair(text, imageSize.cx, imageSize.cy);
    text += "</ImageSize><RoiElements>";
    for (int i = 0; i < elements.GetCount(); ++i)
        AppendElement(text, elements.GetAt(i));
    text += "</RoiElements></Tavix_ROI>";
    return SaveWholeFile(path, text.data(), text.size());
}

std::optional<std::vector<_stRoiElement>> LoadRoiFile(const char *path) {
    CxXmlDocument document;
    document.SetTabSize(0); // Nobody asks where an error is.
    if (!document.LoadFile(path))
        return std::nullopt;
    const CxXmlElement *const root = document.FirstChildElement();
    const CxXmlElement *const size = root ? root->FirstChildElement("ImageSize") : nullptr;
    const CxXmlElement *const list = root ? root->FirstChildElement("RoiElements") : nullptr;
    if (!size || !PairIn(TextIn(*size)) || !list)
        return std::nullopt;
    std::vector<_stRoiElement> elements;
    for (const CxXmlElement *node = list->FirstChildElement("Element"); node;
         node = node->NextSiblingElement("Element"))
        elements.push_back(ElementOf(*node));
    return elements;
}

} // namespace tavix
