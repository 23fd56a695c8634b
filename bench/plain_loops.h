// What the processor can do with pixels when nothing stands in its way: the yardstick for our drawing.
#pragma once

#include <cstddef>
#include <cstdint>

namespace bench {

/// out = source over out, premultiplied, a straightforward SSE2 loop of four pixels at a time. `count` is a multiple
/// of 4.
void plainBlend(std::uint32_t* out, const std::uint32_t* source, std::size_t count) noexcept;

} // namespace bench
