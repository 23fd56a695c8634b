// The typed operations of property objects. They follow the operations of IVexPropBase in the object's table, and what
// stands at a position depends on the property's type, so a caller must know the type it created the property with.
//
// Positions are counted from 1 after IVexPropBase::GetRenderType. Those marked "fixed" are the contract: every host has
// them and the controls call no others. The remaining ones are the runtime's own and may differ under another host.
#pragma once

#include "host/host.h"

#include <cstddef>
#include <cstdint>

namespace morvane {

/// A property object's value as a type with a getter and a setter: Boolean, whole number, floating-point number.
template <class Value>
struct ValueProperty : IVexPropBase {
    virtual HRESULT STDMETHODCALLTYPE GetValue(Value* value) = 0; // 1 fixed
    virtual HRESULT STDMETHODCALLTYPE SetValue(Value value) = 0;  // 2 fixed
};

using BoolProperty = ValueProperty<VARIANT_BOOL>; // _PROPTYPE_BOOL; any bit pattern is kept as it was set
using LongProperty = ValueProperty<long>;         // _PROPTYPE_INT and _PROPTYPE_LONG
using FloatProperty = ValueProperty<float>;       // _PROPTYPE_FLOAT

/// _PROPTYPE_STRING
struct StringProperty : IVexPropBase {
    /// A new string that the caller frees; the empty string is a string, not null.
    virtual HRESULT STDMETHODCALLTYPE GetValue(BSTR* value) = 0; // 1 fixed
    /// The text is copied; null means empty.
    virtual HRESULT STDMETHODCALLTYPE SetValue(const wchar_t* value) = 0; // 2 fixed
};

/// _PROPTYPE_COMBO: a list of texts and the index of the chosen one, -1 for none.
struct ComboProperty : IVexPropBase {
    virtual HRESULT STDMETHODCALLTYPE AddItem(const wchar_t* text) = 0;    // 1 fixed
    virtual HRESULT STDMETHODCALLTYPE SetSelection(long index) = 0;        // 2 fixed
    virtual HRESULT STDMETHODCALLTYPE GetSelection(long* index) = 0;       // 3 fixed
    virtual HRESULT STDMETHODCALLTYPE GetItemCount(long* count) = 0;       // 4
    virtual HRESULT STDMETHODCALLTYPE GetItem(long index, BSTR* text) = 0; // 5
    virtual HRESULT STDMETHODCALLTYPE RemoveAllItems() = 0;                // 6
};

/// _PROPTYPE_COLOR: the library's own colour interface; GetValue 1, SetValue 2 and RenderDraw 4 are fixed.
using ColorProperty = IColorProp;

/// _PROPTYPE_FILLCOLOR
struct FillColorProperty : IVexPropBase {
    /// The fill, referenced; null when none is set.
    virtual HRESULT STDMETHODCALLTYPE GetFill(IFillColor** fill) = 0;                                       // 1 fixed
    virtual HRESULT STDMETHODCALLTYPE SetFill(IFillColor* fill) = 0;                                        // 2 fixed
    virtual HRESULT STDMETHODCALLTYPE GetResourceName(BSTR* name) = 0;                                      // 3
    virtual HRESULT STDMETHODCALLTYPE SetResourceName(const wchar_t* name) = 0;                             // 4
    virtual HRESULT STDMETHODCALLTYPE GetStartColor(OLE_COLOR* color) = 0;                                  // 5
    virtual HRESULT STDMETHODCALLTYPE SetStartColor(OLE_COLOR color) = 0;                                   // 6
    virtual HRESULT STDMETHODCALLTYPE GetEndColor(OLE_COLOR* color) = 0;                                    // 7
    virtual HRESULT STDMETHODCALLTYPE SetEndColor(OLE_COLOR color) = 0;                                     // 8
    virtual HRESULT STDMETHODCALLTYPE GetRotation(long* degrees) = 0;                                       // 9
    virtual HRESULT STDMETHODCALLTYPE SetRotation(long degrees) = 0;                                        // 10
    virtual HRESULT STDMETHODCALLTYPE Draw(std::int64_t dc, const SkinRect* rect, VARIANT_BOOL* drawn) = 0; // 11
    virtual HRESULT STDMETHODCALLTYPE RenderDraw(IVexRenderDC* dc, const SkinRect* rect,
                                                 VARIANT_BOOL* drawn) = 0; // 12 fixed
};

/// The frames of an animated picture, owned by the picture.
struct PictureFrameTable {
    std::int32_t frameCount;
    std::int32_t reserved[3];
    const std::int32_t* delaysMs; // one per frame, at offset 16
};
static_assert(offsetof(PictureFrameTable, delaysMs) == 16);

/// _PROPTYPE_IMAGESECTION
struct ImageSectionProperty : IVexPropBase {
    virtual HRESULT STDMETHODCALLTYPE GetResourceName(BSTR* name) = 0;          // 1
    virtual HRESULT STDMETHODCALLTYPE SetResourceName(const wchar_t* name) = 0; // 2
    virtual HRESULT STDMETHODCALLTYPE HasPicture(VARIANT_BOOL* has) = 0;        // 3
    /// The image section, referenced; null when none is set.
    virtual HRESULT STDMETHODCALLTYPE GetImageSection(IVexImageBase** section) = 0; // 4 fixed
    virtual HRESULT STDMETHODCALLTYPE SetImageSection(IVexImageBase* section) = 0;  // 5 fixed
    virtual HRESULT STDMETHODCALLTYPE SetSectionRect(const SkinRect* rect) = 0;     // 6
    /// The section's rectangle in its picture.
    virtual HRESULT STDMETHODCALLTYPE GetSectionRect(SkinRect* rect) = 0; // 7 fixed
    virtual HRESULT STDMETHODCALLTYPE GetImageWidth(short* width) = 0;    // 8 fixed: of one image, in pixels
    virtual HRESULT STDMETHODCALLTYPE GetImageHeight(short* height) = 0;  // 9 fixed
    virtual HRESULT STDMETHODCALLTYPE GetImageCount(long* count) = 0;     // 10
    virtual HRESULT STDMETHODCALLTYPE SetImageCount(long count) = 0;      // 11
    virtual HRESULT STDMETHODCALLTYPE Draw(std::int64_t dc, const SkinRect* rect, long index,
                                           VARIANT_BOOL* drawn) = 0; // 12
    virtual HRESULT STDMETHODCALLTYPE RenderDraw(IVexRenderDC* dc, const SkinRect* rect, long index, short flag,
                                                 VARIANT_BOOL* drawn) = 0;   // 13 fixed; the flag is always 0
    virtual HRESULT STDMETHODCALLTYPE GetBorder(SkinRect* border) = 0;       // 14
    virtual HRESULT STDMETHODCALLTYPE SetBorder(const SkinRect* border) = 0; // 15
    /// Null when the picture is not animated. Valid while the section keeps its picture.
    virtual HRESULT STDMETHODCALLTYPE GetFrameTable(const PictureFrameTable** table) = 0; // 16 fixed
};

/// _PROPTYPE_TEXTSTYLE
struct TextStyleProperty : IVexPropBase {
    virtual HRESULT STDMETHODCALLTYPE GetResourceName(BSTR* name) = 0;          // 1
    virtual HRESULT STDMETHODCALLTYPE SetResourceName(const wchar_t* name) = 0; // 2
    virtual HRESULT STDMETHODCALLTYPE HasTextStyle(VARIANT_BOOL* has) = 0;      // 3
    virtual HRESULT STDMETHODCALLTYPE GetTextColor(OLE_COLOR* color) = 0;       // 4
    virtual HRESULT STDMETHODCALLTYPE SetTextColor(OLE_COLOR color) = 0;        // 5
    /// The text style, referenced; null when none is set.
    virtual HRESULT STDMETHODCALLTYPE GetTextStyle(IVexTextStyle** style) = 0; // 6 fixed
    virtual HRESULT STDMETHODCALLTYPE SetTextStyle(IVexTextStyle* style) = 0;  // 7 fixed
    virtual HRESULT STDMETHODCALLTYPE Draw(std::int64_t dc, const SkinRect* rect, const wchar_t* text,
                                           VARIANT_BOOL* drawn) = 0; // 8
    virtual HRESULT STDMETHODCALLTYPE RenderDraw(IVexRenderDC* dc, const SkinRect* rect, const wchar_t* text,
                                                 VARIANT_BOOL* drawn) = 0; // 9 fixed
};

/// A property whose value is one shared object: _PROPTYPE_FONT, _PROPTYPE_CURSOR, _PROPTYPE_HOTKEY, _PROPTYPE_PLUGIN.
/// The controls create these and leave them to the host.
template <class Object>
struct ObjectProperty : IVexPropBase {
    virtual HRESULT STDMETHODCALLTYPE GetObject(Object** object) = 0; // 1, referenced
    virtual HRESULT STDMETHODCALLTYPE SetObject(Object* object) = 0;  // 2
};

using FontProperty = ObjectProperty<IVexFontEx>;
using CursorProperty = ObjectProperty<IVexCursor>;
using HotkeyProperty = ObjectProperty<IVexHotkey>;
using PluginProperty = ObjectProperty<IDispatch>;

} // namespace morvane
