// What the tests of properties share: a control's tree with an owner that counts what it is told.
#pragma once

#include "ambrel/properties/property_factory.h"
#include "ambrel/properties/property_group.h"
#include "ambrel/properties/test_doubles.h"
#include "host/typed_properties.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace ambrel {

/// Runs what a test wants to happen when a property changes.
class Callback final : public IPropChangedCallback {
public:
    std::function<void(IVexControlBase*)> action;
    long references = 0;

    STDMETHODIMP QueryInterface(REFIID, void** result) noexcept override
    {
        *result = this;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++references; }
    STDMETHODIMP_(ULONG) Release() noexcept override { return --references; }
    STDMETHODIMP Do(IVexControlBase* owner) noexcept override
    {
        action(owner);
        return S_OK;
    }
};

/// The groups of one control, kept as its base object keeps them.
class TestTable {
public:
    TestTable() = default;
    TestTable(const TestTable&) = delete;
    TestTable& operator=(const TestTable&) = delete;
    ~TestTable() { detach(); }

    morvane::ComPtr<ICtrlPluginProp> group(IVexControlBase* owner, ICtrlPluginProp* parent, std::wstring_view name)
    {
        auto made = createGroup(owner, parent, name, true);
        if (!parent)
            m_groups.push_back(made);
        return made;
    }

    /// The control's end.
    void detach() noexcept
    {
        for (const auto& group : std::exchange(m_groups, {}))
            group->SetControlBasePtr(nullptr);
    }

private:
    std::vector<morvane::ComPtr<ICtrlPluginProp>> m_groups;
};

class PropertiesTest : public testing::Test {
protected:
    PropertiesTest()
    {
        owner.answer(kSlotPropChangedNotify, &notifyOwner);
        owner.context = this;
    }

    ~PropertiesTest() override
    {
        table.detach();
        EXPECT_EQ(owner.references(), 0);
    }

    morvane::ComPtr<ICtrlPluginProp> group(std::wstring_view name, ICtrlPluginProp* parent = nullptr)
    {
        return table.group(owner.get(), parent, name);
    }

    template <class Typed>
    morvane::ComPtr<Typed> make(enumPropType type, std::wstring_view name = L"Value", ICtrlPluginProp* where = nullptr,
                                IPropChangedCallback* callback = nullptr)
    {
        const auto home = where ? morvane::ComPtr<ICtrlPluginProp>(where) : group(L"Group");
        morvane::ComPtr<IVexPropBase> property;
        EXPECT_EQ(createProperty(home.get(), type, name, {}, true, callback, property.put()), S_OK);
        return morvane::ComPtr<Typed>(static_cast<Typed*>(property.get()));
    }

    static HRESULT STDMETHODCALLTYPE notifyOwner(TestDouble<IVexControlBase>* self, IVexPropBase* property)
    {
        auto& test = *static_cast<PropertiesTest*>(self->context);
        ++test.notified;
        test.lastNotified = property;
        if (test.onNotified)
            test.onNotified();
        return S_OK;
    }

    TestDouble<IVexControlBase> owner;
    TestTable table;
    int notified = 0;
    IVexPropBase* lastNotified = nullptr;
    std::function<void()> onNotified;
};

inline std::wstring textOf(IVexPropBase* property)
{
    PropertyCore& core = *coreOf(property);
    return core.kind().text(core);
}

inline TextResult setPropertyText(IVexPropBase* property, std::wstring_view text, const ResourceResolver& resolver,
                                  Notify notify)
{
    PropertyCore& core = *coreOf(property);
    return core.kind().setText(core, text, resolver, notify);
}

inline VARIANT variantOf(long value)
{
    VARIANT result;
    VariantInit(&result);
    result.vt = VT_I4;
    result.lVal = value;
    return result;
}

inline VARIANT variantOf(BSTR value)
{
    VARIANT result;
    VariantInit(&result);
    result.vt = VT_BSTR;
    result.bstrVal = value;
    return result;
}

} // namespace ambrel
