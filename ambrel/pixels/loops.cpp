#include "ambrel/pixels/loops.h"

#include <algorithm>
#include <utility>

namespace ambrel {

namespace {

void fill(Pixel* out, std::size_t count, Pixel value)
{
    std::fill_n(out, count, value);
}

void blend(Pixel* out, const Pixel* source, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        out[i] = over(source[i], out[i]);
}

void blendWeakened(Pixel* out, const Pixel* source, std::size_t count, int opacity)
{
    for (std::size_t i = 0; i < count; ++i)
        out[i] = over(weakened(source[i], opacity), out[i]);
}

void blendColour(Pixel* out, std::size_t count, Pixel colour)
{
    for (std::size_t i = 0; i < count; ++i)
        out[i] = over(colour, out[i]);
}

void blendMask(Pixel* out, const std::uint8_t* mask, std::size_t count, Pixel colour)
{
    for (std::size_t i = 0; i < count; ++i)
        out[i] = over(weakened(colour, mask[i]), out[i]);
}

/// Sums weighted pixels channel by channel.
class Mix {
public:
    void add(Pixel p, int weight)
    {
        m_a += alphaOf(p) * weight;
        m_r += redOf(p) * weight;
        m_g += greenOf(p) * weight;
        m_b += blueOf(p) * weight;
    }
    Pixel result() const { return packPixel(rounded(m_a), rounded(m_r), rounded(m_g), rounded(m_b)); }

private:
    static int rounded(int sum) { return std::clamp((sum + kWeightOne / 2) >> kWeightBits, 0, 255); }
    int m_a = 0;
    int m_r = 0;
    int m_g = 0;
    int m_b = 0;
};

void mixRows(Pixel* out, const Pixel* const* rows, const std::int16_t* weights, int taps, std::size_t count)
{
    for (std::size_t x = 0; x < count; ++x) {
        Mix mix;
        for (int t = 0; t < taps; ++t)
            mix.add(rows[t][x], weights[t]);
        out[x] = mix.result();
    }
}

Pixel mixNeighbours(const Pixel* first, const std::int16_t* weights, int taps)
{
    Mix mix;
    for (int t = 0; t < taps; ++t)
        mix.add(first[t], weights[t]);
    return mix.result();
}

constexpr RowLoops kPlain{fill, blend, blendWeakened, blendColour, blendMask, mixRows, mixNeighbours};

const RowLoops*& chosen() noexcept
{
    static const RowLoops* choice = &fastLoops();
    return choice;
}

} // namespace

const RowLoops& plainLoops() noexcept
{
    return kPlain;
}
const RowLoops& loops() noexcept
{
    return *chosen();
}

LoopsChoice::LoopsChoice(const RowLoops& choice) noexcept : m_former(std::exchange(chosen(), &choice)) {}
LoopsChoice::~LoopsChoice()
{
    chosen() = m_former;
}

} // namespace ambrel
