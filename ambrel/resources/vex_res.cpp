// Identity, windows, texts and settings of the resource object.
#include "ambrel/resources/vex_res.h"

#include "ambrel/render/colour_filters.h"
#include "ambrel/resources/skin_watch.h"
#include "ambrel/window/tree_walk.h"
#include "ambrel/window/vex_window.h"
#include "frame/com/instance.h"

#include <algorithm>

namespace ambrel {

using morvane::Bstr;
using morvane::ComPtr;
using morvane::filling;
using morvane::guarded;
using morvane::returning;
using morvane::toVariantBool;
using morvane::viewOf;

namespace {

constexpr long kMainVersion = 1;
constexpr long kSubVersion = 0;
constexpr SkinRect kFirstPlace{0, 0, 640, 480}; // of a window that says no size of its own

HRESULT done(VARIANT_BOOL& result, bool worked) noexcept
{
    result = toVariantBool(worked);
    return worked ? S_OK : S_FALSE;
}

} // namespace

VexRes::VexRes() : m_link(static_cast<ResourceOwner*>(this), [](ResourceOwner*) {}) {}
VexRes::~VexRes()
{
    forgetColours(*this);
}

void VexRes::finalRelease()
{
    m_watch.reset();
    m_packageWatch.reset();
    m_link.reset();
}

void* VexRes::findInterface(REFIID iid)
{
    if (iid == IID_IDispatch || iid == morvane::iidOf<IVexRes>())
        return static_cast<IVexRes*>(this);
    if (iid == kIidResourceOwner)
        return static_cast<ResourceOwner*>(this);
    return iid == kIidVexRes ? this : nullptr;
}

VexRes* VexRes::from(IVexRes* resources) noexcept
{
    void* found = nullptr;
    if (!resources || FAILED(resources->QueryInterface(kIidVexRes, &found)))
        return nullptr;
    auto* const object = static_cast<VexRes*>(found);
    object->Release(); // borrowed: lives as long as what it was asked through
    return object;
}

ComPtr<VexRes> VexRes::make()
{
    return morvane::Instance<VexRes>::make();
}

std::vector<ComPtr<RootWindow>> VexRes::windows()
{
    std::erase_if(m_windows, [](const WeakNode& each) { return !each; });
    std::vector<ComPtr<RootWindow>> result;
    for (const WeakNode& each : m_windows) {
        if (RootWindow* root = RootWindow::from(coreOf(*each.get()).face()))
            result.emplace_back(root);
    }
    return result;
}

bool VexRes::anyObject(const std::function<bool(ObjectNode&)>& visit)
{
    for (const ComPtr<RootWindow>& each : windows()) {
        if (walkBeneath(each->node(), visit))
            return true;
    }
    return false;
}

void VexRes::notifyAll(VexMsgID id, hyper lParam1)
{
    anyObject([&](ObjectNode& node) {
        SkinObjectCore& core = coreOf(node);
        const ComPtr<ISkinObjResBase> hold(core.face());
        VexNotify notice{};
        notice.eVexMsgId = id;
        notice.lParam1 = lParam1;
        core.notify(notice);
        return false;
    });
}

void VexRes::redrawAll()
{
    for (const ComPtr<RootWindow>& each : windows())
        each->window().invalidate(each->node().rect());
}

// Windows

STDMETHODIMP VexRes::CreateAmbrel(BSTR name, hyper parent, IDispatch** result) noexcept
{
    return filling(result, [&](IDispatch*& made) {
        if (parent && !IsWindow(reinterpret_cast<HWND>(parent)))
            return E_INVALIDARG;
        const ComPtr<RootWindow> root = RootWindow::make(this, viewOf(name));
        m_windows.emplace_back(&root->node());
        VARIANT_BOOL created = VARIANT_FALSE;
        const HRESULT status = root->Create(parent, kFirstPlace, &created);
        if (FAILED(status))
            return status;
        made = ComPtr<IDispatch>(root.get()).detach();
        return created ? S_OK : E_FAIL;
    });
}

STDMETHODIMP VexRes::GetAmbrelForm(BSTR name, IDispatch** result) noexcept
{
    return filling(result, [&](IDispatch*& found) {
        for (const ComPtr<RootWindow>& each : windows()) {
            if (each->name() == viewOf(name)) {
                found = ComPtr<IDispatch>(each.get()).detach();
                return S_OK;
            }
        }
        return S_FALSE;
    });
}

STDMETHODIMP VexRes::ShowAmbrelWnd(BSTR text, LONG style, LONG windowStyle, ShowWindowFlags flag,
                                   hyper* result) noexcept
{
    return filling(result, [&](hyper& window) {
        const HRESULT status = CreateVexWindow(text, 0, style | windowStyle, &window);
        if (status == S_OK)
            ShowWindow(reinterpret_cast<HWND>(window), flag);
        return status;
    });
}

STDMETHODIMP VexRes::CreateVexWindow(BSTR text, hyper parent, LONG style, hyper* result) noexcept
{
    return filling(result, [&](hyper& window) {
        ComPtr<IDispatch> root;
        const HRESULT status = CreateAmbrel(text, parent, root.put());
        if (status != S_OK)
            return status;
        root.as<IAmbrel>()->GetWindowHandle(&window);
        const auto handle = reinterpret_cast<HWND>(window);
        if (style & WS_CHILD)
            root.as<IAmbrel>()->SetPopWindow(VARIANT_FALSE);
        SetWindowLongPtrW(handle, GWL_STYLE, GetWindowLongPtrW(handle, GWL_STYLE) | style);
        return S_OK;
    });
}

STDMETHODIMP VexRes::CreateEdit(BSTR text, hyper parent, LONG style, LONG x, LONG y, LONG cx, LONG cy,
                                hyper* result) noexcept
{
    return filling(result, [&](hyper& window) {
        // Windows lie within 16 bits; a system may take minutes over larger ones.
        const auto within = [](LONG given) { return static_cast<int>(std::clamp<LONG>(given, -0x7FFF, 0x7FFF)); };
        window = reinterpret_cast<hyper>(CreateWindowExW(
            0, L"EDIT", std::wstring(viewOf(text)).c_str(), static_cast<DWORD>(style) | WS_CHILD, within(x), within(y),
            within(cx), within(cy), reinterpret_cast<HWND>(parent), nullptr, GetModuleHandleW(nullptr), nullptr));
        return window ? S_OK : S_FALSE;
    });
}

STDMETHODIMP VexRes::GetVexWindow(IVexWindow** result) noexcept
{
    return returning(result, [] { return makeVexWindow(); });
}

STDMETHODIMP VexRes::RedrawAllControls(VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& redrawn) {
        redrawAll();
        return done(redrawn, !m_windows.empty());
    });
}

