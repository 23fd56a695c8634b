// The button's graphic and background pictures: strips, icons, bitmaps, sections and files.
#include "controls/buttons/command_button/command_button.h"

#include "frame/parts/file_bitmap.h"
#include "frame/parts/property_access.h"

namespace morvane {

namespace {

constexpr COLORREF kOpaqueBlack = 0xFF000000; // as the 2-D graphics library writes colours: alpha first

std::wstring_view baseName(std::wstring_view path)
{
    const auto slash = path.rfind(L'\\');
    return slash == std::wstring_view::npos ? path : path.substr(slash + 1);
}

/// The skin's shared resource of that name, added when there is none. Empty when the skin refuses.
template <class Interface>
ComPtr<Interface> sharedResource(IVexRes& res, VexObjType type, std::wstring_view name, bool& existed)
{
    const Bstr key(name);
    ComPtr<IVexObj> object;
    res.GetResObject(type, key.get(), nullptr, VARIANT_TRUE, object.put());
    existed = static_cast<bool>(object);
    if (!object)
        res.AddResObject(type, nullptr, key.get(), VARIANT_FALSE, object.put());
    return object.as<Interface>();
}

/// The skin's image section for a file, shared under a name made from the file's. A section of that name that exists
/// already is used as it is. `loaded` tells whether the file could be read; what was added stays in the skin either
/// way.
ComPtr<IVexImageBase> sectionForFile(IVexRes& res, BSTR path, bool& loaded)
{
    const std::wstring name(baseName(viewOf(path)));
    loaded = true;
    bool existed = false;
    const auto section = sharedResource<IVexImageBase>(res, VEXOBJTYPE_IMAGEBASE, L"CmdButton" + name, existed);
    if (!section || existed)
        return section;

    bool pictureExisted = false;
    const auto picture = sharedResource<IVexPicture>(res, VEXOBJTYPE_IMAGE, name, pictureExisted);
    VARIANT_BOOL imported = VARIANT_FALSE;
    loaded = picture && SUCCEEDED(picture->ImportFile(path, &imported)) && imported != VARIANT_FALSE;
    if (!loaded)
        return section;
    SkinRect whole = toSkinRect(Rect::at({}, pictureSize(picture)));
    section->put_ImageObj(picture.get());
    section->BuildPerPixImage();
    section->StretchAll(VARIANT_TRUE);
    section->put_rect(&whole);
    return section;
}

} // namespace

STDMETHODIMP CCmdButton::SetGraphicshIcon(std::int64_t icon, short, short) noexcept
{
    return guarded([&] {
        m_graphic.makeFromHandle(host(), icon, VEX_PT_ICO);
        m_fileBitmap.reset(); // after the image that was made from it
        m_graphicHandle = icon;
        fitToText();
    });
}

STDMETHODIMP CCmdButton::GetGraphicshIcon(std::int64_t* result) noexcept
{
    return returning(result, [&] { return m_graphicHandle; });
}

STDMETHODIMP CCmdButton::SetGraphicshBitmap(std::int64_t bitmap, VARIANT_BOOL redrawNow) noexcept
{
    return guarded([&] {
        m_graphic.makeFromHandle(host(), bitmap, VEX_PT_BMP);
        fitToText();
        if (redrawNow != VARIANT_FALSE)
            redrawOwnRect();
    });
}

STDMETHODIMP CCmdButton::GetGraphicshBitmap(std::int64_t* result) noexcept
{
    // A bitmap given to SetGraphicshBitmap lives on as the image made from it; its handle is not kept.
    return returning(result, [] { return std::int64_t{0}; });
}

STDMETHODIMP CCmdButton::SetFileIcon(BSTR path) noexcept
{
    return guarded([&] {
        UniqueBitmap bitmap = loadFileBitmap(path, kOpaqueBlack);
        if (!bitmap)
            return S_FALSE;
        m_graphicHandle = reinterpret_cast<std::int64_t>(bitmap.get());
        m_graphic.makeFromHandle(host(), m_graphicHandle, VEX_PT_BMP);
        m_fileBitmap = std::move(bitmap);
        redrawOwnRect();
        return S_OK;
    });
}

STDMETHODIMP CCmdButton::SetUpDownMode(VARIANT_BOOL stacked) noexcept
{
    return store(m_properties.graphic.isStacked, stacked);
}

STDMETHODIMP CCmdButton::SetGraphicOffset(long x, long y) noexcept
{
    return guarded([&] {
        if (!m_properties.graphic.x || !m_properties.graphic.y)
            return S_FALSE;
        m_properties.graphic.x.set(static_cast<int>(x));
        m_properties.graphic.y.set(static_cast<int>(y));
        fitToText();
        redraw();
        return S_OK;
    });
}

STDMETHODIMP CCmdButton::GetGraphicOffset(long* x, long* y) noexcept
{
    const HRESULT status = fetch(m_properties.graphic.x, m_properties.graphic.y, x, y);
    return status == S_OK && !(m_properties.graphic.x && m_properties.graphic.y) ? S_FALSE : status;
}

STDMETHODIMP CCmdButton::SetGraphicsImage(VEX_BUTTONSTATE state, IVexImageBase* section, VARIANT_BOOL redrawNow,
                                          VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& done) {
        StateLook* const look = lookAt(state);
        if (!look)
            return S_FALSE;
        look->graphics.setSection(section);
        fitToText();
        redrawIf(redrawNow);
        done = VARIANT_TRUE;
        return S_OK;
    });
}

