// Packing of zip archives.
#include "ambrel/skin/container.h"
#include "ambrel/skin/limits.h"

#include <zlib.h>

namespace ambrel::skin {

namespace {

constexpr std::uint32_t kVersion = 20; // folders and deflate
constexpr std::uint32_t kUtf8Names = 0x0800;
constexpr std::uint32_t kDate = 0x0021; // 1 January 1980: the archive depends on the files alone

class ByteWriter {
public:
    void put16(std::uint32_t value) { put(value, 2); }
    void put32(std::uint32_t value) { put(value, 4); }
    void append(std::string_view text) { m_bytes.insert(m_bytes.end(), text.begin(), text.end()); }
    void append(const Bytes& bytes) { m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end()); }
    std::uint32_t size() const { return static_cast<std::uint32_t>(m_bytes.size()); }
    Bytes take() { return std::move(m_bytes); }

private:
    void put(std::uint32_t value, int count)
    {
        for (int i = 0; i < count; ++i)
            m_bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }

    Bytes m_bytes;
};

struct Packed {
    std::uint32_t method;
    std::uint32_t checksum;
    std::uint32_t size;
    Bytes bytes;
};

// The deflated bytes, empty when they would not be shorter.
Bytes deflated(const Bytes& bytes)
{
    Bytes out(bytes.size());
    z_stream stream{};
    if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 9, Z_DEFAULT_STRATEGY) != Z_OK)
        throw std::bad_alloc();
    stream.next_in = const_cast<Bytef*>(bytes.data());
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = out.data();
    stream.avail_out = static_cast<uInt>(out.size());
    const bool fits = deflate(&stream, Z_FINISH) == Z_STREAM_END;
    out.resize(fits ? stream.total_out : 0);
    deflateEnd(&stream);
    return out;
}

Packed pack(const Bytes& bytes)
{
    const auto checksum = static_cast<std::uint32_t>(crc32(0, bytes.data(), static_cast<uInt>(bytes.size())));
    const auto size = static_cast<std::uint32_t>(bytes.size());
    Bytes shorter = bytes.empty() ? Bytes() : deflated(bytes);
    // What the reader would refuse as growing too much stays unpacked.
    const bool acceptable = !shorter.empty() && (size <= kFreelyUnpackedBytes || size / kGrowth <= shorter.size());
    return acceptable ? Packed{8, checksum, size, std::move(shorter)} : Packed{0, checksum, size, bytes};
}

// The fields that a file's own header and its directory entry share.
void putCommon(ByteWriter& out, const Packed& packed, std::size_t nameSize)
{
    out.put16(kVersion);
    out.put16(kUtf8Names);
    out.put16(packed.method);
    out.put16(0); // time
    out.put16(kDate);
    out.put32(packed.checksum);
    out.put32(static_cast<std::uint32_t>(packed.bytes.size()));
    out.put32(packed.size);
    out.put16(static_cast<std::uint32_t>(nameSize));
    out.put16(0); // extra field
}

} // namespace

Bytes writeZip(const PackageFiles& files)
{
    ByteWriter out;
    ByteWriter directory;
    for (const auto& [name, bytes] : files.all()) {
        const Packed packed = pack(bytes);
        const std::uint32_t offset = out.size();
        out.put32(0x04034B50);
        putCommon(out, packed, name.size());
        out.append(name);
        out.append(packed.bytes);

        directory.put32(0x02014B50);
        directory.put16(kVersion);
        putCommon(directory, packed, name.size());
        directory.put16(0); // comment
        directory.put16(0); // disk
        directory.put16(0); // internal attributes
        directory.put32(0); // external attributes
        directory.put32(offset);
        directory.append(name);
    }
    const std::uint32_t start = out.size();
    const Bytes entries = directory.take();
    const auto count = static_cast<std::uint32_t>(files.all().size());
    out.append(entries);
    out.put32(0x06054B50);
    out.put32(0); // disks
    out.put16(count);
    out.put16(count);
    out.put32(static_cast<std::uint32_t>(entries.size()));
    out.put32(start);
    out.put16(0); // comment
    return out.take();
}

} // namespace ambrel::skin
