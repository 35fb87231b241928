#include "TAVIX20/support/cx_file.h"

#include "TAVIX20/platform/file_handle.h"
#include "TAVIX20/platform/last_error.h"
#include "TAVIX20/support/cx_string.h"

#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>

namespace {

constexpr auto NONE = static_cast<unsigned long>(-1);

std::string ReadRest(CxFile &file) {
    std::string read(100, '\0');
    read.resize(file.Read(read.data(), 100));
    return read;
}

} // namespace

TEST(CxFileTest, FlagsChooseAccessAndCreation) {
    const struct {
        unsigned int flags;
        bool exists;
        int opens, loading, storing;
        const char *content; ///< Afterwards.
    } cases[] = {
        {0, true, 1, 1, 0, "old"},           {0, false, 0, 0, 0, ""},
        {1, true, 1, 0, 1, "old"},           {1, false, 0, 0, 0, ""},
        {2, true, 1, 0, 1, "old"},           {3, true, 0, 0, 0, "old"},
        {0x1001, true, 1, 0, 1, ""},         {0x1001, false, 1, 0, 1, ""},
        {0x3001, true, 1, 0, 1, "old"},      {0x3002, false, 1, 0, 1, ""},
        {0x2001, false, 0, 0, 0, ""},        {0x1000, true, 1, 1, 0, ""},
        {0x1000 | 0x40, false, 1, 1, 0, ""},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(testing::Message() << std::hex << c.flags << " exists " << c.exists);
        const TemporaryFolder folder;
        if (c.exists)
            folder.Make("file", "old");
        CxFile file;
        EXPECT_EQ(file.Open((folder / "file").c_str(), c.flags), c.opens);
        EXPECT_EQ(file.IsOpen(), c.opens);
        EXPECT_EQ(file.IsLoading(), c.loading);
        EXPECT_EQ(file.IsStoring(), c.storing);
        EXPECT_EQ(folder.Content("file"), c.content);
        EXPECT_EQ(folder.Has("file"), c.opens != 0 || c.exists);
        file.Close();
        EXPECT_EQ(file.IsOpen() + file.IsLoading() + file.IsStoring(), 0);
    }
}

TEST(CxFileTest, ClosingFlushesWhatMayHaveBeenWritten) {
    struct Flushed : CxFile {
        int Flush() override { return ++count; }
        int count = 0;
    } file;
    const TemporaryFolder folder;
    const std::string name = folder.Make("file", "x");
    for (const auto &[flags, count] :
         {std::pair{CxFile::modeRead, 0}, {CxFile::modeWrite, 1}, {CxFile::modeReadWrite, 1}}) {
        EXPECT_EQ(file.Open(name.c_str(), flags), 1);
        file.count = 0;
        file.Close();
        file.Close();
        EXPECT_EQ(file.count, count) << flags;
    }
}

TEST(CxFileTest, PositionAndLength) {
    const TemporaryFolder folder;
    CxFile file(folder.Make("file", std::string(100, 'x')).c_str(), CxFile::modeReadWrite);
    EXPECT_EQ(file.GetLength(), 100u);
    EXPECT_EQ(ReadRest(file), ""); // the position stays at the end
    EXPECT_EQ(file.Seek(-3, 2), 97);
    EXPECT_EQ(file.Seek(-7, 1), 90);
    EXPECT_EQ(file.GetPosition(), 90u);
    EXPECT_EQ(ReadRest(file), std::string(10, 'x'));
    EXPECT_EQ(file.Seek(-1, 0), -1);
    EXPECT_EQ(GetLastError(), ERROR_NEGATIVE_SEEK);
    EXPECT_EQ(file.Seek(0, 3), -1);
    EXPECT_EQ(file.GetPosition(), 100u);
    EXPECT_EQ(file.SetLength(2), 1);
    EXPECT_EQ(file.Write("ab", 2), 2u);
    EXPECT_EQ(file.SetLength(6), 1);
    EXPECT_EQ(file.SetLength(static_cast<unsigned long>(LONG_MAX) + 1), 0);
    EXPECT_EQ(file.SeekToBegin(), 0);
    EXPECT_EQ(ReadRest(file), std::string("xxab\0\0", 6));
    EXPECT_EQ(file.Flush(), 1);
}

