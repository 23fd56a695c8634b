// ISkinObjResBase over an object of the tree, written once for the root and for the base object of controls.
#pragma once

#include "ambrel/objects/geometry_objects.h"
#include "ambrel/objects/layers.h"
#include "ambrel/objects/skin_object_core.h"
#include "frame/com/dispatch.h"
#include "frame/com/result.h"

namespace ambrel {

using morvane::filling;
using morvane::guarded;
using morvane::returning;

/// The core behind a pointer that a caller passed in: E_INVALIDARG for null and objects of another framework.
inline HRESULT checkedCore(ISkinObjResBase* object, SkinObjectCore*& core) noexcept
{
    core = coreOf(object);
    return core ? S_OK : E_INVALIDARG;
}

/// Implements IVexObj and ISkinObjResBase for `Interface` (IVexControlBase or IAmbrel). Statuses: S_OK when something
/// was done, S_FALSE when there was nothing to do or nothing was found, E_INVALIDARG for objects of another framework,
/// E_NOTIMPL for the layer caches that this runtime does not have.
template <class Interface>
class SkinObject : public morvane::Dispatch<Interface>, public CoreAccess, public SkinObjectCore {
public:
    // Declared once for both bases; the instance completes them.
    STDMETHODIMP QueryInterface(REFIID iid, void** result) noexcept override = 0;
    STDMETHODIMP_(ULONG) AddRef() noexcept override = 0;
    STDMETHODIMP_(ULONG) Release() noexcept override = 0;

    SkinObjectCore& STDMETHODCALLTYPE core() noexcept override { return *this; }

    // IVexObj
    STDMETHODIMP GetName(BSTR* result) noexcept override
    {
        return returning(result, [&] { return Bstr(this->name()); });
    }
    STDMETHODIMP SetName(BSTR text) noexcept override
    {
        return guarded([&] { this->setName(morvane::viewOf(text)); });
    }
    STDMETHODIMP SetObjPtr(hyper pointer) noexcept override
    {
        return guarded([&] { this->extras().objectPointer = pointer; });
    }
    STDMETHODIMP GetObjPtr(hyper* result) noexcept override
    {
        return returning(result, [&] { return this->objectPointer(); });
    }
    STDMETHODIMP GetObjectID(BSTR* result) noexcept override
    {
        return returning(result, [&] { return this->objectId(); });
    }
    STDMETHODIMP AccessConfig(VARIANT_BOOL read, VARIANT_BOOL* result) noexcept override
    {
        return filling(result, [&](VARIANT_BOOL& done) {
            const bool worked = this->accessConfiguration(read != VARIANT_FALSE);
            done = morvane::toVariantBool(worked);
            return worked ? S_OK : S_FALSE;
        });
    }
    STDMETHODIMP GetVexRes(IVexRes** result) noexcept override
    {
        return returning(result, [&] { return this->resources(); });
    }
    STDMETHODIMP SetVexRes(IVexRes* resources) noexcept override
    {
        return guarded([&] { this->setResources(resources); });
    }
    STDMETHODIMP GetXMLNode(hyper* result) noexcept override
    {
        return returning(result, [&] { return this->configuration(); });
    }
    STDMETHODIMP GetType(VexObjType* result) noexcept override
    {
        return returning(result, [&] { return m_type; });
    }
    STDMETHODIMP SetType(VexObjType type) noexcept override
    {
        m_type = type;
        return S_OK;
    }
    STDMETHODIMP GetTypeName(BSTR* result) noexcept override
    {
        return returning(result, [&] { return this->typeName(); });
    }
    STDMETHODIMP SetTypeName(BSTR text) noexcept override
    {
        return guarded([&] { this->extras().typeName = morvane::viewOf(text); });
    }
    STDMETHODIMP SetModified(VARIANT_BOOL modified) noexcept override { return setFlag(NodeFlag::Modified, modified); }
    STDMETHODIMP IsModified(VARIANT_BOOL* result) noexcept override { return flag(NodeFlag::Modified, result); }
    STDMETHODIMP GetVexXMLNodePtr(IVexXMLNode** result) noexcept override
    {
        return returning(result, [&] { return this->configurationNode(); });
    }
    STDMETHODIMP AddInterRef(long* result) noexcept override
    {
        return returning(result, [&] { return ++m_internalReferences; });
    }
    STDMETHODIMP ReleaseInterRef(long* result) noexcept override
    {
        return returning(result, [&] { return m_internalReferences > 0 ? --m_internalReferences : 0; });
    }

