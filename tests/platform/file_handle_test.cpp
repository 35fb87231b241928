#include "TAVIX20/platform/file_handle.h"

#include "TAVIX20/platform/last_error.h"

#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using tavix::DescriptorFromHandle;
using tavix::FileCreation;
using tavix::FileHandle;
using tavix::FileMode;

TEST(LastErrorTest, BelongsToTheThread) {
    SetLastError(5);
    std::thread([] { EXPECT_EQ(GetLastError(), ERROR_SUCCESS); }).join();
    EXPECT_EQ(GetLastError(), 5u);
}

TEST(FileHandleTest, FailuresToOpenSayWhy) {
    const TemporaryFolder folder;
    const std::string file = folder.Make("file", "x");
    const std::pair<std::string, DWORD> cases[] = {
        {folder / "missing", ERROR_FILE_NOT_FOUND},
        {folder / "missing/file", ERROR_PATH_NOT_FOUND},
        {file + "/below", ERROR_PATH_NOT_FOUND},
        {folder.Path(), ERROR_ACCESS_DENIED},
        {folder / std::string(300, 'n'), ERROR_FILENAME_EXCED_RANGE},
    };
    for (const auto &[name, error] : cases) {
        SetLastError(0);
        EXPECT_EQ(FileHandle::Open(name.c_str(), {}).Get(), INVALID_HANDLE_VALUE) << name;
        EXPECT_EQ(GetLastError(), error) << name;
    }
    EXPECT_FALSE(FileHandle::Open(nullptr, {}).IsValid());
    EXPECT_FALSE(FileHandle::Open(file.c_str(), {.access = 0}).IsValid());
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST(FileHandleTest, SharesAsItWasAsked) {
    constexpr DWORD read = FILE_SHARE_READ, write = FILE_SHARE_WRITE, both = read | write;
    const struct {
        DWORD first, second;
        bool opens;
    } cases[] = {
        {0, 0, false}, {0, both, false}, {both, 0, false}, {both, both, true}, {read, write, true}};
    for (const auto &c : cases) {
        SCOPED_TRACE(testing::Message() << c.first << ' ' << c.second);
        const TemporaryFolder folder;
        const std::string name = folder.Make("file", "kept");
        const FileHandle first = FileHandle::Open(name.c_str(), {.share = c.first});
        const FileHandle second = FileHandle::Open(
            name.c_str(),
            {.access = GENERIC_WRITE, .share = c.second, .creation = FileCreation::CreateAlways});
        EXPECT_EQ(second.IsValid(), c.opens);
        EXPECT_EQ(folder.Content("file"), c.opens ? "" : "kept");
        if (c.opens)
            second.Close();
        else
            EXPECT_EQ(GetLastError(), ERROR_SHARING_VIOLATION);
        EXPECT_TRUE(first.Close());
        const FileHandle third = FileHandle::Open(name.c_str(), {.share = 0});
        EXPECT_TRUE(third.IsValid() && third.Close());
    }
}

TEST(FileHandleTest, InheritanceAccessAndClosedHandles) {
    const TemporaryFolder folder;
    const std::string name = folder.Make("file", "x");
    for (const bool isInherited : {false, true}) {
        const FileHandle file = FileHandle::Open(name.c_str(), {.isInherited = isInherited});
        const int flags = fcntl(DescriptorFromHandle(file.Get()), F_GETFD);
        EXPECT_EQ((flags & FD_CLOEXEC) == 0, isInherited);
        EXPECT_EQ(file.Write("y", 1), 0u);
        EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
        EXPECT_FALSE(file.SetEnd());
        EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
        EXPECT_TRUE(file.Close());
        EXPECT_FALSE(file.Close());
        EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    }
    const FileHandle full = FileHandle::Open("/dev/full", {.access = GENERIC_WRITE});
    EXPECT_EQ(full.Write("y", 1), 0u);
    EXPECT_EQ(GetLastError(), ERROR_DISK_FULL);
    full.Close();
}

TEST(FileHandleTest, NamedPipesOpenWithoutWaiting) {
    const TemporaryFolder folder;
    const std::string name = folder / "pipe";
    mkfifo(name.c_str(), 0666);
    EXPECT_FALSE(FileHandle::Open(name.c_str(), {.access = GENERIC_WRITE}).IsValid());
    const FileHandle pipe = FileHandle::Open(name.c_str(), {});
    char byte = 0;
    EXPECT_EQ(pipe.Read(&byte, 1), 0u);
    EXPECT_EQ(fcntl(DescriptorFromHandle(pipe.Get()), F_GETFL) & O_NONBLOCK, 0);
    const FileHandle writer = FileHandle::Open(name.c_str(), {.access = GENERIC_WRITE});
    EXPECT_EQ(writer.Write("x", 1) + pipe.Read(&byte, 1), 2u);
    EXPECT_TRUE(writer.Close() && pipe.Close());
}
