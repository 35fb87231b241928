/// The errors of XML documents. The table has the order of TinyXML's older releases, which the
/// numbers that programs compare with come from; the parser that is linked counts differently.
#pragma once

namespace tavix {

constexpr int XML_ERROR_OPENING_FILE = 2;
constexpr int XML_ERROR_OUT_OF_MEMORY = 3;
constexpr int XML_ERROR_READING_ELEMENT_VALUE = 6;
constexpr int XML_ERROR_DOCUMENT_EMPTY = 13;
/// The number of all errors that are not in the table.
constexpr int XML_ERROR_OTHER = 15;

constexpr const char *XML_ERROR_TEXTS[XML_ERROR_OTHER] = {
    "No error",
    "Error",
    "Failed to open file",
    "Memory allocation failed.",
    "Error parsing Element.",
    "Failed to read Element name",
    "Error reading Element value.",
    "Error reading Attributes.",
    "Error: empty tag.",
    "Error reading end tag.",
    "Error parsing Unknown.",
    "Error parsing Comment.",
    "Error parsing Declaration.",
    "Error document empty.",
    "Error null (0) or unexpected EOF found in input stream.",
};

constexpr const char *XML_TOO_DEEP = "Error: elements nested too deep.";
constexpr const char *XML_TOO_MANY_ATTRIBUTES = "Error: too many attributes.";
constexpr const char *XML_DOCUMENT_AS_CHILD = "Error: a document cannot be a child.";

} // namespace tavix