    // State
    STDMETHODIMP IsEnable(VARIANT_BOOL* result) noexcept override
    {
        return returning(result, [&] { return m_node.isUsable(); });
    }
    STDMETHODIMP EnableObject(VARIANT_BOOL enable, VARIANT_BOOL redraw, VARIANT_BOOL* result) noexcept override
    {
        return answering(result, [&] { return this->setEnabled(enable != VARIANT_FALSE, redraw != VARIANT_FALSE); });
    }
    STDMETHODIMP SetVisible(VARIANT_BOOL visible, VARIANT_BOOL refresh, VARIANT_BOOL) noexcept override
    {
        return guarded([&] { this->setVisible(visible != VARIANT_FALSE, refresh != VARIANT_FALSE); });
    }
    STDMETHODIMP SetVisibleEx(VARIANT_BOOL visible, VARIANT_BOOL refresh, VARIANT_BOOL) noexcept override
    {
        return guarded([&] { this->setVisibleWithChildren(visible != VARIANT_FALSE, refresh != VARIANT_FALSE); });
    }
    STDMETHODIMP IsVisible(VARIANT_BOOL* result) noexcept override { return flag(NodeFlag::Visible, result); }
    STDMETHODIMP IsLButtonDowned(VARIANT_BOOL* result) noexcept override
    {
        return flag(NodeFlag::LeftButtonDown, result);
    }
    STDMETHODIMP SetLButtonDowned(VARIANT_BOOL value) noexcept override
    {
        return setFlag(NodeFlag::LeftButtonDown, value);
    }
    STDMETHODIMP IsMouseMove(VARIANT_BOOL* result) noexcept override { return flag(NodeFlag::MouseOver, result); }
    STDMETHODIMP SetMouseMove(VARIANT_BOOL value) noexcept override { return setFlag(NodeFlag::MouseOver, value); }
    STDMETHODIMP SetOpacity(short opacity) noexcept override
    {
        return guarded([&] { this->setOpacity(opacity); });
    }
    STDMETHODIMP GetOpacity(short* result) noexcept override
    {
        return returning(result, [&] { return m_node.opacity(); });
    }
    STDMETHODIMP SetBlendWithParent(VARIANT_BOOL blend) noexcept override
    {
        return setFlag(NodeFlag::BlendsWithParent, blend);
    }
    STDMETHODIMP IsBlendWithParent(VARIANT_BOOL* result) noexcept override
    {
        return flag(NodeFlag::BlendsWithParent, result);
    }
    STDMETHODIMP IsSizing(VARIANT_BOOL* result) noexcept override { return flag(NodeFlag::Sizing, result); }
    STDMETHODIMP EnableRedraw(VARIANT_BOOL redraws) noexcept override { return setFlag(NodeFlag::Redraws, redraws); }
    STDMETHODIMP IsEnableRedraw(VARIANT_BOOL* result) noexcept override { return flag(NodeFlag::Redraws, result); }
    STDMETHODIMP SetUserData(hyper data) noexcept override
    {
        return guarded([&] { this->extras().userData = data; });
    }
    STDMETHODIMP GetUserData(hyper* result) noexcept override
    {
        return returning(result, [&] { return this->userData(); });
    }
    STDMETHODIMP SetCtrlState(VEX_CTRLSTATE state) noexcept override
    {
        return guarded([&] { return this->setControlState(state); });
    }
    STDMETHODIMP GetCtrlState(VEX_CTRLSTATE* result) noexcept override
    {
        return returning(result, [&] { return this->controlState(); });
    }
    STDMETHODIMP MirrorObject(VARIANT_BOOL mirrored) noexcept override
    {
        return guarded([&] { this->setMirrored(mirrored != VARIANT_FALSE); });
    }
    STDMETHODIMP IsMirrorObject(VARIANT_BOOL* result) noexcept override { return flag(NodeFlag::Mirrored, result); }

