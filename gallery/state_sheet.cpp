#include "gallery/state_sheet.h"

#include "ambrel/ambrel.h"
#include "gallery/picture_file.h"
#include "gallery/scene.h"

#include <array>
#include <cstdio>
#include <stdexcept>

namespace gallery {

namespace {

constexpr int kRowHeight = 40;
constexpr int kNameWidth = 130;
constexpr int kCellWidth = 150;
constexpr int kMargin = 12;
constexpr std::array kScales = {100, 150, 200};

/// One line of a sheet: a state and how a control comes to show it.
struct StateRow {
    std::wstring name;
    std::function<ComPtr<IVexControlBase>(Scene&, IVexControlBase& form, const Rect& place)> make;
};

void disable(IVexControlBase& control)
{
    VARIANT_BOOL done = VARIANT_FALSE;
    control.EnableObject(VARIANT_FALSE, VARIANT_TRUE, &done);
}

std::vector<StateRow> buttonRows()
{
    std::vector<StateRow> rows;
    static constexpr std::array<std::pair<const wchar_t*, VEX_BUTTONSTATE>, 4> kStates = {
        {{L"normal", VEX_BTN_NORMAL}, {L"hot", VEX_BTN_HOT}, {L"pressed", VEX_BTN_PRESS}, {L"focused", VEX_BTN_FOCUS}}};
    const auto button = [](Scene& scene, IVexControlBase& form, const Rect& place) {
        return scene.button(&form, Rect::at(place.topLeft(), {place.width(), 28}), L"Command");
    };
    for (const auto& [name, state] : kStates)
        rows.push_back({name, [=](Scene& s, IVexControlBase& f, const Rect& p) {
                            const auto made = button(s, f, p);
                            made->SetButtonState(state);
                            return made;
                        }});
    rows.push_back({L"disabled", [=](Scene& s, IVexControlBase& f, const Rect& p) {
                        const auto made = button(s, f, p);
                        disable(*made);
                        return made;
                    }});
    rows.push_back({L"inactive", [=](Scene& s, IVexControlBase& f, const Rect& p) {
                        const auto made = button(s, f, p);
                        made->SetActive(VARIANT_FALSE);
                        return made;
                    }});
    return rows;
}

constexpr std::array<std::pair<const wchar_t*, int>, 4> kBoxStates = {
    {{L"normal", 0}, {L"hot", 1}, {L"pressed", 2}, {L"disabled", 3}}};

std::vector<StateRow> checkBoxRows()
{
    std::vector<StateRow> rows;
    static constexpr std::array kValues = {L"unchecked", L"checked", L"half-checked"};
    for (int value = 0; value < 3; ++value) {
        for (const auto& [name, state] : kBoxStates)
            rows.push_back({kValues[static_cast<std::size_t>(value)] + std::wstring(L", ") + name,
                            [value, state = state](Scene& s, IVexControlBase& f, const Rect& p) {
                                const auto box = s.checkBox(&f, p, L"Check box");
                                box->SetValue(static_cast<VEXCHECKBOX_VALUE>(value));
                                box->SetButtonState(static_cast<VEX_CHECKBOXSTATE>(state));
                                return box;
                            }});
        rows.push_back({kValues[static_cast<std::size_t>(value)] + std::wstring(L", inactive"),
                        [value](Scene& s, IVexControlBase& f, const Rect& p) {
                            const auto box = s.checkBox(&f, p, L"Check box");
                            box->SetValue(static_cast<VEXCHECKBOX_VALUE>(value));
                            box->SetActive(VARIANT_FALSE);
                            return box;
                        }});
    }
    return rows;
}

std::vector<StateRow> radioBoxRows()
{
    std::vector<StateRow> rows;
    for (const bool isChecked : {false, true})
        for (const auto& [name, state] : kBoxStates)
            rows.push_back({(isChecked ? L"checked, " : L"unchecked, ") + std::wstring(name),
                            [isChecked, state = state](Scene& s, IVexControlBase& f, const Rect& p) {
                                static long group = 1000; // each box alone in its group
                                const auto box = s.radioBox(&f, p, L"Radio box", ++group);
                                if (isChecked)
                                    box->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE);
                                box->SetMouseMove(VARIANT_TRUE); // or the state would settle to normal
                                if (state == VEX_RADIOBOX_DISABLE)
                                    disable(*box);
                                else
                                    box->SetButtonState(static_cast<VEX_RADIOBOXSTATE>(state), VARIANT_TRUE);
                                return box;
                            }});
    return rows;
}

std::vector<StateRow> formRows()
{
    std::vector<StateRow> rows;
    for (const int degrees : {0, 45, 90, 180, 270})
        rows.push_back({std::to_wstring(degrees) + L"\u00B0", [degrees](Scene& s, IVexControlBase& f, const Rect& p) {
                            const auto form = s.form(&f, p, s.theme().surface);
                            form->SetBackColor(s.fill(s.theme().accent, s.theme().surface, degrees).get());
                            return form;
                        }});
    return rows;
}

std::vector<StateRow> rowsOf(const std::wstring& control)
{
    if (control == L"Button")
        return buttonRows();
    if (control == L"CheckBox")
        return checkBoxRows();
    if (control == L"RadioBox")
        return radioBoxRows();
    if (control == L"UIForm")
        return formRows();
    throw std::runtime_error("no control of that name");
}

/// One block of a sheet: one scale, one palette, both directions.
Picture blockOf(const std::vector<StateRow>& rows, const SkinSource& skins, int scale)
{
    ComPtr<IVexRes> res;
    ComPtr<IDispatch> object;
    if (FAILED(AmbrelCreateRes(res.put())))
        throw std::runtime_error("the runtime gives no resource object");
    VARIANT_BOOL done = VARIANT_FALSE;
    res->CreateAmbrel(Bstr(L"Sheet").get(), 0, object.put());
    const auto root = object.as<IAmbrel>();
    Scene scene(res, root, skins, scale);
    const Size inside{kNameWidth + 2 * kCellWidth + 4 * kMargin,
                      static_cast<int>(rows.size()) * kRowHeight + 2 * kMargin};
    const Size device{scene.scaled(inside.width), scene.scaled(inside.height)};
    root->Create(0, {0, 0, device.width, device.height}, &done);
    AmbrelSetScale(root.get(), scale);
    res->SetDesignStatus(VARIANT_TRUE, &done); // controls keep the states they are given

    const auto form = scene.form(nullptr, Rect::at({}, inside), scene.theme().window);
    int top = kMargin;
    for (const StateRow& row : rows) {
        scene.label(form.get(), Rect::at({kMargin, top}, {kNameWidth, 28}), row.name, {scene.theme().textSoft, 9});
        row.make(scene, *form, Rect::at({kNameWidth + 2 * kMargin, top}, {kCellWidth, 28}));
        const auto mirrored =
            row.make(scene, *form, Rect::at({kNameWidth + kCellWidth + 3 * kMargin, top}, {kCellWidth, 28}));
        mirrored->MirrorObject(VARIANT_TRUE);
        top += kRowHeight;
    }
    Picture picture{device, std::vector<std::uint32_t>(static_cast<std::size_t>(device.width) *
                                                       static_cast<std::size_t>(device.height))};
    if (FAILED(AmbrelRenderWindow(root.get(), device.width, device.height, picture.pixels.data())))
        throw std::runtime_error("a sheet could not be drawn");
    std::int64_t window = 0;
    root->GetWindowHandle(&window);
    DestroyWindow(reinterpret_cast<HWND>(window));
    return picture;
}

void paste(const Picture& from, Picture& into, Point at)
{
    for (int y = 0; y < from.size.height; ++y)
        std::copy_n(from.pixels.begin() + static_cast<std::ptrdiff_t>(y) * from.size.width, from.size.width,
                    into.pixels.begin() + static_cast<std::ptrdiff_t>(y + at.y) * into.size.width + at.x);
}

/// Blocks side by side by scale, one row of them per palette.
Picture compose(const std::vector<std::vector<Picture>>& palettes)
{
    Size size;
    for (const Picture& block : palettes.front())
        size.width += block.size.width;
    for (const auto& blocks : palettes)
        size.height += blocks.back().size.height;
    Picture whole{
        size, std::vector<std::uint32_t>(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height))};
    Point at;
    for (const auto& blocks : palettes) {
        at.x = 0;
        // Beneath the smaller blocks goes on what they stand on.
        const auto row = whole.pixels.begin() + static_cast<std::ptrdiff_t>(at.y) * size.width;
        std::fill_n(row, static_cast<std::ptrdiff_t>(blocks.back().size.height) * size.width,
                    blocks.front().pixels.front());
        for (const Picture& block : blocks) {
            paste(block, whole, at);
            at.x += block.size.width;
        }
        at.y += blocks.back().size.height;
    }
    return whole;
}

} // namespace

int shootStateSheet(const Options& options, HINSTANCE controls)
{
    const std::vector<StateRow> rows = rowsOf(*options.sheet);
    std::vector<std::vector<Picture>> palettes;
    for (const bool isDark : {false, true}) {
        Options asked = options;
        asked.isDark = isDark;
        std::vector<Picture> blocks;
        for (const int scale : kScales)
            blocks.push_back(blockOf(rows, skinSourceOf(asked, controls), scale));
        palettes.push_back(std::move(blocks));
    }
    CreateDirectoryW(options.shotFolder->c_str(), nullptr);
    const std::wstring path = *options.shotFolder + L"\\sheet-" + *options.sheet + L".png";
    if (!writePng(compose(palettes), path))
        throw std::runtime_error("a sheet could not be written");
    std::printf("%ls\n", path.c_str());
    return 0;
}

} // namespace gallery
