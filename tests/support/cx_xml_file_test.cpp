#include "TAVIX20/support/cx_file.h"
#include "TAVIX20/support/cx_mem_file.h"
#include "TAVIX20/support/cx_xml.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

class CxXmlFileTest : public testing::Test {
protected:
    CxXmlFileTest() { Put("<a/>"); }
    ~CxXmlFileTest() override { std::filesystem::remove(m_path); }

    void Put(const std::string &bytes) const {
        std::ofstream(m_path, std::ios::binary).write(bytes.data(), std::streamsize(bytes.size()));
    }
    std::string Get() const {
        std::ifstream file(m_path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

    const std::string m_path = testing::TempDir() + "cx_xml_" +
                               testing::UnitTest::GetInstance()->current_test_info()->name() +
                               ".xml";
};

/// The text of the root element after loading by the name, from a file and from memory: all alike.
std::string Loaded(const std::string &path, CxXmlEncoding encoding, int expected) {
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
    std::ifstream stream(path, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(stream), {});
    memory.Write(bytes.data(), static_cast<unsigned int>(bytes.size()));
    CxXmlDocument fromMemory;
    EXPECT_EQ(fromMemory.LoadFile(memory, encoding), expected);

    CxOStream out[3];
    named.StreamOut(&out[0]);
    fromFile.StreamOut(&out[1]);
    fromMemory.StreamOut(&out[2]);
    EXPECT_EQ(out[0], out[1]);
    EXPECT_EQ(out[0], out[2]);
    EXPECT_EQ(named.ErrorId(), fromMemory.ErrorId());
    return out[0].c_str();
}

} // namespace

TEST_F(CxXmlFileTest, TakesFilesInPiecesUpToTheirFirstZero) {
    const std::string head = "<a>";
    // The second piece begins at 2047; what follows a zero up to there is lost.
    const std::string first = head + std::string(2000 - head.size(), 'x');
    const std::string lost = std::string(1, '\0') + std::string(46, 'y');
    Put(first + lost + "z" + std::string(2046, 'x') + "</a>");
    EXPECT_EQ(Loaded(m_path, CXXML_ENCODING_UNKNOWN, 1),
              first + "z" + std::string(2046, 'x') + "</a>");
    // Further than what is read at once.
    const std::string longText(200000, 'x');
    Put("<a>" + longText + "</a>");
    EXPECT_EQ(Loaded(m_path, CXXML_ENCODING_UNKNOWN, 1), "<a>" + longText + "</a>");
    Put(std::string(5000, '\0'));
    EXPECT_EQ(Loaded(m_path, CXXML_ENCODING_UNKNOWN, 0), "");
}

TEST_F(CxXmlFileTest, ReadsWithTheEncodingThatIsNamed) {
    // In UTF-8 the first byte takes three, the first "<" among them. Else it is an end tag, and
    // the second one is an unknown tag at the top.
    Put("<a>\xEF\xBC</a></a>");
    EXPECT_EQ(Loaded(m_path, CXXML_ENCODING_LEGACY, 1), "<a>\xEF\xBC</a></a>");
    EXPECT_EQ(Loaded(m_path, CXXML_ENCODING_UNKNOWN, 1), "<a>\xEF\xBC</a></a>");
    EXPECT_EQ(Loaded(m_path, CXXML_ENCODING_UTF8, 1), "<a>\xEF\xBC&lt;/a&gt;</a>");
    Put("<?xml?><a>\xEF\xBC</a></a>");
    EXPECT_EQ(Loaded(m_path, CXXML_ENCODING_UNKNOWN, 1), "<?xml ?><a>\xEF\xBC&lt;/a&gt;</a>");
}

TEST_F(CxXmlFileTest, FailuresKeepTheFirstErrorAndClearTheChildren) {
    CxXmlDocument document(m_path.c_str());
    EXPECT_EQ(document.LoadFile(), 1);
    std::filesystem::remove(m_path);
    EXPECT_EQ(document.LoadFile(), 0);
    EXPECT_TRUE(document.NoChildren());
    EXPECT_EQ(document.ErrorId(), 2);
    EXPECT_STREQ(document.ErrorDesc(), "Failed to open file");
    EXPECT_EQ(document.ErrorRow(), -1);
    EXPECT_EQ(document.ErrorCol(), -1);
    EXPECT_EQ(document.SaveFile((m_path + "/none").c_str()), 0);

    document.Parse("<a");
    EXPECT_EQ(document.ErrorId(), 5);
    EXPECT_EQ(document.LoadFile(), 0);
    EXPECT_EQ(document.ErrorId(), 5);
    EXPECT_EQ(document.ErrorRow(), -1);

    Put("");
    document.ClearError();
    EXPECT_EQ(document.LoadFile(document.Value()), 0);
    EXPECT_FALSE(document.Error());
    EXPECT_EQ(document.Value(), m_path);
    CxFile closed;
    EXPECT_EQ(document.LoadFile(closed), 0);
    EXPECT_EQ(document.ErrorId(), 2);
}

TEST_F(CxXmlFileTest, SavesOverWhatWasThere) {
    const std::string declared = "<?xml version=\"1.0\" encoding=\"euc-kr\" ?>\r\n";
    Put(std::string(1000, 'x'));
    CxXmlDocument document(m_path.c_str());
    document.InsertEndChild(CxXmlElement("root"));
    EXPECT_EQ(document.SaveFile(), 1);
    EXPECT_EQ(Get(), declared + "<root />\r\n");
    // More than the printer hands on at once.
    const std::string text(70000, 't');
    for (int i = 0; i < 3; ++i)
        document.RootElement()
            ->InsertEndChild(CxXmlElement("e"))
            ->InsertEndChild(CxXmlText(text.c_str()));
    const std::string line = "    <e>" + text + "</e>\r\n";
    const std::string expected = declared + "<root>\r\n" + line + line + line + "</root>\r\n";
    EXPECT_EQ(document.SaveFile(m_path.c_str()), 1);
    EXPECT_EQ(Get(), expected);
    CxMemFile memory;
    EXPECT_EQ(document.SaveFile(memory), 1);
    EXPECT_EQ(std::string(memory, static_cast<std::size_t>(memory.GetSize())), expected);
}
