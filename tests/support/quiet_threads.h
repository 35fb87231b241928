#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

/// Returns when all other threads of the process have been seen asleep several times in a row: a
/// sanitizer's allocator does not survive a fork while a starting thread holds its lock.
inline void WaitUntilOtherThreadsSleep() {
    for (int quiet = 0; quiet < 5;) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        bool allSleep = true;
        for (const auto &task : std::filesystem::directory_iterator("/proc/self/task")) {
            std::string text;
            std::getline(std::ifstream(task.path() / "stat"), text);
            const bool isOther = std::stoi(task.path().filename()) != gettid();
            allSleep &= !isOther || text.find(") S ") != std::string::npos;
        }
        quiet = allSleep ? quiet + 1 : 0;
    }
}

/// Runs check in a forked child, which may not hang, and expects it to be true there.
template <typename Check>
void ExpectInForkedChild(Check check) {
    WaitUntilOtherThreadsSleep();
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        alarm(20); // A hang ends the child by a signal.
        _exit(check() ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "status " << status;
}
