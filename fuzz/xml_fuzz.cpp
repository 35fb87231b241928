// Any bytes as an XML document: what is read navigates, copies, edits and writes without a fault,
// and what was written is read again.

#include "TAVIX20/support/cx_mem_file.h"
#include "TAVIX20/support/cx_xml.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

std::string Printed(const CxXmlDocument &document) {
    CxMemFile file;
    document.SaveFile(file);
    return std::string(static_cast<const char *>(file), static_cast<std::size_t>(file.GetSize()));
}

/// Asks for every object; returns the deepest nesting of elements.
int Visit(CxXmlNode &node, int depth) {
    int deepest = depth;
    if (CxXmlElement *element = node.ToElement()) {
        deepest = ++depth;
        int attributes = 0;
        for (CxXmlAttribute *each = element->FirstAttribute(); each != nullptr; each = each->Next())
            ++attributes;
        if (attributes > CxXmlDocument::MAX_ATTRIBUTES)
            std::abort();
    }
    for (CxXmlNode *child = node.FirstChild(); child != nullptr; child = child->NextSibling())
        deepest = std::max(deepest, Visit(*child, depth));
    return deepest;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    if (size == 0)
        return 0;
    const auto encoding = static_cast<CxXmlEncoding>(data[0] % 3);
    CxXmlBase::SetCondenseWhiteSpace(data[0] % 2 == 0);
    CxMemFile input;
    input.Write(data + 1, static_cast<unsigned int>(size - 1));

    CxXmlDocument document;
    const bool isLoaded = document.LoadFile(input, encoding) != 0;
    if (isLoaded == document.Error() && size > 1)
        std::abort();
    if (Visit(document, 0) > CxXmlDocument::MAX_DEPTH)
        std::abort();
    const std::string printed = Printed(document);
    CxXmlDocument copy(document);
    if (Printed(copy).size() > printed.size()) // A copy's values end at their first zero.
        std::abort();
    if (CxXmlElement *root = copy.RootElement()) {
        root->InsertEndChild(*root);
        root->ReplaceChild(root->FirstChild(), CxXmlText("t"));
        copy.RemoveChild(root);
    }
    CxXmlDocument again;
    again.Parse(printed.c_str(), nullptr, encoding);
    return 0;
}
