// Any text as a position: what is understood is written and understood again.
#include "ambrel/skin/position.h"
#include "fuzz/fuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace ambrel::skin;
    const auto position = parsePosition(fuzz::textOf(data, size));
    if (position)
        fuzz::require(parsePosition(formatPosition(*position)) == position, "a written position reads back equal");
    return 0;
}
