#pragma once

#include "ambrel/skin/model.h"

#include <filesystem>

namespace ambrel::skin {

/// Makes a skin of a package's files, or tells the first thing that is wrong with them. Everything is read and checked
/// before anything is returned: names refer to what exists, numbers lie in their ranges, pictures are pictures. The
/// layout is compact when the package has a key map. Memory stays below kMemoryOfReading whatever the files hold.
Outcome<Skin> readSkin(PackageFiles files);

/// Reads a zip archive in memory; `name` stands in errors.
Outcome<Skin> readSkin(std::span<const std::uint8_t> archive, const std::string& name = "package");

/// Reads a zip file or a folder.
Outcome<Skin> loadSkin(const std::filesystem::path& path);

} // namespace ambrel::skin
