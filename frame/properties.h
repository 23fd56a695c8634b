// Typed handles to a control's properties and the builder that declares them.
//
// Values live in the framework's property objects; a control holds handles and reads a value each time it needs it. A
// handle is empty until the table is built; reading an empty one gives the type's zero, writing one does nothing.
#pragma once

#include "frame/com/bstr.h"
#include "frame/com/com_ptr.h"
#include "host/geometry.h"
#include "host/typed_properties.h"

#include <initializer_list>
#include <string_view>

namespace morvane {

/// What all handles have: the property object, one counted reference.
template <class Typed, enumPropType Type>
class PropertyHandle {
public:
    static constexpr enumPropType kType = Type;

    explicit operator bool() const noexcept { return static_cast<bool>(m_property); }
    Typed* get() const noexcept { return m_property.get(); }
    /// Whether this is the property that a notification names. Nothing is called, so the pointer may lead anywhere.
    bool is(const IVexPropBase* changed) const noexcept { return m_property && m_property.get() == changed; }
    void attach(ComPtr<IVexPropBase> property) noexcept
    {
        m_property = ComPtr<Typed>::adopt(static_cast<Typed*>(property.detach()));
    }

protected:
    ComPtr<Typed> m_property;
};

class BoolProp : public PropertyHandle<BoolProperty, _PROPTYPE_BOOL> {
public:
    /// The stored bits: an application may have set something other than VARIANT_TRUE.
    VARIANT_BOOL raw() const;
    bool isSet() const { return raw() != 0; }
    bool isExactlyTrue() const { return raw() == VARIANT_TRUE; }
    void set(VARIANT_BOOL value);
};

template <enumPropType Type>
class NumberProp : public PropertyHandle<LongProperty, Type> {
public:
    int value() const
    {
        long result = 0;
        if (this->m_property)
            this->m_property->GetValue(&result);
        return static_cast<int>(result);
    }
    void set(int value)
    {
        if (this->m_property)
            this->m_property->SetValue(value);
    }
};
using LongProp = NumberProp<_PROPTYPE_LONG>;
using IntProp = NumberProp<_PROPTYPE_INT>;

/// Zero instead of what is no number or infinite, which a host may let through.
class FloatProp : public PropertyHandle<FloatProperty, _PROPTYPE_FLOAT> {
public:
    float value() const;
    void set(float value);
};

class StringProp : public PropertyHandle<StringProperty, _PROPTYPE_STRING> {
public:
    Bstr value() const;
    void set(const wchar_t* value); // null means empty
};

/// The items of a combo property in their order, and the index of the one that is chosen at first.
struct Choices {
    std::initializer_list<const wchar_t*> items;
    int initial = 0;
};

class ComboProp : public PropertyHandle<ComboProperty, _PROPTYPE_COMBO> {
public:
    /// The chosen item's index, -1 for none; any number when the host is careless.
    int selection() const;
    /// The choice out of an enumeration that begins with 0 and ends before `end`; `otherwise` for every other number.
    template <class Enum>
    Enum choice(Enum end, Enum otherwise) const
    {
        const int index = selection();
        return index >= 0 && index < static_cast<int>(end) ? static_cast<Enum>(index) : otherwise;
    }
    void select(int index);
    void addItem(const wchar_t* text);
};

class ColorProp : public PropertyHandle<ColorProperty, _PROPTYPE_COLOR> {
public:
    OLE_COLOR value() const;
    void set(OLE_COLOR color);
    void fill(IVexRenderDC& dc, const Rect& rect) const;
};

class FillColorProp : public PropertyHandle<FillColorProperty, _PROPTYPE_FILLCOLOR> {
public:
    ComPtr<IFillColor> fill() const;
    void set(IFillColor* fill);
    void draw(IVexRenderDC& dc, const Rect& rect) const;
};

class ImageProp : public PropertyHandle<ImageSectionProperty, _PROPTYPE_IMAGESECTION> {
public:
    ComPtr<IVexImageBase> section() const;
    void setSection(IVexImageBase* section);
    /// The section's rectangle in its picture.
    Rect sectionRect() const;
    /// Of one image of the section, in pixels; empty when there is none.
    Size imageSize() const;
    /// Whether there is a section that has a picture.
    bool hasPicture() const;
    void draw(IVexRenderDC& dc, const Rect& rect, int index = 0) const;
};

class TextStyleProp : public PropertyHandle<TextStyleProperty, _PROPTYPE_TEXTSTYLE> {
public:
    ComPtr<IVexTextStyle> style() const;
    void setStyle(IVexTextStyle* style);
    void draw(IVexRenderDC& dc, const Rect& rect, const Bstr& text) const;
};

/// A property that holds one object, reached by the operations that all property objects have: where the typed ones
/// stand is each host's own choice.
template <class Typed, enumPropType Type, class Object>
class ObjectProp : public PropertyHandle<Typed, Type> {
public:
    ComPtr<Object> object() const
    {
        ComPtr<IDispatch> held;
        if (this->m_property)
            this->m_property->GetDispatch(held.put());
        return held.template as<Object>();
    }
    void set(Object* object)
    {
        if (this->m_property)
            this->m_property->SetDispatch(object);
    }
};
using CursorProp = ObjectProp<CursorProperty, _PROPTYPE_CURSOR, IVexCursor>;
using HotkeyProp = ObjectProp<HotkeyProperty, _PROPTYPE_HOTKEY, IVexHotkey>;
using FontProp = ObjectProp<FontProperty, _PROPTYPE_FONT, IVexFontEx>;

/// What a dialog of the control edits at design time: the number by which the designer calls for the dialog
/// (VEXSM_CALLPROP), and a text that is shown and saved, such as the name of what was chosen.
class PluginProp : public PropertyHandle<PluginProperty, _PROPTYPE_PLUGIN> {
public:
    void setDialog(int identifier);
    Bstr text() const; // empty until there is one
    void setText(const wchar_t* text);
};

/// A group of the table under construction. Groups and properties appear in the order of the calls, which together with
/// their names is the key of saved skins.
class PropertyGroup {
public:
    PropertyGroup group(std::wstring_view name) const;

