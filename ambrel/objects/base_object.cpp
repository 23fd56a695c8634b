#include "ambrel/objects/base_object.h"

#include "ambrel/objects/display_list.h"
#include "ambrel/objects/hooks.h"
#include "ambrel/trace/trace.h"

namespace ambrel {

namespace {

/// A copy of a text that a control lent through a notification; the empty string for null.
Bstr textOf(const wchar_t* text)
{
    return Bstr(text ? std::wstring_view(text) : std::wstring_view());
}

} // namespace

HRESULT createBaseObject(IUnknown* outer, REFIID iid, void** result) noexcept
{
    return morvane::Instance<BaseObject>::create(outer, iid, result);
}

BaseObject::BaseObject() noexcept : SkinObject(VEXOBJTYPE_PLUGIN) {}
BaseObject::~BaseObject() = default;

HRESULT BaseObject::finalConstruct() noexcept
{
    return S_OK;
}

void BaseObject::finalRelease() noexcept
{
    // The control is going or gone: nothing is sent to it any more.
    m_realControl = nullptr;
    if (m_node.has(NodeFlag::Hooks))
        Hooks::instance().forget(m_node);
    setGroupsOwner(nullptr);
    releaseTree();
}

bool BaseObject::notify(VexNotify& notice)
{
    const ComPtr<IVexControlBase> hold(control());
    const long id = notice.eVexMsgId ? static_cast<long>(notice.eVexMsgId) : notice.eWinMsgId;
    trace(AMBREL_TRACE_NOTIFICATION, hold.get(), id, notice.lParam2, notice.lParam3);
    VARIANT_BOOL handled = VARIANT_FALSE;
    hold->EventNotify(&notice, &handled);
    return handled != VARIANT_FALSE;
}

bool BaseObject::tell(VexMsgID id, hyper lParam1, hyper lParam2, hyper lParam3)
{
    VexNotify notice{};
    notice.eVexMsgId = id;
    notice.lParam1 = lParam1;
    notice.lParam2 = lParam2;
    notice.lParam3 = lParam3;
    return notify(notice);
}

const wchar_t* BaseObject::askText(VexMsgID id)
{
    const wchar_t* text = nullptr;
    return tell(id, reinterpret_cast<hyper>(&text)) ? text : nullptr;
}

Bstr BaseObject::defaultTypeName()
{
    return textOf(askText(VEXSM_GETCONTROLTYPENAME));
}

STDMETHODIMP BaseObject::SetRealCtrlPtr(IVexControlBase* control) noexcept
{
    m_realControl = control;
    if (m_treeReference) // the parent holds what the outside sees
        m_treeReference = ComPtr<ISkinObjResBase>(face());
    return S_OK;
}

STDMETHODIMP BaseObject::GetRealCtrlPtr(IVexControlBase** result) noexcept
{
    return finding(result, [&] { return ComPtr<IVexControlBase>(m_realControl); });
}

STDMETHODIMP BaseObject::GetInerface(hyper iid, IDispatch** result) noexcept
{
    if (!result)
        return E_POINTER;
    *result = nullptr;
    if (!iid)
        return E_INVALIDARG;
    // The base object's own interfaces: a control keeps them without keeping itself alive.
    return QueryInterface(*reinterpret_cast<const IID*>(iid), reinterpret_cast<void**>(result));
}

STDMETHODIMP BaseObject::GetControlTypeName(BSTR* result) noexcept
{
    return returning(result, [&] { return defaultTypeName(); });
}

STDMETHODIMP BaseObject::GetCategoryName(BSTR* result) noexcept
{
    return returning(result, [&] { return textOf(askText(VEXSM_GETCATEGORYNAME)); });
}

STDMETHODIMP BaseObject::GetAuthorInfo(BSTR* author, BSTR* company, BSTR* url, BSTR* version) noexcept
{
    BSTR* const results[] = {author, company, url, version};
    for (BSTR* result : results) {
        if (!result)
            return E_POINTER;
        *result = nullptr;
    }
    return guarded([&] {
        const wchar_t* texts[4] = {};
        const bool answered = tell(VEXSM_GETAUTHORINFO, reinterpret_cast<hyper>(texts));
        Bstr copies[4];
        for (int i = 0; i < 4; ++i)
            copies[i] = textOf(answered ? texts[i] : nullptr);
        for (int i = 0; i < 4; ++i)
            *results[i] = copies[i].detach();
        return answered ? S_OK : S_FALSE;
    });
}

STDMETHODIMP BaseObject::GetControlIcon(int width, int height, hyper* result) noexcept
{
    return filling(result, [&](hyper& icon) {
        HICON made = nullptr;
        const bool answered = tell(VEXSM_GETCONTROLICON, width, height, reinterpret_cast<hyper>(&made));
        icon = reinterpret_cast<hyper>(made);
        return answered ? S_OK : S_FALSE;
    });
}

STDMETHODIMP BaseObject::GetDragCursor(hyper* result) noexcept
{
    return filling(result, [&](hyper& cursor) {
        HCURSOR made = nullptr;
        const bool answered = tell(VEXSM_GETDRAGCURSOR, reinterpret_cast<hyper>(&made));
        cursor = reinterpret_cast<hyper>(made);
        return answered ? S_OK : S_FALSE;
    });
}

STDMETHODIMP BaseObject::GetFilePath(BSTR* result) noexcept
{
    return returning(result, [] {
        wchar_t path[MAX_PATH] = {};
        const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH - 1);
        return Bstr(std::wstring_view(path, length));
    });
}