    // Tree
    STDMETHODIMP GetParent(ISkinObjResBase** result) noexcept override
    {
        return finding(result, [&] { return faceOf(m_node.parent()); });
    }
    STDMETHODIMP SetParent(ISkinObjResBase* parent) noexcept override
    {
        return guarded([&] { return this->setParent(parent); });
    }
    STDMETHODIMP GetRoot(ISkinObjResBase** result) noexcept override
    {
        return finding(result, [&] { return faceOf(&m_node.root()); });
    }
    STDMETHODIMP IsExisted(ISkinObjResBase* object, VARIANT_BOOL* result) noexcept override
    {
        return answering(result, [&] {
            SkinObjectCore* other = coreOf(object);
            return other && other != this && m_node.holds(other->node());
        });
    }
    STDMETHODIMP AddSubObject(ISkinObjResBase* object, VARIANT_BOOL first, VARIANT_BOOL* result) noexcept override
    {
        return onChild(object, result, [&](SkinObjectCore& child) {
            return this->addChild(child, first != VARIANT_FALSE ? 0 : m_node.childCount());
        });
    }
    STDMETHODIMP InsertSubObject(ISkinObjResBase* object, short index, short* result) noexcept override
    {
        return filling(result, [&](short& inserted) {
            inserted = -1;
            SkinObjectCore* child = nullptr;
            const HRESULT status = checkedCore(object, child);
            if (FAILED(status))
                return status;
            if (!this->addChild(*child, index < 0 ? m_node.childCount() : static_cast<std::size_t>(index)))
                return S_FALSE;
            inserted = this->indexForCaller(child->node());
            return S_OK;
        });
    }
    STDMETHODIMP MoveAhead(ISkinObjResBase* object, VARIANT_BOOL* result) noexcept override
    {
        return step(object, 1, result);
    }
    STDMETHODIMP MoveBack(ISkinObjResBase* object, VARIANT_BOOL* result) noexcept override
    {
        return step(object, -1, result);
    }
    STDMETHODIMP MoveTop(ISkinObjResBase* object, VARIANT_BOOL* result) noexcept override
    {
        return onChild(object, result,
                       [&](SkinObjectCore& child) { return this->moveChild(child, m_node.childCount()); });
    }
    STDMETHODIMP MoveBottom(ISkinObjResBase* object, VARIANT_BOOL* result) noexcept override
    {
        return onChild(object, result, [&](SkinObjectCore& child) { return this->moveChild(child, 0); });
    }
    STDMETHODIMP Remove(VARIANT_BOOL* result) noexcept override
    {
        return answering(result, [&] { return this->detach(); });
    }
    STDMETHODIMP RemoveSubObject(ISkinObjResBase* object, VARIANT_BOOL* result) noexcept override
    {
        return onChild(object, result,
                       [&](SkinObjectCore& child) { return child.node().parent() == &m_node && child.detach(); });
    }
    STDMETHODIMP RemoveAllSubObjects() noexcept override
    {
        return guarded([&] { this->removeChildren(false); });
    }
    STDMETHODIMP DelAllSubObjects() noexcept override
    {
        return guarded([&] { this->removeChildren(true); });
    }
    STDMETHODIMP GetSubObject(short index, ISkinObjResBase** result) noexcept override
    {
        return finding(result,
                       [&] { return faceOf(index < 0 ? nullptr : m_node.childAt(static_cast<std::size_t>(index))); });
    }
    STDMETHODIMP GetSubObjIndex(ISkinObjResBase* object, short* result) noexcept override
    {
        return filling(result, [&](short& index) {
            SkinObjectCore* child = coreOf(object);
            index = child ? this->indexForCaller(child->node()) : static_cast<short>(-1);
            return index < 0 ? S_FALSE : S_OK;
        });
    }
    STDMETHODIMP GetChildCount(short* result) noexcept override
    {
        return returning(result, [&] { return this->childCountForCaller(); });
    }
    STDMETHODIMP GetSubCaptionObject(BSTR caption, short* index, ISkinObjResBase** result) noexcept override
    {
        return finding(result, [&] { return this->childByCaption(morvane::viewOf(caption), index); });
    }
    STDMETHODIMP GetSubResObject(ISkinObjResBase* object, short* index, ISkinObjResBase** result) noexcept override
    {
        return finding(result, [&] { return this->childHolding(object, index); });
    }
    STDMETHODIMP GetObjectByCaption(long type, BSTR name, VARIANT_BOOL deep, ISkinObjResBase** result) noexcept override
    {
        return finding(result, [&]() -> ComPtr<ISkinObjResBase> {
            SkinObjectCore* found = this->findByName(morvane::viewOf(name), type, deep != VARIANT_FALSE);
            return faceOf(found ? &found->node() : nullptr);
        });
    }