// Design status

STDMETHODIMP VexRes::IsDesignStatus(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_design; });
}

STDMETHODIMP VexRes::SetDesignStatus(VARIANT_BOOL design, VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& changed) {
        const bool before = std::exchange(m_design, design != VARIANT_FALSE);
        if (before == m_design)
            return done(changed, false);
        const ComPtr<IVexRes> hold(this);
        notifyAll(VEXSM_DESIGNSTATUSCHANGED, m_design);
        redrawAll();
        return done(changed, true);
    });
}

// Events

STDMETHODIMP VexRes::GetEventHandle(IVexEvents** result) noexcept
{
    return filling(result, [](IVexEvents*&) { return S_FALSE; }); // nothing of this runtime's goes through a sink
}
STDMETHODIMP VexRes::AddScriptObjects(hyper, VARIANT_BOOL* result) noexcept
{
    return filling(result, [](VARIANT_BOOL&) { return E_NOTIMPL; });
}
STDMETHODIMP VexRes::CallScripEvent(BSTR, LONG, hyper, hyper, LONG, VARIANT_BOOL* result) noexcept
{
    return filling(result, [](VARIANT_BOOL&) { return E_NOTIMPL; });
}

// Dragging

STDMETHODIMP VexRes::SetDragInfo(VEX_DRAGINFO info) noexcept
{
    // Objects keep their resources: kept weakly, a drag that never ends keeps nothing alive.
    const auto nodeOf = [](ISkinObjResBase* object) {
        SkinObjectCore* const core = coreOf(object);
        return core ? &core->node() : nullptr;
    };
    m_dragFrom.reset(nodeOf(info.pFromObj));
    m_dragTo.reset(nodeOf(info.pToObj));
    m_dragInfo = info;
    return S_OK;
}
STDMETHODIMP VexRes::GetDragInfo(VEX_DRAGINFO* result) noexcept
{
    return returning(result, [&] {
        VEX_DRAGINFO info = m_dragInfo;
        info.pFromObj = faceOf(m_dragFrom.get()).detach();
        info.pToObj = faceOf(m_dragTo.get()).detach();
        return info;
    });
}
STDMETHODIMP VexRes::SetDrag(VARIANT_BOOL drag) noexcept
{
    m_drags = drag != VARIANT_FALSE;
    return S_OK;
}
STDMETHODIMP VexRes::GetDrag(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_drags; });
}

