// XML documents beside the library that parses them.

#include "comparison.h"

#include "TAVIX20/support/cx_archive.h"
#include "TAVIX20/support/cx_xml.h"

#include <benchmark/benchmark.h>
#include <tinyxml.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>

namespace {

constexpr std::size_t SIZE = 20 << 20;

/// Elements as a drawing or a list of regions has them, with a few attributes and some text, as
/// they are written.
std::string MakeText() {
    std::mt19937 random(11);
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\r\n<drawing>\r\n";
    while (text.size() < SIZE) {
        text += "    <shape type=\"polygon\" name=\"part " + std::to_string(random() % 1000) +
                "\" color=\"#00ff00\">\r\n        <title>Edge &amp; hole</title>\r\n";
        for (int i = 0; i < 8; ++i)
            text += "        <point x=\"" + std::to_string(random() % 4096) + "\" y=\"" +
                    std::to_string(random() % 4096) + "\" />\r\n";
        text += "    </shape>\r\n";
    }
    return text + "</drawing>\r\n";
}

/// A file that goes with the last row that needs it.
class SampleFile {
public:
    explicit SampleFile(const std::string &text)
        : m_path(std::filesystem::temp_directory_path() / "tavix_bench.xml") {
        std::ofstream(m_path, std::ios::binary) << text;
    }
    ~SampleFile() { std::filesystem::remove(m_path); }
    SampleFile(const SampleFile &) = delete;
    SampleFile &operator=(const SampleFile &) = delete;

    const std::string &Path() const { return m_path; }

private:
    std::string m_path;
};

/// Takes everything and keeps nothing.
class CountingArchive : public CxArchive {
public:
    int Flush() override { return 1; }
    unsigned int Read(void *, unsigned int) override { return 0; }
    unsigned int Write(const void *buffer, unsigned int count) override {
        benchmark::DoNotOptimize(buffer);
        m_bytes += count;
        return count;
    }
    int IsLoading() override { return 0; }
    int IsStoring() override { return 1; }

    std::uint64_t Bytes() const { return m_bytes; }

private:
    std::uint64_t m_bytes = 0;
};

} // namespace

void AddXmlComparisons() {
    const auto text = std::make_shared<const std::string>(MakeText());
    const auto file = std::make_shared<const SampleFile>(*text);
    AddComparison({"CxXmlDocument::LoadFile, 20 MB", "TiXmlDocument::Parse, text in memory", 0.77,
                   [file] {
                       CxXmlDocument document;
                       benchmark::DoNotOptimize(document.LoadFile(file->Path().c_str()));
                   },
                   [text] {
                       TiXmlDocument document;
                       benchmark::DoNotOptimize(document.Parse(text->c_str()));
                   }});

    // Read when they are first needed: they are large.
    const auto ours = std::make_shared<CxXmlDocument>();
    const auto theirs = std::make_shared<TiXmlDocument>();
    AddComparison({"CxXmlDocument::SaveFile (105 ms is 200 MB/s)", "TiXmlPrinter", 1.0,
                   [ours, text] {
                       if (ours->NoChildren())
                           ours->Parse(text->c_str());
                       CountingArchive archive;
                       ours->SaveFile(archive);
                       if (archive.Bytes() != text->size())
                           std::abort();
                   },
                   [theirs, text] {
                       if (theirs->NoChildren())
                           theirs->Parse(text->c_str());
                       TiXmlPrinter printer;
                       theirs->Accept(&printer);
                       benchmark::DoNotOptimize(printer.Size());
                   }});
}
