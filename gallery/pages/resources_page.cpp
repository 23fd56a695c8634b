// Images: sections stretched and repeated, coloured and transparent; pictures of every format; an animation.
#include "gallery/pages/samples.h"

namespace gallery {

namespace {

constexpr int kLeft = 24;
constexpr Size kSample{71, 60};
constexpr int kGap = 9;
constexpr int kFrames = 9; // of the animation

// Stretching ----------------------------------------------------------------------------------------------------------

/// Which parts of the nine repeat instead of being stretched.
struct Repeats {
    const wchar_t* name;
    bool client = false;
    bool sides = false;
    bool ends = false;
};

ComPtr<IVexImageBase> framedSection(IVexPicture& picture, const Repeats& repeats)
{
    const auto stretched = [](bool isRepeated) { return isRepeated ? VARIANT_FALSE : VARIANT_TRUE; };
    auto section = sectionOf(picture);
    section->put_rcBorder({8, 8, 8, 8});
    section->put_bClientAreaStretch(stretched(repeats.client));
    section->put_bLeftEdgeStretch(stretched(repeats.sides));
    section->put_bRightEdgeStretch(stretched(repeats.sides));
    section->put_bTopEdgeStretch(stretched(repeats.ends));
    section->put_bBottomEdgeStretch(stretched(repeats.ends));
    return section;
}

void addStretching(Scene& scene, IVexControlBase& page, int top)
{
    static constexpr Repeats kModes[] = {{L"stretched"},
                                         {L"repeated", true, true, true},
                                         {L"middle repeated", true, false, false},
                                         {L"sides repeated", false, true, false},
                                         {L"ends repeated", false, false, true}};
    constexpr Size kStage{95, 62};
    const auto picture = samplePicture(L"frame.png");
    Row row({kLeft, top}, kStage, 8);

    const Rect natural = row.next();
    const auto stage = board(scene, page, natural);
    showSection(scene, *stage, Rect::at({35, 19}, {24, 24}), *framedSection(*picture, {}));
    caption(scene, page, natural, L"natural size");
    for (const Repeats& mode : kModes) {
        const Rect place = row.next();
        showSection(scene, *board(scene, page, place), {8, 6, 87, 56}, *framedSection(*picture, mode));
        caption(scene, page, place, mode.name);
    }
    const Rect small = row.next();
    const auto crowd = board(scene, page, small);
    const auto section = framedSection(*picture, {});
    for (const Rect& place : {Rect{6, 6, 18, 18}, Rect{24, 6, 34, 56}, Rect{40, 6, 90, 14}, Rect{40, 20, 56, 36},
                              Rect{6, 24, 18, 29}, Rect{40, 46, 90, 56}})
        showSection(scene, *crowd, place, *section);
    caption(scene, page, small, L"very small");
}

// Colours -------------------------------------------------------------------------------------------------------------

void addColours(Scene& scene, IVexControlBase& page, int top)
{
    const auto picture = samplePicture(L"motif.png");
    const auto keyed = samplePicture(L"motif-key.bmp");
    Row row({kLeft, top}, kSample, kGap);
    const auto add = [&](const wchar_t* name, IVexImageBase& section, const Rect& where = {11, 6, 59, 54}) {
        const Rect place = row.next();
        showSection(scene, *board(scene, page, place), where, section);
        caption(scene, page, place, name);
    };
    add(L"alpha", *sectionOf(*picture));
    const auto close = sectionOf(*picture);
    SkinRect part{24, 0, 48, 24};
    close->put_rect(&part);
    add(L"a part, large", *close, {6, 0, 66, 60});
    add(L"colour key", *sectionOf(*keyed));
    const auto transparent = sectionOf(*keyed);
    transparent->put_clrTrans(RGB(255, 0, 255));
    transparent->put_bTransparent(VARIANT_TRUE);
    add(L"key left out", *transparent);
    struct Tint {
        const wchar_t* name;
        OLE_COLOR color;
    };
    for (const Tint& tint : {Tint{L"in red", RGB(0xC4, 0x2B, 0x1C)}, Tint{L"in green", RGB(0x1E, 0x7F, 0x4F)},
                             Tint{L"in grey", RGB(0x80, 0x80, 0x80)}}) {
        const auto section = sectionOf(*picture);
        section->put_clrColorize(tint.color);
        add(tint.name, *section);
    }
    for (const short opacity : {short{160}, short{64}}) {
        const auto section = sectionOf(*picture);
        section->put_nOpacity(opacity);
        add((L"opacity " + std::to_wstring(opacity)).c_str(), *section);
    }
}

// Formats -------------------------------------------------------------------------------------------------------------

void addFormats(Scene& scene, IVexControlBase& page, int top)
{
    struct Format {
        const wchar_t* name;
        const wchar_t* file;
    };
    static constexpr Format kFormats[] = {
        {L"PNG", L"motif.png"}, {L"BMP", L"motif-key.bmp"}, {L"BMP, packed", L"motif-rle.bmp"}, {L"JPEG", L"motif.jpg"},
        {L"GIF", L"motif.gif"}, {L"ICO", L"motif.ico"},     {L"TGA, packed", L"motif.tga"}};
    Row row({kLeft, top}, kSample, kGap);
    for (const Format& format : kFormats) {
        const Rect place = row.next();
        showSection(scene, *board(scene, page, place), {11, 6, 59, 54}, *sectionOf(*samplePicture(format.file)));
        caption(scene, page, place, format.name);
    }
}

// Animation -----------------------------------------------------------------------------------------------------------

/// Lays one frame of an animated picture over an object's inside; `place` is relative to it.
void showFrame(const Scene& scene, IVexControlBase& object, const Rect& place, IVexImageBase& section, int frame)
{
    ComPtr<IVexRect> rect;
    SkinRect own{};
    object.GetRect(rect.put());
    if (!rect || FAILED(rect->GetRectStruct(&own)))
        return;
    const Rect where = scene.scaled(place).shifted(own.left, own.top);
    object.Reset();
    object.AddImageBase(&section, {where.left, where.top, where.right, where.bottom}, static_cast<short>(frame));
    object.Update();
}

void addAnimation(Scene& scene, IVexControlBase& page, int top)
{
    constexpr int kPeriodMs = 80; // as the file says for each frame
    constexpr Size kStage{48, 48};
    const auto section = sectionOf(*samplePicture(L"dial.gif"));
    Row row({kLeft, top}, kStage, 15);
    for (int frame = 0; frame < kFrames; ++frame) {
        const Rect place = row.next();
        showFrame(scene, *board(scene, page, place), {0, 0, 48, 48}, *section, frame);
        caption(scene, page, place, std::to_wstring(frame + 1));
    }
    const Rect place = row.next().shifted(24, 0);
    const auto live = board(scene, page, place);
    caption(scene, page, place, L"live");
    showFrame(scene, *live, {0, 0, 48, 48}, *section, 0);
    Scene* const shared = &scene;
    scene.every(kPeriodMs, *live, [shared, live, section, frame = 0]() mutable {
        frame = (frame + 1) % kFrames;
        showFrame(*shared, *live, {0, 0, 48, 48}, *section, frame);
    });
}

} // namespace

void buildResourcesPage(Scene& scene, IVexControlBase& page)
{
    const int top = pageHeading(scene, page, L"Images",
                                L"Sections of pictures: nine parts that stretch or repeat, colours, and each format.");
    sectionHeading(scene, page, {kLeft, top}, L"Stretching");
    addStretching(scene, page, top + 24);
    sectionHeading(scene, page, {kLeft, top + 118}, L"Colours and transparency");
    addColours(scene, page, top + 142);
    sectionHeading(scene, page, {kLeft, top + 234}, L"Formats");
    addFormats(scene, page, top + 258);
    sectionHeading(scene, page, {kLeft, top + 350}, L"Frames of an animated GIF");
    addAnimation(scene, page, top + 374);
}

} // namespace gallery
