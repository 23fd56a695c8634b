// Unpacking of zip archives. The central directory is believed only as far as the local headers agree with it, and no
// byte of the archive may belong to two files: such archives unpack to any size.
#include "ambrel/skin/byte_reader.h"
#include "ambrel/skin/container.h"
#include "ambrel/skin/limits.h"
#include "ambrel/skin/text.h"

#include <zlib.h>

#include <algorithm>
#include <optional>

namespace ambrel::skin {

namespace {

constexpr std::uint32_t kLocalSignature = 0x04034B50;
constexpr std::uint32_t kEntrySignature = 0x02014B50;
constexpr std::uint32_t kEndSignature = 0x06054B50;
constexpr std::size_t kLocalSize = 30;
constexpr std::size_t kEntrySize = 46;
constexpr std::size_t kEndSize = 22;
constexpr std::size_t kLongestComment = 0xFFFF;
constexpr std::uint32_t kIn64BitField = 0xFFFFFFFF;
constexpr std::uint32_t kEncryptedFlags = 0x2041; // encrypted, strongly encrypted, masked headers
constexpr std::uint32_t kStored = 0;
constexpr std::uint32_t kDeflated = 8;

struct Directory {
    std::uint32_t count;
    std::uint64_t offset;
    std::uint64_t end;
};

struct Entry {
    std::string name;
    std::uint32_t method;
    std::uint32_t checksum;
    std::uint32_t packedSize;
    std::uint32_t size;
    std::uint64_t local;       // offset of the local header
    std::uint64_t dataEnd = 0; // first byte after the packed data
    bool isFolder() const { return name.back() == '/'; }
};

class ZipReader {
public:
    ZipReader(std::span<const std::uint8_t> bytes, const std::string& archive) : m_bytes(bytes), m_archive(archive) {}

    PackageFiles read()
    {
        if (m_bytes.size() > kArchiveBytes)
            failFile(Code::PackageTooLarge, m_archive,
                     "the archive has more than " + std::to_string(kArchiveBytes) + " bytes");
        const Directory directory = findDirectory();
        std::vector<Entry> entries = readEntries(directory);
        PackageFiles files;
        for (Entry& entry : entries) {
            Bytes unpacked = unpack(entry, directory.offset);
            if (!entry.isFolder())
                files.add(entry.name, std::move(unpacked));
        }
        refuseOverlaps(entries);
        return files;
    }

private:
    Directory findDirectory() const
    {
        if (m_bytes.size() < kEndSize)
            failFile(Code::TruncatedArchive, m_archive, "the archive ends before its directory");
        const std::size_t lowest = m_bytes.size() - std::min(m_bytes.size(), kEndSize + kLongestComment);
        for (std::size_t at = m_bytes.size() - kEndSize + 1; at-- > lowest;) {
            // A record whose comment does not end with the file is part of a comment or of a file.
            if (m_bytes.little32(at) == kEndSignature && at + kEndSize + m_bytes.little16(at + 20) == m_bytes.size())
                return directoryAt(at);
        }
        failFile(Code::TruncatedArchive, m_archive, "the archive has no directory: it is cut off");
    }

    Directory directoryAt(std::size_t at) const
    {
        const std::uint32_t count = m_bytes.little16(at + 10);
        const std::uint32_t size = m_bytes.little32(at + 12);
        const std::uint32_t offset = m_bytes.little32(at + 16);
        if (count == 0xFFFF || size == kIn64BitField || offset == kIn64BitField)
            failFile(Code::UnsupportedArchive, m_archive, "64-bit archives are not read");
        if (m_bytes.little16(at + 4) != 0 || m_bytes.little16(at + 6) != 0 || m_bytes.little16(at + 8) != count)
            failFile(Code::UnsupportedArchive, m_archive, "archives split over several files are not read");
        if (std::uint64_t(offset) + size > at)
            failFile(Code::BrokenArchive, m_archive, "the directory does not lie before its end record");
        if (count > kFilesOfPackage)
            failFile(Code::TooManyFiles, m_archive,
                     "the archive has more than " + std::to_string(kFilesOfPackage) + " entries");
        return {count, offset, std::uint64_t(offset) + size};
    }

    std::vector<Entry> readEntries(const Directory& directory) const
    {
        std::vector<Entry> entries;
        std::uint64_t at = directory.offset;
        for (std::uint32_t i = 0; i < directory.count; ++i) {
            if (at + kEntrySize > directory.end || m_bytes.little32(at) != kEntrySignature)
                failFile(Code::BrokenArchive, m_archive, "the directory has fewer entries than it says");
            const std::uint64_t nameSize = m_bytes.little16(at + 28);
            const std::uint64_t next =
                at + kEntrySize + nameSize + m_bytes.little16(at + 30) + m_bytes.little16(at + 32);
            if (next > directory.end)
                failFile(Code::BrokenArchive, m_archive, "a directory entry reaches beyond the directory");
            entries.push_back(readEntry(at, m_bytes.text(at + kEntrySize, nameSize)));
            at = next;
        }
        return entries;
    }

