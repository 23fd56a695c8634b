#include "ambrel/window/drop_target.h"

#include "ambrel/objects/hit_test.h"
#include "ambrel/window/window_core.h"
#include "frame/com/instance.h"

namespace ambrel {

namespace {

class DropTarget : public IDropTarget {
public:
    HRESULT finalConstruct() { return S_OK; }
    void finalRelease() {}
    void* findInterface(REFIID iid) { return iid == IID_IDropTarget ? static_cast<IDropTarget*>(this) : nullptr; }
    void attach(WindowCore& window) { m_root.reset(&window.rootNode()); }

    STDMETHODIMP DragEnter(IDataObject* data, DWORD, POINTL at, DWORD* effect) noexcept override
    {
        m_data = ComPtr<IDataObject>(data);
        return over(at, effect);
    }

    STDMETHODIMP DragOver(DWORD, POINTL at, DWORD* effect) noexcept override { return over(at, effect); }

    STDMETHODIMP DragLeave() noexcept override
    {
        const ComPtr<IDropTarget> hold(this); // what is told may end the window
        return morvane::guarded([&] {
            moveTo(nullptr);
            m_data.reset();
        });
    }

    STDMETHODIMP Drop(IDataObject* data, DWORD, POINTL at, DWORD* effect) noexcept override
    {
        if (!effect)
            return E_POINTER;
        const ComPtr<IDropTarget> hold(this);
        return morvane::guarded([&] {
            m_data = ComPtr<IDataObject>(data);
            const Point point = inWindow(at);
            moveTo(controlAt(point));
            *effect = tell(VEXSM_DODRAGDROP, point, *effect);
            moveTo(nullptr);
            m_data.reset();
        });
    }

private:
    HRESULT over(POINTL at, DWORD* effect) noexcept
    {
        if (!effect)
            return E_POINTER;
        const ComPtr<IDropTarget> hold(this);
        return morvane::guarded([&] {
            const Point point = inWindow(at);
            moveTo(controlAt(point));
            *effect = tell(VEXSM_PRE_DODRAGDROP, point, *effect);
        });
    }

    Point inWindow(POINTL at) const
    {
        POINT point{at.x, at.y};
        if (m_root && m_root->services())
            ScreenToClient(m_root->services()->window(), &point);
        return {static_cast<int>(point.x), static_cast<int>(point.y)};
    }

    ObjectNode* controlAt(Point point)
    {
        ObjectNode* met = m_root ? hitTest(*m_root.get(), point, HitPurpose::Mouse) : nullptr;
        return met && met != m_root.get() && met->isUsable() ? met : nullptr;
    }

    void moveTo(ObjectNode* node)
    {
        if (node == m_under.get())
            return;
        const WeakNode next(node);
        if (m_under) {
            const ComPtr<IDataObject> data = std::move(m_data);
            tell(VEXSM_POST_DODRAGDROP, {}, DROPEFFECT_NONE);
            m_data = data;
        }
        m_under.reset(next.get());
    }

    /// The effect that the control chose among those allowed.
    DWORD tell(VexMsgID id, Point point, DWORD allowed)
    {
        if (!m_under || !m_root || &m_under->root() != m_root.get()) // it has left the window meanwhile
            return DROPEFFECT_NONE;
        SkinObjectCore& core = coreOf(*m_under.get());
        const ComPtr<ISkinObjResBase> hold(core.face());
        DWORD chosen = DROPEFFECT_NONE;
        VexNotify notice{};
        notice.eVexMsgId = id;
        notice.lParam1 = reinterpret_cast<hyper>(m_data.get());
        notice.lParam2 = point.x;
        notice.lParam3 = point.y;
        notice.lParam4 = reinterpret_cast<hyper>(&chosen);
        core.notify(notice);
        return chosen & allowed;
    }

    WeakNode m_root;
    WeakNode m_under;
    ComPtr<IDataObject> m_data;
};

} // namespace

ComPtr<IDropTarget> makeDropTarget(WindowCore& window)
{
    auto target = morvane::Instance<DropTarget>::make();
    target->attach(window);
    return ComPtr<IDropTarget>(target.get());
}

} // namespace ambrel
