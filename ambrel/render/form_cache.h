// Finished forms of a picture: scaled, cut and coloured as they were last drawn, so that drawing again is one blend.
#pragma once

#include "ambrel/pixels/surface.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

namespace ambrel {

class FormCache {
public:
    struct Key {
        Size size;
        Rect source;
        int index = 0;
        int scalePercent = 100;
        std::uint32_t colourKey = 0;

        friend constexpr bool operator==(const Key&, const Key&) = default;
    };

    struct Form {
        Key key;
        Surface pixels;
        Coverage coverage = Coverage::Blank;
    };

    /// Forms beyond this are not worth their memory, or cannot be made at all: of such targets only what shows is
    /// drawn.
    static constexpr bool isTooLarge(Size size)
    {
        constexpr std::int64_t kLargest = 16 * 1024 * 1024;
        return !Surface::isAllowed(size) || area(size) > kLargest;
    }

    /// The form of a key; `make` gives its pixels when it is not there. Valid until the next call. Throws what `make`
    /// throws, and std::bad_alloc.
    template <class Make>
    const Form& get(const Key& key, Make&& make)
    {
        auto found = std::ranges::find(m_forms, key, &Form::key);
        if (found == m_forms.end()) {
            Surface pixels = make();
            const Coverage coverage = coverageOf(pixels.view());
            makeRoom(key.size);
            m_forms.push_back({key, std::move(pixels), coverage});
            found = std::prev(m_forms.end());
        }
        std::rotate(m_forms.begin(), found, found + 1);
        return m_forms.front();
    }

    void clear() noexcept { m_forms.clear(); }

private:
    static constexpr std::size_t kSizes = 6;            // a window that is resized asks for ever new ones
    static constexpr std::int64_t kPixels = 512 * 1024; // of all forms, but six are kept however large

    /// Forgets what was not used for longest, so that one more form of this size has its place.
    void makeRoom(Size size)
    {
        std::array<Size, kSizes> sizes{size};
        std::size_t sizeCount = 1;
        std::size_t formCount = 1;
        std::int64_t pixels = area(size);
        std::erase_if(m_forms, [&](const Form& form) {
            const auto end = sizes.begin() + static_cast<std::ptrdiff_t>(sizeCount);
            if (std::find(sizes.begin(), end, form.key.size) == end) {
                if (sizeCount == kSizes)
                    return true;
                sizes[sizeCount++] = form.key.size;
            }
            pixels += area(form.key.size);
            return ++formCount > kSizes && pixels > kPixels;
        });
    }

    static constexpr std::int64_t area(Size size) { return std::int64_t{size.width} * size.height; }

    std::vector<Form> m_forms; // the last used first
};

} // namespace ambrel
