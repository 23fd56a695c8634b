// Radio boxes: every value in every state, groups by number, blinking, a picture to click, the looks of push buttons.
#include "gallery/page.h"

#include <array>

namespace gallery {

namespace {

constexpr UINT kChildImageClicked = 3024;
constexpr Size kBox{112, 24};
constexpr int kColumn = 120;
constexpr int kRow = 32;
constexpr std::array kThirds = {24, 264, 504};

// Group numbers hold for the whole window, so every sample has one of its own.
enum Group : long { Size3 = 1, Delivery, AcrossParents, Blinking, WithPicture, Segments, Mirrored, Samples = 900 };

void addSample(Scene& scene, IVexControlBase& page, Point at, bool isChecked, VEX_RADIOBOXSTATE state)
{
    VARIANT_BOOL done = VARIANT_FALSE;
    const long group = Samples + at.x + at.y * 8;
    const auto box = scene.radioBox(&page, Rect::at(at, kBox), isChecked ? L"Checked" : L"Unchecked", group);
    makeStill(*box);
    if (isChecked)
        box->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE);
    if (state == VEX_RADIOBOX_DISABLE) {
        box->EnableObject(VARIANT_FALSE, VARIANT_TRUE, &done);
    } else if (state != VEX_RADIOBOX_NORMAL) {
        box->SetMouseMove(VARIANT_TRUE); // or the state would settle to normal
        box->SetButtonState(state, VARIANT_TRUE);
    }
}

void addSamples(Scene& scene, IVexControlBase& page, int top)
{
    struct Column {
        const wchar_t* name;
        VEX_RADIOBOXSTATE state;
    };
    static constexpr std::array<Column, 5> kColumns = {{{L"Normal", VEX_RADIOBOX_NORMAL},
                                                        {L"Hot", VEX_RADIOBOX_HOT},
                                                        {L"Pressed", VEX_RADIOBOX_PRESS},
                                                        {L"Focused", VEX_RADIOBOX_NORMAL},
                                                        {L"Disabled", VEX_RADIOBOX_DISABLE}}};
    int left = 24;
    for (const Column& column : kColumns) {
        scene.label(&page, Rect::at({left, top}, {kBox.width, 16}), column.name, {scene.theme().textSoft, 8});
        for (const bool isChecked : {false, true}) {
            const Point at{left, top + 20 + (isChecked ? kRow : 0)};
            addSample(scene, page, at, isChecked, column.state);
            if (column.name == kColumns[3].name)
                focusSample(scene, page, Rect::at(at, {112, 24}));
        }
        left += kColumn;
    }
}

void addGroup(Scene& scene, IVexControlBase& parent, Point at, long group, std::initializer_list<const wchar_t*> texts)
{
    bool isFirst = true;
    for (const wchar_t* text : texts) {
        const auto box = scene.radioBox(&parent, Rect::at(at, {200, 24}), text, group);
        if (std::exchange(isFirst, false))
            box->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE);
        at.y += kRow;
    }
}

/// Two forms whose boxes share a group, because they share its number.
void addAcrossParents(Scene& scene, IVexControlBase& page, int top)
{
    const std::array<std::array<const wchar_t*, 2>, 2> texts = {{{L"Here", L"Also here"}, {L"There", L"Also there"}}};
    int left = kThirds[2];
    for (const auto& pair : texts) {
        const auto line = scene.form(&page, Rect::at({left, top}, {112, 88}), scene.theme().line);
        const auto card = scene.form(line.get(), Rect::at({1, 1}, {110, 86}), scene.theme().surface);
        int y = 15;
        for (const wchar_t* text : pair) {
            const auto box = scene.radioBox(card.get(), Rect::at({7, y}, {100, 24}), text, AcrossParents);
            if (text == texts[0][0])
                box->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE);
            y += kRow;
        }
        left += kColumn;
    }
}

void addBlinking(Scene& scene, IVexControlBase& page, Point at)
{
    constexpr short kTimer = 77;
    constexpr short kHalfPeriodMs = 600;
    const auto box = scene.radioBox(&page, Rect::at(at, {200, 24}), L"You have a message", Blinking);
    box->SetBlinkImage(scene.drawing(L"blink").get());
    box->StartBlink(kTimer, kHalfPeriodMs);
    const auto toggle = scene.button(&page, Rect::at({at.x, at.y + kRow}, {104, 28}), L"Stop");
    scene.onClick(*toggle, [box, raw = toggle.get(), isOn = true]() mutable {
        isOn = !isOn;
        if (isOn)
            box->StartBlink(kTimer, kHalfPeriodMs);
        else
            box->StopBlink();
        raw->SetText(Bstr(isOn ? L"Stop" : L"Start").get());
    });
}

