#pragma once

#include "ambrel/skin/errors.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ambrel::skin {

using Bytes = std::vector<std::uint8_t>;

/// Orders names without regard to the letter case of a to z: a package is read on file systems that ignore case.
struct NameLess {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const;
};

/// The files of a package, by their names inside it ('/' between folders). Nothing outside the package can be named.
class PackageFiles {
public:
    using Map = std::map<std::string, Bytes, NameLess>;

    /// The file's bytes, null when there is none of that name. Letter case does not matter.
    const Bytes* find(std::string_view name) const;

    /// The name as the package spells it, empty when there is no such file.
    std::string_view spellingOf(std::string_view name) const;

    /// Adds a file. Fails when the name could leave the package, exists already, or a limit would be passed.
    void add(std::string name, Bytes bytes);
    void remove(std::string_view name);

    const Map& all() const { return m_files; }
    bool empty() const { return m_files.empty(); }

    bool operator==(const PackageFiles&) const = default;

private:
    Map m_files;
    std::size_t m_total = 0; // bytes of all files
};

/// Checks a name inside a package: relative, plain components, nothing that Windows reads as a device, a drive or a
/// stream. Raises BadFileName.
void checkFileName(std::string_view name);

/// Whether the bytes begin as a zip archive does.
bool looksLikeZip(std::span<const std::uint8_t> bytes);

/// Unpacks a zip archive into memory. `name` stands in errors.
Outcome<PackageFiles> readZip(std::span<const std::uint8_t> bytes, const std::string& name = "package");

/// Reads all files of a folder and its sub-folders into memory; links are refused.
Outcome<PackageFiles> readFolder(const std::filesystem::path& folder);

/// Reads a package from disk: a zip file or a folder.
Outcome<PackageFiles> readPackage(const std::filesystem::path& path);

/// The files as a zip archive: sorted by name, deflated where that helps, the same bytes for the same files.
Bytes writeZip(const PackageFiles& files);

/// Writes a whole file so that other readers see either the old or the new one.
Outcome<std::monostate> replaceFile(const std::filesystem::path& path, std::span<const std::uint8_t> bytes);

/// Writes the files into a folder, which is made when needed, and removes those of the names in `gone`: all of them,
/// or, when one cannot be written, none. Each is replaced in one step; files that hold the same bytes already and files
/// of other names are left alone.
Outcome<std::monostate> writeFolder(const PackageFiles& files, const std::filesystem::path& folder,
                                    std::span<const std::string> gone = {});

} // namespace ambrel::skin