TEST(CxFileTest, NumbersAndTextsAreReadAsTheyWereWritten) {
    const TemporaryFolder folder;
    CxFile file((folder / "file").c_str(), CxFile::modeReadWrite | CxFile::modeCreate);
    int number = -2;
    unsigned long large = 0x1FEDCBA98; // its lowest 4 bytes are stored
    CxString text(std::string("a\0b", 3));
    EXPECT_TRUE(file.Write(number) && file.Write(large) && file.Write(text));
    EXPECT_EQ(folder.Content("file"),
              std::string("\xFE\xFF\xFF\xFF\x98\xBA\xDC\xFE\x03\0\0\0a\0b", 15));

    file.SeekToBegin();
    number = 0;
    large = ULONG_MAX;
    CxString read("> ");
    EXPECT_TRUE(file.Read(number) && file.Read(large) && file.Read(read));
    EXPECT_EQ(number, -2);
    EXPECT_EQ(large, 0xFEDCBA98ul);
    EXPECT_EQ(read, CxString(std::string("> a\0b", 5)));
    EXPECT_FALSE(file.Read(number) || file.Read(large) || file.Read(read));
    EXPECT_EQ(number, -2);
    EXPECT_EQ(large, 0xFEDCBA98ul);
}

TEST(CxFileTest, FalseTextLengthsReadNothing) {
    const std::string files[] = {"", std::string("\3\0\0", 3), std::string("\4\0\0\0abc", 7),
                                 "\xFF\xFF\xFF\x7F" + std::string(100, 'x'),
                                 "\xFF\xFF\xFF\xFF" + std::string(100, 'x')};
    for (const std::string &content : files) {
        const TemporaryFolder folder;
        CxFile file(folder.Make("file", content).c_str());
        CxString text("kept");
        EXPECT_FALSE(file.Read(text)) << content;
        EXPECT_EQ(text, "kept");
    }
}

TEST(CxFileTest, HandlesAreWrappedWithoutBeingOwned) {
    std::FILE *const stream = std::tmpfile();
    void *const handle = tavix::HandleFromDescriptor(fileno(stream));
    {
        CxFile file(handle);
        EXPECT_EQ(file.IsOpen(), 1);
        EXPECT_EQ(file.IsLoading() + file.IsStoring(), 0);
        EXPECT_EQ(file.Write("abc", 3), 3u);
        EXPECT_EQ(file.SeekToBegin(), 0);
        EXPECT_EQ(ReadRest(file), "abc");
    }
    EXPECT_EQ(CxFile(handle).GetLength(), 3u); // still open
    std::fclose(stream);
    EXPECT_EQ(CxFile(handle).GetLength(), NONE);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST(CxFileTest, FailedOpenOfTheNameOnlyConstructorCountsAsOpen) {
    const TemporaryFolder folder;
    CxFile file((folder / "missing").c_str());
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(file.IsOpen(), 1);
    EXPECT_EQ(file.IsLoading(), 1);
    EXPECT_EQ(ReadRest(file), "");
    EXPECT_EQ(file.GetLength(), NONE);
    EXPECT_EQ(file.Open(folder.Make("there", "x").c_str(), CxFile::modeRead), 1);
    EXPECT_EQ(file.Open((folder / "there").c_str(), CxFile::modeRead), 1); // closed before
    EXPECT_EQ(file.Open((folder / "missing").c_str(), CxFile::modeRead), 0);
    EXPECT_EQ(file.IsOpen() + file.Flush() + file.SetLength(0), 0);
    EXPECT_EQ(file.GetLength(), NONE);
}
