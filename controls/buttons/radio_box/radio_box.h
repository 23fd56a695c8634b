// The radio box: one of a group, of which exactly one is checked. It can blink and carry a clickable picture at its
// edge.
#pragma once

#include "controls/buttons/radio_box/radio_box_properties.h"
#include "controls/buttons/radio_box/radio_group.h"
#include "frame/parts/box_control.h"
#include "frame/parts/render_images.h"
#include "frame/parts/strip_graphic.h"
#include "frame/platform/window_timer.h"

#include <optional>
#include <vector>

namespace morvane {

class CRadioBox : public StripGraphic<BoxControl<IRadioBox, RadioBoxProperties>>, public RadioMember {
public:
    STDMETHODIMP SetText(BSTR text, VARIANT_BOOL redrawNow) noexcept override;
    STDMETHODIMP GetButtonState(VEX_RADIOBOXSTATE* result) noexcept override;
    STDMETHODIMP SetButtonState(VEX_RADIOBOXSTATE state, VARIANT_BOOL redrawNow) noexcept override;
    STDMETHODIMP SetValue(VEXRADIOBOX_VALUE value, VARIANT_BOOL redrawNow) noexcept override;
    STDMETHODIMP GetValue(VEXRADIOBOX_VALUE* result) noexcept override;
    STDMETHODIMP SetUpDownMode(VARIANT_BOOL stacked, VARIANT_BOOL redrawNow) noexcept override;
    STDMETHODIMP SetGraphicOffset(long x, long y, VARIANT_BOOL redrawNow) noexcept override;
    STDMETHODIMP GetGraphicOffset(long* x, long* y) noexcept override;
    STDMETHODIMP ShowText(VARIANT_BOOL show, VARIANT_BOOL redrawNow) noexcept override;
    STDMETHODIMP StartBlink(short timerId, short intervalMs) noexcept override;
    STDMETHODIMP StopBlink() noexcept override;
    STDMETHODIMP SetChildWndImage(BSTR path, short rightSpace, short offsetY) noexcept override;
    STDMETHODIMP SetBlinkImage(BSTR path) noexcept override;
    STDMETHODIMP SetBackImage(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, IVexImageBase* section,
                              VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetBackImage(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, IVexImageBase** result) noexcept override;
    STDMETHODIMP SetBackColor(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, OLE_COLOR color,
                              VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetBackColor(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, OLE_COLOR* result) noexcept override;
    STDMETHODIMP SetBoxImage(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, IVexImageBase* section,
                             VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetBoxImage(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, IVexImageBase** result) noexcept override;
    STDMETHODIMP SetGraphicsImage(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, IVexImageBase* section,
                                  VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetGraphicsImage(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked,
                                  IVexImageBase** result) noexcept override;
    STDMETHODIMP SetGraphicsBmp(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, std::int64_t bitmap,
                                VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetGraphicsBmp(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, std::int64_t* result) noexcept override;
    STDMETHODIMP SetTextStyle(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, IVexTextStyle* style,
                              VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetTextStyle(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, IVexTextStyle** result) noexcept override;
    STDMETHODIMP SetBackDrawColor(VARIANT_BOOL drawColor) noexcept override;
    STDMETHODIMP GetBackDrawColor(VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP SetGraphicSize(long width, long height, VARIANT_BOOL redrawNow,
                                VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetGraphicSize(long* width, long* height) noexcept override;
    STDMETHODIMP SetGroupID(long id, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetGroupID(long* result) noexcept override;
    STDMETHODIMP GetGroup(IVexRadioGroup** result) noexcept override;

    // RadioMember
    IRadioBox& box() override { return *this; }
    void changeValue(bool isChecked) override;
    bool enterGroup(CVexRadioGroup& group) override;
    void leftGroup(CVexRadioGroup& group) override;
    bool isChecked() const override { return m_isChecked; }
    HWND hostWindow() const override { return host().window; }

    void* findInterface(REFIID iid) noexcept;

protected:
    const ControlInfo& info() const noexcept override;
    void render(IVexRenderDC& dc) override;
    HRESULT drawOnDc(IVexObjectDraw* objectDraw, VARIANT_BOOL* result) override;
    void letGo(const HostCache& former) override;

    const TextStyleProp& measuringStyle() override { return currentLook().textStyle; }
    int widthBesideText() override { return boxSize().width; }

    Handled onFinalCreate() override;
    Handled onAccessConfigured(bool isRead) override;
    Handled onDestroying() override;
    Handled onEnableObject(const EnableNotice& notice) override;
    Handled onMouseEnter(const PointerNotice& notice) override;
    Handled onMouseMove(const PointerNotice& notice) override;
    Handled onMouseLeave(const PointerNotice& notice) override;
    Handled onLeftButtonDown(const PointerNotice& notice) override;
    Handled onLeftButtonUp(const PointerNotice& notice) override;
    Handled onLeftDoubleClick(const PointerNotice& notice) override;
    Handled onTimer(UINT_PTR id) override;

private:
    using Look = RadioBoxProperties::Look;

    /// An application's bitmap and what is drawn of it.
    struct GraphicBitmap {
        std::int64_t handle = 0;
        RenderImageSlot image; // made when it is first drawn
    };

    /// The clickable picture at the right edge.
    struct ChildImage {
        bool isSet = false;
        bool hasMouse = false;
        ComPtr<IVexPicture> picture;
        short rightSpace = 0;
        short offsetY = 0;
    };

    std::size_t currentIndex() const { return radioLookIndex(static_cast<int>(m_state), m_isChecked); }
    Look& currentLook() { return m_properties.looks[currentIndex()]; }
    /// The place of an interface method's indexes; nothing for those that lead nowhere. States past the last one of the
    /// unchecked value lead on into the checked one's, as clients know from one array of both.
    static std::optional<std::size_t> lookIndex(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked);
    Look* lookAt(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked);

    void enterState(RadioState state);
    void joinGroup();
    ComPtr<IVexRadioGroup> groupOfSiblings(ISkinObjResBase& parent, long id);
    void leaveOwnGroup();
    void leaveGroups();
    void stopBlinking();
    Rect childImageRect(const Rect& control) const;
    /// Whether the pointer is on the clickable picture.
    void trackChildImage(Point pointer);

    void settleState();
    bool showsBlinkPicture() const { return m_isBlinkOn && m_blinkPicture; }
    Size boxSize();
    Rect textRect(const Rect& control);
    Rect graphicRect(const Rect& control, Size natural) const;
    void drawBackground(IVexRenderDC& dc, const Rect& control);
    void drawGraphic(IVexRenderDC& dc, const Rect& control);
    void drawGraphic(const DcPainter& painter, const Rect& control);

    RadioState m_state = RadioState::Normal;
    bool m_isChecked = false;
    ComPtr<IVexRadioGroup> m_group;             // the group the box joined
    IVexRadioGroup* m_joining = nullptr;        // while that group takes it in
    std::vector<CVexRadioGroup*> m_memberships; // every group that has it as a member
    bool m_isBlinkOn = false;
    WindowTimer m_blinkTimer;
    ComPtr<IVexPicture> m_blinkPicture;
    ChildImage m_child;
    std::array<GraphicBitmap, 2 * kRadioStateCount> m_bitmaps; // by radioLookIndex
};

} // namespace morvane
