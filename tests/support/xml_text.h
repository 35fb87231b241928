#pragma once

#include "TAVIX20/support/cx_mem_file.h"
#include "TAVIX20/support/cx_xml.h"

#include <string>

inline std::string Bytes(const CxMemFile &file) {
    return {static_cast<const char *>(file), static_cast<std::size_t>(file.GetSize())};
}

inline std::string Printed(const CxXmlBase &object, int depth = 0) {
    CxMemFile file;
    object.Print(file, depth);
    return Bytes(file);
}

inline std::string Streamed(const CxXmlBase &object) {
    CxOStream stream;
    object.StreamOut(&stream);
    return stream.c_str();
}
