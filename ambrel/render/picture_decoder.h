// Encoded pictures into pixels and back, by the platform's codecs and by our own where those fall short.
#pragma once

#include "ambrel/pixels/image_header.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace ambrel {

struct DecodedPicture {
    ImageFormat format = ImageFormat::Unknown;
    std::vector<Surface> frames;        // at least one, all of the same size
    std::vector<std::int32_t> delaysMs; // one per frame
    int plays = 1;                      // how often an animation is shown; 0 means for ever
};

/// Decodes bytes by their content. Nothing when they are no picture, are damaged, or are larger than surfaces may be;
/// an animation whose frames together are larger gives those that fit. Throws std::bad_alloc.
std::optional<DecodedPicture> decodePicture(std::span<const std::uint8_t> bytes);

/// The pixels as a PNG file; empty when the platform fails.
std::vector<std::uint8_t> encodePng(ConstPixelView pixels);

/// A whole file; nothing when it cannot be read or is larger than 256 MB.
std::optional<std::vector<std::uint8_t>> readFile(const std::wstring& path);
bool writeFile(const std::wstring& path, std::span<const std::uint8_t> bytes);

} // namespace ambrel
