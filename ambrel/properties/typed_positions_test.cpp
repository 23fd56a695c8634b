// Where compiled clients find the typed operations: by their place in the property object's table, counted after the
// operations that all property objects have. Nothing here goes through a declaration that could move with them.
#include "ambrel/properties/properties_fixture.h"

#include <gtest/gtest.h>

namespace ambrel {
namespace {

using morvane::Bstr;
using morvane::ComPtr;

template <class... Arguments>
HRESULT callAt(const ComPtr<IVexPropBase>& property, std::size_t position, Arguments... arguments)
{
    using Method = HRESULT(STDMETHODCALLTYPE*)(IVexPropBase*, Arguments...);
    void** const table = *reinterpret_cast<void***>(property.get());
    return reinterpret_cast<Method>(table[kPropertySlots + position - 1])(property.get(), arguments...);
}

class TypedPositionsTest : public PropertiesTest {
protected:
    ComPtr<IVexPropBase> of(enumPropType type) { return make<IVexPropBase>(type); }

    SkinRect rect = {1, 2, 30, 40};
    VARIANT_BOOL drawn = VARIANT_FALSE;
    TestDouble<IVexRenderDC> dc;
};

TEST_F(TypedPositionsTest, SingleValuesAreGotAtOneAndSetAtTwo)
{
    const auto flag = of(_PROPTYPE_BOOL);
    VARIANT_BOOL truth = VARIANT_FALSE;
    EXPECT_EQ(callAt(flag, 2, VARIANT_TRUE), S_OK);
    EXPECT_EQ(callAt(flag, 1, &truth), S_OK);
    EXPECT_EQ(truth, VARIANT_TRUE);
    for (const enumPropType type : {_PROPTYPE_INT, _PROPTYPE_LONG}) {
        const auto number = of(type);
        std::int32_t value = 0;
        EXPECT_EQ(callAt(number, 2, std::int32_t{-7}), S_OK);
        EXPECT_EQ(callAt(number, 1, &value), S_OK);
        EXPECT_EQ(value, -7);
    }
    const auto words = of(_PROPTYPE_STRING);
    Bstr text;
    EXPECT_EQ(callAt(words, 2, L"caption"), S_OK);
    EXPECT_EQ(callAt(words, 1, text.put()), S_OK);
    EXPECT_EQ(text.view(), L"caption");
}

TEST_F(TypedPositionsTest, AChoiceTakesItemsAtOneAndIsChosenAtTwoAndGotAtThree)
{
    const auto combo = of(_PROPTYPE_COMBO);
    std::int32_t index = -1;
    EXPECT_EQ(callAt(combo, 1, L"Gif"), S_OK);
    EXPECT_EQ(callAt(combo, 1, L"Frames"), S_OK);
    EXPECT_EQ(callAt(combo, 2, std::int32_t{1}), S_OK);
    EXPECT_EQ(callAt(combo, 3, &index), S_OK);
    EXPECT_EQ(index, 1);
}

TEST_F(TypedPositionsTest, AColourFillsAtFour)
{
    const auto color = of(_PROPTYPE_COLOR);
    OLE_COLOR value = 0;
    EXPECT_EQ(callAt(color, 2, OLE_COLOR{0x00112233}), S_OK);
    EXPECT_EQ(callAt(color, 1, &value), S_OK);
    EXPECT_EQ(value, 0x00112233u);
    dc.answer(
        kSlotDcFillSolidColor,
        +[](TestDouble<IVexRenderDC>* self, SkinRect* area, OLE_COLOR filled, VARIANT_BOOL* done) {
            self->noted = area->right + static_cast<long long>(filled);
            *done = VARIANT_TRUE;
            return S_OK;
        });
    EXPECT_EQ(callAt(color, 4, dc.get(), &rect, &drawn), S_OK);
    EXPECT_EQ(drawn, VARIANT_TRUE);
    EXPECT_EQ(dc.noted, 30 + 0x00112233);
}

TEST_F(TypedPositionsTest, AFillIsGotAtOneSetAtTwoAndDrawnAtTwelve)
{
    const auto property = of(_PROPTYPE_FILLCOLOR);
    TestDouble<IFillColor> fill;
    fill.answer(
        kSlotFillRenderDraw,
        +[](TestDouble<IFillColor>* self, IVexRenderDC*, const SkinRect* area, VARIANT_BOOL* done) {
            self->noted = area->bottom;
            *done = VARIANT_TRUE;
            return S_OK;
        });
    EXPECT_EQ(callAt(property, 2, fill.get()), S_OK);
    ComPtr<IFillColor> given;
    EXPECT_EQ(callAt(property, 1, given.put()), S_OK);
    EXPECT_EQ(given.get(), fill.get());
    EXPECT_EQ(callAt(property, 12, dc.get(), &rect, &drawn), S_OK);
    EXPECT_EQ(drawn, VARIANT_TRUE);
    EXPECT_EQ(fill.noted, 40);
    given.reset();
    callAt(property, 2, static_cast<IFillColor*>(nullptr));
}

TEST_F(TypedPositionsTest, AnImageSectionIsMeasuredAndDrawnAtItsPlaces)
{
    const auto property = of(_PROPTYPE_IMAGESECTION);
    TestDouble<IVexImageBase> section;
    const auto measure = +[](TestDouble<IVexImageBase>*, long* length) {
        *length = 90;
        return S_OK;
    };
    section.answer(kSlotImageGetWidth, measure);
    section.answer(
        kSlotImageGetHeight, +[](TestDouble<IVexImageBase>*, long* length) {
            *length = 20;
            return S_OK;
        });
    section.answer(
        kSlotImageGetRect, +[](TestDouble<IVexImageBase>*, SkinRect* place) {
            *place = {5, 6, 7, 8};
            return S_OK;
        });
    section.answer(
        kSlotImageRenderDraw,
        +[](TestDouble<IVexImageBase>* self, IVexRenderDC*, const SkinRect* area, short index, VARIANT_BOOL* done) {
            self->noted = area->right * 100 + index;
            *done = VARIANT_TRUE;
            return S_OK;
        });
    EXPECT_EQ(callAt(property, 5, section.get()), S_OK);
    ComPtr<IVexImageBase> given;
    EXPECT_EQ(callAt(property, 4, given.put()), S_OK);
    EXPECT_EQ(given.get(), section.get());
    SkinRect place{};
    EXPECT_EQ(callAt(property, 7, &place), S_OK);
    EXPECT_EQ(place.bottom, 8);
    short width = 0;
    short height = 0;
    EXPECT_EQ(callAt(property, 8, &width), S_OK);
    EXPECT_EQ(callAt(property, 9, &height), S_OK);
    EXPECT_EQ(width, 90);
    EXPECT_EQ(height, 20);
    EXPECT_EQ(callAt(property, 13, dc.get(), &rect, std::int32_t{3}, short{0}, &drawn), S_OK);
    EXPECT_EQ(drawn, VARIANT_TRUE);
    EXPECT_EQ(section.noted, 3003);
    const void* frames = &rect;
    EXPECT_EQ(callAt(property, 16, &frames), S_FALSE);
    EXPECT_EQ(frames, nullptr) << "the picture is not animated";
    given.reset();
    callAt(property, 5, static_cast<IVexImageBase*>(nullptr));
}

TEST_F(TypedPositionsTest, ATextStyleIsGotAtSixSetAtSevenAndDrawsAtNine)
{
    const auto property = of(_PROPTYPE_TEXTSTYLE);
    TestDouble<IVexTextStyle> style;
    style.answer(
        kSlotStyleRenderDrawText, +[](TestDouble<IVexTextStyle>* self, IVexRenderDC*, BSTR text, const SkinRect* area,
                                      VARIANT_BOOL, long, SkinRect*, VARIANT_BOOL* done) {
            self->noted = area->left + static_cast<long long>(SysStringLen(text)) * 100;
            *done = VARIANT_TRUE;
            return S_OK;
        });
    EXPECT_EQ(callAt(property, 7, style.get()), S_OK);
    ComPtr<IVexTextStyle> given;
    EXPECT_EQ(callAt(property, 6, given.put()), S_OK);
    EXPECT_EQ(given.get(), style.get());
    EXPECT_EQ(callAt(property, 9, dc.get(), &rect, L"four", &drawn), S_OK);
    EXPECT_EQ(drawn, VARIANT_TRUE);
    EXPECT_EQ(style.noted, 401);
    given.reset();
    callAt(property, 7, static_cast<IVexTextStyle*>(nullptr));
}

} // namespace
} // namespace ambrel
