/// The way from a drawing document, which is a zip archive, to the XML content in it.
#pragma once

#include "TAVIX20/platform/cstring.h"
#include "TAVIX20/platform/export.h"

#include <functional>

class CxXmlDocument;

namespace tavix {

/// Loads the file of this path as an XML document; true when it is one.
using ContentLoader = std::function<bool(const CString &contentPath)>;

/// Extracts the first entry named "content.xml", in letters of any case, as "Content.xml" into the
/// folder, loads that file, and deletes it when it was loaded; when not, it stays. False when the
/// archive cannot be opened, the entry not be extracted or the file not be loaded.
///
/// Programs rely on this: when the archive has no such entry, a "Content.xml" that an earlier load
/// left in the folder is loaded instead.
TAVIX_API bool LoadDrawingContent(const char *archivePath, const CString &temporaryFolder,
                                  const ContentLoader &load);

/// The same through the user's temporary folder into an XML document.
TAVIX_API bool LoadDrawingDocument(const char *archivePath, CxXmlDocument &document);

} // namespace tavix
