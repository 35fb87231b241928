#pragma once

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

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
