#include "TAVIX20/support/safe_file.h"

#include "TAVIX20/platform/last_error.h"

#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <csignal>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using tavix::SaveWholeFile;

namespace {

/// While it lives, files grow no further than this, as if the disk were full.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t size) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{size, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

} // namespace

TEST(SafeFileTest, ReplacesContentsAndKeepsRightsAndLinks) {
    const TemporaryFolder folder;
    const std::string path = folder.Make("file", "old");
    chmod(path.c_str(), 0640);
    std::filesystem::create_symlink("file", folder / "link");
    EXPECT_TRUE(SaveWholeFile((folder / "link").c_str(), "new", 3));
    EXPECT_TRUE(SaveWholeFile((folder / "empty").c_str(), nullptr, 0));
    EXPECT_EQ(folder.Content("file"), "new");
    EXPECT_EQ(folder.Content("empty"), "");
    struct stat status {};
    ASSERT_EQ(lstat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode, S_IFREG | 0640u);
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    EXPECT_EQ(folder.Names().size(), 3u);
}

TEST(SafeFileTest, FailureLeavesTheOldFileAndNothingElse) {
    const TemporaryFolder folder;
    const std::string path = folder.Make("file", "old");
    std::filesystem::create_directory(folder / "sub");
    {
        const FileSizeLimit limit(1000);
        EXPECT_FALSE(SaveWholeFile(path.c_str(), std::string(5000, 'x').data(), 5000));
        EXPECT_EQ(GetLastError(), ERROR_FILE_TOO_LARGE);
    }
    const std::pair<std::string, DWORD> cases[] = {
        {folder / "missing/file", ERROR_PATH_NOT_FOUND},
        {folder / "sub", ERROR_ACCESS_DENIED},
        {path + "/below", ERROR_PATH_NOT_FOUND},
        {folder / std::string(256, 'n'), ERROR_FILENAME_EXCED_RANGE},
        {"", ERROR_INVALID_PARAMETER}};
    for (const auto &[name, error] : cases) {
        EXPECT_FALSE(SaveWholeFile(name.c_str(), "new", 3)) << name;
        EXPECT_EQ(GetLastError(), error) << name;
    }
    EXPECT_EQ(folder.Content("file"), "old");
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"file", "sub"}));
}