    /// Properties that belong to the skin's look.
    template <class Handle>
    void style(Handle& handle, std::wstring_view name) const
    {
        handle.attach(create(Handle::kType, name, true));
    }
    template <class Handle, class Default>
    void style(Handle& handle, std::wstring_view name, const Default& initial) const
    {
        style(handle, name);
        initialise(handle, initial);
    }

    /// Properties that hold content, such as texts.
    template <class Handle>
    void content(Handle& handle, std::wstring_view name) const
    {
        handle.attach(create(Handle::kType, name, false));
    }
    template <class Handle, class Default>
    void content(Handle& handle, std::wstring_view name, const Default& initial) const
    {
        content(handle, name);
        initialise(handle, initial);
    }

private:
    friend class PropertyTable;
    PropertyGroup(IVexControlBase& inner, ComPtr<ICtrlPluginProp> group) : m_inner(inner), m_group(std::move(group)) {}

    ComPtr<IVexPropBase> create(enumPropType type, std::wstring_view name, bool isStyle) const;

    static void initialise(BoolProp& p, bool value) { p.set(value ? VARIANT_TRUE : VARIANT_FALSE); }
    static void initialise(BoolProp& p, VARIANT_BOOL value) { p.set(value); }
    static void initialise(LongProp& p, int value) { p.set(value); }
    static void initialise(IntProp& p, int value) { p.set(value); }
    static void initialise(FloatProp& p, float value) { p.set(value); }
    static void initialise(StringProp& p, const wchar_t* value) { p.set(value); }
    static void initialise(ColorProp& p, OLE_COLOR value) { p.set(value); }
    static void initialise(ComboProp& p, const Choices& choices);
    static void initialise(PluginProp& p, int dialog) { p.setDialog(dialog); }

    IVexControlBase& m_inner;
    ComPtr<ICtrlPluginProp> m_group;
};

/// The property table of one control under construction.
class PropertyTable {
public:
    explicit PropertyTable(IVexControlBase& inner) : m_inner(inner) {}

    /// A top-level group.
    PropertyGroup group(std::wstring_view name) const;

private:
    IVexControlBase& m_inner;
};

} // namespace morvane
