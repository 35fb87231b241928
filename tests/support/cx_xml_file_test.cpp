#include "TAVIX20/support/cx_file.h"

#include "support/temporary_folder.h"
#include "support/xml_text.h"

#include <gtest/gtest.h>

namespace {

/// The text of the root element after loading the bytes by a name, from a file and from memory: all
/// alike.
std::string Loaded(const std::string &bytes, CxXmlEncoding encoding, int expected = 1) {
    const TemporaryFolder folder;
    const std::string path = folder.Make("file", bytes);
    CxXmlDocument named;
    EXPECT_EQ(named.LoadFile(path.c_str(), encoding), expected);
    EXPECT_EQ(named.Value(), path);

    CxFile file(path.c_str(), CxFile::modeRead);
    file.SeekToEnd();
    CxXmlDocument fromFile("name");
    EXPECT_EQ(fromFile.LoadFile(file, encoding), expected);
    EXPECT_STREQ(fromFile.Value(), "name");
    EXPECT_TRUE(file.IsOpen());

    CxMemFile memory;
    memory.Write(bytes.data(), static_cast<unsigned int>(bytes.size()));
    CxXmlDocument fromMemory;
    EXPECT_EQ(fromMemory.LoadFile(memory, encoding), expected);

    EXPECT_EQ(Streamed(named), Streamed(fromFile));
    EXPECT_EQ(Streamed(named), Streamed(fromMemory));
    EXPECT_EQ(named.ErrorId(), fromMemory.ErrorId());
    return Streamed(named);
}

} // namespace

TEST(CxXmlFileTest, TakesFilesInPiecesUpToTheirFirstZero) {
    // The second piece begins at 2047; what follows a zero up to there is lost.
    const std::string first = "<a>" + std::string(1997, 'x');
    const std::string lost = std::string(1, '\0') + std::string(46, 'y');
    const std::string rest = "z" + std::string(2046, 'x') + "</a>";
    EXPECT_EQ(Loaded(first + lost + rest, CXXML_ENCODING_UNKNOWN), first + rest);
    // Further than what is read at once.
    const std::string longText = "<a>" + std::string(200000, 'x') + "</a>";
    EXPECT_EQ(Loaded(longText, CXXML_ENCODING_UNKNOWN), longText);
    EXPECT_EQ(Loaded(std::string(5000, '\0'), CXXML_ENCODING_UNKNOWN, 0), "");
}

TEST(CxXmlFileTest, ReadsWithTheEncodingThatIsNamed) {
    // In UTF-8 the first byte takes three, the first "<" among them. Else it is an end tag, and
    // the second one is an unknown tag at the top.
    const std::string text = "<a>\xEF\xBC</a></a>";
    EXPECT_EQ(Loaded(text, CXXML_ENCODING_LEGACY), text);
    EXPECT_EQ(Loaded(text, CXXML_ENCODING_UNKNOWN), text);
    EXPECT_EQ(Loaded(text, CXXML_ENCODING_UTF8), "<a>\xEF\xBC&lt;/a&gt;</a>");
    EXPECT_EQ(Loaded("<?xml?>" + text, CXXML_ENCODING_UNKNOWN),
              "<?xml ?><a>\xEF\xBC&lt;/a&gt;</a>");
}

TEST(CxXmlFileTest, FailuresKeepTheFirstErrorAndClearTheChildren) {
    const TemporaryFolder folder;
    const std::string path = folder.Make("file", "<a/>");
    CxXmlDocument document(path.c_str());
    EXPECT_EQ(document.LoadFile(), 1);
    std::filesystem::remove(path);
    EXPECT_EQ(document.LoadFile(), 0);
    EXPECT_TRUE(document.NoChildren());
    EXPECT_EQ(document.ErrorId(), 2);
    EXPECT_STREQ(document.ErrorDesc(), "Failed to open file");
    EXPECT_EQ(document.ErrorRow(), -1);
    EXPECT_EQ(document.ErrorCol(), -1);
    EXPECT_EQ(document.SaveFile((path + "/none").c_str()), 0);

    document.Parse("<a");
    EXPECT_EQ(document.ErrorId(), 5);
    EXPECT_EQ(document.LoadFile(), 0);
    EXPECT_EQ(document.ErrorId(), 5);
    EXPECT_EQ(document.ErrorRow(), -1);

    folder.Make("file", "");
    document.ClearError();
    EXPECT_EQ(document.LoadFile(document.Value()), 0);
    EXPECT_FALSE(document.Error());
    EXPECT_EQ(document.Value(), path);
    CxFile closed;
    EXPECT_EQ(document.LoadFile(closed), 0);
    EXPECT_EQ(document.ErrorId(), 2);
}

TEST(CxXmlFileTest, SavesOverWhatWasThere) {
    const std::string declared = "<?xml version=\"1.0\" encoding=\"euc-kr\" ?>\r\n";
    const TemporaryFolder folder;
    const std::string path = folder.Make("file", std::string(1000, 'x'));
    CxXmlDocument document(path.c_str());
    document.InsertEndChild(CxXmlElement("root"));
    EXPECT_EQ(document.SaveFile(), 1);
    EXPECT_EQ(folder.Content("file"), declared + "<root />\r\n");
    // More than the printer hands on at once.
    const std::string text(70000, 't');
    for (int i = 0; i < 3; ++i)
        document.RootElement()
            ->InsertEndChild(CxXmlElement("e"))
            ->InsertEndChild(CxXmlText(text.c_str()));
    const std::string line = "    <e>" + text + "</e>\r\n";
    const std::string expected = declared + "<root>\r\n" + line + line + line + "</root>\r\n";
    EXPECT_EQ(document.SaveFile(path.c_str()), 1);
    EXPECT_EQ(folder.Content("file"), expected);
    CxMemFile memory;
    EXPECT_EQ(document.SaveFile(memory), 1);
    EXPECT_EQ(Bytes(memory), expected);
}
