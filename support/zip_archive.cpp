// libzip reads and unpacks. Around it stands what it leaves to its callers: names that lead out of
// the folder, links, entries on top of each other, entries that unpack to more than they may, and
// files that appear only when they are complete.
//
// The way from the folder to the file is walked by descriptors, one part after the other, and no
// link is followed, so that one that was planted there does not lead out either.

#include "TAVIX20/support/zip_archive.h"

#include "TAVIX20/platform/descriptor.h"
#include "TAVIX20/support/NeloZip.h"
#include "TAVIX20/support/safe_file.h"
#include "TAVIX20/support/zip_layout.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

namespace tavix {

namespace {

constexpr std::size_t LONGEST_PART = 255;
constexpr std::size_t PIECE = std::size_t{1} << 16;

struct CloseEntry {
    void operator()(zip_file_t *file) const { zip_fclose(file); }
};

/// Opens a plain file for reading; a pipe does not stop the program.
FILE *OpenPlainFile(const char *path) {
    Descriptor descriptor(open(path, O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    struct stat status {};
    if (!descriptor.IsOpen() || fstat(descriptor.Get(), &status) != 0 || !S_ISREG(status.st_mode))
        return nullptr;
    FILE *const file = fdopen(descriptor.Get(), "rb");
    if (file != nullptr)
        descriptor.Release();
    return file;
}

zip_t *OpenZipFile(FILE *file) {
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t *const source = zip_source_filep_create(file, 0, -1, &error);
    zip_t *archive = nullptr;
    if (source == nullptr) {
        std::fclose(file);
    } else {
        archive = zip_open_from_source(source, ZIP_RDONLY, &error);
        if (archive == nullptr)
            zip_source_free(source); // and closes the file
    }
    zip_error_fini(&error);
    return archive;
}

/// What an entry may unpack to.
std::uint64_t LargestSize(std::uint64_t packedSize) {
    constexpr auto most = static_cast<std::uint64_t>(CUnZipper::LARGEST_FILE);
    const std::uint64_t byRatio =
        packedSize > most / CUnZipper::LARGEST_RATIO ? most : packedSize * CUnZipper::LARGEST_RATIO;
    return std::max<std::uint64_t>(byRatio, CUnZipper::ANY_RATIO_UP_TO);
}

/// The folder below another that is reached by these names; made where it is missing.
Descriptor EnterFolders(Descriptor folder, const std::vector<std::string> &names) {
    for (const std::string &name : names) {
        if (mkdirat(folder.Get(), name.c_str(), 0777) != 0 && errno != EEXIST)
            return Descriptor();
        folder = Descriptor(
            openat(folder.Get(), name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        if (!folder.IsOpen())
            break;
    }
    return folder;
}

/// Unpacks an entry into a file; true when it gave exactly as much as it promised, and libzip found
/// the sum of its bytes right.
bool Unpack(zip_file_t *entry, std::uint64_t size, TemporaryFile &file) {
    std::array<char, PIECE> buffer;
    std::uint64_t left = size;
    for (;;) {
        const zip_int64_t read = zip_fread(entry, buffer.data(), buffer.size());
        if (read <= 0)
            return read == 0 && left == 0;
        const auto count = static_cast<std::uint64_t>(read);
        if (count > left || !file.Write(buffer.data(), count))
            return false;
        left -= count;
    }
}

} // namespace

std::optional<EntryPath> SplitEntryName(const std::string &name) {
    const bool hasDrive = name.size() >= 2 && name[1] == ':' &&
                          std::isalpha(static_cast<unsigned char>(name[0])) != 0;
    if (name.empty() || name[0] == '/' || hasDrive || name.find('\\') != std::string::npos)
        return std::nullopt;
    EntryPath path;
    std::size_t start = 0;
    while (start <= name.size()) {
        const std::size_t end = std::min(name.find('/', start), name.size());
        std::string part = name.substr(start, end - start);
        const bool isLast = end == name.size();
        if (part == ".." || (part == "." && isLast) || part.size() > LONGEST_PART)
            return std::nullopt;
        if (part == ".")
            part.clear();
        if (isLast)
            path.file = part;
        else if (!part.empty())
            path.folders.push_back(std::move(part));
        start = end + 1;
    }
    return path;
}

void ZipArchive::Discard::operator()(zip *archive) const {
    zip_discard(archive);
}

std::shared_ptr<ZipArchive> ZipArchive::Open(const char *path) {
    FILE *const file = path != nullptr ? OpenPlainFile(path) : nullptr;
    if (file == nullptr)
        return nullptr;
    const auto places = ReadZipLayout(fileno(file));
    if (!places || places->size() > INT32_MAX) {
        std::fclose(file);
        return nullptr;
    }
    std::shared_ptr<ZipArchive> archive(new ZipArchive);
    archive->m_zip.reset(OpenZipFile(file));
    zip_t *const zip = archive->m_zip.get();
    if (zip == nullptr || zip_get_num_entries(zip, 0) != static_cast<zip_int64_t>(places->size()))
        return nullptr;
    // The directory is the one whose places were read, or nothing said about them holds.
    archive->m_isSound.reserve(places->size());
    for (const ZipPlace &place : *places) {
        const zip_uint64_t index = archive->m_isSound.size();
        zip_stat_t status;
        const char *const name = zip_get_name(zip, index, ZIP_FL_ENC_RAW);
        if (name == nullptr || zip_stat_index(zip, index, 0, &status) != 0 ||
            status.comp_size != place.packedSize)
            return nullptr;
        archive->m_isSound.push_back(place.isSound && std::strlen(name) == place.nameLength);
    }
    return archive;
}

std::optional<ZipArchive::Entry> ZipArchive::GetEntry(int index) const {
    if (index < 0 || index >= GetCount())
        return std::nullopt;
    const auto at = static_cast<zip_uint64_t>(index);
    zip_stat_t status;
    const char *const name = zip_get_name(m_zip.get(), at, ZIP_FL_ENC_RAW);
    if (name == nullptr || zip_stat_index(m_zip.get(), at, 0, &status) != 0)
        return std::nullopt;
    return Entry{name, status.size, status.comp_size};
}

/// Whether the entry is a plain file or folder, by what the archive's maker says of it, and packed
/// in a way that needs little memory to unpack.
bool ZipArchive::IsAccepted(int index) const {
    constexpr unsigned reparsePoint = 0x400;
    const auto at = static_cast<zip_uint64_t>(index);
    zip_stat_t status;
    if (!m_isSound[at] || zip_stat_index(m_zip.get(), at, 0, &status) != 0 ||
        status.encryption_method != ZIP_EM_NONE)
        return false;
    zip_uint8_t system = 0;
    zip_uint32_t attributes = 0;
    if (zip_file_get_external_attributes(m_zip.get(), at, 0, &system, &attributes) != 0)
        return false;
    const auto kind = attributes >> 16 & S_IFMT;
    const bool isPlain =
        (kind == 0 || kind == S_IFREG || kind == S_IFDIR) && (attributes & reparsePoint) == 0;
    const bool isCommon = status.comp_method == ZIP_CM_STORE ||
                          status.comp_method == ZIP_CM_DEFLATE ||
                          status.comp_method == ZIP_CM_BZIP2;
    return isPlain && isCommon && status.size <= LargestSize(status.comp_size);
}

bool ZipArchive::Extract(int index, const char *folder) const {
    const auto entry = GetEntry(index);
    const auto path = entry ? SplitEntryName(entry->name) : std::nullopt;
    return path && ExtractTo(index, folder, *path);
}

bool ZipArchive::ExtractAs(int index, const char *folder, const std::string &name) const {
    const auto entry = GetEntry(index);
    const auto path = SplitEntryName(name);
    const bool isPlain = path && path->folders.empty() && !path->file.empty();
    return entry && isPlain && ExtractTo(index, folder, *path);
}

bool ZipArchive::ExtractTo(int index, const char *folder, const EntryPath &path) const {
    const auto entry = GetEntry(index);
    if (folder == nullptr || !entry || !IsAccepted(index))
        return false;
    Descriptor top(open(folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!top.IsOpen())
        return false;
    if (path.file.empty())
        return entry->size == 0 && EnterFolders(std::move(top), path.folders).IsOpen();

    // Unpacked into the folder itself first: what fails leaves no sub-folders behind.
    const std::unique_ptr<zip_file_t, CloseEntry> packed(
        zip_fopen_index(m_zip.get(), static_cast<zip_uint64_t>(index), 0));
    if (!packed)
        return false;
    TemporaryFile file(top.Get());
    if (!Unpack(packed.get(), entry->size, file))
        return false;
    const Descriptor target =
        EnterFolders(Descriptor(fcntl(top.Get(), F_DUPFD_CLOEXEC, 0)), path.folders);
    return target.IsOpen() && file.MoveTo(target.Get(), path.file.c_str());
}

} // namespace tavix
