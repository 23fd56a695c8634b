#include "ambrel/window/root_window.h"

#include "frame/com/instance.h"

namespace ambrel {

using morvane::toVariantBool;

namespace {

/// Only dots per inch and the system's own limit the other direction: a window of this size can be made anywhere.
bool isPossible(const Rect& rect) noexcept
{
    constexpr int kLargest = 32767;
    return rect.width() >= 0 && rect.height() >= 0 && rect.width() <= kLargest && rect.height() <= kLargest;
}

} // namespace

ComPtr<RootWindow> RootWindow::make(IVexRes* resources, std::wstring_view name)
{
    ComPtr<RootWindow> root = morvane::Instance<RootWindow>::make();
    root->setResources(resources);
    root->setName(name);
    return root;
}

RootWindow* RootWindow::from(IUnknown* root) noexcept
{
    return dynamic_cast<RootWindow*>(coreOf(root));
}

RootWindow* RootWindow::of(HWND window) noexcept
{
    for (; window; window = GetAncestor(window, GA_PARENT)) {
        // Others may have a property of the name, and in theirs the value is no address of ours.
        if (GetWindowThreadProcessId(window, nullptr) != GetCurrentThreadId())
            return nullptr;
        if (auto* const root = static_cast<IAmbrel*>(GetPropW(window, kRootProperty)))
            return from(root);
    }
    return nullptr;
}

void RootWindow::finalRelease()
{
    m_core.destroy();
    releaseTree();
}

void RootWindow::sizeChanged()
{
    m_core.invalidate(node().rect());
}

HRESULT RootWindow::setTrait(bool& trait, VARIANT_BOOL on) noexcept
{
    return guarded([&] {
        if (trait == (on != VARIANT_FALSE))
            return S_FALSE;
        trait = on != VARIANT_FALSE;
        m_core.applyTraits();
        return S_OK;
    });
}

STDMETHODIMP RootWindow::Create(hyper parent, SkinRect rect, VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& created) {
        const auto owner = reinterpret_cast<HWND>(parent);
        const Rect place = morvane::toRect(rect);
        if ((owner && !IsWindow(owner)) || !isPossible(place))
            return E_INVALIDARG;
        const ComPtr<IAmbrel> hold(this);
        if (m_core.window()) // made already: it takes the new place
            created = toVariantBool(m_core.moveInto(owner, place));
        else
            created = toVariantBool(m_core.create(owner, place));
        return created ? S_OK : S_FALSE;
    });
}

STDMETHODIMP RootWindow::SetName(BSTR text) noexcept
{
    return guarded([&] {
        setName(morvane::viewOf(text));
        if (m_core.window())
            ::SetWindowTextW(m_core.window(), std::wstring(name()).c_str());
    });
}

// Showing

STDMETHODIMP RootWindow::SetVisible(VARIANT_BOOL visible, VARIANT_BOOL refresh, VARIANT_BOOL animate) noexcept
{
    return held([&] {
        setVisible(visible != VARIANT_FALSE, refresh != VARIANT_FALSE);
        if (m_core.window() && animate != VARIANT_FALSE)
            m_core.fade(visible != VARIANT_FALSE, VEX_FADE_IN);
        else if (m_core.window())
            ::ShowWindow(m_core.window(), visible != VARIANT_FALSE ? SW_SHOW : SW_HIDE);
    });
}

STDMETHODIMP RootWindow::SetVisibleEx(VARIANT_BOOL visible, VARIANT_BOOL refresh, VARIANT_BOOL animate) noexcept
{
    return held([&] {
        ChildIteration children(node());
        while (ObjectNode* child = children.next()) {
            const ComPtr<ISkinObjResBase> object = faceOf(child);
            if (object)
                object->SetVisibleEx(visible, VARIANT_FALSE, VARIANT_FALSE);
        }
        return SetVisible(visible, refresh, animate);
    });
}

STDMETHODIMP RootWindow::IsVisible(VARIANT_BOOL* result) noexcept
{
    // A window is also shown and hidden by others.
    return returning(result, [&] {
        return m_core.window() ? IsWindowVisible(m_core.window()) != FALSE : node().has(NodeFlag::Visible);
    });
}

STDMETHODIMP RootWindow::FadeShow(VARIANT_BOOL show, VEX_FADE_TYPE type) noexcept
{
    return held([&] {
        if (!m_core.window())
            return S_FALSE;
        m_core.fade(show != VARIANT_FALSE, type);
        return S_OK;
    });
}

