// A control for tests of the runtime: logs every notification, answers those it is asked to.
#pragma once

#include "frame/com/instance.h"
#include "frame/control.h"
#include "host/geometry.h"
#include "host/host_classes.h"

#include <algorithm>
#include <functional>
#include <vector>

namespace ambrel::testing_objects {

using morvane::Bstr;
using morvane::ComPtr;
using morvane::Point;
using morvane::Rect;

class TestControl : public morvane::Control<IVexControlBase> {
public:
    static ComPtr<TestControl> make() { return morvane::Instance<TestControl>::make(); }

    // Two bases have them; the instance completes them.
    STDMETHODIMP QueryInterface(REFIID iid, void** result) noexcept override = 0;
    STDMETHODIMP_(ULONG) AddRef() noexcept override = 0;
    STDMETHODIMP_(ULONG) Release() noexcept override = 0;

    TestControl() { ++alive; }
    ~TestControl() { --alive; }

    STDMETHODIMP CreateProps() noexcept override
    {
        ++propertyTables;
        ComPtr<ICtrlPluginProp> group;
        return innerBase()->CreateGroupProp(nullptr, Bstr(L"Text").get(), VARIANT_TRUE, group.put());
    }

    STDMETHODIMP EventNotify(VexNotify* notice, VARIANT_BOOL* result) noexcept override
    {
        const ComPtr<IVexControlBase> hold(this);
        log.push_back(notice->eVexMsgId);
        if (notice->eVexMsgId == VEXSM_DESTROYING)
            destroyedAt = ++clock;
        if (notice->eVexMsgId == VEXSM_GETCONTROLTYPENAME)
            *reinterpret_cast<const wchar_t**>(notice->lParam1) = L"Test";
        const bool answered = notice->eVexMsgId == VEXSM_GETCONTROLTYPENAME ||
                              std::find(answers.begin(), answers.end(), notice->eVexMsgId) != answers.end();
        *result = morvane::toVariantBool(answered);
        if (onNotice)
            onNotice(*notice);
        return S_OK;
    }

    STDMETHODIMP RenderDrawObject(IVexRenderDC* dc, SkinRect rect, VARIANT_BOOL* result) noexcept override
    {
        if (onDraw)
            onDraw(rect);
        if (onRender)
            onRender(*dc, rect);
        *result = VARIANT_TRUE;
        return S_OK;
    }

    IVexControlBase* asControl() noexcept { return this; }

    /// Enters the tree as the last child of `parent`, at a place in the window.
    void enter(ISkinObjResBase* parent, const Rect& place)
    {
        hyper created = 0;
        CreateObj(0, reinterpret_cast<hyper>(parent), VEXOBJTYPE_PLUGIN, VARIANT_FALSE, &created);
        SkinRect record = morvane::toSkinRect(place);
        long changed = 0;
        Resize(&record, &changed);
    }
    long count(long id) const { return static_cast<long>(std::count(log.begin(), log.end(), id)); }

    std::vector<long> log;
    std::vector<long> answers;
    std::function<void(const VexNotify&)> onNotice;
    std::function<void(const SkinRect&)> onDraw;
    std::function<void(IVexRenderDC&, SkinRect)> onRender;
    int propertyTables = 0;
    int destroyedAt = 0;
    static inline long alive = 0;
    static inline int clock = 0;

protected:
    const morvane::ControlInfo& info() const noexcept override
    {
        static const morvane::ControlInfo kInfo{};
        return kInfo;
    }
    void declareProperties(morvane::PropertyTable&) override {}
    void render(IVexRenderDC&) override {}
};

} // namespace ambrel::testing_objects
