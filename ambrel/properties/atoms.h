// Names that many objects share, stored once per process.
#pragma once

#include <cstdint>
#include <string_view>

namespace ambrel {

/// Stands for an immutable text; equal texts have equal atoms. The default one is the empty text.
class Atom {
public:
    constexpr Atom() noexcept = default;

    /// The atom of a text, made when the text is new. Kept for the life of the process, so only for names that come
    /// from code, not from values. For the user-interface thread only. Throws std::bad_alloc.
    explicit Atom(std::wstring_view text);

    /// Valid for the life of the process; ends with a zero character behind its last.
    std::wstring_view text() const noexcept;
    bool empty() const noexcept { return m_index == 0; }

    friend bool operator==(Atom, Atom) noexcept = default;

private:
    std::uint32_t m_index = 0;
};

} // namespace ambrel
