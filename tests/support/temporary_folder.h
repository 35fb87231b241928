#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

/// A folder of the test's own, which is deleted with all that is in it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string path = testing::TempDir() + "tavix_XXXXXX";
        m_path = mkdtemp(path.data());
    }
    ~TemporaryFolder() { std::filesystem::remove_all(m_path); }
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

    std::string operator/(const std::string &name) const { return (m_path / name).string(); }
    const std::string &Path() const { return m_path.native(); }

    /// Writes a file and returns its path.
    std::string Make(const std::string &name, const std::string &content) const {
        std::ofstream(m_path / name, std::ios::binary) << content;
        return *this / name;
    }
    std::string Content(const std::string &name) const {
        std::ifstream file(m_path / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    bool Has(const std::string &name) const { return std::filesystem::exists(m_path / name); }
    /// The names of all files and folders, at any depth.
    std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const auto &entry : std::filesystem::recursive_directory_iterator(m_path))
            names.insert(entry.path().lexically_relative(m_path).string());
        return names;
    }

private:
    std::filesystem::path m_path;
};
