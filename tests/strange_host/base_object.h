// The strange host's inner base object.
#pragma once

#include "tests/strange_host/host_objects.h"
#include "tests/strange_host/property_objects.h"

#include <functional>

namespace morvane::testing {

/// A property that a control made.
struct MadeProperty {
    std::wstring group;
    std::wstring name;
    enumPropType type;
    bool isStyle;
    ComPtr<IVexPropBase> object;
};

/// Does what the contract asks of the inner base object for the operations that the frame of a control uses, and notes
/// what a control makes happen. It is what tests say it is: rectangle, flags, root and skin are plain members.
class BaseObject final : public IVexControlBaseStub<IVexControlBase> {
public:
    using IVexControlBaseStub::IVexControlBaseStub;

    // The control behind it
    STDMETHODIMP SetRealCtrlPtr(IVexControlBase* control) override;
    STDMETHODIMP GetRealCtrlPtr(IVexControlBase** result) override;

    // Its place in the tree
    STDMETHODIMP GetName(BSTR* result) override;
    STDMETHODIMP GetParent(ISkinObjResBase** result) override;
    STDMETHODIMP GetRoot(ISkinObjResBase** result) override;
    STDMETHODIMP GetChildCount(short* result) override;
    STDMETHODIMP GetSubObject(short index, ISkinObjResBase** result) override;

    // The object's surroundings
    STDMETHODIMP GetInerface(hyper iid, IDispatch** result) override;
    STDMETHODIMP GetVexRes(IVexRes** result) override;
    STDMETHODIMP GetXMLNode(hyper* result) override;
    STDMETHODIMP GetAmbrel(IDispatch** result) override;

    // Place and state
    STDMETHODIMP GetRect(IVexRect** result) override;
    STDMETHODIMP GetPosition(IVexPos** result) override;
    STDMETHODIMP SetPosition(IVexPos* position) override;
    STDMETHODIMP ResizeThis() override;
    STDMETHODIMP IsEnable(VARIANT_BOOL* result) override { return answer(result, enabled); }
    STDMETHODIMP IsLButtonDowned(VARIANT_BOOL* result) override { return answer(result, leftButtonDown); }
    STDMETHODIMP IsMouseMove(VARIANT_BOOL* result) override { return answer(result, mouseOver); }
    STDMETHODIMP SetMouseMove(VARIANT_BOOL over) override;
    STDMETHODIMP IsMirrorObject(VARIANT_BOOL* result) override { return answer(result, mirrored); }
    STDMETHODIMP IsDragabledProp(VARIANT_BOOL* result) override { return answer(result, draggable); }
    STDMETHODIMP SetDragabledProp(VARIANT_BOOL drag) override;

    // Drawing and events
    STDMETHODIMP DirectRedraw(SkinRect* rect) override;
    STDMETHODIMP RenderDrawFocus(IVexRenderDC* dc) override;
    STDMETHODIMP CallMsg(long message, hyper wParam, hyper lParam, VARIANT_BOOL* result) override;
    STDMETHODIMP CallEvent(long message, hyper wParam, hyper lParam) override;

    // The property table
    STDMETHODIMP CreateGroupProp(ICtrlPluginProp* parent, BSTR name, VARIANT_BOOL expanded,
                                 ICtrlPluginProp** result) override;
    STDMETHODIMP CreateProp(ICtrlPluginProp* group, enumPropType type, BSTR name, BSTR help, VARIANT_BOOL isStyle,
                            IPropChangedCallback* callback, IVexPropBase** result) override;

    /// The property object of that name, or null. The caller names the type it has.
    template <class Object>
    Object* find(std::wstring_view group, std::wstring_view name) const
    {
        return dynamic_cast<Object*>(findAny(group, name));
    }

    IVexControlBase* realControl = nullptr; // borrowed, as every inner base object keeps it
    std::wstring objectName;
    BaseObject* treeParent = nullptr; // borrowed, as are the two below
    BaseObject* treeRoot = nullptr;
    std::vector<BaseObject*> children;
    ComPtr<IVexRes> res;
    ComPtr<IAmbrel> root;
    hyper configNode = 0xC0F16;
    SkinRect rect{10, 20, 110, 60};
    VexPosition position{};
    VARIANT_BOOL enabled = VARIANT_TRUE;
    VARIANT_BOOL leftButtonDown = VARIANT_FALSE;
    VARIANT_BOOL mouseOver = VARIANT_FALSE;
    VARIANT_BOOL mirrored = VARIANT_FALSE;
    VARIANT_BOOL draggable = VARIANT_FALSE;
    VARIANT_BOOL callbackAnswer = VARIANT_FALSE;
    std::function<void()> onRedraw;
    std::function<void(long message)> onCallback; // what the application's callback does
    bool isBroken = false;                        // nothing works any more: no results, failures only
    bool isEmptyHanded = false;                   // everything works, but whatever is asked for is null
    std::size_t propertiesAllowed = 1000;         // CreateProp fails after so many
    std::vector<MadeProperty> properties;         // in the order of their making
    std::vector<std::wstring> groups;

protected:
    void lastRelease() override;

private:
    template <class T>
    HRESULT answer(T* result, T value)
    {
        called();
        if (isBroken)
            return E_FAIL;
        *result = value;
        return S_OK;
    }
    template <class T>
    HRESULT give(T** result, const ComPtr<T>& object)
    {
        called();
        if (isBroken)
            return E_FAIL;
        if (isEmptyHanded)
            *result = nullptr;
        else
            object.copyTo(result);
        return object || isEmptyHanded ? S_OK : S_FALSE;
    }
    IVexPropBase* findAny(std::wstring_view group, std::wstring_view name) const;
};

} // namespace morvane::testing