void addWithPicture(Scene& scene, IVexControlBase& page, Point at)
{
    const auto box = scene.radioBox(&page, Rect::at(at, {200, 24}), L"Unread", WithPicture);
    box->SetChildWndImage(scene.drawing(L"close").get(), static_cast<short>(scene.scaled(4)),
                          static_cast<short>(scene.scaled(4)));
    const auto answer = scene.label(&page, Rect::at({at.x, at.y + kRow}, {200, 28}), L"The picture is its own button",
                                    {scene.theme().textSoft, 9});
    scene.onWindowMessage(kChildImageClicked, [answer, count = 0](WPARAM) mutable {
        const std::wstring text = L"Picture clicked: " + std::to_wstring(++count);
        answer->SetText(Bstr(text).get());
    });
}

/// A radio box that is a push button which stays down: the button's pictures behind a text in the middle.
void dressAsButton(const Scene& scene, IRadioBox& box, ICmdButton& model)
{
    static constexpr std::array kStates = {VEX_BTN_NORMAL, VEX_BTN_HOT, VEX_BTN_PRESS, VEX_BTN_DISABLE};
    const auto down = chosenButtonSection(scene);
    VARIANT_BOOL done = VARIANT_FALSE;
    for (int index = VEX_RADIOBOX_NORMAL; index < VEX_RADIOBOX_LAST; ++index) {
        const auto state = static_cast<VEX_RADIOBOXSTATE>(index);
        const VEX_BUTTONSTATE look = kStates[static_cast<std::size_t>(index)];
        for (const VARIANT_BOOL isChecked : {VARIANT_FALSE, VARIANT_TRUE}) {
            ComPtr<IVexImageBase> section;
            ComPtr<IVexTextStyle> style;
            if (isChecked && (look == VEX_BTN_NORMAL || look == VEX_BTN_HOT))
                section = down;
            else
                model.GetBackImageSec(look, section.put());
            model.GetBackTextStyle(look, style.put());
            box.SetBackImage(state, isChecked, section.get(), &done);
            box.SetTextStyle(state, isChecked, style.get(), &done);
            box.SetBoxImage(state, isChecked, nullptr, &done);
        }
    }
}

void addSegments(Scene& scene, IVexControlBase& page, Point at)
{
    const auto model = scene.button(&page, Rect::at(at, {72, 28}), L"");
    model->SetVisible(VARIANT_FALSE, VARIANT_FALSE, VARIANT_FALSE);
    for (const wchar_t* text : {L"Day", L"Week", L"Month"}) {
        const auto box = scene.radioBox(&page, Rect::at(at, {72, 28}), text, Segments);
        dressAsButton(scene, *box, *model);
        if (at.x == kThirds[2])
            box->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE);
        at.x += 80;
    }
}

void addMirrored(Scene& scene, IVexControlBase& page, Point at)
{
    for (const wchar_t* text : {L"From right to left", L"Its box at the right"}) {
        const auto box = scene.radioBox(&page, Rect::at(at, {200, 24}), text, Mirrored);
        box->MirrorObject(VARIANT_TRUE);
        box->DirectRedraw(nullptr);
        at.x = kThirds[1];
    }
}

} // namespace

void buildRadioBoxPage(Scene& scene, IVexControlBase& page)
{
    const int top =
        pageHeading(scene, page, L"Radio box", L"One of a group: boxes with the same group number share one choice.");
    sectionHeading(scene, page, {24, top}, L"Values and states");
    addSamples(scene, page, top + 24);
    sectionHeading(scene, page, {kThirds[0], top + 136}, L"Size");
    addGroup(scene, page, {kThirds[0], top + 160}, Size3, {L"Small", L"Medium", L"Large"});
    sectionHeading(scene, page, {kThirds[1], top + 136}, L"Delivery");
    addGroup(scene, page, {kThirds[1], top + 160}, Delivery, {L"Pick up", L"By post", L"By courier"});
    sectionHeading(scene, page, {kThirds[2], top + 136}, L"One group in two forms");
    addAcrossParents(scene, page, top + 160);
    sectionHeading(scene, page, {kThirds[0], top + 272}, L"Blinking");
    addBlinking(scene, page, {kThirds[0], top + 296});
    sectionHeading(scene, page, {kThirds[1], top + 272}, L"Picture to click");
    addWithPicture(scene, page, {kThirds[1], top + 296});
    sectionHeading(scene, page, {kThirds[2], top + 272}, L"Like push buttons");
    addSegments(scene, page, {kThirds[2], top + 296});
    sectionHeading(scene, page, {24, top + 376}, L"Mirrored");
    addMirrored(scene, page, {24, top + 400});
}

} // namespace gallery
