// Packages on disk.
#include "ambrel/skin/container.h"
#include "ambrel/skin/limits.h"
#include "ambrel/skin/text.h"

#include <algorithm>
#include <fstream>
#include <optional>
#include <system_error>
#include <utility>

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

fs::path freshName(const fs::path& path, int number = 0)
{
    fs::path fresh = path;
    fresh += number == 0 ? ".new" : ".new" + std::to_string(number);
    return fresh;
}

// A name beside the file that nothing has, so that no file of anybody else is overwritten.
fs::path freeNameBeside(const fs::path& path)
{
    std::error_code fault;
    for (int number = 0;; ++number) {
        fs::path fresh = freshName(path, number);
        if (!fs::exists(fs::symlink_status(fresh, fault)))
            return fresh;
    }
}

/// A file's new content, complete on disk beside the old one until it takes its place.
class StagedFile {
public:
    StagedFile(fs::path path, std::span<const std::uint8_t> bytes)
        : m_path(std::move(path)), m_fresh(freeNameBeside(m_path))
    {
        std::ofstream out(m_fresh, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        out.close();
        if (!out) {
            discard();
            failFile(Code::CannotWrite, utf8(m_path), "the file cannot be written");
        }
    }
    StagedFile(StagedFile&& other) noexcept
        : m_path(std::move(other.m_path)), m_fresh(std::exchange(other.m_fresh, fs::path()))
    {
    }
    StagedFile& operator=(StagedFile&&) = delete;
    ~StagedFile() { discard(); }

    void place()
    {
        std::error_code fault;
        fs::rename(m_fresh, m_path, fault);
        if (fault)
            failFile(Code::CannotWrite, utf8(m_path), "the file cannot be replaced");
        m_fresh.clear();
    }

    const fs::path& path() const { return m_path; }
    const fs::path& fresh() const { return m_fresh; }

private:
    void discard() noexcept
    {
        std::error_code fault;
        if (!m_fresh.empty())
            fs::remove(m_fresh, fault);
    }

    fs::path m_path;
    fs::path m_fresh; // empty once it took its place
};

void writeWhole(const fs::path& path, std::span<const std::uint8_t> bytes)
{
    StagedFile(path, bytes).place();
}

/// The files of a folder that are replaced together: either all of them or none.
class StagedFolder {
public:
    explicit StagedFolder(fs::path folder) : m_folder(std::move(folder)) {}

    void add(const std::string& name, std::span<const std::uint8_t> bytes)
    {
        const fs::path path = m_folder / pathOf(name);
        std::error_code fault;
        std::optional<Bytes> former;
        const fs::file_status status = fs::status(path, fault);
        refuseTwins(path, name);
        if (fs::exists(status) && !fs::is_regular_file(status))
            failFile(Code::CannotWrite, name, "something that is no file stands in its place");
        if (fs::exists(status))
            former = readFile(path, name, kFileBytes, Code::CannotWrite);
        if (former && std::ranges::equal(*former, bytes))
            return;
        fs::create_directories(path.parent_path(), fault);
        if (fault)
            failFile(Code::CannotWrite, name, "its folder cannot be made");
        m_files.push_back({StagedFile(path, bytes), std::move(former)});
    }

    void remove(const std::string& name)
    {
        const fs::path path = m_folder / pathOf(name);
        std::error_code fault;
        if (fs::is_regular_file(path, fault))
            m_gone.push_back({path, readFile(path, name, kFileBytes, Code::CannotWrite)});
    }

    void place()
    {
        std::size_t placed = 0;
        std::size_t removed = 0;
        try {
            for (; placed < m_files.size(); ++placed)
                m_files[placed].staged.place();
            for (; removed < m_gone.size(); ++removed)
                removeFile(m_gone[removed].path);
        } catch (const SkinFailure&) {
            for (const GoneFile& each : std::span(m_gone).first(removed))
                restore(each.path, each.former);
            for (const File& each : std::span(m_files).first(placed))
                restore(each.staged.path(), each.former);
            throw;
        }
    }

private:
    struct File {
        StagedFile staged;
        std::optional<Bytes> former;
    };

    /// Systems that ignore letter case do so beyond a to z, too: two names would be one file.
    void refuseTwins(const fs::path& path, const std::string& name) const
    {
        std::error_code fault;
        const fs::path fresh = freshName(path);
        if (!fs::exists(fresh, fault))
            return;
        for (const File& each : m_files) {
            if (fs::equivalent(each.staged.fresh(), fresh, fault))
                failFile(Code::DuplicateFile, name, "here it is the same file as " + utf8(each.staged.path()));
        }
    }

    struct GoneFile {
        fs::path path;
        Bytes former;
    };

    static void removeFile(const fs::path& path)
    {
        std::error_code fault;
        if (!fs::remove(path, fault) && fault)
            failFile(Code::CannotWrite, utf8(path), "the file cannot be removed");
    }

    static void restore(const fs::path& path, const std::optional<Bytes>& former)
    {
        std::error_code fault;
        if (!former) {
            fs::remove(path, fault);
            return;
        }
        try {
            writeWhole(path, *former);
        } catch (const SkinFailure&) {
            // The disk refuses the old content, too; the failure that led here is told.
        }
    }

    fs::path m_folder;
    std::vector<File> m_files;
    std::vector<GoneFile> m_gone;
};

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

Outcome<std::monostate> writeFolder(const PackageFiles& files, const fs::path& folder,
                                    std::span<const std::string> gone)
{
    return outcomeOf([&] {
        StagedFolder staged(folder);
        for (const auto& [name, bytes] : files.all())
            staged.add(name, bytes);
        for (const std::string& name : gone)
            staged.remove(name);
        staged.place();
        return std::monostate();
    });
}

} // namespace ambrel::skin
