// Packages on disk.
#include "ambrel/skin/container.h"
#include "ambrel/skin/limits.h"
#include "ambrel/skin/text.h"

#include <fstream>
#include <system_error>

namespace ambrel::skin {

namespace fs = std::filesystem;

namespace {

// A name that is no text becomes "?", which no file of a package may be called.
std::string utf8(const fs::path& path)
{
    try {
        const std::u8string text = path.generic_u8string();
        return std::string(text.begin(), text.end());
    } catch (const std::system_error&) {
        return "?";
    }
}

fs::path pathOf(std::string_view utf8Name)
{
    return fs::path(std::u8string(utf8Name.begin(), utf8Name.end()));
}

// At most `limit` bytes are read, whatever size the file claims: it may grow meanwhile.
Bytes readFile(const fs::path& path, const std::string& name, std::size_t limit, Code tooLarge)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        failFile(Code::NotFound, name, "the file cannot be read");
    Bytes bytes;
    constexpr std::size_t kChunk = 64u << 10;
    while (in) {
        const std::size_t before = bytes.size();
        bytes.resize(before + kChunk);
        in.read(reinterpret_cast<char*>(bytes.data() + before), kChunk);
        bytes.resize(before + static_cast<std::size_t>(in.gcount()));
        if (bytes.size() > limit)
            failFile(tooLarge, name, "the file has more than " + std::to_string(limit) + " bytes");
    }
    if (in.bad())
        failFile(Code::NotFound, name, "the file cannot be read to its end");
    return bytes;
}

// Follows neither symbolic links nor the junctions of Windows: what lies inside must also really lie inside.
bool reallyInside(const fs::path& entry, const fs::path& realFolder)
{
    std::error_code fault;
    const fs::path real = fs::canonical(entry, fault);
    return !fault && real == realFolder / entry.filename();
}

void readFolderInto(PackageFiles& files, const fs::path& folder, const std::string& prefix, std::size_t depth)
{
    std::error_code fault;
    const fs::path realFolder = fs::canonical(folder, fault);
    fs::directory_iterator it(folder, fault);
    if (fault)
        failFile(Code::NotFound, prefix.empty() ? utf8(folder) : prefix, "the folder cannot be read");
    for (; it != fs::directory_iterator(); it.increment(fault)) {
        const std::string name = prefix + utf8(it->path().filename());
        checkFileName(name);
        const fs::file_status status = it->symlink_status(fault);
        if (fault || (status.type() != fs::file_type::regular && status.type() != fs::file_type::directory) ||
            !reallyInside(it->path(), realFolder))
            failFile(Code::LinkInFolder, name, "this is a link or a device, not a file");
        if (status.type() == fs::file_type::directory && depth + 1 < kFolderDepth)
            readFolderInto(files, it->path(), name + '/', depth + 1);
        else if (status.type() == fs::file_type::directory)
            failFile(Code::BadFileName, name, "the folder lies too deep");
        else
            files.add(name, readFile(it->path(), name, kFileBytes, Code::FileTooLarge));
    }
    if (fault)
        failFile(Code::NotFound, prefix, "the folder cannot be read to its end");
}

void writeWhole(const fs::path& path, std::span<const std::uint8_t> bytes)
{
    fs::path fresh = path;
    fresh += ".new";
    std::ofstream out(fresh, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    out.close();
    std::error_code fault;
    if (out)
        fs::rename(fresh, path, fault);
    if (!out || fault) {
        fs::remove(fresh, fault);
        failFile(Code::CannotWrite, utf8(path), "the file cannot be written");
    }
}

} // namespace

Outcome<PackageFiles> readFolder(const fs::path& folder)
{
    return outcomeOf([&] {
        PackageFiles files;
        readFolderInto(files, folder, "", 0);
        return files;
    });
}

Outcome<PackageFiles> readPackage(const fs::path& path)
{
    std::error_code fault;
    const fs::file_status status = fs::status(path, fault);
    if (status.type() == fs::file_type::directory)
        return readFolder(path);
    return outcomeOf([&] {
        if (status.type() == fs::file_type::not_found)
            failFile(Code::NotFound, utf8(path), "there is no such file or folder");
        if (status.type() != fs::file_type::regular)
            failFile(Code::NotAPackage, utf8(path), "this is neither a file nor a folder");
        const Bytes bytes = readFile(path, utf8(path), kArchiveBytes, Code::PackageTooLarge);
        auto files = readZip(bytes, utf8(path));
        if (!files)
            throw SkinFailure(files.error());
        return std::move(files.value());
    });
}

Outcome<std::monostate> replaceFile(const fs::path& path, std::span<const std::uint8_t> bytes)
{
    return outcomeOf([&] {
        writeWhole(path, bytes);
        return std::monostate();
    });
}

Outcome<std::monostate> writeFolder(const PackageFiles& files, const fs::path& folder)
{
    return outcomeOf([&] {
        for (const auto& [name, bytes] : files.all()) {
            const fs::path path = folder / pathOf(name);
            std::error_code fault;
            fs::create_directories(path.parent_path(), fault);
            if (fault)
                failFile(Code::CannotWrite, name, "its folder cannot be made");
            writeWhole(path, bytes);
        }
        return std::monostate();
    });
}

} // namespace ambrel::skin
