// Something that happens again and again, such as the frames of an animation.
#pragma once

#include "frame/com/com_ptr.h"
#include "host/host.h"

#include <cstdint>
#include <functional>

namespace gallery {

/// Runs a function in the rhythm of a window timer, for as long as its object is part of a window.
class Ticker {
public:
    Ticker(IVexControlBase& control, int periodMs, std::function<void()> action);
    Ticker(const Ticker&) = delete;
    Ticker& operator=(const Ticker&) = delete;
    ~Ticker() { stop(); }

    bool isRunning() const { return m_window != nullptr; }

private:
    static void CALLBACK due(HWND window, UINT message, UINT_PTR ticker, DWORD time);
    void stop();

    morvane::ComPtr<IVexControlBase> m_control;
    std::function<void()> m_action;
    HWND m_window = nullptr;
};

} // namespace gallery
