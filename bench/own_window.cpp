#include "bench/own_window.h"

#include "ambrel/ambrel.h"
#include "bench/harness.h"
#include "host/host_classes.h"

namespace bench {

namespace {

constexpr int kButtonSkin = 2080;

} // namespace

Platform::Platform()
{
    check(SUCCEEDED(OleInitialize(nullptr)) && SUCCEEDED(AmbrelRegisterClasses()), "the runtime could not be started");
    m_controls = LoadLibraryW(L"Morvane.dll");
    check(m_controls != nullptr, "Morvane.dll is not beside the program");
    const auto getClassObject =
        reinterpret_cast<LPFNGETCLASSOBJECT>(reinterpret_cast<void*>(GetProcAddress(m_controls, "DllGetClassObject")));
    check(getClassObject && SUCCEEDED(getClassObject(__uuidof(CmdButton), IID_IClassFactory, m_buttons.putVoid())),
          "Morvane.dll makes no buttons");
}

Platform::~Platform()
{
    m_buttons.reset();
    AmbrelUnregisterClasses();
    OleUninitialize();
}

ComPtr<ICmdButton> Platform::createButton() const
{
    ComPtr<ICmdButton> button;
    m_buttons->CreateInstance(nullptr, morvane::iidOf<ICmdButton>(), button.putVoid());
    check(static_cast<bool>(button), "a button could not be created");
    return button;
}

Platform& platform()
{
    static Platform instance;
    return instance;
}

OwnWindow::OwnWindow()
{
    platform();
    check(SUCCEEDED(AmbrelCreateRes(m_resources.put())), "the runtime gives no resource object");
    ComPtr<IDispatch> object;
    m_resources->CreateAmbrel(Bstr(L"Bench").get(), 0, object.put());
    m_root = object.as<IAmbrel>();
    check(static_cast<bool>(m_root), "the runtime gives no window");
    VARIANT_BOOL created = VARIANT_FALSE;
    if (!window())
        m_root->Create(0, {0, 0, kWindowSize.width, kWindowSize.height}, &created);
    check(window() != nullptr, "the runtime's window could not be made");
    SetWindowPos(window(), HWND_TOP, 0, 0, kWindowSize.width, kWindowSize.height, SWP_SHOWWINDOW);
    pumpMessages();

    ComPtr<IDispatch> position;
    CoCreateInstance(morvane::kClsidPosition, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, position.putVoid());
    m_position = position.as<IVexPos>();
    check(static_cast<bool>(m_position), "the runtime gives no position");
}

OwnWindow::~OwnWindow()
{
    m_look = {};
    m_root->DelAllSubObjects();
    DestroyWindow(window());
    pumpMessages();
}

HWND OwnWindow::window() const
{
    hyper handle = 0;
    m_root->GetWindowHandle(&handle);
    return reinterpret_cast<HWND>(handle);
}

const ButtonLook& OwnWindow::look()
{
    if (!m_look.images.front()) {
        const auto sample = addButton({0, 0, 64, 28}, L"", Look::Package);
        for (int state = VEX_BTN_NORMAL; state < VEX_BTN_LAST; ++state) {
            sample->GetBackImageSec(static_cast<VEX_BUTTONSTATE>(state), m_look.images.at(state).put());
            sample->GetBackTextStyle(static_cast<VEX_BUTTONSTATE>(state), m_look.textStyles.at(state).put());
        }
        remove(*sample);
        check(m_look.images.front() && m_look.textStyles.front(), "the default skin gives no look");
    }
    return m_look;
}

ComPtr<ICmdButton> OwnWindow::addButton(const morvane::Rect& place, const std::wstring& text, Look wanted)
{
    const ButtonLook* const shared = wanted == Look::Shared ? &look() : nullptr;
    auto button = platform().createButton();
    hyper created = 0;
    button->CreateObj(reinterpret_cast<hyper>(m_resources.get()),
                      reinterpret_cast<hyper>(static_cast<ISkinObjResBase*>(m_root.get())), VEXOBJTYPE_PLUGIN,
                      VARIANT_FALSE, &created);
    button->SetName(Bstr(L"Button" + std::to_wstring(++m_lastName)).get());
    VexPosition record{};
    record.horzPos = {PHAT_LEFT, PHST_LEFTWIDTH, place.left, 0, place.width()};
    record.vertPos = {static_cast<PosHorzAlignType>(PVAT_TOP), static_cast<PosHorzSpaceType>(PVST_TOPHEIGHT), place.top,
                      0, place.height()};
    m_position->SetPosStruct(record);
    button->SetPosition(m_position.get());
    button->ResizeThis();
    if (shared) {
        for (int state = VEX_BTN_NORMAL; state < VEX_BTN_LAST; ++state) {
            button->SetBackImageSec(static_cast<VEX_BUTTONSTATE>(state), shared->images.at(state).get());
            button->SetBackTextStyle(static_cast<VEX_BUTTONSTATE>(state), shared->textStyles.at(state).get());
        }
    } else if (wanted == Look::Package) {
        check(SUCCEEDED(AmbrelApplySkin(m_resources.get(), button.get(), platform().controls(), kButtonSkin)),
              "the default skin could not be applied");
    }
    button->FinalCreate(VARIANT_TRUE);
    button->SetText(Bstr(text).get());
    return button;
}

std::vector<ComPtr<ICmdButton>> OwnWindow::fill(int count, Look wanted)
{
    const ButtonGrid grid(count);
    const int before = buttonCount();
    std::vector<ComPtr<ICmdButton>> buttons;
    buttons.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        buttons.push_back(addButton(grid.place(i), L"Button " + std::to_wstring(i), wanted));
    check(buttonCount() == before + count, "buttons are missing");
    paintPending();
    pumpMessages();
    return buttons;
}

void OwnWindow::remove(ICmdButton& button)
{
    VARIANT_BOOL done = VARIANT_FALSE;
    button.Remove(&done);
    check(done != VARIANT_FALSE, "a button stayed in the window");
}

void OwnWindow::repaintAll() const
{
    m_root->DirectDraw(VARIANT_FALSE);
    UpdateWindow(window());
}

void OwnWindow::clear()
{
    m_root->DelAllSubObjects();
    check(buttonCount() == 0, "buttons stayed in the window");
}

int OwnWindow::buttonCount() const
{
    short count = 0;
    m_root->GetChildCount(&count);
    return count;
}

} // namespace bench
