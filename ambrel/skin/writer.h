#pragma once

#include "ambrel/skin/model.h"

#include <filesystem>

namespace ambrel::skin {

/// The files of a package in the skin's own layout. Reading them gives an equal skin when the skin came from a package
/// or follows the same rules; a property of the compact layout needs a key in the key map (see addMissingKeys). Fails
/// when the files would pass a limit of packages.
Outcome<PackageFiles> writeSkin(const Skin& skin);

/// Gives properties that the key map lacks a fresh short key, so that a skin made or changed by code can be written in
/// the compact layout.
void addMissingKeys(Skin& skin);

/// Writes the skin as a zip file, or as a folder where there is one at the path or the path ends with a separator. The
/// package is read back and compared first; on failure older files stay as they were. In a folder, `former` are the
/// files of the skin that was read from there: those that it has no more are removed. Files by which the folder would
/// read as another skin go in any case.
Outcome<std::monostate> saveSkin(const Skin& skin, const std::filesystem::path& path,
                                 const PackageFiles* former = nullptr);

} // namespace ambrel::skin
