#include "ambrel/objects/geometry_objects.h"

#include "frame/com/dispatch.h"
#include "frame/com/instance.h"
#include "frame/com/result.h"
#include "host/geometry.h"

namespace ambrel {

using morvane::returning;

namespace {

template <class Value, class Field>
HRESULT read(Field field, Value* result) noexcept
{
    return returning(result, [&] { return field; });
}

template <class Field, class Value>
HRESULT write(Field& field, Value value) noexcept
{
    field = static_cast<Field>(value);
    return S_OK;
}

class RectObject : public morvane::Dispatch<IVexRect> {
public:
    HRESULT finalConstruct() noexcept { return S_OK; }
    void finalRelease() noexcept {}
    void* findInterface(REFIID iid) noexcept
    {
        return iid == IID_IDispatch || iid == morvane::iidOf<IVexRect>() ? static_cast<IVexRect*>(this) : nullptr;
    }

    STDMETHODIMP get_left(long* result) noexcept override { return read(m_rect.left, result); }
    STDMETHODIMP put_left(long value) noexcept override { return write(m_rect.left, value); }
    STDMETHODIMP get_right(long* result) noexcept override { return read(m_rect.right, result); }
    STDMETHODIMP put_right(long value) noexcept override { return write(m_rect.right, value); }
    STDMETHODIMP get_top(long* result) noexcept override { return read(m_rect.top, result); }
    STDMETHODIMP put_top(long value) noexcept override { return write(m_rect.top, value); }
    STDMETHODIMP get_bottom(long* result) noexcept override { return read(m_rect.bottom, result); }
    STDMETHODIMP put_bottom(long value) noexcept override { return write(m_rect.bottom, value); }
    STDMETHODIMP GetWidth(long* result) noexcept override { return read(morvane::toRect(m_rect).width(), result); }
    STDMETHODIMP GetHeight(long* result) noexcept override { return read(morvane::toRect(m_rect).height(), result); }
    STDMETHODIMP SetRectStruct(SkinRect rect) noexcept override { return write(m_rect, rect); }
    STDMETHODIMP GetRectStruct(SkinRect* result) noexcept override { return read(m_rect, result); }

private:
    SkinRect m_rect{};
};

class PositionObject : public morvane::Dispatch<IVexPos> {
public:
    HRESULT finalConstruct() noexcept { return S_OK; }
    void finalRelease() noexcept {}
    void* findInterface(REFIID iid) noexcept
    {
        return iid == IID_IDispatch || iid == morvane::iidOf<IVexPos>() ? static_cast<IVexPos*>(this) : nullptr;
    }

    STDMETHODIMP get_nHorzAlignType(PosHorzAlignType* result) noexcept override { return read(m_x.nAlignType, result); }
    STDMETHODIMP put_nHorzAlignType(PosHorzAlignType value) noexcept override { return write(m_x.nAlignType, value); }
    STDMETHODIMP get_nVertAlignType(PosVertAlignType* result) noexcept override { return read(m_y.nAlignType, result); }
    STDMETHODIMP put_nVertAlignType(PosVertAlignType value) noexcept override { return write(m_y.nAlignType, value); }
    STDMETHODIMP get_nHorzSpaceType(PosHorzSpaceType* result) noexcept override { return read(m_x.nSpaceType, result); }
    STDMETHODIMP put_nHorzSpaceType(PosHorzSpaceType value) noexcept override { return write(m_x.nSpaceType, value); }
    STDMETHODIMP get_nVertSpaceType(PosVertSpaceType* result) noexcept override { return read(m_y.nSpaceType, result); }
    STDMETHODIMP put_nVertSpaceType(PosVertSpaceType value) noexcept override { return write(m_y.nSpaceType, value); }
    STDMETHODIMP get_left(long* result) noexcept override { return read(m_x.nLeft_Top, result); }
    STDMETHODIMP put_left(long value) noexcept override { return write(m_x.nLeft_Top, value); }
    STDMETHODIMP get_top(long* result) noexcept override { return read(m_y.nLeft_Top, result); }
    STDMETHODIMP put_top(long value) noexcept override { return write(m_y.nLeft_Top, value); }
    STDMETHODIMP get_right(long* result) noexcept override { return read(m_x.nRight_Bottom, result); }
    STDMETHODIMP put_right(long value) noexcept override { return write(m_x.nRight_Bottom, value); }
    STDMETHODIMP get_bottom(long* result) noexcept override { return read(m_y.nRight_Bottom, result); }
    STDMETHODIMP put_bottom(long value) noexcept override { return write(m_y.nRight_Bottom, value); }
    STDMETHODIMP get_width(long* result) noexcept override { return read(m_x.nWidth_Height, result); }
    STDMETHODIMP put_width(long value) noexcept override { return write(m_x.nWidth_Height, value); }
    STDMETHODIMP get_height(long* result) noexcept override { return read(m_y.nWidth_Height, result); }
    STDMETHODIMP put_height(long value) noexcept override { return write(m_y.nWidth_Height, value); }
    STDMETHODIMP GetPosStruct(VexPosition* result) noexcept override
    {
        return returning(result, [&] { return VexPosition{m_x, m_y}; });
    }
    STDMETHODIMP SetPosStruct(VexPosition position) noexcept override
    {
        m_x = position.horzPos;
        m_y = position.vertPos;
        return S_OK;
    }

private:
    PosBase m_x{};
    PosBase m_y{};
};

PositionHalf toHalf(const PosBase& record) noexcept
{
    const auto known = [](int value, int last) { return value >= 0 && value <= last ? value : 0; };
    return {static_cast<Anchor>(known(record.nAlignType, PHAT_RIGHT)),
            static_cast<Space>(known(record.nSpaceType, PHST_FASTNESS)), record.nLeft_Top, record.nRight_Bottom,
            record.nWidth_Height};
}

PosBase toRecord(const PositionHalf& half) noexcept
{
    return {static_cast<PosHorzAlignType>(half.anchor), static_cast<PosHorzSpaceType>(half.space), half.nearGap,
            half.farGap, half.size};
}

} // namespace

morvane::ComPtr<IVexRect> makeRect(const Rect& rect)
{
    auto object = morvane::Instance<RectObject>::make();
    object->SetRectStruct({rect.left, rect.top, rect.right, rect.bottom});
    return morvane::ComPtr<IVexRect>(object.get());
}

morvane::ComPtr<IVexPos> makePosition(const VexPosition& position)
{
    auto object = morvane::Instance<PositionObject>::make();
    object->SetPosStruct(position);
    return morvane::ComPtr<IVexPos>(object.get());
}

HRESULT createPosition(IUnknown* outer, REFIID iid, void** result) noexcept
{
    return morvane::Instance<PositionObject>::create(outer, iid, result);
}

Position toPosition(const VexPosition& record) noexcept
{
    return {toHalf(record.horzPos), toHalf(record.vertPos)};
}
VexPosition toRecord(const Position& position) noexcept
{
    return {toRecord(position.horizontal), toRecord(position.vertical)};
}

} // namespace ambrel
