// What the tests of properties share: a control's tree with an owner that counts what it is told.
#pragma once

#include "ambrel/properties/property_lookup.h"
#include "ambrel/properties/test_doubles.h"
#include "host/typed_properties.h"

#include <gtest/gtest.h>

#include <functional>

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

class PropertiesTest : public testing::Test {
protected:
    PropertiesTest()
    {
        owner.answer(kSlotPropChangedNotify, &notifyOwner);
        owner.context = this;
    }

    ~PropertiesTest() override
    {
        tree.detach();
        EXPECT_EQ(owner.references(), 0);
    }

    morvane::ComPtr<ICtrlPluginProp> group(std::wstring_view name, ICtrlPluginProp* parent = nullptr)
    {
        morvane::ComPtr<ICtrlPluginProp> result;
        tree.createGroup(owner.get(), parent, morvane::Bstr(name).get(), true, result.put());
        return result;
    }

    template <class Typed>
    morvane::ComPtr<Typed> make(enumPropType type, std::wstring_view name = L"Value", ICtrlPluginProp* where = nullptr,
                                IPropChangedCallback* callback = nullptr)
    {
        const auto home = where ? morvane::ComPtr<ICtrlPluginProp>(where) : group(L"Group");
        morvane::ComPtr<IVexPropBase> property;
        EXPECT_EQ(tree.createProp(owner.get(), home.get(), type, morvane::Bstr(name).get(), nullptr, true, callback,
                                  property.put()),
                  S_OK);
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
    PropertyTree tree;
    int notified = 0;
    IVexPropBase* lastNotified = nullptr;
    std::function<void()> onNotified;
};

inline std::wstring textOf(IVexPropBase* property)
{
    return propertyText(property);
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
