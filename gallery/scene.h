// Building a window's content: controls with their places, skins and texts. Sizes and places are given for 100 percent.
#pragma once

#include "base/geometry.h"
#include "controls/control_interfaces.h"
#include "frame/com/bstr.h"
#include "frame/com/com_ptr.h"
#include "gallery/theme.h"
#include "gallery/ticker.h"
#include "host/host.h"

#include <array>
#include <functional>
#include <map>
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

/// What a control keeps while its parent changes its size: the distance from the near edge, from the far one, or both.
enum class Hold { Near, Far, Both };

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

/// Where a text stands in its rectangle: how far from which side.
struct TextPlacement {
    TextAlign align = TextAlign::Centre;
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    friend bool operator==(const TextPlacement&, const TextPlacement&) = default;
};

class SkinFolder;

/// Where looks come from: the module's packages, or a folder that is read instead; and before both, what the user gave.
struct SkinSource {
    HINSTANCE module = nullptr;
    std::wstring folder; // with "2080.dark.zip" and its companions; empty: the module's own
    bool isDark = false;
    std::shared_ptr<SkinFolder> custom; // may lack packages; null: none
};

struct Options;
SkinSource skinSourceOf(const Options& options, HINSTANCE controls);

class Scene {
public:
    Scene(ComPtr<IVexRes> res, ComPtr<IAmbrel> root, SkinSource skins, int scale);
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;
    ~Scene();

    IVexRes& res() const { return *m_res; }
    IAmbrel& root() const { return *m_root; }
    const Theme& theme() const { return m_skins.isDark ? Theme::dark() : Theme::light(); }
    const std::shared_ptr<SkinFolder>& skinFolder() const { return m_skins.custom; }
    bool isDark() const { return m_skins.isDark; }
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
    /// Where it stands in a parent of this size, and what it keeps of that in a larger one.
    void placeIn(IVexControlBase& control, const Rect& place, Size parent, Hold across, Hold down) const;
    /// For a control that sizes itself: its size is its own from then on.
    void placeFitting(IVexControlBase& control, const Rect& place) const;
    void finish(IVexControlBase& control) const;
    void applySkin(IVexControlBase& control, int package) const;

    /// The path of a picture that is drawn in both palettes, for the scene's palette and scale: device pixels.
    Bstr drawing(const std::wstring& name) const;
    /// The whole of such a picture as a section, which follows the window's scale itself. `border` keeps its width.
    ComPtr<IVexImageBase> drawingSection(const std::wstring& name, long border = 0) const;

    ComPtr<IVexTextStyle> textStyle(const TextLook& look);
    /// A style of the same colour and font, also after a change of the skin, whose text stands elsewhere.
    ComPtr<IVexTextStyle> textStyleLike(IVexTextStyle& source, const TextPlacement& placement);
    /// What is made from now on looks so; what is there stays as it is.
    void setLook(SkinSource skins, int scale);
    /// Shared resources of the skin have changed in place.
    void skinChanged();
    ComPtr<IFillColor> fill(OLE_COLOR from, OLE_COLOR to, int degrees);

    /// Runs a function at every message of that number from a control, until it is removed.
    void onMessage(IVexControlBase& control, long message, std::function<void()> action);
    /// When the control was clicked, or pressed by the keyboard.
    void onClick(IVexControlBase& control, std::function<void()> action);
    /// When controls send the window a message of their own; the last action for a number replaces the one before.
    void onWindowMessage(UINT message, std::function<void(WPARAM)> action);
    /// Every so many milliseconds while the control is shown, until it leaves the window.
    void every(int periodMs, IVexControlBase& control, std::function<void()> action);

    /// Takes a control and all it holds out of the window.
    void remove(IVexControlBase& control);

private:
    struct Callback {
        const IUnknown* control; // to forget it by
        std::unique_ptr<std::function<void()>> action;
    };
    struct Derived {
        ComPtr<IVexTextStyle> source;
        ComPtr<IVexTextStyle> style;
        TextPlacement placement;
    };
    static LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                            DWORD_PTR scene);
    void forgetActions(IVexControlBase& control);
    HWND window() const;
    void setPlace(IVexControlBase& control, const Rect& pixels, PosHorzSpaceType kind) const;
    void setPosition(IVexControlBase& control, const VexPosition& record) const;
    std::wstring nextName(const wchar_t* kind);
    ComPtr<IVexFontEx> font(int points, bool isBold);

    ComPtr<IVexRes> m_res;
    ComPtr<IAmbrel> m_root;
    SkinSource m_skins;
    int m_scale;
    int m_lastName = 0;
    std::vector<std::pair<std::wstring, ComPtr<IVexTextStyle>>> m_textStyles; // by what they look like
    std::vector<Derived> m_derivedStyles;
    std::map<std::array<long, 3>, ComPtr<IFillColor>> m_fills; // by colours and direction
    std::vector<Callback> m_callbacks;
    // Of what was removed last: one of them may be running, since it removed its own control.
    std::vector<std::unique_ptr<std::function<void()>>> m_retired;
    std::map<UINT, std::shared_ptr<std::function<void(WPARAM)>>> m_windowActions;
    std::vector<std::unique_ptr<Ticker>> m_tickers;
};

} // namespace gallery
