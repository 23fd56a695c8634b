// Colour cases: named variations of a skin's colours that a user may choose from.
#pragma once

#include "ambrel/pixels/colour_change.h"
#include "host/host.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ambrel {

/// Keeps them in the order of adding; names are unique.
class ColorCases {
public:
    struct Case {
        std::wstring name;
        std::wstring text;
        std::wstring file;
        VEX_COLORCASE numbers{}; // its strings are not used
    };

    void add(std::wstring_view name, const VEX_COLORCASE& record); // replaces one of the same name
    /// The one that was chosen: then none is. The walk of first and next goes on with the one after it.
    bool remove(std::wstring_view name);
    /// The empty name chooses none. False when nothing changes.
    bool choose(std::wstring_view name);
    const Case* find(std::wstring_view name) const noexcept;
    const Case* current() const noexcept { return find(m_current); }
    const Case* first() noexcept;
    const Case* next() noexcept;
    long count() const noexcept { return static_cast<long>(m_cases.size()); }

    /// What a case does to a skin's pictures and fills: nothing when it is not enabled or blends nothing in.
    static std::optional<Colourise> tintOf(const Case& from) noexcept;
    /// As a record whose strings belong to the caller. Throws std::bad_alloc.
    static VEX_COLORCASE toRecord(const Case& from);

private:
    std::vector<Case> m_cases;
    std::wstring m_current;
    std::size_t m_position = 0; // of first and next
};

} // namespace ambrel
