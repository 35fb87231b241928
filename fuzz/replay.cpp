// Runs a fuzz target on files instead of generated inputs: on every file of the folders that are
// named, whole and, when it is small, cut off at every byte.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace {

constexpr std::size_t LARGEST_TO_CUT = 1024;

void Replay(const std::filesystem::path &path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    const auto run = [&bytes](std::size_t size) {
        const std::vector<std::uint8_t> input(bytes.begin(),
                                              bytes.begin() + static_cast<std::ptrdiff_t>(size));
        LLVMFuzzerTestOneInput(input.data(), size);
    };
    run(bytes.size());
    for (std::size_t size = 0; bytes.size() <= LARGEST_TO_CUT && size < bytes.size(); ++size)
        run(size);
}

} // namespace

int main(int argc, char **argv) {
    int files = 0;
    for (int i = 1; i < argc; ++i)
        for (const auto &entry : std::filesystem::directory_iterator(argv[i])) {
            Replay(entry.path());
            ++files;
        }
    std::printf("%d files\n", files);
    return files > 0 ? 0 : 1;
}
