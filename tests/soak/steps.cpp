#include "tests/soak/steps.h"

#include "host/typed_properties.h"
#include "tests/soak/notification_steps.h"
#include "tests/soak/random_call.h"
#include "tests/soak/resource_steps.h"
#include "tests/soak/step_log.h"

namespace morvane::soak {

namespace {

using Step = void (*)(World&);

LPARAM somePoint(Random& random)
{
    return MAKELPARAM(random.between(-20, 620), random.between(-20, 460));
}

void pointerStep(World& world)
{
    static constexpr UINT kMessages[] = {WM_MOUSEMOVE,     WM_MOUSEMOVE,   WM_LBUTTONDOWN,    WM_LBUTTONUP,
                                         WM_LBUTTONDBLCLK, WM_RBUTTONDOWN, WM_RBUTTONUP,      WM_MBUTTONDOWN,
                                         WM_MBUTTONUP,     WM_MOUSELEAVE,  WM_CAPTURECHANGED, WM_CANCELMODE};
    Random& random = world.random();
    const UINT message = random.pick(kMessages);
    const LPARAM point = somePoint(random);
    logDetail(std::to_string(message) + " at " + std::to_string(static_cast<short>(LOWORD(point))) + " " +
              std::to_string(static_cast<short>(HIWORD(point))));
    const bool isInput = message >= WM_MOUSEFIRST && message <= WM_MOUSELAST;
    SendMessageW(world.window(), message, isInput && random.oneIn(2) ? MK_LBUTTON : 0, isInput ? point : 0);
}

void clickStep(World& world)
{
    const LPARAM point = somePoint(world.random());
    for (const UINT message : {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP}) {
        logDetail(std::to_string(message));
        SendMessageW(world.window(), message, message == WM_LBUTTONDOWN ? MK_LBUTTON : 0, point);
    }
}

void wheelStep(World& world)
{
    Random& random = world.random();
    static constexpr int kTurns[] = {120, -120, 1, -32768, 32767};
    SendMessageW(world.window(), WM_MOUSEWHEEL, MAKEWPARAM(0, random.pick(kTurns)), somePoint(random));
}

void keyStep(World& world)
{
    static constexpr WPARAM kKeys[] = {VK_TAB,  VK_TAB,  VK_SPACE, VK_RETURN,  VK_ESCAPE, VK_LEFT,   VK_RIGHT, VK_UP,
                                       VK_DOWN, VK_HOME, VK_END,   VK_PRIOR,   VK_NEXT,   VK_DELETE, VK_BACK,  'A',
                                       'Z',     VK_F5,   VK_SHIFT, VK_CONTROL, VK_F1,     VK_MENU};
    Random& random = world.random();
    const WPARAM key = random.pick(kKeys);
    logDetail("key " + std::to_string(key));
    SendMessageW(world.window(), WM_KEYDOWN, key, 1);
    if (key >= ' ' && random.oneIn(2))
        SendMessageW(world.window(), WM_CHAR, random.oneIn(4) ? 0xD83D : key, 1);
    if (!random.oneIn(5))
        SendMessageW(world.window(), WM_KEYUP, key, 1);
}

/// Presses with modifiers: hot keys, and access keys of captions such as "&Mnemonic".
void chordStep(World& world)
{
    static constexpr WPARAM kKeys[] = {'M', 'A', 'T', 'B', VK_F4 + 1, VK_RETURN, VK_TAB, VK_LEFT, VK_DOWN};
    static constexpr BYTE kModifiers[] = {VK_SHIFT, VK_CONTROL, VK_MENU};
    Random& random = world.random();
    BYTE before[256]{};
    BYTE held[256]{};
    GetKeyboardState(before);
    for (const BYTE modifier : kModifiers)
        held[modifier] = random.oneIn(2) ? 0x80 : 0;
    SetKeyboardState(held);
    const WPARAM key = random.pick(kKeys);
    const bool isSystemKey = held[VK_MENU] != 0;
    constexpr LPARAM kAltIsDown = 1 << 29;
    logDetail("chord with " + std::to_string(key));
    SendMessageW(world.window(), isSystemKey ? WM_SYSKEYDOWN : WM_KEYDOWN, key, isSystemKey ? kAltIsDown | 1 : 1);
    if (random.oneIn(2) && key > ' ' && key < VK_F1)
        SendMessageW(world.window(), isSystemKey ? WM_SYSCHAR : WM_CHAR, key, isSystemKey ? kAltIsDown | 1 : 1);
    SendMessageW(world.window(), isSystemKey ? WM_SYSKEYUP : WM_KEYUP, key, 1);
    SetKeyboardState(before);
}

void focusStep(World& world)
{
    SendMessageW(world.window(), world.random().oneIn(2) ? WM_SETFOCUS : WM_KILLFOCUS, 0, 0);
    if (const auto control = world.anyControl()) {
        VARIANT_BOOL done = VARIANT_FALSE;
        control->SetFocus(&done);
    }
}

void timerStep(World& world)
{
    Random& random = world.random();
    const WPARAM ids[] = {0, 1, 2, 100, 1000, 2001, 2002, 85100, 85101, static_cast<WPARAM>(random.between(0, 90'000))};
    SendMessageW(world.window(), WM_TIMER, random.pick(ids), 0);
    AmbrelAdvanceClock(random.between(0, 2000));
}

void windowStep(World& world)
{
    Random& random = world.random();
    const HWND window = world.window();
    static constexpr long kScales[] = {100, 150, 200, 0, -1, 1000}; // few, so that the fonts made for them stay few
    switch (random.below(6)) {
    case 0:
        SetWindowPos(window, nullptr, 40, 40, random.between(0, 900), random.between(0, 700),
                     SWP_NOZORDER | SWP_NOACTIVATE);
        break;
    case 1:
        ShowWindow(window, random.oneIn(5) ? SW_HIDE : SW_SHOWNOACTIVATE);
        break;
    case 2:
        EnableWindow(window, !random.oneIn(5));
        break;
    case 3:
        AmbrelSetScale(world.root(), random.pick(kScales));
        break;
    case 4:
        world.root()->SetArabicMode(random.oneIn(2) ? VARIANT_TRUE : VARIANT_FALSE);
        break;
    default:
        world.root()->FreezeUpdate(random.oneIn(5) ? VARIANT_TRUE : VARIANT_FALSE);
    }
}

void paintStep(World& world)
{
    RedrawWindow(world.window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
}

void renderStep(World& world)
{
    static std::vector<std::uint32_t> pixels(320 * 200);
    AmbrelRenderWindow(world.root(), 320, 200, pixels.data());
}

void tipStep(World& world)
{
    static const wchar_t kTip[] = L"A tip";
    const auto control = world.anyControl();
    SendMessageW(world.window(), 3464, reinterpret_cast<WPARAM>(world.random().oneIn(3) ? nullptr : kTip),
                 reinterpret_cast<LPARAM>(control.get()));
}

void setValue(World& world, IVexPropBase& property, enumPropType type)
{
    Random& random = world.random();
    const auto number = static_cast<long>(random.oddNumber());
    switch (type) {
    case _PROPTYPE_BOOL:
        static_cast<BoolProperty&>(property).SetValue(static_cast<VARIANT_BOOL>(number));
        break;
    case _PROPTYPE_INT:
    case _PROPTYPE_LONG:
        static_cast<LongProperty&>(property).SetValue(number);
        break;
    case _PROPTYPE_COMBO:
        static_cast<ComboProperty&>(property).SetSelection(number);
        break;
    case _PROPTYPE_FLOAT:
        static_cast<FloatProperty&>(property).SetValue(static_cast<float>(number));
        break;
    case _PROPTYPE_COLOR:
        static_cast<ColorProperty&>(property).SetValue(static_cast<OLE_COLOR>(number));
        break;
    case _PROPTYPE_STRING: {
        static const std::wstring kLong(20'000, L'x');
        static const wchar_t* const kTexts[] = {nullptr, L"", L"Text", L"&Mnemonic &", L"line\r\nline", kLong.c_str()};
        static_cast<StringProperty&>(property).SetValue(random.pick(kTexts));
        break;
    }
    case _PROPTYPE_TEXTSTYLE:
        static_cast<TextStyleProperty&>(property).SetTextStyle(nullptr);
        break;
    case _PROPTYPE_FILLCOLOR:
        static_cast<FillColorProperty&>(property).SetRotation(number);
        break;
    case _PROPTYPE_HOTKEY: {
        ComPtr<IVexHotkey> hotkey;
        static_cast<HotkeyProperty&>(property).GetObject(hotkey.put());
        if (hotkey) {
            hotkey->put_wVirtualKeyCode("MATB\r"[random.below(5)]);
            hotkey->put_wModifiers(random.between(0, 7));
        }
        break;
    }
    default:
        property.DoCallbackFunc();
    }
}

void propertyStep(World& world)
{
    const auto control = world.anyControl();
    const auto property = control ? world.anyProperty(*control) : nullptr;
    if (!property)
        return;
    enumPropType type{};
    Bstr name;
    property->GetType(&type);
    property->GetName(name.put());
    logDetail("property type " + std::to_string(type));
    setValue(world, *property, type);
}

void notifyStep(World& world)
{
    if (const auto control = world.anyControl())
        notifyAnything(world, *control);
}

void callStep(World& world)
{
    callAnything(world, world.anyMember());
}

void rootStep(World& world)
{
    const ComPtr<IAmbrel> root(world.root());
    callAnything(world, {root.as<IDispatch>(), &world.library().root()});
}

void propertyCallStep(World& world)
{
    const auto control = world.anyControl();
    if (const auto property = control ? world.anyProperty(*control) : nullptr)
        callAnything(world, {property.as<IDispatch>(), &world.library().property()});
}

void stateStep(World& world)
{
    const auto control = world.anyControl();
    if (!control)
        return;
    Random& random = world.random();
    const VARIANT_BOOL on = random.oneIn(3) ? VARIANT_FALSE : VARIANT_TRUE;
    VARIANT_BOOL done = VARIANT_FALSE;
    switch (random.below(6)) {
    case 0:
        control->EnableObject(on, VARIANT_TRUE, &done);
        break;
    case 1:
        control->SetVisible(on, VARIANT_TRUE, VARIANT_FALSE);
        break;
    case 2:
        control->SetOpacity(static_cast<short>(random.oddNumber()));
        break;
    case 3:
        control->FinalCreate(on);
        break;
    case 4:
        control->DesignStatusChanged(random.oneIn(4) ? VARIANT_TRUE : VARIANT_FALSE);
        break;
    default:
        world.place(*control);
    }
}

void skinStep(World& world)
{
    if (const auto control = world.anyControl())
        world.changeSkin(*control);
}

void addStep(World& world)
{
    world.addControl();
}
void addItemStep(World& world)
{
    world.addItem();
}
void removeStep(World& world)
{
    world.removeSomething();
}
void forgetStep(World& world)
{
    world.forgetSomething();
}
void endWindowStep(World& world)
{
    world.destroyWindow();
}

struct Weighted {
    const char* name;
    Step run;
    int weight;       // how often, in relation to the others
    int weightInside; // the same from inside a callback
};

constexpr Weighted kSteps[] = {
    {"chord", &chordStep, 40, 10},
    {"move", &moveStep, 12, 6},
    {"resources", &resourceCallStep, 60, 8},
    {"skin of all", &skinOfAllStep, 6, 3},
    {"shared state", &sharedStateStep, 25, 5},
    {"group call", &groupCallStep, 40, 5},
    {"group", &groupStep, 30, 8},
    {"pointer", &pointerStep, 200, 10},
    {"click", &clickStep, 60, 0},
    {"wheel", &wheelStep, 10, 0},
    {"key", &keyStep, 60, 10},
    {"focus", &focusStep, 20, 10},
    {"timer", &timerStep, 30, 0},
    {"window", &windowStep, 15, 5},
    {"paint", &paintStep, 12, 2},
    {"render", &renderStep, 6, 0},
    {"tip", &tipStep, 10, 2},
    {"property", &propertyStep, 80, 20},
    {"notify", &notifyStep, 150, 20},
    {"root", &rootStep, 40, 5},
    {"property call", &propertyCallStep, 40, 5},
    {"call", &callStep, 250, 40},
    {"state", &stateStep, 60, 20},
    {"skin", &skinStep, 8, 4},
    {"add", &addStep, 25, 5},
    {"item", &addItemStep, 3, 0},
    {"remove", &removeStep, 14, 40},
    {"forget", &forgetStep, 12, 30},
    {"end of the window", &endWindowStep, 1, 3},
};

const Weighted& choose(Random& random, int Weighted::*weight)
{
    int sum = 0;
    for (const Weighted& each : kSteps)
        sum += each.*weight;
    int left = random.between(0, sum - 1);
    for (const Weighted& each : kSteps) {
        left -= each.*weight;
        if (left < 0)
            return each;
    }
    return kSteps[0];
}

/// Real ticks are left out: when they arrive depends on the machine, and a seed must repeat its run. Steps send others.
void pump()
{
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
        if (message.message != WM_TIMER)
            DispatchMessageW(&message);
    }
}

} // namespace

void anyStep(World& world, std::uint64_t number)
{
    const Weighted& step = choose(world.random(), &Weighted::weight);
    logStep(number, step.name);
    step.run(world);
    if (number % 8 == 0)
        pump();
}

void interruptStep(World& world)
{
    const Weighted& step = choose(world.random(), &Weighted::weightInside);
    logDetail(std::string("inside: ") + step.name);
    step.run(world);
    logDetail("inside done");
}

} // namespace morvane::soak
