// Finished forms of a picture: scaled, cut and coloured as they were last drawn, so that drawing again is one blend.
#pragma once

#include "ambrel/pixels/surface.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

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

    /// The form of a key; `make` gives its pixels when it is not there. Valid until the next call. Throws what `make`
    /// throws.
    template <class Make>
    const Form& get(const Key& key, Make&& make)
    {
        const auto end = m_forms.begin() + m_count;
        auto found = std::find_if(m_forms.begin(), end, [&](const Form& f) { return f.key == key; });
        if (found == end) {
            Surface pixels = make();
            const Coverage coverage = coverageOf(pixels.view());
            if (m_count < static_cast<int>(m_forms.size()))
                ++m_count;
            found = m_forms.begin() + (m_count - 1); // a new place or that of the one unused for longest
            *found = {key, std::move(pixels), coverage};
        }
        std::rotate(m_forms.begin(), found, found + 1);
        return m_forms.front();
    }

    void clear()
    {
        for (Form& form : m_forms)
            form = {};
        m_count = 0;
    }

private:
    std::array<Form, 6> m_forms; // the last used first
    int m_count = 0;
};

} // namespace ambrel
