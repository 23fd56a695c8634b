// What a window shows, for checks that it was really drawn, and where the buttons of a measured window lie.
#pragma once

#include "base/geometry.h"

#include <windows.h>

#include <cstdint>
#include <vector>

namespace bench {

inline constexpr morvane::Size kWindowSize{1600, 1200};

/// The places of `count` equal buttons that fill a window of the measured size without touching each other.
class ButtonGrid {
public:
    explicit ButtonGrid(int count);
    morvane::Rect place(int index) const;

private:
    int m_columns;
    morvane::Size m_cell;
};

/// A part of a window's client area as the screen has it.
std::vector<std::uint32_t> pixelsOf(HWND window, const morvane::Rect& part);

/// Paints over a part of the window, behind its back, with a colour that nothing draws.
void scribble(HWND window, const morvane::Rect& part);

/// How many pixels of the part are still scribbled over.
std::size_t scribbledPixels(HWND window, const morvane::Rect& part);

/// How many different colours the part shows: a button with a text and a border has more than a few.
std::size_t coloursIn(HWND window, const morvane::Rect& part);

std::uint64_t checksum(HWND window, const morvane::Rect& part);

/// Lays a window over all others: what cannot be seen costs less to paint.
void bringToTop(HWND window);

/// Handles what the system has posted meanwhile.
void pumpMessages();

} // namespace bench
