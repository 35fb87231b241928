// Zip archives end with a record that tells where the directory lies; the directory has one record
// an entry, which tells where the entry's header lies. The names of the fields are those of the
// format's public description, APPNOTE.TXT. Nothing that a record claims is believed before it was
// compared with the length of the file.

#include "TAVIX20/support/zip_layout.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

#include <sys/stat.h>
#include <unistd.h>

namespace tavix {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t END_RECORD = 0x06054B50;
constexpr std::uint32_t END_LOCATOR_64 = 0x07064B50;
constexpr std::uint32_t END_RECORD_64 = 0x06064B50;
constexpr std::uint32_t DIRECTORY_RECORD = 0x02014B50;
constexpr std::uint32_t ENTRY_HEADER = 0x04034B50;

constexpr std::size_t END_RECORD_SIZE = 22;
constexpr std::size_t END_LOCATOR_64_SIZE = 20;
constexpr std::size_t END_RECORD_64_SIZE = 56;
constexpr std::size_t DIRECTORY_RECORD_SIZE = 46;
constexpr std::size_t ENTRY_HEADER_SIZE = 30;

constexpr std::size_t LONGEST_COMMENT = 0xFFFF;
constexpr std::uint64_t LARGEST_DIRECTORY = std::uint64_t{256} << 20;
constexpr std::uint64_t IN_64_BIT_FIELD = 0xFFFFFFFF; ///< The value lies in a 64-bit field instead.
constexpr std::uint16_t EXTRA_64 = 1;

/// A number of so many bytes, the lowest first.
std::uint64_t Number(const std::uint8_t *at, int bytes) {
    std::uint64_t value = 0;
    for (int i = bytes - 1; i >= 0; --i)
        value = value << 8 | at[i];
    return value;
}

/// A file of bytes with its length.
class Source {
public:
    explicit Source(int descriptor) : m_descriptor(descriptor) {
        struct stat status {};
        if (fstat(descriptor, &status) == 0 && status.st_size > 0)
            m_length = static_cast<std::uint64_t>(status.st_size);
    }

    std::uint64_t Length() const { return m_length; }

    bool Holds(std::uint64_t start, std::uint64_t size) const {
        return start <= m_length && size <= m_length - start;
    }