STDMETHODIMP BaseObject::SetClassId(BSTR id) noexcept
{
    return guarded([&] { belongings().classId = morvane::viewOf(id); });
}

STDMETHODIMP BaseObject::GetClassId(BSTR* result) noexcept
{
    return returning(result, [&] { return Bstr(m_belongings ? m_belongings->classId : std::wstring()); });
}

STDMETHODIMP BaseObject::SetCursorPtr(IVexCursor* cursor) noexcept
{
    return guarded([&] { belongings().cursor = ComPtr<IVexCursor>(cursor); });
}

STDMETHODIMP BaseObject::GetCursorPtr(IVexCursor** result) noexcept
{
    return finding(result, [&] { return m_belongings ? m_belongings->cursor : ComPtr<IVexCursor>(); });
}

STDMETHODIMP BaseObject::SetHotkeyPtr(IVexHotkey* first, IVexHotkey* second) noexcept
{
    return guarded([&] {
        m_node.set(NodeFlag::NoHotKeys, false);
        belongings().hotkeys[0] = ComPtr<IVexHotkey>(first);
        belongings().hotkeys[1] = ComPtr<IVexHotkey>(second);
    });
}

STDMETHODIMP BaseObject::GetHotkeyPtr(IVexHotkey** first, IVexHotkey** second) noexcept
{
    if (!first || !second)
        return E_POINTER;
    *first = *second = nullptr;
    if (!m_belongings)
        return S_FALSE;
    m_belongings->hotkeys[0].copyTo(first);
    m_belongings->hotkeys[1].copyTo(second);
    return *first || *second ? S_OK : S_FALSE;
}

STDMETHODIMP BaseObject::SetBackEnterHotkey(VARIANT_BOOL backspace, VARIANT_BOOL enter) noexcept
{
    if (!m_belongings && backspace == VARIANT_FALSE && enter == VARIANT_FALSE)
        return S_OK;
    return guarded([&] {
        belongings().pressedByBackspace = backspace != VARIANT_FALSE;
        belongings().pressedByEnter = enter != VARIANT_FALSE;
    });
}

STDMETHODIMP BaseObject::GetBackEnterHotkey(VARIANT_BOOL* backspace, VARIANT_BOOL* enter) noexcept
{
    if (!backspace || !enter)
        return E_POINTER;
    *backspace = morvane::toVariantBool(m_belongings && m_belongings->pressedByBackspace);
    *enter = morvane::toVariantBool(m_belongings && m_belongings->pressedByEnter);
    return S_OK;
}

STDMETHODIMP BaseObject::VexSetToolTip(BSTR text) noexcept
{
    return guarded([&] {
        belongings().toolTip = morvane::viewOf(text);
        if (RootServices* const window = services())
            window->toolTipChanged(m_node);
    });
}

STDMETHODIMP BaseObject::VexGetToolTip(BSTR* result) noexcept
{
    return returning(result, [&] { return Bstr(m_belongings ? m_belongings->toolTip : std::wstring()); });
}

STDMETHODIMP BaseObject::IsDragabled(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] {
        VARIANT_BOOL answer = VARIANT_FALSE;
        tell(VEXSM_ISDRAGABLED, reinterpret_cast<hyper>(&answer));
        // What the application set for this object counts as much as what its kind of control says.
        return answer != VARIANT_FALSE || m_node.has(NodeFlag::Dragable);
    });
}

BaseObject::Belongings& BaseObject::belongings()
{
    if (!m_belongings)
        m_belongings = std::make_unique<Belongings>();
    return *m_belongings;
}

} // namespace ambrel
