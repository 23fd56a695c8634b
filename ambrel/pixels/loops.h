// The innermost loops over rows of pixels, in SSE2 and, beside it, in plain code that tests compare with. Both give the
// same bits.
#pragma once

#include "ambrel/pixels/pixel.h"

#include <cstddef>
#include <cstdint>

namespace ambrel {

/// Weights of a filter are 14-bit fixed-point numbers whose sum is kWeightOne.
inline constexpr int kWeightBits = 14;
inline constexpr int kWeightOne = 1 << kWeightBits;

struct RowLoops {
    void (*fill)(Pixel* out, std::size_t count, Pixel value);
    /// out = source over out
    void (*blend)(Pixel* out, const Pixel* source, std::size_t count);
    /// out = (source weakened by opacity) over out
    void (*blendWeakened)(Pixel* out, const Pixel* source, std::size_t count, int opacity);
    /// out = colour over out
    void (*blendColour)(Pixel* out, std::size_t count, Pixel colour);
    /// out = (colour weakened by mask) over out; how text is drawn
    void (*blendMask)(Pixel* out, const std::uint8_t* mask, std::size_t count, Pixel colour);
    /// out = weighted sum of `taps` rows at the same place. Weights are not negative, their sum is kWeightOne.
    void (*mixRows)(Pixel* out, const Pixel* const* rows, const std::int16_t* weights, int taps, std::size_t count);
    /// The weighted sum of `taps` neighbours, for one output pixel.
    Pixel (*mixNeighbours)(const Pixel* first, const std::int16_t* weights, int taps);
};

const RowLoops& plainLoops() noexcept;
const RowLoops& fastLoops() noexcept; // the plain ones on a processor without SSE2

/// What the drawing functions use: the fast loops unless a test chose otherwise.
const RowLoops& loops() noexcept;

/// For tests: which loops run until it goes out of scope.
class LoopsChoice {
public:
    explicit LoopsChoice(const RowLoops& choice) noexcept;
    LoopsChoice(const LoopsChoice&) = delete;
    LoopsChoice& operator=(const LoopsChoice&) = delete;
    ~LoopsChoice();

private:
    const RowLoops* m_former;
};

} // namespace ambrel
