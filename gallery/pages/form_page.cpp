// Forms: fills, a picture, a bitmap, forms inside forms with clipping, children that move with their form.
#include "gallery/page.h"

#include <array>
#include <cmath>
#include <cstdint>

namespace gallery {

namespace {

constexpr Size kSample{160, 80};
constexpr int kColumn = 184;

void caption(Scene& scene, IVexControlBase& page, Point sample, std::wstring_view text)
{
    scene.label(&page, Rect::at({sample.x, sample.y + kSample.height + 4}, {kSample.width, 18}), text,
                {scene.theme().textSoft, 9});
}

void addFills(Scene& scene, IVexControlBase& page, int top)
{
    int left = 24;
    for (const int degrees : {0, 45, 90, 180}) {
        const auto form = scene.form(&page, Rect::at({left, top}, kSample), scene.theme().surface);
        form->SetBackColor(scene.fill(scene.theme().accent, scene.theme().surface, degrees).get());
        form->DirectRedraw(nullptr);
        caption(scene, page, {left, top}, L"from accent to surface, " + std::to_wstring(degrees) + L"\u00B0");
        left += kColumn;
    }
}

/// A bitmap of the platform's, as an application may have computed it: rings in a colour, fading outwards.
class RingBitmap {
public:
    RingBitmap(Size size, COLORREF ink, COLORREF ground)
    {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof(BITMAPINFOHEADER), size.width, -size.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        m_handle = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        if (!m_handle)
            throw std::bad_alloc();
        auto* pixel = static_cast<std::uint32_t*>(bits);
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x)
                *pixel++ = colourAt(x - size.width / 2, y - size.height / 2, size.height, ink, ground);
    }
    RingBitmap(const RingBitmap&) = delete;
    RingBitmap& operator=(const RingBitmap&) = delete;
    ~RingBitmap() { DeleteObject(m_handle); }

    std::int64_t handle() const { return reinterpret_cast<std::int64_t>(m_handle); }

private:
    static std::uint32_t colourAt(int x, int y, int height, COLORREF ink, COLORREF ground)
    {
        const double distance = std::hypot(x, y) / height;
        const double share = (0.5 + 0.5 * std::cos(distance * 40)) * std::exp(-distance * 1.5);
        const auto mixed = [share](int a, int b) { return static_cast<std::uint32_t>(b + (a - b) * share); };
        return 0xFF000000 | mixed(GetRValue(ink), GetRValue(ground)) << 16 |
               mixed(GetGValue(ink), GetGValue(ground)) << 8 | mixed(GetBValue(ink), GetBValue(ground));
    }

    HBITMAP m_handle = nullptr;
};

void addPictures(Scene& scene, IVexControlBase& page, int top)
{
    const auto colored = scene.form(&page, Rect::at({24, top}, kSample), scene.theme().selectSoft);
    caption(scene, page, {24, top}, L"one colour");

    const auto pictured = scene.form(&page, Rect::at({24 + kColumn, top}, kSample), scene.theme().surface);
    pictured->SetBackImageSec(scene.drawingSection(L"hills").get());
    pictured->SetDrawColor(VARIANT_FALSE);
    caption(scene, page, {24 + kColumn, top}, L"a picture of the skin");

    const auto mapped = scene.form(&page, Rect::at({24 + 2 * kColumn, top}, kSample), scene.theme().surface);
    const auto bitmap = std::make_shared<RingBitmap>(Size{scene.scaled(kSample.width), scene.scaled(kSample.height)},
                                                     scene.theme().accent, scene.theme().surface);
    IVexRenderImage* lent = nullptr; // the form's
    mapped->SetBackBitmap(bitmap->handle(), &lent);
    caption(scene, page, {24 + 2 * kColumn, top}, L"a bitmap over the fill");

    const int left = 24 + 3 * kColumn;
    const auto show = scene.button(&page, Rect::at({left, top}, {kSample.width, 28}), L"Show or hide the bitmap");
    scene.onClick(*show, [mapped, bitmap] {
        VARIANT_BOOL isShown = VARIANT_FALSE;
        mapped->IsShowBitmap(&isShown);
        mapped->SetShowBitmap(isShown ? VARIANT_FALSE : VARIANT_TRUE);
        mapped->DirectRedraw(nullptr);
    });
    const auto fade = scene.button(&page, Rect::at({left, top + 40}, {kSample.width, 28}), L"Half transparent or not");
    scene.onClick(*fade, [colored, pictured, mapped, isFaded = false]() mutable {
        isFaded = !isFaded;
        for (const auto& form : {colored, pictured, mapped}) {
            form->SetOpacity(isFaded ? 128 : 255);
            form->DirectRedraw(nullptr);
        }
    });
}

void addChildren(Scene& scene, IVexControlBase& page, int top)
{
    constexpr Size kInner{232, 104};
    const auto line = scene.form(&page, Rect::at({24, top}, {528, 136}), scene.theme().line);
    const auto outer = scene.form(line.get(), Rect::at({1, 1}, {526, 134}), scene.theme().surface);
    const auto inner = scene.form(outer.get(), Rect::at({15, 15}, kInner), scene.theme().selectSoft);
    scene.label(inner.get(), Rect::at({12, 8}, {180, 20}), L"A form inside a form", {scene.theme().text, 9, true});
    scene.checkBox(inner.get(), Rect::at({12, 32}, {170, 24}), L"Moves with its form");
    scene.button(inner.get(), Rect::at({152, 64}, {104, 28}), L"Clipped");

    const int left = 24 + 3 * kColumn;
    const auto move = scene.button(&page, Rect::at({left, top}, {kSample.width, 28}), L"Move the form");
    scene.onClick(*move, [shared = &scene, inner, kInner, step = 0]() mutable {
        static constexpr std::array<Point, 5> kPlaces = {{{15, 15}, {95, 23}, {207, 7}, {319, 47}, {-40, 15}}};
        shared->place(*inner, Rect::at(kPlaces[static_cast<std::size_t>(++step) % kPlaces.size()], kInner));
    });
    const auto hide = scene.button(&page, Rect::at({left, top + 40}, {kSample.width, 28}), L"Hide or show it");
    scene.onClick(*hide, [inner] {
        VARIANT_BOOL visible = VARIANT_FALSE;
        inner->IsVisible(&visible);
        inner->SetVisible(visible ? VARIANT_FALSE : VARIANT_TRUE, VARIANT_TRUE, VARIANT_FALSE);
    });
    const auto mirror = scene.button(&page, Rect::at({left, top + 80}, {kSample.width, 28}), L"Mirror it");
    scene.onClick(*mirror, [inner, outer, isMirrored = false]() mutable {
        isMirrored = !isMirrored;
        inner->MirrorObject(isMirrored ? VARIANT_TRUE : VARIANT_FALSE);
        outer->DirectRedraw(nullptr);
    });
}

} // namespace

void buildFormPage(Scene& scene, IVexControlBase& page)
{
    const int top =
        pageHeading(scene, page, L"Form", L"A surface with a picture, a fill or a bitmap that holds other controls.");
    sectionHeading(scene, page, {24, top}, L"Fills");
    addFills(scene, page, top + 24);
    sectionHeading(scene, page, {24, top + 144}, L"Colour, picture and bitmap");
    addPictures(scene, page, top + 168);
    sectionHeading(scene, page, {24, top + 288}, L"Children");
    addChildren(scene, page, top + 312);
}

} // namespace gallery
