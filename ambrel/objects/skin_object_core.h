// What every object of a window's tree does, whatever interface it shows: the work behind ISkinObjResBase.
#pragma once

#include "ambrel/objects/object_node.h"
#include "ambrel/objects/root_services.h"
#include "ambrel/properties/compact_text.h"
#include "frame/com/bstr.h"
#include "frame/com/com_ptr.h"
#include "frame/com/result.h"
#include "host/geometry.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace ambrel {

using morvane::Bstr;
using morvane::ComPtr;

/// An object of the tree. A parent holds one reference to the face of each child; a child knows its parent weakly, so
/// there are no cycles. Everything that runs foreign code survives the object's removal and end: callers hold face() if
/// they go on with the object afterwards.
class SkinObjectCore : public NodeOwner {
public:
    explicit SkinObjectCore(VexObjType type) noexcept : m_node(*this), m_type(type) {}
    SkinObjectCore(const SkinObjectCore&) = delete;
    SkinObjectCore& operator=(const SkinObjectCore&) = delete;

    ObjectNode& node() noexcept { return m_node; }
    RootServices* services() noexcept { return m_node.services(); }

    /// The object as the outside knows it: the real control, or the root itself. Borrowed; null when a base object has
    /// no real control (any more).
    virtual ISkinObjResBase* face() noexcept = 0;
    /// The face as a control; null for the root.
    virtual IVexControlBase* control() noexcept { return nullptr; }
    /// Sends a notification to the object; answers whether it was handled. Runs foreign code; passes the trace point.
    virtual bool notify(VexNotify& notice) = 0;

    // Called by the window when the focus has moved; each tells the object and sets its flag.
    virtual void focusGained(Point) {}
    virtual void focusLost() {}

    // Tree. Each answers whether something was done.
    bool addChild(SkinObjectCore& child, std::size_t index);
    /// Takes the object out of its parent. It lives on while somebody holds it; when nobody does, it is told that it is
    /// being destroyed and ends. Runs foreign code.
    bool detach();
    /// Tells the object and everything beneath it that they are being destroyed, once, and takes it out. Runs foreign
    /// code.
    void destroy();
    void removeChildren(bool destroying);
    bool moveChild(SkinObjectCore& child, std::size_t index);
    /// The first object with this name: direct children, or with `deep` everything beneath, in tree order. Type 90000
    /// means any type.
    SkinObjectCore* findByName(std::wstring_view name, long type, bool deep) noexcept;

    // Geometry.
    void place(const Position& position); // stores the position and lays out
    /// Takes the rectangle that its position gives, lays out its children, and sends VEXSM_SIZE when that changed
    /// something or `alwaysTell` says so. A root keeps its rectangle.
    void layOutNow(bool alwaysTell);
    void moveTo(const Rect& rect); // takes this rectangle and keeps it as its position
    void layOutChildren();
    /// Adapts what it keeps free of laid out children to another resolution.
    void scaleChildGaps(int from, int to) noexcept;
    void setMirrored(bool mirrored); // with everything beneath

    // State.
    void setVisible(bool visible, bool redraw);
    bool setEnabled(bool enabled, bool redraw);
    void setOpacity(int opacity);

    /// Asks for a part of the object (null: all of it) to be painted; the part that ancestors cut away is left out.
    /// Passes the trace point.
    void redraw(const Rect* part = nullptr);
    /// The same for changes that the runtime makes itself; not traced.
    void invalidate(const Rect* part = nullptr);

    // Names and belongings.
    std::wstring_view name() const noexcept override;
    bool answersTo(std::wstring_view name, long type) const noexcept override;
    void setName(std::wstring_view name);
    void setObjectId(std::wstring_view id) { extras().objectId = id; }
    VexObjType type() const noexcept { return m_type; }
    ComPtr<IVexRes> resources();
    void setResources(IVexRes* resources) { m_resources = ComPtr<IVexRes>(resources); }
    /// Attaches the object's configuration node: the opaque handle, and the object that owns and opens it (may be
    /// null).
    void setConfiguration(hyper handle, ComPtr<IVexXMLNode> owner);
    hyper configuration() const noexcept;

    void callEvent(long id, hyper wParam, hyper lParam);

