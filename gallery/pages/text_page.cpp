// Fills and text: gradients, alignments, trimming, effects, directions, fonts and the focus mark.
#include "gallery/pages/samples.h"

namespace gallery {

namespace {

constexpr int kLeft = 24;

struct Sample {
    const wchar_t* name;
    const wchar_t* text;
};

// Fills ---------------------------------------------------------------------------------------------------------------

void addFills(Scene& scene, IVexControlBase& page, int top)
{
    const Theme& theme = scene.theme();
    Row row({kLeft, top}, {71, 36}, 9);
    const auto add = [&](OLE_COLOR from, OLE_COLOR to, int degrees, const std::wstring& name) {
        const Rect place = row.next();
        const auto form = scene.form(&page, place, theme.surface);
        form->SetBackColor(scene.fill(from, to, degrees).get());
        caption(scene, page, place, name);
    };
    add(theme.accent, theme.accent, 0, L"solid");
    for (const int degrees : {0, 45, 90, 135, 180, 225, 270, 315})
        add(theme.accent, theme.surface, degrees, std::to_wstring(degrees) + L"\u00B0");
}

// Alignment and offsets -----------------------------------------------------------------------------------------------

void addAlignments(Scene& scene, IVexControlBase& page, int top)
{
    static constexpr const wchar_t* kVertical[] = {L"top", L"middle", L"bottom"};
    static constexpr const wchar_t* kHorizontal[] = {L"left", L"centre", L"right"};
    Row row({kLeft, top}, {71, 40}, 9);
    for (short vertical = 0; vertical < 3; ++vertical) {
        for (short horizontal = 0; horizontal < 3; ++horizontal) {
            const auto style = sampleStyle(scene, {L"Tahoma", 8});
            style->put_nHAlign(horizontal);
            style->put_nVAlign(vertical);
            style->put_nLeftOffset(4); // clear of the edge
            style->put_nRightOffset(4);
            style->put_nTopOffset(2);
            style->put_nBottomOffset(2);
            std::wstring name = vertical == 1 ? L"" : kVertical[vertical];
            if (horizontal != 1 || vertical == 1)
                name += (name.empty() ? L"" : L" ") + std::wstring(kHorizontal[horizontal]);
            showTextBox(scene, page, row.next(), name, *style);
        }
    }
}

// Too long ------------------------------------------------------------------------------------------------------------

void addTrimming(Scene& scene, IVexControlBase& page, int top)
{
    static constexpr wchar_t kSentence[] = L"Sentences that are too long";
    static constexpr Sample kKinds[] = {
        {L"cut off", kSentence},           {L"whole characters", kSentence},
        {L"whole words", kSentence},       {L"dots after a character", kSentence},
        {L"dots after a word", kSentence}, {L"dots within a path", L"C:\\Program Files\\Morvane\\skin.zip"}};
    Row row({kLeft, top}, {112, 24}, 8);
    short kind = 0;
    for (const Sample& sample : kKinds) {
        const auto style = sampleStyle(scene);
        style->put_nHAlign(0);
        style->put_nLeftOffset(5);
        style->put_nRightOffset(5);
        style->put_nStringTrimming(kind++);
        const Rect place = row.next();
        showTextBox(scene, page, place, sample.text, *style);
        caption(scene, page, place, sample.name);
    }
}

// Effects, prefixes, directions ---------------------------------------------------------------------------------------

void addEffects(Scene& scene, IVexControlBase& page, int top)
{
    constexpr SampleFont kLarge{L"Tahoma", 15, true};
    Row row({kLeft, top}, {112, 36}, 8);
    const auto add = [&](const wchar_t* name, const wchar_t* text, IVexTextStyle& style) {
        const Rect place = row.next();
        showTextBox(scene, page, place, text, style);
        caption(scene, page, place, name);
    };
    const auto shadow = sampleStyle(scene, kLarge);
    shadow->put_nEffect(1);
    shadow->put_nShadowHSpace(2);
    shadow->put_nShadowVSpace(2);
    shadow->put_clrShadow(scene.theme().line);
    add(L"shadow", L"Shadow", *shadow);
    const auto outline = sampleStyle(scene, kLarge);
    outline->put_nEffect(2);
    outline->put_clrText(scene.theme().surface);
    outline->put_clrShadow(scene.theme().accent);
    add(L"outline", L"Outline", *outline);
    const auto prefix = sampleStyle(scene);
    prefix->put_bHotkeyPrefixShow(VARIANT_TRUE);
    add(L"access key", L"&Save && close", *prefix);
    add(L"plain ampersands", L"&Save && close", *sampleStyle(scene));
    const auto wrapped = sampleStyle(scene);
    wrapped->put_bSingleLine(VARIANT_FALSE);
    add(L"several lines", L"Lines break between words", *wrapped);
    const auto offsets = sampleStyle(scene);
    offsets->put_nHAlign(0);
    offsets->put_nVAlign(0);
    offsets->put_nLeftOffset(24);
    offsets->put_nTopOffset(12);
    add(L"offset 24, 12", L"Moved", *offsets);
}

void addDirections(Scene& scene, IVexControlBase& page, int top)
{
    const auto rightToLeft = sampleStyle(scene);
    rightToLeft->put_bRightToLeft(VARIANT_TRUE);
    rightToLeft->put_nHAlign(0);
    rightToLeft->put_nLeftOffset(6);
    rightToLeft->put_nRightOffset(6);
    const Rect first = Rect::at({kLeft, top}, {172, 24});
    showTextBox(scene, page, first, L"\u05E9\u05DC\u05D5\u05DD, Morvane 3!", *rightToLeft);
    const Rect second = Rect::at({kLeft, top + 30}, {172, 24});
    showTextBox(scene, page, second, L"\u0645\u0631\u062D\u0628\u0627 123 (Morvane)", *rightToLeft);
    caption(scene, page, second, L"right to left");

    const auto vertical = sampleStyle(scene);
    vertical->put_bVertDraw(VARIANT_TRUE);
    vertical->put_nTopOffset(4);
    showTextBox(scene, page, Rect::at({kLeft + 184, top}, {24, 96}), L"at its start", *vertical);
    vertical->put_nHAlign(0);
    const auto atEnd = sampleStyle(scene);
    atEnd->put_bVertDraw(VARIANT_TRUE);
    atEnd->put_nHAlign(2);
    atEnd->put_nBottomOffset(4);
    showTextBox(scene, page, Rect::at({kLeft + 214, top}, {24, 96}), L"at its end", *atEnd);
}

// Fonts ---------------------------------------------------------------------------------------------------------------

void addFonts(Scene& scene, IVexControlBase& page, int top)
{
    struct FontSample {
        const wchar_t* text;
        SampleFont font;
    };
    static constexpr FontSample kFonts[] = {
        {L"Tahoma 9, the default", {}},
        {L"Bold", {L"Tahoma", 9, true}},
        {L"Italic", {L"Tahoma", 9, false, true}},
        {L"Underlined", {L"Tahoma", 9, false, false, true}},
        {L"Struck out", {L"Tahoma", 9, false, false, false, true}},
        {L"\u4E2D\u6587 \u65E5\u672C\u8A9E \uD55C\uAD6D\uC5B4", {}},
        {L"\u0395\u03BB\u03BB\u03B7\u03BD\u03B9\u03BA\u03AC, \u0420\u0443\u0441\u0441\u043A\u0438\u0439", {}},
        {L"20 points", {L"Tahoma", 20}}};
    int index = 0;
    for (const FontSample& sample : kFonts) {
        const auto style = sampleStyle(scene, sample.font);
        style->put_nHAlign(0);
        const int column = index / 4;
        const int height = sample.font.points > 12 ? 40 : 22;
        showText(scene, page,
                 Rect::at({kLeft + 262 + column * 160, top + (index % 4) * 24}, {column == 0 ? 150 : 190, height}),
                 sample.text, *style);
        ++index;
    }
}

void addFocus(Scene& scene, IVexControlBase& page, int top)
{
    const auto button = scene.button(&page, Rect::at({620, top}, {116, 28}), L"Press Tab");
    button->SetTooltip(Bstr(L"The ring shows where the keyboard goes").get());
    scene.checkBox(&page, Rect::at({620, top + 36}, {116, 24}), L"then again");
}

} // namespace

void buildTextPage(Scene& scene, IVexControlBase& page)
{
    const int top =
        pageHeading(scene, page, L"Fills and text", L"Gradients at every angle and all that a text style can say.");
    sectionHeading(scene, page, {kLeft, top}, L"Fills");
    addFills(scene, page, top + 22);
    sectionHeading(scene, page, {kLeft, top + 84}, L"Alignment");
    addAlignments(scene, page, top + 106);
    sectionHeading(scene, page, {kLeft, top + 156}, L"Too long for its place");
    addTrimming(scene, page, top + 178);
    sectionHeading(scene, page, {kLeft, top + 228}, L"Effects, access keys, lines, offsets");
    addEffects(scene, page, top + 250);
    sectionHeading(scene, page, {kLeft, top + 312}, L"Directions");
    addDirections(scene, page, top + 334);
    sectionHeading(scene, page, {kLeft + 262, top + 312}, L"Fonts");
    addFonts(scene, page, top + 332);
    sectionHeading(scene, page, {620, top + 312}, L"Focus");
    addFocus(scene, page, top + 334);
}

} // namespace gallery