    Entry readEntry(std::uint64_t at, std::string_view name) const
    {
        const bool isFolder = name.ends_with('/');
        checkFileName(isFolder ? name.substr(0, name.size() - 1) : name);
        Entry entry{std::string(name),         m_bytes.little16(at + 10), m_bytes.little32(at + 16),
                    m_bytes.little32(at + 20), m_bytes.little32(at + 24), m_bytes.little32(at + 42)};
        if ((m_bytes.little16(at + 8) & kEncryptedFlags) != 0)
            failFile(Code::UnsupportedArchive, entry.name, "the file is encrypted");
        if (entry.packedSize == kIn64BitField || entry.size == kIn64BitField || entry.local == kIn64BitField)
            failFile(Code::UnsupportedArchive, entry.name, "64-bit archives are not read");
        if (entry.method != kStored && entry.method != kDeflated)
            failFile(Code::UnsupportedArchive, entry.name,
                     "compression method " + std::to_string(entry.method) + " is not read");
        if (isFolder && entry.size != 0)
            failFile(Code::BrokenArchive, entry.name, "a folder has contents of its own");
        if (entry.size > kFileBytes)
            failFile(Code::FileTooLarge, entry.name, "the file has more than " + std::to_string(kFileBytes) + " bytes");
        if (entry.size > kFreelyUnpackedBytes && entry.size / kGrowth > entry.packedSize)
            failFile(Code::FileTooLarge, entry.name,
                     "the file grows by more than " + std::to_string(kGrowth) + " times");
        return entry;
    }

    Bytes unpack(Entry& entry, std::uint64_t directoryOffset) const
    {
        if (!m_bytes.has(entry.local, kLocalSize) || m_bytes.little32(entry.local) != kLocalSignature)
            failFile(Code::BrokenArchive, entry.name, "the directory points to no file");
        const std::uint64_t nameSize = m_bytes.little16(entry.local + 26);
        if (m_bytes.text(entry.local + kLocalSize, nameSize) != entry.name)
            failFile(Code::BrokenArchive, entry.name, "the file has another name in its own header");
        if (m_bytes.little16(entry.local + 8) != entry.method)
            failFile(Code::BrokenArchive, entry.name, "the file's own header names another compression");
        const std::uint64_t data = entry.local + kLocalSize + nameSize + m_bytes.little16(entry.local + 28);
        entry.dataEnd = data + entry.packedSize;
        if (entry.dataEnd > directoryOffset)
            failFile(Code::TruncatedArchive, entry.name, "the file reaches beyond its archive");
        const auto packed = m_bytes.part(data, entry.packedSize);
        Bytes unpacked = entry.method == kStored ? stored(entry, packed) : inflated(entry, packed);
        const auto checksum = crc32(0, unpacked.data(), static_cast<uInt>(unpacked.size()));
        if (checksum != entry.checksum)
            failFile(Code::BadChecksum, entry.name, "the file's bytes do not have the checksum they were packed with");
        return unpacked;
    }

    static Bytes stored(const Entry& entry, std::span<const std::uint8_t> packed)
    {
        if (entry.size != entry.packedSize)
            failFile(Code::BrokenArchive, entry.name, "a file without compression has two sizes");
        return Bytes(packed.begin(), packed.end());
    }

    static Bytes inflated(const Entry& entry, std::span<const std::uint8_t> packed)
    {
        Bytes out(entry.size);
        std::uint8_t spare = 0; // inflate wants somewhere to write, also for an empty file
        z_stream stream{};
        stream.next_in = const_cast<Bytef*>(packed.data());
        stream.avail_in = static_cast<uInt>(packed.size());
        stream.next_out = out.empty() ? &spare : out.data();
        stream.avail_out = out.empty() ? 1 : static_cast<uInt>(out.size());
        if (inflateInit2(&stream, -MAX_WBITS) != Z_OK)
            throw std::bad_alloc();
        const int status = inflate(&stream, Z_FINISH);
        const bool exact = status == Z_STREAM_END && stream.total_out == out.size() && stream.avail_in == 0;
        inflateEnd(&stream);
        if (!exact)
            failFile(Code::BrokenArchive, entry.name, "the file does not unpack to the size it should have");
        return out;
    }

    static void refuseOverlaps(std::vector<Entry>& entries)
    {
        std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.local < b.local; });
        for (std::size_t i = 1; i < entries.size(); ++i) {
            if (entries[i].local < entries[i - 1].dataEnd)
                failFile(Code::BrokenArchive, entries[i].name, "the file shares bytes with " + entries[i - 1].name);
        }
    }

    ByteReader m_bytes;
    const std::string& m_archive;
};

} // namespace

bool looksLikeZip(std::span<const std::uint8_t> bytes)
{
    const std::uint32_t signature = ByteReader(bytes).little32(0);
    return signature == kLocalSignature || signature == kEndSignature; // the latter has no files at all
}

Outcome<PackageFiles> readZip(std::span<const std::uint8_t> bytes, const std::string& name)
{
    return outcomeOf([&] {
        if (!looksLikeZip(bytes))
            failFile(Code::NotAPackage, name, "this is not a zip archive");
        return ZipReader(bytes, name).read();
    });
}

} // namespace ambrel::skin
