#include "TAVIX20/support/NeloZip.h"

#include "support/temporary_folder.h"
#include "support/zip_bytes.h"

#include <gtest/gtest.h>

#include <random>

#include <sys/stat.h>
#include <zip.h>

namespace {

using Names = std::set<std::string>;

/// An archive made by libzip, packed by this method.
void MakeArchive(const std::string &path, const std::vector<ZipItem> &items, int method) {
    zip_t *const archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    for (const ZipItem &item : items) {
        zip_source_t *const source =
            zip_source_buffer(archive, item.content.data(), item.content.size(), 0);
        const zip_int64_t index =
            zip_file_add(archive, item.name.c_str(), source, ZIP_FL_ENC_UTF_8);
        zip_set_file_compression(archive, static_cast<zip_uint64_t>(index), method, 9);
    }
    ASSERT_EQ(zip_close(archive), 0);
}

/// Unpacks entry 0 of these bytes into the folder "in" beside the archive, where there are also a
/// file and links that lead out. Nothing may appear but the files that are expected.
void ExpectUnzips(const std::string &bytes, bool succeeds, Names expected) {
    const TemporaryFolder folder;
    const std::string archive = folder.Make("archive", bytes);
    std::filesystem::create_directories(folder / "in/folder");
    std::filesystem::create_directory(folder / "outside");
    folder.Make("in/file", "old");
    folder.Make("outside/file", "outside");
    std::filesystem::create_symlink("../outside", folder / "in/link");
    std::filesystem::create_symlink("../outside/file", folder / "in/linked");
    expected.insert({"archive", "in", "in/folder", "in/file", "in/link", "in/linked", "outside",
                     "outside/file"});
    CUnZipper zip;
    EXPECT_TRUE(zip.OpenZip(archive.c_str()));
    EXPECT_EQ(zip.UnzipFile(0, (folder / "in").c_str(), false), succeeds);
    EXPECT_EQ(folder.Names(), expected);
    EXPECT_EQ(folder.Content("outside/file"), "outside");
    EXPECT_TRUE(succeeds || folder.Content("in/file") == "old");
}

} // namespace

TEST(UnzipperTest, GivesBackWhatLibzipPacked) {
    std::mt19937 random(5);
    std::vector<ZipItem> items{{"empty", ""}, {"a/b/c.txt", "abc"}, {"\xED\x95\x9C.txt", "x"}};
    for (int i = 0; i < 5; ++i) {
        std::string content(random() % 300000, '\0');
        for (char &byte : content)
            byte = static_cast<char>(random() % 7);
        items.push_back({"file" + std::to_string(i), content});
    }
    for (const int method : {ZIP_CM_STORE, ZIP_CM_DEFLATE, ZIP_CM_BZIP2}) {
        const TemporaryFolder folder;
        const std::string path = folder / "archive";
        MakeArchive(path, items, method);
        const CUnZipper zip(path.c_str());
        ASSERT_EQ(zip.GetFileCount(), static_cast<int>(items.size()));
        for (int i = 0; i < zip.GetFileCount(); ++i) {
            const ZipItem &item = items[static_cast<std::size_t>(i)];
            UZ_FileInfo info;
            ASSERT_TRUE(zip.GetFileInfo(i, info));
            EXPECT_EQ(info.fileName, item.name);
            EXPECT_EQ(info.size, item.content.size());
            EXPECT_TRUE(zip.UnzipFile(i, folder.Path().c_str(), false)) << item.name;
            EXPECT_EQ(folder.Content(item.name), item.content);
        }
        EXPECT_TRUE(zip.UnzipFileAs(1, folder.Path().c_str(), "empty")); // replaces it
        EXPECT_EQ(folder.Content("empty"), "abc");
        EXPECT_FALSE(zip.UnzipFileAs(1, folder.Path().c_str(), "a/other"));
        EXPECT_EQ(folder.Names().size(), items.size() + 3); // the archive, a, a/b
    }
}

