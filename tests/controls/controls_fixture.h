// Several controls of any class in one tree of the strange host, with a skin that makes images.
#pragma once

#include "host/host_classes.h"
#include "tests/controls/drawing_doubles.h"
#include "tests/frame/control_fixture.h"
#include "tests/strange_host/text.h"

namespace morvane::testing {

/// A control with the inner base object behind it, which may be looked at even when the control is gone.
template <class Interface>
struct Made {
    ComPtr<Interface> control;
    BaseObject* base = nullptr;

    Interface* operator->() const { return control.get(); }
    template <class Object>
    Object& property(std::wstring_view group, std::wstring_view name) const
    {
        return *base->find<Object>(group, name);
    }
};

class ControlsFixture : public ::testing::Test {
protected:
    ControlsFixture();

    /// Everything a test holds must be gone by now, and nothing else may hold anything.
    void TearDown() override;

    /// A control with its properties, not yet finally created.
    template <class Interface>
    Made<Interface> create(REFCLSID classId, const wchar_t* name, BaseObject* parent = nullptr)
    {
        Made<Interface> made{host.create<Interface>(classId), &host.base()};
        made.control->CreateProps();
        place(*made.base, name, parent);
        return made;
    }
    /// As the framework brings a control to life. The log starts afterwards.
    template <class Interface>
    Made<Interface> bringUp(REFCLSID classId, const wchar_t* name = L"one", BaseObject* parent = nullptr)
    {
        Made<Interface> made = create<Interface>(classId, name, parent);
        notify(made, VEXSM_INITOBJECT);
        notify(made, VEXSM_FINALCREATE);
        host.takeLog();
        return made;
    }

    template <class Interface>
    static Answer notify(const Made<Interface>& made, VexMsgID id, std::int64_t first = 0, std::int64_t second = 0,
                         std::int64_t third = 0)
    {
        return deliver(*made.control, {id, 0, first, second, third, 0, 0, VARIANT_FALSE});
    }
    /// A pointer notification at a point of the window.
    template <class Interface>
    static Answer point(const Made<Interface>& made, VexMsgID id, int x = 50, int y = 40)
    {
        return notify(made, id, 0, x, y);
    }
    /// Presses and releases.
    template <class Interface>
    static void click(const Made<Interface>& made)
    {
        point(made, VEXSM_LBUTTONDOWN);
        point(made, VEXSM_LBUTTONUP);
    }

    Log log() { return host.takeLog(); }
    /// What a drawing of the control calls, in order.
    template <class Interface>
    Log render(const Made<Interface>& made)
    {
        return renderLog(*made.control);
    }
    /// The same on a device context; the last entry is the status where that is not S_OK.
    template <class Interface>
    Log drawOnDc(const Made<Interface>& made)
    {
        return drawLog(*made.control);
    }

    /// A section with a picture of the given size, in the property of that name.
    template <class Interface>
    ImageSection& giveSection(const Made<Interface>& made, std::wstring_view group, std::wstring_view name,
                              SkinRect source)
    {
        auto& property = made.template property<ImageSectionObject>(group, name);
        const auto section = host.ledger.make<ImageSection>(narrow(group) + "." + narrow(name));
        section->picture = picture();
        section->source = source;
        property.section = ComPtr<IVexImageBase>(section.get());
        property.sectionRect = source;
        return *section;
    }
    template <class Interface>
    void giveStyle(const Made<Interface>& made, std::wstring_view group)
    {
        made.template property<TextStyleObject>(group, L"TextStyle").style = style();
    }
    ComPtr<IVexPicture> picture() { return ComPtr<IVexPicture>(host.ledger.make<Picture>().get()); }
    ComPtr<IVexTextStyle> style() { return ComPtr<IVexTextStyle>(host.ledger.make<TextStyle>().get()); }

    StrangeHost host;
    ComPtr<PictureRes> res = host.ledger.make<PictureRes>();
    ComPtr<BaseObject> form = host.ledger.make<BaseObject>(); // the parent of controls that have none of their own
    ComPtr<BaseObject> root = host.ledger.make<BaseObject>();
    std::function<void(UINT message)> onMessage; // what the application's window does

private:
    static Answer deliver(IVexControlBase& control, VexNotify record);
    void place(BaseObject& base, const wchar_t* name, BaseObject* parent);
    Log renderLog(IVexControlBase& control);
    Log drawLog(IVexControlBase& control);
    LRESULT receive(UINT message, WPARAM wParam, LPARAM lParam);
    std::string who(std::int64_t pointer) const;

    std::vector<BaseObject*> m_bases;
    ServedClass m_pictures;
    ServedClass m_sections;
};

/// One check or radio box, at 10,20,110,60 of the window. `Class` is the library's class of that name.
template <class Interface, class Class>
class BoxFixture : public ControlsFixture {
protected:
    void SetUp() override { box = bringUp<Interface>(iidOf<Class>()); }
    void TearDown() override
    {
        box.control.reset();
        ControlsFixture::TearDown();
    }

    int value() { return read(&Interface::GetValue); }
    int state() { return read(&Interface::GetButtonState); }
    void set(const wchar_t* group, const wchar_t* name, VARIANT_BOOL value)
    {
        box.template property<BoolObject>(group, name).value = value;
    }

    Made<Interface> box;

private:
    template <class Value>
    int read(HRESULT (STDMETHODCALLTYPE Interface::*getter)(Value*))
    {
        Value result{};
        EXPECT_EQ((box.control.get()->*getter)(&result), S_OK);
        return result;
    }
};
using CheckBoxFixture = BoxFixture<IVexCheckBox, ::VexCheckBox>;
using RadioBoxFixture = BoxFixture<IRadioBox, ::RadioBox>;

} // namespace morvane::testing
