#include "TAVIX20/platform/collections.h"
#include "TAVIX20/support/stdlib.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

namespace fs = std::filesystem;

namespace {

/// A new folder with files of the given names, each as long as its name; removed in the end.
class CStdlibFilesTest : public testing::Test {
protected:
    CStdlibFilesTest() : m_folder(CStdlib::GetTempFolderName("tavix")) {}
    ~CStdlibFilesTest() override { fs::remove_all(m_folder.GetString()); }

    CString At(const char *name) const { return m_folder + "/" + name; }
    void Write(const char *name) const { std::ofstream(At(name)) << name; }
    CString Found(const char *pattern) const {
        CStringArray files;
        const int count = CStdlib::GetFindFiles(At(pattern), files);
        EXPECT_EQ(count, files.GetSize());
        EXPECT_EQ(CStdlib::GetFileCount(At(pattern)), files.GetSize());
        CString names;
        for (int i = 0; i < files.GetSize(); ++i)
            names += files[i].Mid(m_folder.GetLength() + 1) + " ";
        return names;
    }

    const CString m_folder;
};

TEST_F(CStdlibFilesTest, FilesAreFoundAndDeleted) {
    for (const char *const name : {"a.bmp", "ab.bmp", "b.jpg", ".x", "[a].b"})
        Write(name);
    ASSERT_EQ(CStdlib::MakeFolder(At("sub.bmp/deep")), 1);
    ASSERT_EQ(CStdlib::CreateLink("nowhere", At("z.bmp")), 1);
    EXPECT_EQ(CStdlib::CreateLink("nowhere", At("z.bmp")), 0);
    const char *const cases[][2] = {{"*.bmp", "a.bmp ab.bmp z.bmp "},
                                    {"?.*", "a.bmp b.jpg z.bmp "},
                                    {"*.*", ".x [a].b a.bmp ab.bmp b.jpg z.bmp "},
                                    {"*b*b*p", "ab.bmp "},
                                    {"[a].b", "[a].b "},
                                    {"A.bmp", ""},
                                    {"", ""},
                                    {"none/*", ""}};
    for (const auto &[pattern, names] : cases)
        EXPECT_EQ(Found(pattern), names) << pattern;
    EXPECT_EQ(CStdlib::DeleteFiles(At("*.bmp")), 3);
    EXPECT_EQ(Found("*"), ".x [a].b b.jpg ");
    EXPECT_EQ(CStdlib::ExistFolder(At("sub.bmp/deep")), 1);
    EXPECT_EQ(CStdlib::DeleteFiles(nullptr), 0);
}

TEST_F(CStdlibFilesTest, FilesAreLookedAt) {
    Write("four");
    Write("later");
    fs::last_write_time(At("later").GetString(),
                        fs::last_write_time(At("four").GetString()) + std::chrono::seconds(90));
    EXPECT_EQ(CStdlib::GetFileTimeDiff(At("later"), At("four")), 90);
    EXPECT_EQ(CStdlib::GetFileTimeDiff(At("four"), At("later")), -90);
    EXPECT_EQ(CStdlib::GetFileTimeDiff(At("four"), At("none")), 0);
    EXPECT_EQ(CStdlib::FileLength(At("four")), 4);
    EXPECT_EQ(CStdlib::FileLength(m_folder) + CStdlib::FileLength(At("none")), -2);
    EXPECT_EQ(CStdlib::FileExist(At("four")) * 10 + CStdlib::ExistFolder(m_folder), 11);
    EXPECT_EQ(CStdlib::FileExist(m_folder) + CStdlib::ExistFolder(At("four")), 0);
    EXPECT_EQ(CStdlib::FileExist(nullptr) + CStdlib::ExistFolder("") + CStdlib::MakeFolder(""), 0);
    EXPECT_EQ(CStdlib::MakeFolder(At("four/sub")), 0);
    EXPECT_EQ(CStdlib::MakeFolder(At("a/b/")) + CStdlib::MakeFolder(At("a/b")), 2);
    Write("lib.so.1.2");
    EXPECT_EQ(CStdlib::CreateLink("lib.so.1.2", At("lib.so")), 1);
    EXPECT_EQ(CStdlib::GetFileVersion(At("lib.so")), "1.2");
    Write("lib.so.cfg");
    EXPECT_EQ(CStdlib::GetFileVersion(At("lib.so.cfg")) + CStdlib::GetFileVersion(At("four")) +
                  CStdlib::GetFileVersion(At("none")),
              "");
    EXPECT_EQ(CStdlib::Zip(At("four"), At("zip")) + CStdlib::UnZip(At("four"), At("zip")), 0);
    EXPECT_EQ(CStdlib::FileExist(At("zip")), 0);

    EXPECT_EQ(CStdlib::LogWrite(At("log"), "one") + CStdlib::LogWrite(At("log"), nullptr), 2);
    EXPECT_EQ(CStdlib::LogWrite(At("none/log"), "one"), 0);
    std::stringstream log;
    log << std::ifstream(At("log")).rdbuf();
    const std::regex lines("(\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d (one)?\r\n){2}");
    EXPECT_TRUE(std::regex_match(log.str(), lines)) << log.str();
}

TEST_F(CStdlibFilesTest, FoldersAreRemovedWithCare) {
    for (const char *const name : {"kept", "gone/deep"})
        ASSERT_EQ(CStdlib::MakeFolder(At(name)), 1);
    Write("kept/file");
    Write("gone/file");
    ASSERT_EQ(CStdlib::CreateLink("../kept", At("gone/link")), 1);
    ASSERT_EQ(CStdlib::CreateLink("kept", At("link")), 1);
    const fs::path before = fs::current_path();
    fs::current_path(At("kept").GetString());
    // The root is one of the folders around the current one; no test should try it.
    const CString dangerous[] = {
        "",           ".",        "..",         "../",           m_folder,   At("kept"),
        At("kept/."), At("link"), At("link//"), At("kept/file"), At("none"), At("gone/..")};
    for (const CString &path : dangerous)
        EXPECT_EQ(CStdlib::RemoveFolder(path), 0) << path;
    EXPECT_EQ(CStdlib::RemoveFolder(nullptr), 0);
    EXPECT_EQ(CStdlib::RemoveFolder("../gone//"), 1);
    fs::current_path(before);
    EXPECT_EQ(CStdlib::ExistFolder(At("gone")), 0);
    EXPECT_EQ(CStdlib::FileExist(At("kept/file")), 1);
}

TEST_F(CStdlibFilesTest, PlacesAreAbsolute) {
    const CString file = CStdlib::GetTempFileNameA("tavix");
    EXPECT_EQ(CStdlib::FileLength(file), 0);
    EXPECT_EQ(file.Find(CStdlib::GetTempFolder() + "/tavix"), 0);
    EXPECT_EQ(CStdlib::DeleteFiles(file), 1);
    EXPECT_TRUE(CStdlib::GetTempFileNameA("../x").IsEmpty());
    EXPECT_TRUE(CStdlib::GetTempFolderName("a/b").IsEmpty());
    for (const CString &folder :
         {CStdlib::GetInstancePath(), CStdlib::GetDllPath(), CStdlib::GetTempFolder(),
          CStdlib::GetDesktopFolder(), CStdlib::GetMyDocumentFolder(), CStdlib::GetMyMusicFolder(),
          CStdlib::GetMyPictureFolder(), CStdlib::GetShellFolder(CStdlib::CSIDL_PROFILE),
          CStdlib::GetShellFolder(CStdlib::CSIDL_APPDATA)})
        EXPECT_TRUE(folder[0] == '/' && folder.Right(1) != "/") << folder;
    EXPECT_EQ(CStdlib::FileExist(CStdlib::GetInstancePath() + "/test_support"), 1);
    EXPECT_EQ(CStdlib::GetFileCount(CStdlib::GetDllPath() + "/libTAVIX20.so"), 1);

    EXPECT_GT(CStdlib::GetFileCount(CStdlib::GetSystemFolder() + "/libc.so*"), 0);
    EXPECT_EQ(CStdlib::GetShellFolder(CStdlib::CSIDL_SYSTEM), CStdlib::GetSystemFolder());
    EXPECT_EQ(CStdlib::GetShellFolder(CStdlib::CSIDL_PERSONAL), CStdlib::GetMyDocumentFolder());
    EXPECT_EQ(CStdlib::GetWindowsFolder() + CStdlib::GetProgramFilesFolder() +
                  CStdlib::GetWindowsFontFolder() + CStdlib::GetShellFolder(-1),
              "/usr/opt/usr/share/fonts");

    const char *const set = getenv("TMPDIR");
    const std::string before = set ? set : "";
    const CString temporary[][2] = {{m_folder + "//", m_folder}, {At("none"), "/tmp"}};
    for (const auto &[variable, folder] : temporary) {
        setenv("TMPDIR", variable, 1);
        EXPECT_EQ(CStdlib::GetTempFolder(), folder);
    }
    set ? setenv("TMPDIR", before.c_str(), 1) : unsetenv("TMPDIR");
}

} // namespace