    // Geometry
    STDMETHODIMP SetPosition(IVexPos* position) noexcept override
    {
        if (!position)
            return E_POINTER;
        return guarded([&] {
            VexPosition record{};
            const HRESULT status = position->GetPosStruct(&record);
            if (SUCCEEDED(status))
                this->place(toPosition(record));
            return status;
        });
    }
    STDMETHODIMP GetPosition(IVexPos** result) noexcept override
    {
        return returning(result, [&] { return makePosition(toRecord(m_node.position())); });
    }
    STDMETHODIMP ResizeThis() noexcept override
    {
        return guarded([&] { this->layOutNow(true); });
    }
    STDMETHODIMP Center() noexcept override
    {
        return guarded([&] { this->place(centredPosition(m_node.rect().size())); });
    }
    STDMETHODIMP GetRect(IVexRect** result) noexcept override
    {
        return returning(result, [&] { return makeRect(m_node.rect()); });
    }
    STDMETHODIMP SetRect(IVexRect* rect) noexcept override
    {
        if (!rect)
            return E_POINTER;
        return guarded([&] {
            SkinRect record{};
            const HRESULT status = rect->GetRectStruct(&record);
            if (SUCCEEDED(status))
                this->moveTo(morvane::toRect(record));
            return status;
        });
    }
    STDMETHODIMP Resize(SkinRect* rect, long* result) noexcept override
    {
        return filling(result, [&](long& changed) {
            if (!rect)
                return E_POINTER;
            const Rect before = m_node.rect();
            this->moveTo(morvane::toRect(*rect));
            changed = before != morvane::toRect(*rect);
            return changed ? S_OK : S_FALSE;
        });
    }
    STDMETHODIMP GetDockType(VexDockObjType* result) noexcept override
    {
        return returning(result, [&] { return this->dockType(); });
    }
    STDMETHODIMP Dock(VexDockObjType type, VARIANT_BOOL full) noexcept override
    {
        if (type < 0 || type >= kDockCount)
            return E_INVALIDARG;
        return guarded([&] { this->dock(static_cast<ambrel::Dock>(type), full != VARIANT_FALSE); });
    }
    STDMETHODIMP SetAvailRect(IVexRect* rect) noexcept override
    {
        return guarded([&] { return this->setAvailableRect(rect); });
    }
    STDMETHODIMP GetAvailRect(IVexRect** result) noexcept override
    {
        return returning(result, [&] { return makeRect(this->availableRect()); });
    }

    // Window and drawing
    STDMETHODIMP RedrawWindow(VARIANT_BOOL now, VARIANT_BOOL* result) noexcept override
    {
        return answering(result, [&] { return this->redrawWindow(now != VARIANT_FALSE); });
    }
    STDMETHODIMP DirectDraw(VARIANT_BOOL) noexcept override
    {
        return guarded([&] { return this->redrawWindow(true) ? S_OK : S_FALSE; });
    }
    STDMETHODIMP GetAmbrel(IDispatch** result) noexcept override
    {
        return finding(result, [&] {
            RootServices* window = services();
            return ComPtr<IDispatch>(window ? window->ambrel() : nullptr);
        });
    }
    STDMETHODIMP GetWindow(hyper* result) noexcept override
    {
        return returning(result, [&] { return this->windowHandle(); });
    }
    STDMETHODIMP SetOwnerHwnd(hyper window) noexcept override
    {
        if (window && !IsWindow(reinterpret_cast<HWND>(window)))
            return E_INVALIDARG;
        return guarded([&] { this->extras().ownerWindow = window; });
    }
    STDMETHODIMP SetAmbrelHwnd(hyper) noexcept override
    {
        return E_NOTIMPL;
    } // the window is the root's, found by the tree
    STDMETHODIMP CallEvent(long id, hyper wParam, hyper lParam) noexcept override
    {
        return guarded([&] { this->callEvent(id, wParam, lParam); });
    }

    // Layers are drawn when they are asked for; the caller owns them. Nothing follows when the tree changes.
    STDMETHODIMP GetLayerBack(SkinRect rect, ILayerGraphics** result) noexcept override
    {
        return layer(LayerPart::Behind, rect, result);
    }
    STDMETHODIMP GetLayerFore(SkinRect rect, ILayerGraphics** result) noexcept override
    {
        return layer(LayerPart::InFront, rect, result);
    }
    STDMETHODIMP GetLayerMe(ILayerGraphics** result) noexcept override
    {
        return layer(LayerPart::Itself, morvane::toSkinRect(m_node.rect()), result);
    }
    STDMETHODIMP GetAmbrelLayerCache(ILayerGraphics** result) noexcept override
    {
        return finding(result, [&] { return copyOfWindowPicture(m_node); });
    }
    STDMETHODIMP UpdateAmbrelLayerCache(SkinRect target, hyper dc, SkinRect source,
                                        VARIANT_BOOL* result) noexcept override
    {
        return onDeviceContext(dc, result, [&](HDC from) {
            return changeWindowPicture(m_node, morvane::toRect(target), from, morvane::toRect(source));
        });
    }
    STDMETHODIMP DrawCurrentLayer(hyper dc, VARIANT_BOOL children, SkinRect update, VARIANT_BOOL memoryContext,
                                  VARIANT_BOOL* result) noexcept override
    {
        return onDeviceContext(dc, result, [&](HDC target) {
            const ComPtr<ISkinObjResBase> hold(this->face());
            return drawOnto(target, m_node, children != VARIANT_FALSE ? Beneath::Drawn : Beneath::LeftOut,
                            morvane::toRect(update), memoryContext != VARIANT_FALSE);
        });
    }
    // What a sprite or a blind object is, and how a sprite's function would be called, is agreed nowhere.
    STDMETHODIMP DrawSprite(hyper, SkinRect, SkinRect, hyper, hyper, VARIANT_BOOL,
                            VARIANT_BOOL* result) noexcept override
    {
        return notImplemented(result);
    }
    STDMETHODIMP DrawBlindObject(hyper, SkinRect, SkinRect, short, short, VARIANT_BOOL* result) noexcept override
    {
        return notImplemented(result);
    }
    /// Only a root has regions.
    STDMETHODIMP DestroyRgnInfo(VARIANT_BOOL* result) noexcept override
    {
        return answering(result, [] { return false; });
    }

protected:
    explicit SkinObject(VexObjType type) noexcept : SkinObjectCore(type) {}
    ~SkinObject() = default;