STDMETHODIMP RootWindow::SetOpacity(short opacity) noexcept
{
    return guarded([&] {
        setOpacity(opacity);
        m_core.applyTraits();
    });
}

// Its size: the rectangle of a root is the client area of its window.

STDMETHODIMP RootWindow::ResizeSence(short width, short height) noexcept
{
    if (width < 0 || height < 0)
        return E_INVALIDARG;
    return held([&] { return m_core.resizeWindow({width, height}) ? S_OK : S_FALSE; });
}

STDMETHODIMP RootWindow::Resize(SkinRect* rect, long* result) noexcept
{
    return filling(result, [&](long& changed) {
        if (!rect)
            return E_POINTER;
        const ComPtr<IAmbrel> hold(this);
        const Rect place = morvane::toRect(*rect);
        if (!isPossible(place))
            return E_INVALIDARG;
        if (place.size() == node().rect().size())
            return S_FALSE;
        if (!m_core.resizeWindow(place.size()))
            moveTo(Rect::at({}, place.size()));
        changed = 1;
        return S_OK;
    });
}

STDMETHODIMP RootWindow::SetRect(IVexRect* rect) noexcept
{
    if (!rect)
        return E_POINTER;
    SkinRect record{};
    long changed = 0;
    const HRESULT status = rect->GetRectStruct(&record);
    return SUCCEEDED(status) ? SUCCEEDED(Resize(&record, &changed)) ? S_OK : E_INVALIDARG : status;
}

STDMETHODIMP RootWindow::Center() noexcept
{
    return held([&] { return m_core.centre() ? S_OK : S_FALSE; });
}

STDMETHODIMP RootWindow::SetResizeBorder(SkinRect border) noexcept
{
    if (border.left < 0 || border.top < 0 || border.right < 0 || border.bottom < 0)
        return E_INVALIDARG;
    traits().resizeBorder = border;
    return S_OK;
}

STDMETHODIMP RootWindow::SetPopWindow(VARIANT_BOOL popup) noexcept
{
    return held([&] {
        keep(traits().popup, popup);
        m_core.applyParent();
    });
}

// Its shape and frame

STDMETHODIMP RootWindow::SetRgn(VARIANT_BOOL on) noexcept
{
    keep(traits().shaped, on);
    return ReCalcRgn();
}

STDMETHODIMP RootWindow::ReCalcRgn() noexcept
{
    return guarded([&] { m_core.updateShape(); });
}

STDMETHODIMP RootWindow::AddNCRgn(VEX_NCRGNTYPE type, IVexSkinSubRgn* region, VARIANT_BOOL* result) noexcept
{
    return answering(result, [&] { return m_core.frameRegions().add(type, region); });
}

STDMETHODIMP RootWindow::RemoveNCRgn(VEX_NCRGNTYPE type, BSTR name, VARIANT_BOOL* result) noexcept
{
    return answering(result, [&] { return m_core.frameRegions().remove(type, morvane::viewOf(name)); });
}

STDMETHODIMP RootWindow::RemoveAllNCRgns(VEX_NCRGNTYPE type, VARIANT_BOOL* result) noexcept
{
    return answering(result, [&] { return m_core.frameRegions().removeAll(type); });
}

STDMETHODIMP RootWindow::DestroyRgnInfo(VARIANT_BOOL* result) noexcept
{
    return answering(result, [&] { return m_core.frameRegions().clear(); });
}

// Windows that move along

STDMETHODIMP RootWindow::RegSyncMoveWindow(hyper window, IVexControlBase* control) noexcept
{
    return guarded([&] {
        if (!IsWindow(reinterpret_cast<HWND>(window)))
            return S_FALSE;
        SkinObjectCore* const core = coreOf(control);
        if ((control && !core) || reinterpret_cast<HWND>(window) == m_core.window())
            return E_INVALIDARG;
        m_core.followMoves(reinterpret_cast<HWND>(window), core ? &core->node() : nullptr);
        return S_OK;
    });
}

STDMETHODIMP RootWindow::UnRegSyncMoveWindow(hyper window) noexcept
{
    return m_core.unfollowMoves(reinterpret_cast<HWND>(window)) ? S_OK : S_FALSE;
}

STDMETHODIMP RootWindow::SynMoveWindow() noexcept
{
    return held([&] { m_core.moveFollowers(); });
}

} // namespace ambrel