    /// The bytes of a stretch; empty when the file does not hold them all.
    Bytes Read(std::uint64_t start, std::size_t size) const {
        if (!Holds(start, size))
            return {};
        Bytes bytes(size);
        for (std::size_t done = 0; done < size;) {
            const ssize_t read = pread(m_descriptor, bytes.data() + done, size - done,
                                       static_cast<off_t>(start + done));
            if (read <= 0)
                return {};
            done += static_cast<std::size_t>(read);
        }
        return bytes;
    }

private:
    int m_descriptor;
    std::uint64_t m_length = 0;
};

/// Where the directory lies.
struct Directory {
    std::uint64_t start;
    std::uint64_t size;
    std::uint64_t count;
};

bool IsPlausible(const Source &source, const Directory &directory) {
    return directory.size <= LARGEST_DIRECTORY && source.Holds(directory.start, directory.size) &&
           directory.count <= directory.size / DIRECTORY_RECORD_SIZE;
}

/// The directory by the 64-bit record that a locator in front of the end record leads to.
std::optional<Directory> FindDirectory64(const Source &source, std::uint64_t endRecord) {
    if (endRecord < END_LOCATOR_64_SIZE)
        return std::nullopt;
    const Bytes locator = source.Read(endRecord - END_LOCATOR_64_SIZE, END_LOCATOR_64_SIZE);
    if (locator.empty() || Number(locator.data(), 4) != END_LOCATOR_64)
        return std::nullopt;
    const Bytes record = source.Read(Number(&locator[8], 8), END_RECORD_64_SIZE);
    if (record.empty() || Number(record.data(), 4) != END_RECORD_64)
        return std::nullopt;
    return Directory{Number(&record[48], 8), Number(&record[40], 8), Number(&record[32], 8)};
}

bool BeginsWithRecord(const Source &source, const Directory &directory) {
    const Bytes signature = source.Read(directory.start, 4);
    return !signature.empty() && Number(signature.data(), 4) == DIRECTORY_RECORD;
}

/// The directory by the end record whose comment lies in the file. Nothing when several end records
/// lead to directories: readers would differ in what the archive holds, or try each of thousands.
std::optional<Directory> FindDirectory(const Source &source) {
    const std::uint64_t tailSize =
        std::min<std::uint64_t>(source.Length(), END_RECORD_SIZE + LONGEST_COMMENT);
    const std::uint64_t tailStart = source.Length() - tailSize;
    const Bytes tail = source.Read(tailStart, tailSize);
    if (tail.size() < END_RECORD_SIZE)
        return std::nullopt;
    std::optional<Directory> found;
    for (std::size_t at = tail.size() - END_RECORD_SIZE + 1; at-- > 0;) {
        const std::uint8_t *const record = &tail[at];
        if (Number(record, 4) != END_RECORD ||
            Number(record + 20, 2) > tail.size() - at - END_RECORD_SIZE)
            continue;
        Directory directory{Number(record + 16, 4), Number(record + 12, 4), Number(record + 10, 2)};
        if (const auto large = FindDirectory64(source, tailStart + at))
            directory = *large;
        if (!IsPlausible(source, directory))
            continue;
        if (found && BeginsWithRecord(source, directory))
            return std::nullopt;
        if (!found)
            found = directory;
    }
    return found;
}

/// Takes the values that did not fit their fields from the record's extra fields.
void ReadExtra64(const std::uint8_t *extra, std::size_t size, bool hasLargeSize, ZipPlace &place) {
    for (std::size_t at = 0; size - at >= 4;) {
        const std::size_t length = Number(extra + at + 2, 2);
        const std::uint8_t *field = extra + at + 4;
        if (length > size - at - 4)
            return;
        if (Number(extra + at, 2) == EXTRA_64) {
            std::size_t left = length;
            const auto take = [&field, &left](std::uint64_t &value) {
                if (value != IN_64_BIT_FIELD || left < 8)
                    return;
                value = Number(field, 8);
                field += 8;
                left -= 8;
            };
            std::uint64_t size64 = hasLargeSize ? IN_64_BIT_FIELD : 0;
            take(size64);
            take(place.packedSize);
            take(place.start);
            return;
        }
        at += 4 + length;
    }
}

std::optional<std::vector<ZipPlace>> ReadDirectory(const Source &source, const Directory &where) {
    const Bytes bytes = source.Read(where.start, where.size);
    std::vector<ZipPlace> places;
    places.reserve(where.count);
    std::size_t at = 0;
    for (std::uint64_t i = 0; i < where.count; ++i) {
        if (bytes.size() - at < DIRECTORY_RECORD_SIZE)
            return std::nullopt;
        const std::uint8_t *const record = &bytes[at];
        const std::size_t nameLength = Number(record + 28, 2);
        const std::size_t extraLength = Number(record + 30, 2);
        const std::size_t commentLength = Number(record + 32, 2);
        const std::size_t length = DIRECTORY_RECORD_SIZE + nameLength + extraLength + commentLength;
        if (Number(record, 4) != DIRECTORY_RECORD || length > bytes.size() - at)
            return std::nullopt;
        ZipPlace place;
        place.start = Number(record + 42, 4);
        place.packedSize = Number(record + 20, 4);
        place.nameLength = static_cast<std::uint32_t>(nameLength);
        ReadExtra64(record + DIRECTORY_RECORD_SIZE + nameLength, extraLength,
                    Number(record + 24, 4) == IN_64_BIT_FIELD, place);
        places.push_back(place);
        at += length;
    }
    return places;
}

/// Finds the end of an entry by its header, which may be longer than the directory knows.
void ReadHeader(const Source &source, std::uint64_t directoryStart, ZipPlace &place) {
    const Bytes header = source.Read(place.start, ENTRY_HEADER_SIZE);
    if (header.empty() || Number(header.data(), 4) != ENTRY_HEADER)
        return;
    const std::uint64_t body =
        place.start + ENTRY_HEADER_SIZE + Number(&header[26], 2) + Number(&header[28], 2);
    if (!source.Holds(body, place.packedSize))
        return;
    place.end = body + place.packedSize;
    place.isSound = place.end <= directoryStart;
}

/// Entries that share bytes with others are not sound; one sweep in the order of their starts finds
/// them, since whatever overlaps anything before it overlaps what reaches farthest.
void FindOverlaps(std::vector<ZipPlace> &places) {
    std::vector<std::size_t> order(places.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::erase_if(order, [&places](std::size_t i) { return places[i].end == 0; });
    std::sort(order.begin(), order.end(), [&places](std::size_t a, std::size_t b) {
        return places[a].start < places[b].start;
    });
    ZipPlace *farthest = nullptr;
    for (const std::size_t i : order) {
        ZipPlace &place = places[i];
        if (farthest != nullptr && place.start < farthest->end) {
            place.isSound = false;
            farthest->isSound = false;
        }
        if (farthest == nullptr || place.end > farthest->end)
            farthest = &place;
    }
}

} // namespace

std::optional<std::vector<ZipPlace>> ReadZipLayout(int descriptor) {
    const Source source(descriptor);
    const auto directory = FindDirectory(source);
    if (!directory)
        return std::nullopt;
    auto places = ReadDirectory(source, *directory);
    if (!places)
        return std::nullopt;
    for (ZipPlace &place : *places)
        ReadHeader(source, directory->start, place);
    FindOverlaps(*places);
    return places;
}

} // namespace tavix
