#include "TAVIX20/support/drawing_document.h"

#include "TAVIX20/support/cx_xml.h"
#include "support/temporary_folder.h"
#include "support/zip_bytes.h"

#include <gtest/gtest.h>

namespace {

struct Case {
    const char *what;
    std::string archive; ///< Its bytes; empty when there is none.
    std::string stale;   ///< A content file of an earlier load; empty when there is none.
    bool accepts;        ///< What the loader says.
    std::string loaded;  ///< What it is given; "-" when it is not asked.
    std::string remains; ///< The content file afterwards; empty when there is none.
};

} // namespace

TEST(DrawingDocumentTest, EachStep) {
    const std::string plain = ZipBytes({{"meta.xml", "m"}, {"content.xml", "new"}});
    const std::string anyCase = ZipBytes({{"CONTENT.Xml", "new"}, {"content.xml", "second"}});
    const std::string without = ZipBytes({{"sub/content.xml", "no"}, {"content.xml2", "no"}});
    const std::string damaged = ZipBytes({{"content.xml", "new", 0, 0, 1}, {"content.xml", "2nd"}});
    const Case cases[] = {
        {"loaded and deleted", plain, "", true, "new", ""},
        {"a failed load leaves the file", plain, "", false, "new", "new"},
        {"the stale file is replaced", plain, "stale", false, "new", "new"},
        {"any case, first match", anyCase, "", false, "new", "new"},
        {"no match loads the stale file", without, "stale", true, "stale", ""},
        {"no match, stale file not loaded", without, "stale", false, "stale", "stale"},
        {"no match, no stale file", without, "", false, "", ""},
        {"an archive without entries", ZipBytes({}), "stale", true, "stale", ""},
        {"not extracted", damaged, "stale", true, "-", "stale"},
        {"no archive", "", "stale", true, "-", "stale"},
        {"not an archive", "text", "stale", true, "-", "stale"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        const TemporaryFolder folder;
        const TemporaryFolder archives;
        if (!c.archive.empty())
            archives.Make("drawing", c.archive);
        if (!c.stale.empty())
            folder.Make("Content.xml", c.stale);
        std::string loaded = "-";
        const bool result = tavix::LoadDrawingContent(
            (archives / "drawing").c_str(), CString(folder.Path()), [&](const CString &path) {
                EXPECT_EQ(path, CString(folder / "Content.xml"));
                loaded = folder.Content("Content.xml");
                return c.accepts;
            });
        EXPECT_EQ(result, c.accepts && c.loaded != "-");
        EXPECT_EQ(loaded, c.loaded);
        EXPECT_EQ(folder.Content("Content.xml"), c.remains);
        EXPECT_EQ(folder.Names().size(), c.remains.empty() ? 0u : 1u);
    }
}

TEST(DrawingDocumentTest, BecomesAnXmlDocument) {
    const TemporaryFolder folder;
    setenv("TMPDIR", folder.Path().c_str(), 1);
    const std::string content = "<?xml version=\"1.0\"?><drawing><page/></drawing>";
    for (const bool isXml : {true, false}) {
        folder.Make("drawing", ZipBytes({{"content.xml", isXml ? content : "<drawing>"}}));
        CxXmlDocument document;
        EXPECT_EQ(tavix::LoadDrawingDocument((folder / "drawing").c_str(), document), isXml);
        EXPECT_STREQ(document.RootElement()->Value(), "drawing");
        EXPECT_EQ(folder.Content("Content.xml"), isXml ? "" : "<drawing>");
    }
    unsetenv("TMPDIR");
}
