#include "tests/strange_host/base_object.h"

#include "frame/com/bstr.h"
#include "tests/strange_host/text.h"

namespace morvane::testing {

STDMETHODIMP BaseObject::SetRealCtrlPtr(IVexControlBase* control)
{
    realControl = control;
    note(control ? "real control" : "no real control");
    return S_OK;
}

STDMETHODIMP BaseObject::GetRealCtrlPtr(IVexControlBase** result)
{
    return give(result, ComPtr<IVexControlBase>(realControl));
}

STDMETHODIMP BaseObject::GetName(BSTR* result)
{
    called();
    *result = isEmptyHanded ? nullptr : Bstr(objectName).detach();
    return S_OK;
}

STDMETHODIMP BaseObject::GetParent(ISkinObjResBase** result)
{
    return give(result, ComPtr<ISkinObjResBase>(treeParent));
}
STDMETHODIMP BaseObject::GetRoot(ISkinObjResBase** result)
{
    return give(result, ComPtr<ISkinObjResBase>(treeRoot));
}
STDMETHODIMP BaseObject::GetChildCount(short* result)
{
    return answer(result, static_cast<short>(children.size()));
}

STDMETHODIMP BaseObject::GetSubObject(short index, ISkinObjResBase** result)
{
    const auto place = static_cast<std::size_t>(index);
    return give(result, ComPtr<ISkinObjResBase>(place < children.size() ? children[place] : nullptr));
}

STDMETHODIMP BaseObject::SetDragabledProp(VARIANT_BOOL drag)
{
    note(drag ? "draggable" : "not draggable");
    draggable = drag;
    return S_OK;
}

STDMETHODIMP BaseObject::GetInerface(hyper iid, IDispatch** result)
{
    called();
    *result = nullptr;
    if (isBroken || isEmptyHanded)
        return isBroken ? E_FAIL : S_OK;
    return QueryInterface(*reinterpret_cast<const IID*>(iid), reinterpret_cast<void**>(result));
}

STDMETHODIMP BaseObject::GetVexRes(IVexRes** result)
{
    return give(result, res);
}
STDMETHODIMP BaseObject::GetXMLNode(hyper* result)
{
    return answer(result, configNode);
}
STDMETHODIMP BaseObject::GetAmbrel(IDispatch** result)
{
    return give(result, ComPtr<IDispatch>(root.get()));
}

STDMETHODIMP BaseObject::GetRect(IVexRect** result)
{
    return give(result, ComPtr<IVexRect>(ledger().make<RectObject>(rect)));
}

STDMETHODIMP BaseObject::GetPosition(IVexPos** result)
{
    return give(result, ComPtr<IVexPos>(ledger().make<PositionObject>(position)));
}

STDMETHODIMP BaseObject::SetPosition(IVexPos* newPosition)
{
    note("position");
    return newPosition->GetPosStruct(&position);
}

STDMETHODIMP BaseObject::ResizeThis()
{
    note("resize");
    return S_OK;
}

STDMETHODIMP BaseObject::SetMouseMove(VARIANT_BOOL over)
{
    note(over ? "mouse over" : "mouse gone");
    mouseOver = over;
    return S_OK;
}

STDMETHODIMP BaseObject::DirectRedraw(SkinRect* part)
{
    note(part ? "redraw " + toText(*part) : "redraw");
    if (const auto run = onRedraw) // it may take itself away
        run();
    return isBroken ? E_FAIL : S_OK;
}

STDMETHODIMP BaseObject::RenderDrawFocus(IVexRenderDC*)
{
    note("draw focus");
    return S_OK;
}

STDMETHODIMP BaseObject::CallMsg(long message, hyper wParam, hyper lParam, VARIANT_BOOL* result)
{
    const bool isControl = reinterpret_cast<IVexControlBase*>(wParam) == realControl;
    note("callback " + std::to_string(message) + (isControl ? " control " : " stranger ") + hex(lParam));
    if (isBroken)
        return E_FAIL;
    if (onCallback)
        onCallback(message);
    *result = callbackAnswer;
    return S_OK;
}

STDMETHODIMP BaseObject::CallEvent(long message, hyper wParam, hyper lParam)
{
    note("event " + std::to_string(message) + " " + hex(wParam) + " " + hex(lParam));
    return S_OK;
}

STDMETHODIMP BaseObject::CreateGroupProp(ICtrlPluginProp* parent, BSTR name, VARIANT_BOOL expanded,
                                         ICtrlPluginProp** result)
{
    called();
    *result = nullptr;
    if (isBroken || isEmptyHanded)
        return isBroken ? E_FAIL : S_OK;
    std::wstring path(viewOf(name));
    if (const auto* group = dynamic_cast<Group*>(parent))
        path = group->path + L"." + path;
    if (expanded != VARIANT_TRUE)
        note("collapsed group");
    groups.push_back(path);
    *result = ledger().make<Group>(path).detach();
    return S_OK;
}

STDMETHODIMP BaseObject::CreateProp(ICtrlPluginProp* group, enumPropType type, BSTR name, BSTR help,
                                    VARIANT_BOOL isStyle, IPropChangedCallback* callback, IVexPropBase** result)
{
    called();
    *result = nullptr;
    if (isBroken || properties.size() >= propertiesAllowed)
        return E_OUTOFMEMORY;
    if (isEmptyHanded)
        return S_OK;
    const auto* owner = dynamic_cast<Group*>(group);
    if (!owner || !help || !viewOf(help).empty() || callback)
        note("odd property");
    MadeProperty made{owner ? owner->path : L"", std::wstring(viewOf(name)), type, isStyle == VARIANT_TRUE, {}};
    made.object = makePropertyObject(ledger(), type, narrow(made.group + L"." + made.name));
    made.object.copyTo(result);
    properties.push_back(std::move(made));
    return S_OK;
}

IVexPropBase* BaseObject::findAny(std::wstring_view group, std::wstring_view name) const
{
    for (const MadeProperty& property : properties)
        if (property.group == group && property.name == name)
            return property.object.get();
    return nullptr;
}

void BaseObject::lastRelease()
{
    properties.clear();
    root.reset();
    res.reset();
}

} // namespace morvane::testing
