// Any bytes as a zip archive: whatever entries come out of it are written below the folder they are
// meant for, as plain files of a bounded size, and nothing else is left: no file beside them, no
// temporary file, no descriptor.

#include <TAVIX20/support/NeloZip.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <string_view>

#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr int MOST_ENTRIES = 50;

/// A folder that is emptied for each input: the archive, and the folder that it is unpacked to,
/// which holds a link that leads back out.
class Workplace {
public:
    Workplace() {
        const fs::path base = fs::exists("/dev/shm") ? "/dev/shm" : fs::temp_directory_path();
        std::string path = base / "tavix_zip_XXXXXX";
        if (mkdtemp(path.data()) == nullptr)
            std::abort();
        m_path = path;
    }
    ~Workplace() { fs::remove_all(m_path); }
    Workplace(const Workplace &) = delete;
    Workplace &operator=(const Workplace &) = delete;

    void Begin(const std::uint8_t *data, std::size_t size) const {
        fs::remove_all(m_path / "in");
        fs::create_directory(m_path / "in");
        fs::create_directory_symlink("..", m_path / "in/out");
        std::ofstream(Archive(), std::ios::binary)
            .write(reinterpret_cast<const char *>(data), static_cast<std::streamsize>(size));
    }
    std::string Archive() const { return m_path / "archive"; }
    std::string Target() const { return m_path / "in"; }

    /// The number of files and folders, links not followed; stops on what must not be there.
    int Count() const {
        int outside = 0;
        for (const auto &entry : fs::directory_iterator(m_path))
            outside += entry.exists() ? 1 : 0;
        if (outside != 2)
            std::abort();
        int count = 0;
        for (const auto &entry : fs::recursive_directory_iterator(Target())) {
            const bool isLink = entry.is_symlink() && entry.path() != m_path / "in/out";
            const bool isTemporary = entry.path().extension() == ".tmp";
            if (isLink || isTemporary)
                std::abort();
            ++count;
        }
        return count;
    }

private:
    fs::path m_path;
};

/// The lowest file descriptor that is free.
int FreeDescriptor() {
    const int descriptor = dup(STDIN_FILENO);
    close(descriptor);
    return descriptor;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const Workplace place;
    const int freeAtStart = FreeDescriptor();
    place.Begin(data, size);
    {
        CUnZipper zip(place.Archive().c_str());
        for (int i = 0; i < std::min(zip.GetFileCount(), MOST_ENTRIES); ++i) {
            UZ_FileInfo info;
            const bool isTold = zip.GetFileInfo(i, info);
            if (isTold && std::string_view(info.fileName).find(".tmp") != std::string_view::npos)
                continue;
            const int before = place.Count();
            const bool isWritten = zip.UnzipFile(i, place.Target().c_str(), false);
            if (!isWritten && place.Count() != before)
                std::abort();
            if (isWritten && isTold && info.size > CUnZipper::LARGEST_FILE)
                std::abort();
        }
        if (zip.UnzipFile(zip.GetFileCount(), place.Target().c_str(), false))
            std::abort();
    }
    place.Count();
    if (FreeDescriptor() != freeAtStart)
        std::abort();
    return 0;
}
