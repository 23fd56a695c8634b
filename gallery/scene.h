// Building a window's content: controls with their places, skins and texts. Sizes and places are given for 100 percent.
#pragma once

#include "base/geometry.h"
#include "controls/control_interfaces.h"
#include "frame/com/bstr.h"
#include "frame/com/com_ptr.h"
#include "gallery/theme.h"
#include "gallery/ticker.h"
#include "host/host.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace gallery {

using morvane::Bstr;
using morvane::ComPtr;
using morvane::Point;
using morvane::Rect;
using morvane::Size;

enum class TextAlign : short { Near = 0, Centre = 1, Far = 2 };

/// How a text of the gallery itself looks.
struct TextLook {
    OLE_COLOR color;
    int points = 9;
    bool isBold = false;
    TextAlign align = TextAlign::Near;
    int nearOffset = 0;
    bool isTrimmed = false; // too long texts end in dots; marks of access keys are then plain text
};

/// Where default looks come from: the module's packages, or a folder that is read instead.
struct SkinSource {
    HINSTANCE module = nullptr;
    std::wstring folder; // empty: the module's own
    bool isDark = false;
};

struct Options;
SkinSource skinSourceOf(const Options& options, HINSTANCE controls);

class Scene {
public:
    Scene(ComPtr<IVexRes> res, ComPtr<IAmbrel> root, SkinSource skins, int scale);

    IVexRes& res() const { return *m_res; }
    IAmbrel& root() const { return *m_root; }
    const Theme& theme() const { return m_skins.isDark ? Theme::dark() : Theme::light(); }
    int scale() const { return m_scale; }
    int scaled(int value) const { return value * m_scale / 100; }
    Rect scaled(const Rect& rect) const;

    // Controls under a parent (the root or a form), skinned and finished. Null parents mean the root.
    ComPtr<ICmdButton> button(IVexControlBase* parent, const Rect& place, std::wstring_view text);
    ComPtr<IVexCheckBox> checkBox(IVexControlBase* parent, const Rect& place, std::wstring_view text);
    ComPtr<IRadioBox> radioBox(IVexControlBase* parent, const Rect& place, std::wstring_view text, long group);
    ComPtr<IUIFormObj> form(IVexControlBase* parent, const Rect& place, OLE_COLOR color);
    /// A text without a control's looks; it takes no focus.
    ComPtr<ICmdButton> label(IVexControlBase* parent, const Rect& place, std::wstring_view text, const TextLook& look);

    /// A control without any look yet.
    ComPtr<IVexControlBase> create(REFCLSID classId, IVexControlBase* parent, const Rect& place);
    void place(IVexControlBase& control, const Rect& place) const;
    /// The same in device pixels.
    void placePixels(IVexControlBase& control, const Rect& place) const;
    void finish(IVexControlBase& control) const;
    void applySkin(IVexControlBase& control, int package) const;

    ComPtr<IVexTextStyle> textStyle(const TextLook& look);
    ComPtr<IFillColor> fill(OLE_COLOR from, OLE_COLOR to, int degrees);

    /// Runs a function at every message of that number from a control, for as long as the scene lives.
    void onMessage(IVexControlBase& control, long message, std::function<void()> action);
    /// At the release of the left button inside the control.
    void onClick(IVexControlBase& control, std::function<void()> action);

    /// Every so many milliseconds while the control is shown, until it leaves the window.
    void every(int periodMs, IVexControlBase& control, std::function<void()> action);

    /// Takes a control and all it holds out of the window.
    void remove(IVexControlBase& control);

private:
    struct Callback {
        IUnknown* control; // to forget it by
        std::unique_ptr<std::function<void()>> action;
    };
    std::wstring nextName(const wchar_t* kind);
    ComPtr<IVexFontEx> font(int points, bool isBold);

    ComPtr<IVexRes> m_res;
    ComPtr<IAmbrel> m_root;
    SkinSource m_skins;
    int m_scale;
    int m_lastName = 0;
    std::vector<std::pair<std::wstring, ComPtr<IVexTextStyle>>> m_textStyles; // by what they look like
    std::vector<Callback> m_callbacks;
    std::vector<std::unique_ptr<Ticker>> m_tickers;
};

} // namespace gallery
