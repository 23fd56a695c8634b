#pragma once

#include <cstddef>
#include <cstdint>

/// The most a package may ask for. Together they bound the memory that reading any package takes: the archive, its
/// unpacked files, one more copy of the XML texts, and the tree and the model made from them stay below
/// kMemoryOfReading. Pictures are decoded later; kPixelsOfPackage bounds what that takes.
namespace ambrel::skin {

inline constexpr std::size_t kArchiveBytes = 32u << 20;
inline constexpr std::size_t kFilesOfPackage = 1024;
inline constexpr std::size_t kFileBytes = 16u << 20;
inline constexpr std::size_t kPackageBytes = 64u << 20;
inline constexpr std::size_t kFolderDepth = 8;
inline constexpr std::size_t kFileNameBytes = 200;

/// A compressed file may not grow by more than this factor, once it is larger than kFreelyUnpackedBytes.
inline constexpr std::size_t kGrowth = 200;
inline constexpr std::size_t kFreelyUnpackedBytes = 1u << 20;

inline constexpr std::size_t kXmlFileBytes = 4u << 20;
inline constexpr std::size_t kXmlNodes = 100000; ///< elements, texts and attributes of one file
inline constexpr int kXmlDepth = 32;
inline constexpr std::size_t kXmlNameBytes = 256;
inline constexpr std::size_t kXmlValueBytes = 64u << 10;

inline constexpr std::int64_t kPictureSide = 8192;
inline constexpr std::int64_t kPicturePixels = 16 << 20;
inline constexpr std::int64_t kPixelsOfPackage = 64 << 20;
inline constexpr int kPictureFrames = 1024;

inline constexpr std::size_t kMemoryOfReading = 256u << 20;

} // namespace ambrel::skin