TEST(UnzipperTest, NamesStayBelowTheFolder) {
    struct Case {
        std::string name;
        bool succeeds;
        Names created;
    };
    const Case cases[] = {
        {"new", true, {"in/new"}},
        {"new/sub/file", true, {"in/new", "in/new/sub", "in/new/sub/file"}},
        {"folder/./file", true, {"in/folder/file"}},
        {"new/sub/", true, {"in/new", "in/new/sub"}}, // without content
        {"new/lost/", false, {}},
        {".", false, {}},
        {"new/.", false, {}},
        {"file", true, {}},
        {"linked", true, {}}, // the link itself is replaced
        {"..file", true, {"in/..file"}},
        {"1:file", true, {"in/1:file"}},
        {"", false, {}},
        {"/file", false, {}},
        {"../file", false, {}},
        {"folder/../../outside/file", false, {}},
        {"folder/..", false, {}},
        {"..\\file", false, {}},
        {"folder\\file", false, {}},
        {"c:file", false, {}},
        {"C:/file", false, {}},
        {"link/file", false, {}},
        {"file/below", false, {}},
        {"folder", false, {}},
        {std::string("new\0/../../x", 12), false, {}},
        {"new/" + std::string(256, 'n'), false, {}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const bool isFolder = c.succeeds && c.name.ends_with('/');
        ExpectUnzips(ZipBytes({{c.name, isFolder ? "" : "content"}}), c.succeeds, c.created);
    }
}

TEST(UnzipperTest, HostileEntriesAreRefused) {
    const ZipItem plain{"new", "content"};
    const auto with = [&plain](auto change) {
        ZipItem item = plain;
        change(item);
        return std::vector<ZipItem>{item};
    };
    const std::pair<const char *, std::vector<ZipItem>> refused[] = {
        {"link", with([](ZipItem &item) { item.mode = S_IFLNK | 0777; })},
        {"pipe", with([](ZipItem &item) { item.mode = S_IFIFO | 0666; })},
        {"encrypted", with([](ZipItem &item) { item.flags = 1; })},
        {"wrong sum", with([](ZipItem &item) { item.crcError = 1; })},
        {"longer than the archive", with([](ZipItem &item) { item.sizeError = 0x7FFFFFFF; })},
        {"reaches into the directory", with([](ZipItem &item) { item.sizeError = 1; })},
        {"no header there", with([](ZipItem &item) { item.start = 1; })},
        {"unknown packing", with([](ZipItem &item) { item.method = 14; })},
        {"not deflated", with([](ZipItem &item) { item.method = 8; })},
        {"the same bytes twice", {plain, {"other", "content", 0, 0, 0, 0, 0u}}},
        {"inside of another",
         {{"new", ZipBytes({{"x", "content"}})}, {"x", "content", 0, 0, 0, 0, 33u}}},
    };
    for (const auto &[what, items] : refused) {
        SCOPED_TRACE(what);
        ExpectUnzips(ZipBytes(items), false, {});
    }
    ExpectUnzips(ZipBytes({plain, {"other", "x"}}), true, {"in/new"});
    ExpectUnzips(ZipBytes(with([](ZipItem &item) { item.mode = S_IFREG | 0644; })), true,
                 {"in/new"});
}

TEST(UnzipperTest, BombsAreRefused) {
    const auto limit = static_cast<std::size_t>(CUnZipper::ANY_RATIO_UP_TO);
    for (const std::size_t size : {limit, limit + 1}) {
        const TemporaryFolder folder;
        const std::string path = folder / "archive";
        MakeArchive(path, {{"zeros", std::string(size, '\0')}}, ZIP_CM_DEFLATE);
        EXPECT_EQ(CUnZipper(path.c_str()).UnzipFile(0, folder.Path().c_str(), false),
                  size == limit);
        EXPECT_EQ(folder.Has("zeros"), size == limit);
    }
    // One that promises little: 1 MB of zeros, said to be 1 byte.
    const TemporaryFolder folder;
    const std::string path = folder / "archive";
    MakeArchive(path, {{"zeros", std::string(1 << 20, '\0')}}, ZIP_CM_DEFLATE);
    std::string bytes = folder.Content("archive");
    for (const auto &[signature, offset] : {std::pair{"PK\1\2", 24u}, {"PK\3\4", 22u}})
        bytes.replace(bytes.find(signature) + offset, 4, Little(1, 4));
    folder.Make("archive", bytes);
    EXPECT_FALSE(CUnZipper(path.c_str()).UnzipFile(0, folder.Path().c_str(), false));
    EXPECT_EQ(folder.Names(), Names{"archive"});
}

TEST(UnzipperTest, TruncatedArchivesAndOtherFilesAreNotOpened) {
    const std::string bytes = ZipBytes({{"name", "content"}, {"other", "more"}});
    const TemporaryFolder folder;
    CUnZipper zip;
    for (std::size_t size = 0; size < bytes.size(); ++size)
        ASSERT_FALSE(zip.OpenZip(folder.Make("archive", bytes.substr(0, size)).c_str())) << size;
    ASSERT_TRUE(zip.OpenZip(folder.Make("archive", bytes + "garbage").c_str()));
    const std::string endRecord = bytes.substr(bytes.size() - 22);
    EXPECT_FALSE(zip.OpenZip(folder.Make("archive", bytes + endRecord).c_str())); // which one?
    ASSERT_TRUE(zip.OpenZip(folder.Make("archive", bytes).c_str()));
    mkfifo((folder / "pipe").c_str(), 0666);
    for (const std::string &path : {folder.Path(), folder / "missing", folder / "pipe"})
        EXPECT_FALSE(zip.OpenZip(path.c_str()));
    EXPECT_EQ(zip.GetFileCount(), 0); // nor is the one from before any longer open
}

TEST(UnzipperTest, BadIndexesAndFolders) {
    const TemporaryFolder folder;
    const std::string path =
        folder.Make("archive", ZipBytes({{"name", "x"}, {std::string(2000, 'n'), "y"}}));
    UZ_FileInfo info{"kept", 0, 0};
    EXPECT_FALSE(CUnZipper().GetFileInfo(0, info) || CUnZipper().UnzipFile(0, "/", false));
    const CUnZipper zip(path.c_str());
    for (const int index : {-1, 2, INT32_MAX, INT32_MIN}) {
        EXPECT_FALSE(zip.GetFileInfo(index, info));
        EXPECT_FALSE(zip.UnzipFile(index, folder.Path().c_str(), false));
    }
    EXPECT_FALSE(zip.GetFileInfo(1, info)); // its name is too long
    EXPECT_STREQ(info.fileName, "kept");
    EXPECT_FALSE(zip.UnzipFile(0, nullptr, false) || zip.UnzipFile(0, "", false));
    EXPECT_FALSE(zip.UnzipFile(0, (folder / "missing").c_str(), false));
    EXPECT_EQ(folder.Names(), Names{"archive"});
}

TEST(UnzipperTest, CopiesShareTheArchive) {
    const TemporaryFolder folder;
    const std::string path = folder.Make("archive", ZipBytes({{"name", "x"}}));
    auto first = std::make_unique<CUnZipper>(path.c_str());
    const CUnZipper second = *first;
    EXPECT_FALSE(first->OpenZip("missing"));
    first.reset();
    EXPECT_TRUE(second.UnzipFile(0, folder.Path().c_str(), true));
    const CZipper writer;
    CZipper((folder / "written").c_str(), nullptr, false) = writer;
    EXPECT_FALSE(folder.Has("written"));
}