// Colour cases

STDMETHODIMP VexRes::GetColorCaseCount(LONG* result) noexcept
{
    return returning(result, [&] { return m_colorCases.count(); });
}
STDMETHODIMP VexRes::GetCurColorCaseName(BSTR* result) noexcept
{
    return returning(result, [&] {
        const auto* current = m_colorCases.current();
        return Bstr(current ? std::wstring_view(current->name) : std::wstring_view());
    });
}

namespace {
HRESULT giveCase(const ColorCases::Case* found, VEX_COLORCASE* result) noexcept
{
    return filling(result, [&](VEX_COLORCASE& record) {
        if (!found)
            return S_FALSE;
        record = ColorCases::toRecord(*found);
        return S_OK;
    });
}
} // namespace

STDMETHODIMP VexRes::GetCurColorCase(VEX_COLORCASE* result) noexcept
{
    return giveCase(m_colorCases.current(), result);
}
STDMETHODIMP VexRes::GetColorCase(BSTR name, VEX_COLORCASE* result) noexcept
{
    return giveCase(m_colorCases.find(viewOf(name)), result);
}
STDMETHODIMP VexRes::GetFirstColorCase(VEX_COLORCASE* result) noexcept
{
    return giveCase(m_colorCases.first(), result);
}
STDMETHODIMP VexRes::GetNextColorCase(VEX_COLORCASE* result) noexcept
{
    return giveCase(m_colorCases.next(), result);
}

STDMETHODIMP VexRes::AddColorCase(BSTR name, VEX_COLORCASE* record) noexcept
{
    if (!record)
        return E_POINTER;
    return guarded([&] {
        const std::wstring_view called = viewOf(name).empty() ? viewOf(record->strName) : viewOf(name);
        if (called.empty())
            return E_INVALIDARG; // no name stands for no case
        m_colorCases.add(called, *record);
        showColorCase();
        return S_OK;
    });
}
STDMETHODIMP VexRes::RemoveColorCase(BSTR name, VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& removed) {
        const bool had = m_colorCases.remove(viewOf(name));
        if (had)
            showColorCase();
        return done(removed, had);
    });
}
STDMETHODIMP VexRes::SetCurColorCase(BSTR name, VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& changed) {
        const bool chosen = m_colorCases.choose(viewOf(name));
        if (chosen)
            showColorCase();
        return done(changed, chosen);
    });
}

void VexRes::showColorCase()
{
    const auto* const current = m_colorCases.current();
    const auto tint = current ? ColorCases::tintOf(*current) : std::nullopt;
    if (tint == m_tint)
        return;
    tintSkin(*this, tint);
    m_tint = tint;
    redrawAll();
}

// Hue, saturation and blend run from 0 to 255, as in colour cases; shifts from -255 to 255.

