// Changing the skin of a running window.
#include "bench/cases.h"
#include "bench/own_window.h"
#include "bench/table.h"

#include <filesystem>

namespace bench {

namespace {

constexpr int kButtons = 5000;
constexpr double kAimSeconds = 0.050;
constexpr morvane::Rect kAll{0, 0, kWindowSize.width, kWindowSize.height};

using Paths = std::array<std::wstring, 2>;

/// Calls `visit(IVexPropBase&)` for every property in the top-level groups of a control.
template <class Visit>
void eachProperty(IVexControlBase& control, Visit visit)
{
    hyper list = 0;
    control.GetPropList(&list);
    for (auto** group = reinterpret_cast<ICtrlPluginProp**>(list); group && *group; ++group) {
        long count = 0;
        (*group)->GetPropBaseCount(&count);
        for (long i = 0; i < count; ++i) {
            ComPtr<IVexPropBase> property;
            (*group)->GetAtPropBase(i, property.put());
            visit(*property.get());
        }
    }
}

VARIANT number(long value)
{
    VARIANT result;
    VariantInit(&result);
    result.vt = VT_I4;
    result.lVal = value;
    return result;
}

/// The default skin with every picture taken away and every number and text of the button another one.
std::wstring changedSkin()
{
    const std::filesystem::path path = std::filesystem::temp_directory_path() / L"morvane_bench_changed.zip";
    OwnWindow window;
    VARIANT_BOOL done = VARIANT_FALSE;
    window.resources().OpenSkin(Bstr(L"" MORVANE_SKINS_DIR "/2080.zip").get(), nullptr, VARIANT_TRUE, &done);
    const ComPtr<ICmdButton> button = window.addButton(kAll, L"Changed", Look::None);
    button->SetName(Bstr(L"Button1").get()); // as the skin calls it: the values become those of all buttons
    eachProperty(*button.get(), [](IVexPropBase& property) {
        enumPropType type = _PROPTYPE_INT;
        property.GetType(&type);
        VARIANT value;
        VariantInit(&value);
        property.GetVariant(&value);
        if (type == _PROPTYPE_IMAGESECTION || type == _PROPTYPE_TEXTSTYLE)
            property.SetDispatch(nullptr);
        else if (value.vt == VT_I4)
            property.SetVariant(number(7));
        VariantClear(&value);
    });
    window.resources().Save(Bstr(path.wstring()).get(), &done);
    check(done != VARIANT_FALSE, "the changed skin could not be saved");
    return path.wstring();
}

/// A window whose buttons follow the open skin.
class SwappedWindow {
public:
    explicit SwappedWindow(const Paths& paths)
        : m_buttons(m_window.fill(kButtons, Look::None)), m_paths{Bstr(paths[0]), Bstr(paths[1])}
    {
        VARIANT_BOOL done = VARIANT_FALSE;
        m_window.resources().OpenSkin(m_paths[0].get(), nullptr, VARIANT_TRUE, &done);
        check(done != VARIANT_FALSE, "the skin could not be opened");
        paint();
    }

    void swap()
    {
        m_current = 1 - m_current;
        VARIANT_BOOL done = VARIANT_FALSE;
        m_window.resources().ChangeSkn(m_paths[m_current].get(), &done);
        check(done != VARIANT_FALSE, "the skin could not be changed");
    }

    void paint() { m_window.paintPending(); }
    std::uint64_t shown() const { return checksum(m_window.window(), kAll); }

private:
    OwnWindow m_window;
    std::vector<ComPtr<ICmdButton>> m_buttons;
    std::array<Bstr, 2> m_paths;
    int m_current = 0;
};

const wchar_t* const kDefault = L"" MORVANE_SKINS_DIR "/2080.zip";

void swaps(Bench& bench)
{
    SwappedWindow window({kDefault, L"" MORVANE_SKINS_DIR "/2080.dark.zip"});
    const std::uint64_t light = window.shown();
    const auto swapAndPaint = [&] {
        window.swap();
        window.paint();
    };
    swapAndPaint();
    const std::uint64_t dark = window.shown();
    swapAndPaint();
    check(dark != light && window.shown() == light, "the buttons do not show the skin that is open");
    row("change the skin of 5,000 buttons", bench.measure({1, [&] { window.swap(); }, {}, [&] { window.paint(); }}));
    row("the same and paint them all", bench.measure({1, swapAndPaint}), kAimSeconds);
}

void swapsOfValues(Bench& bench)
{
    SwappedWindow window({kDefault, changedSkin()});
    row("change values of 5,000 buttons by their skin",
        bench.measure({1, [&] { window.swap(); }, {}, [&] { window.paint(); }}), kAimSeconds);
}

constexpr Case kCases[] = {{"skin-swap", &swaps}, {"skin-swap-values", &swapsOfValues}};

} // namespace

std::span<const Case> skinCases()
{
    return kCases;
}

} // namespace bench
