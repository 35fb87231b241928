#include "TAVIX20/display/roi_file.h"

#include "TAVIX20/support/cx_xml.h"
#include "TAVIX20/support/safe_file.h"
#include "TAVIX20/support/text_number.h"

#include <cstring>
#include <string>
#include <string_view>

namespace tavix {

namespace {

void AppendPair(std::string &text, LONG first, LONG second) {
    text += std::to_string(first);
    text += ',';
    text += std::to_string(second);
}

std::string TextOf(const _stRoiElement &element) {
    std::string text = "<Element><Method>" + std::to_string(element.Method) + "</Method><Points>";
    for (int i = 0; i < element.Points.GetElementCount(); ++i) {
        const POINT &point = element.Points.GetAt(i);
        AppendPair(text, point.x, point.y);
        text += ';';
    }
    return text + "</Points></Element>";
}

/// All text of a node, which comments may interrupt.
std::string TextIn(const CxXmlNode &node) {
    std::string text;
    for (const CxXmlNode *child = node.FirstChild(); child; child = child->NextSibling())
        if (child->ToText())
            text += child->Value();
    return text;
}

/// The pair of values in a text "x,y", where it holds exactly two.
std::optional<POINT> PairIn(std::string_view text) {
    while (text.ends_with(','))
        text.remove_suffix(1);
    const std::size_t comma = text.find(',');
    if (comma == std::string_view::npos || text.find(',', comma + 1) != std::string_view::npos)
        return std::nullopt;
    return POINT{ReadInt(std::string(text.substr(0, comma)).c_str()),
                 ReadInt(std::string(text.substr(comma + 1)).c_str())};
}

void AddPoints(std::string_view text, TavixArray::CPointArray &points) {
    while (!text.empty()) {
        const std::string_view piece = text.substr(0, text.find(';'));
        if (const std::optional<POINT> point = PairIn(piece))
            points.Add(point->x, point->y);
        text.remove_prefix(std::min(text.size(), piece.size() + 1));
    }
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
        text += TextOf(elements.GetAt(i));
    text += "</RoiElements></Tavix_ROI>";
    return SaveWholeFile(path, text.data(), text.size());
}

std::optional<std::vector<_stRoiElement>> LoadRoiFile(const char *path) {
    CxXmlDocument document;
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