    /// For the class's findInterface: the interfaces that every object of the tree has.
    void* findSkinInterface(REFIID iid) noexcept
    {
        if (iid == IID_IDispatch || iid == morvane::iidOf<IVexObj>() || iid == morvane::iidOf<ISkinObjResBase>() ||
            iid == morvane::iidOf<Interface>())
            return static_cast<Interface*>(this);
        return iid == kIidCoreAccess ? static_cast<CoreAccess*>(this) : nullptr;
    }

    HRESULT setFlag(NodeFlag which, VARIANT_BOOL on) noexcept
    {
        m_node.set(which, on != VARIANT_FALSE);
        return S_OK;
    }
    HRESULT flag(NodeFlag which, VARIANT_BOOL* result) noexcept
    {
        return returning(result, [&] { return m_node.has(which); });
    }

    /// A body that answers whether something was done: S_OK and true, or S_FALSE and false.
    template <class Body>
    static HRESULT answering(VARIANT_BOOL* result, Body&& body) noexcept
    {
        return filling(result, [&](VARIANT_BOOL& done) {
            const bool worked = body();
            done = morvane::toVariantBool(worked);
            return worked ? S_OK : S_FALSE;
        });
    }

    /// A body that looks for an object: S_FALSE and null where there is none.
    template <class T, class Body>
    static HRESULT finding(T** result, Body&& body) noexcept
    {
        return filling(result, [&](T*& found) {
            ComPtr<T> object = body();
            found = object.detach();
            return found ? S_OK : S_FALSE;
        });
    }

    /// A body that works with a device context of somebody else, as `answering`; E_INVALIDARG for what is none.
    template <class Body>
    static HRESULT onDeviceContext(hyper handle, VARIANT_BOOL* result, Body&& body) noexcept
    {
        const HDC dc = reinterpret_cast<HDC>(handle);
        const DWORD kind = GetObjectType(dc);
        if (result && kind != OBJ_DC && kind != OBJ_MEMDC) {
            *result = VARIANT_FALSE;
            return E_INVALIDARG;
        }
        return answering(result, [&] { return body(dc); });
    }

    template <class Out>
    static HRESULT notImplemented(Out* result) noexcept
    {
        if (!result)
            return E_POINTER;
        *result = Out{};
        return E_NOTIMPL;
    }

private:
    HRESULT layer(LayerPart part, const SkinRect& rect, ILayerGraphics** result) noexcept
    {
        return finding(result, [&] {
            const ComPtr<ISkinObjResBase> hold(this->face());
            return drawLayer(m_node, part, morvane::toRect(rect));
        });
    }

    template <class Body>
    HRESULT onChild(ISkinObjResBase* object, VARIANT_BOOL* result, Body&& body) noexcept
    {
        return filling(result, [&](VARIANT_BOOL& done) {
            SkinObjectCore* child = nullptr;
            const HRESULT status = checkedCore(object, child);
            if (FAILED(status))
                return status;
            const bool worked = body(*child);
            done = morvane::toVariantBool(worked);
            return worked ? S_OK : S_FALSE;
        });
    }

    HRESULT step(ISkinObjResBase* object, int by, VARIANT_BOOL* result) noexcept
    {
        return onChild(object, result, [&](SkinObjectCore& child) {
            const int index = m_node.indexOf(child.node());
            return index >= 0 && index + by >= 0 && this->moveChild(child, static_cast<std::size_t>(index + by));
        });
    }
};

} // namespace ambrel