    /// Reads or writes its properties' values from or to its configuration node; false without one.
    virtual bool accessConfiguration(bool) { return false; }
    /// Its top-level property groups, in order.
    virtual std::span<const ComPtr<ICtrlPluginProp>> groups() const noexcept { return {}; }
    /// Draws what an application laid over the object.
    virtual void drawRetained(IVexRenderDC&) {}

protected:
    ~SkinObjectCore() = default;

    /// Tells the object about its size; called with changed geometry.
    virtual void sizeChanged() {}
    virtual void enabledChanged(bool, bool) {} // enabled, and whether it is to be redrawn
    /// It has become part of a window; `fromAnother` when it was part of another one before.
    virtual void windowEntered(bool) {}
    /// Its type name where none was set.
    virtual Bstr defaultTypeName() { return {}; }
    /// Before it ends: children are destroyed, the object unlinked. Called by the class's finalRelease.
    void releaseTree() noexcept;

    /// What few objects have; made when first set.
    struct Extras {
        std::wstring typeName;
        std::wstring objectId;
        hyper objectPointer = 0;
        hyper userData = 0;
        hyper configuration = 0;
        ComPtr<IVexXMLNode> configurationNode;
        Rect childGaps; // what it keeps free of laid out children, from each edge
        ambrel::Dock dock = ambrel::Dock::LeftTop;
        bool isInactive = false;
        hyper ownerWindow = 0;
    };
    Extras& extras();

    /// What is shown of the object and of the focus mark around it.
    Rect shownWithMark() const;

    // The rest of the interface methods' work.
    hyper objectPointer() const noexcept { return m_extras ? m_extras->objectPointer : 0; }
    hyper userData() const noexcept { return m_extras ? m_extras->userData : 0; }
    Bstr objectId();
    Bstr typeName();
    ComPtr<IVexXMLNode> configurationNode() const noexcept;
    HRESULT setParent(ISkinObjResBase* parent);
    void setVisibleWithChildren(bool visible, bool redraw);
    HRESULT setControlState(VEX_CTRLSTATE state);
    VEX_CTRLSTATE controlState() const noexcept;
    short childCountForCaller() const noexcept;
    /// -1 for what is no direct child; the last number that a caller can be told for those beyond it.
    short indexForCaller(const ObjectNode& child) const noexcept;
    ComPtr<ISkinObjResBase> childByCaption(std::wstring_view caption, short* index) noexcept;
    ComPtr<ISkinObjResBase> childHolding(ISkinObjResBase* object, short* index) noexcept;
    VexDockObjType dockType() const noexcept;
    void dock(Dock dock, bool full);
    HRESULT setAvailableRect(IVexRect* rect);
    Rect availableRect() const noexcept;
    Rect areaForLayout() const noexcept;
    bool isLaidOutMirrored() const noexcept;
    void takeRect(const Rect& rect, bool alwaysTell);
    void tellSize(bool changed);
    void tellDestroyed();
    void tellWindowEntered(bool fromAnother);
    bool redrawWindow(bool now);
    hyper windowHandle() noexcept;

    ObjectNode m_node;
    ComPtr<ISkinObjResBase> m_treeReference; // the parent's reference to this object's face
    ComPtr<IVexRes> m_resources;             // its own; without, those of its window
    CompactText m_name;
    std::unique_ptr<Extras> m_extras;
    VexObjType m_type;
    long m_internalReferences = 0;
};

/// The core of an object of this runtime, found through whatever face it shows; null for null and foreign objects.
/// Borrowed: lives at least as long as `object`.
SkinObjectCore* coreOf(IUnknown* object) noexcept;
inline SkinObjectCore& coreOf(ObjectNode& node) noexcept
{
    return static_cast<SkinObjectCore&>(node.owner());
}

/// How coreOf finds a core: the runtime's own objects answer this interface.
struct CoreAccess : IUnknown {
    virtual SkinObjectCore& STDMETHODCALLTYPE core() noexcept = 0;
};
inline constexpr IID kIidCoreAccess = {0x5E0C7E0A, 0x3B11, 0x4C0B, {0x9D, 0x5C, 0x62, 0xA4, 0x1F, 0x7B, 0x08, 0xE3}};

/// A counted face as an out-value; empty for null.
ComPtr<ISkinObjResBase> faceOf(ObjectNode* node) noexcept;

} // namespace ambrel
