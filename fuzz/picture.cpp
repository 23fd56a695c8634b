// Any bytes as a picture's header: sizes that are accepted keep their limits.
#include "ambrel/skin/limits.h"
#include "ambrel/skin/picture_probe.h"
#include "fuzz/fuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace ambrel::skin;
    const auto info = probePicture({data, size}, "picture");
    if (info)
        fuzz::require(info->width > 0 && info->width <= kPictureSide && info->height > 0 &&
                          info->height <= kPictureSide && info->frames > 0,
                      "an accepted picture has an acceptable size");
    return 0;
}
