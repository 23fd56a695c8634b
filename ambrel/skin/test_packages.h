// Small packages for tests.
#pragma once

#include "ambrel/skin/container.h"
#include "ambrel/skin/model.h"

#include <string>
#include <string_view>

namespace ambrel::skin::test {

Bytes bytesOf(std::string_view text);

/// A whole PNG picture, one transparent colour.
Bytes png(std::uint32_t width, std::uint32_t height);

/// A button in the compact layout, with every kind of shared resource.
PackageFiles compactPackage();

/// A form with a child in the full layout.
PackageFiles fullPackage();

/// The package with one spot of one file replaced; the spot must be there.
PackageFiles replaced(PackageFiles files, std::string_view file, std::string_view from, std::string_view to);

/// The skin after its way through a package. Throws std::runtime_error with what was wrong.
Skin writtenAndRead(const Skin& skin);

} // namespace ambrel::skin::test