STDMETHODIMP VexRes::AddColorFilterColorize(short hue, short saturation, short blend, VARIANT_BOOL* result) noexcept
{
    const auto isByte = [](short value) { return value >= 0 && value <= 255; };
    return filling(result, [&](VARIANT_BOOL& added) {
        if (!isByte(hue) || !isByte(saturation) || !isByte(blend))
            return E_INVALIDARG;
        addColourFilter(*this, Colourise{hue * 360 / 256, saturation, blend});
        redrawAll();
        return done(added, true);
    });
}
STDMETHODIMP VexRes::AddColorFilterShiftRGB(short red, short green, short blue, VARIANT_BOOL* result) noexcept
{
    const auto isShift = [](short value) { return value >= -255 && value <= 255; };
    return filling(result, [&](VARIANT_BOOL& added) {
        if (!isShift(red) || !isShift(green) || !isShift(blue))
            return E_INVALIDARG;
        addColourFilter(*this, ChannelShift{red, green, blue});
        redrawAll();
        return done(added, true);
    });
}
STDMETHODIMP VexRes::RemoveColorFilters(VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& removed) {
        const bool had = removeColourFilters(*this);
        if (had)
            redrawAll();
        return done(removed, had);
    });
}

// The platform's own controls are not skinned.
STDMETHODIMP VexRes::SetUseSkin(SKINCTRL_CLASSTYPE, VARIANT_BOOL) noexcept
{
    return E_NOTIMPL;
}
STDMETHODIMP VexRes::IsUseSkin(SKINCTRL_CLASSTYPE, VARIANT_BOOL* result) noexcept
{
    return returning(result, [] { return false; });
}
STDMETHODIMP VexRes::SetSkinHwnd(hyper, VARIANT_BOOL) noexcept
{
    return E_NOTIMPL;
}
STDMETHODIMP VexRes::SetNoSkinHwnd(hyper, VARIANT_BOOL) noexcept
{
    return S_FALSE;
}
STDMETHODIMP VexRes::IsNoSkinHwnd(hyper, VARIANT_BOOL* result) noexcept
{
    return returning(result, [] { return true; });
}
STDMETHODIMP VexRes::SetAutoUseSkin(VARIANT_BOOL) noexcept
{
    return E_NOTIMPL;
}

// Odds and ends

STDMETHODIMP VexRes::SetVexResObjPtr(hyper pointer) noexcept
{
    m_objectPointer = pointer;
    return S_OK;
}
STDMETHODIMP VexRes::GetVexResObjPtr(hyper* result) noexcept
{
    return returning(result, [&] {
        return m_objectPointer ? m_objectPointer : reinterpret_cast<hyper>(static_cast<IVexRes*>(this));
    });
}
STDMETHODIMP VexRes::CreateVexResObj(LONG* result) noexcept
{
    return filling(result, [](LONG&) { return E_NOTIMPL; }); // a number of 32 bits cannot name an object
}
STDMETHODIMP VexRes::CloseVexResObj(VARIANT_BOOL* result) noexcept
{
    return CloseSkin(result);
}
STDMETHODIMP VexRes::SetDynClearZipInfo(VARIANT_BOOL clear) noexcept
{
    m_clearsPackages = clear != VARIANT_FALSE;
    return S_OK;
}
STDMETHODIMP VexRes::IsDynClearZipInfo(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_clearsPackages; });
}
STDMETHODIMP VexRes::IsPerpixelDraw(VARIANT_BOOL* result) noexcept
{
    return returning(result, [] { return true; });
}
STDMETHODIMP VexRes::GetVersion(LONG* main, LONG* sub) noexcept
{
    if (!main || !sub)
        return E_POINTER;
    *main = kMainVersion;
    *sub = kSubVersion;
    return S_OK;
}
STDMETHODIMP VexRes::SetSkinEncryptPassword(BSTR) noexcept
{
    return E_NOTIMPL;
} // packages are not encrypted

} // namespace ambrel
