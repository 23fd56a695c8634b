// The strange host's other objects: what a control meets besides its inner base object and its properties.
#pragma once

#include "tests/strange_host/stubs.h" // generated

#include <set>

namespace morvane::testing {

class RectObject final : public IVexRectStub<IVexRect> {
public:
    RectObject(Ledger& ledger, const SkinRect& rect) : IVexRectStub(ledger), m_rect(rect) {}
    STDMETHODIMP GetRectStruct(SkinRect* result) override;

private:
    SkinRect m_rect;
};

class PositionObject final : public IVexPosStub<IVexPos> {
public:
    explicit PositionObject(Ledger& ledger, const VexPosition& initial = {}) : IVexPosStub(ledger), record(initial) {}
    STDMETHODIMP GetPosStruct(VexPosition* result) override;
    STDMETHODIMP SetPosStruct(VexPosition newRecord) override;

    VexPosition record;
};

/// Measures seven pixels a character and fourteen a line, whatever the rectangle.
class TextStyle final : public IVexTextStyleStub<IVexTextStyle> {
public:
    using IVexTextStyleStub::IVexTextStyleStub;
    STDMETHODIMP get_nHAlign(short* result) override;
    STDMETHODIMP get_nLeftOffset(short* result) override;
    STDMETHODIMP get_nRightOffset(short* result) override;
    STDMETHODIMP DrawText(hyper dc, BSTR text, SkinRect rect, VARIANT_BOOL draw, long format, SkinRect* extent,
                          VARIANT_BOOL* result) override;
};

/// The framework root. Registered window messages are remembered with the object they go to.
class Root final : public IAmbrelStub<IAmbrel> {
public:
    using IAmbrelStub::IAmbrelStub;
    STDMETHODIMP GetWindowHandle(hyper* result) override;
    STDMETHODIMP GetRenderDevice(hyper* result) override;
    STDMETHODIMP GetRenderEngine(VEX_RENDERENGINE_TYPE* result) override;
    STDMETHODIMP RegisterMessage(unsigned long message, ISkinObjResBase* object, VARIANT_BOOL children,
                                 VARIANT_BOOL* result) override;
    STDMETHODIMP UnRegisterMessage(unsigned long message, ISkinObjResBase* object, VARIANT_BOOL* result) override;
    STDMETHODIMP GetCurrentFocusObject(ISkinObjResBase** result) override;
    STDMETHODIMP VexMessage(hyper window, long message, hyper wParam, hyper lParam) override;

    HWND window = nullptr;
    hyper device = 0x0DE71CE;
    ComPtr<ISkinObjResBase> focused;
    std::multiset<std::pair<unsigned long, ISkinObjResBase*>> registered; // objects are borrowed
};

/// The skin's resource object.
class Res final : public IVexResStub<IVexRes> {
public:
    using IVexResStub::IVexResStub;
    STDMETHODIMP IsDesignStatus(VARIANT_BOOL* result) override;
    STDMETHODIMP ImportSkin(hyper module, long resource, BSTR type, hyper parent, IVexControlBase** result) override;

    VARIANT_BOOL designStatus = VARIANT_FALSE;
    hyper importedFrom = 0;
};

class ObjectDraw final : public IVexObjectDrawStub<IVexObjectDraw> {
public:
    using IVexObjectDrawStub::IVexObjectDrawStub;
    STDMETHODIMP GetDC(VARIANT_BOOL blend, hyper* result) override;

    hyper dc = 0;
};

class RenderDc final : public IVexRenderDCStub<IVexRenderDC> {
public:
    using IVexRenderDCStub::IVexRenderDCStub;
};

/// A group of a property table.
class Group final : public ICtrlPluginPropStub<ICtrlPluginProp> {
public:
    Group(Ledger& ledger, std::wstring fullName) : ICtrlPluginPropStub(ledger), path(std::move(fullName)) {}

    const std::wstring path; // the names from the top, with dots between
};

} // namespace morvane::testing
