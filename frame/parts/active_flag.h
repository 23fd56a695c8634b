// Whether a control belongs to an active window, as the application tells it.
#pragma once

namespace morvane {

/// Keeps the bits it was given: a new flag is 1, so the first set(VARIANT_TRUE), which stores -1, is a change.
class ActiveFlag {
public:
    bool isActive() const { return m_bits != 0; }

    /// True when the stored bits changed.
    bool set(short variantBool)
    {
        const bool changes = m_bits != variantBool;
        m_bits = variantBool;
        return changes;
    }

private:
    int m_bits = 1;
};

} // namespace morvane