STDMETHODIMP CCmdButton::GetGraphicsImage(VEX_BUTTONSTATE state, IVexImageBase** result) noexcept
{
    return fetchFrom(lookAt(state), &StateLook::graphics, result, S_FALSE);
}

STDMETHODIMP CCmdButton::SetBackhBitmap(VEX_BUTTONSTATE state, std::int64_t bitmap, VARIANT_BOOL*) noexcept
{
    if (!isButtonState(state))
        return E_INVALIDARG;
    return guarded([&] {
        if (!m_back)
            m_back = std::make_unique<std::array<Back, kButtonStateCount>>();
        Back& back = (*m_back)[static_cast<std::size_t>(state)];
        back.image.makeFromHandle(host(), bitmap, VEX_PT_BMP);
        if (back.bitmap.get() != reinterpret_cast<HBITMAP>(bitmap))
            back.bitmap.reset(reinterpret_cast<HBITMAP>(bitmap));
        redrawOwnRect();
    });
}

STDMETHODIMP CCmdButton::GetBackhBitmap(VEX_BUTTONSTATE state, std::int64_t* result) noexcept
{
    if (!result)
        return E_POINTER;
    if (!isButtonState(state))
        return E_INVALIDARG;
    const HBITMAP bitmap = m_back ? (*m_back)[static_cast<std::size_t>(state)].bitmap.get() : nullptr;
    if (!bitmap)
        return S_FALSE;
    *result = reinterpret_cast<std::int64_t>(bitmap);
    return S_OK;
}

STDMETHODIMP CCmdButton::SetBackImageFile(VEX_BUTTONSTATE state, BSTR path, VARIANT_BOOL* result) noexcept
{
    if (result)
        *result = VARIANT_FALSE;
    StateLook* const look = lookAt(state);
    if (!look)
        return E_INVALIDARG;
    return filling(result, [&](VARIANT_BOOL& done) {
        const ComPtr<IVexRes> res = host().res;
        if (!res)
            return S_OK; // no skin to hold the picture
        bool loaded = false;
        const ComPtr<IVexImageBase> section = sectionForFile(*res, path, loaded);
        if (!section || !loaded)
            return S_OK;
        look->image.setSection(section.get());
        redraw();
        done = VARIANT_TRUE;
        return S_OK;
    });
}

} // namespace morvane
