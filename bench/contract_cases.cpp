// What the contract between controls, framework and application costs for each call.
#include "bench/cases.h"
#include "bench/native_window.h"
#include "bench/own_window.h"
#include "bench/table.h"
#include "host/host_classes.h"

namespace bench {

namespace {

constexpr int kCheapCalls = 100000;
constexpr int kDearCalls = 5000;
constexpr morvane::Rect kPlace{10, 10, 138, 42};

struct OneButton {
    OneButton() : button(window.addButton(kPlace, L"Button", Look::Shared)) {}

    OwnWindow window;
    ComPtr<ICmdButton> button;
};

void forwardedCall(Bench& bench)
{
    OneButton own;
    ComPtr<IVexControlBase> base;
    CoCreateInstance(morvane::kClsidInnerBaseObject, nullptr, CLSCTX_INPROC_SERVER, morvane::iidOf<IVexControlBase>(),
                     base.putVoid());
    check(static_cast<bool>(base), "the runtime gives no base object");
    VARIANT_BOOL answer = VARIANT_FALSE;
    const auto ask = [&](IVexControlBase& object) {
        return repeated(kCheapCalls, [&](int) {
            object.IsTabStop(&answer);
            use(answer);
        });
    };
    row("forwarded call / the base object's own", bench.compare(ask(*own.button.get()), ask(*base.get())));
}

void enabledCall(Bench& bench)
{
    OneButton own;
    const NativeWindow native;
    const HWND nativeButton = native.addButton(kPlace, L"Button");
    VARIANT_BOOL answer = VARIANT_FALSE;
    const Contender ours = repeated(kCheapCalls, [&](int) {
        own.button->IsEnable(&answer);
        use(answer);
    });
    const Contender other = repeated(kDearCalls, [&](int) { use(IsWindowEnabled(nativeButton)); });
    row("is it enabled / IsWindowEnabled", bench.compare(ours, other));
    check(answer != VARIANT_FALSE && IsWindowEnabled(nativeButton), "a button is not enabled");
}

void propertyRead(Bench& bench)
{
    OneButton own;
    const NativeWindow native;
    const HWND nativeButton = native.addButton(kPlace, L"Button");
    Bstr text;
    wchar_t nativeText[32] = L"";
    const Contender ours = repeated(kDearCalls, [&](int) { own.button->GetText(text.put()); });
    const Contender other = repeated(kDearCalls, [&](int) { GetWindowTextW(nativeButton, nativeText, 32); });
    row("read the text / GetWindowText", bench.compare(ours, other));
    check(text.view() == nativeText, "the text read is another one");

    VARIANT_BOOL shown = VARIANT_FALSE;
    row("read a Boolean property", bench.measure(repeated(kCheapCalls, [&](int) {
        own.button->IsShowText(&shown);
        use(shown);
    })));
    check(shown == VARIANT_TRUE, "the property reads wrong");
}

void notification(Bench& bench)
{
    OneButton own;
    const NativeWindow native;
    const HWND nativeButton = native.addButton(kPlace, L"Button");
    VARIANT_BOOL answer = VARIANT_FALSE;
    VexNotify notice{};
    notice.eVexMsgId = VEXSM_SIZE;
    const Contender ours = repeated(kCheapCalls, [&](int) { own.button->EventNotify(&notice, &answer); });
    const Contender other = repeated(kCheapCalls, [&](int) { use(SendMessageW(nativeButton, WM_SIZE, 0, 0)); });
    row("notification / window message of one thread", bench.compare(ours, other));
}

void callByName(Bench& bench)
{
    OneButton own;
    const ComPtr<IDispatch> dispatch = own.button.as<IDispatch>();
    check(static_cast<bool>(dispatch), "the button has no automation interface");
    VARIANT result{};
    const auto invoke = [&](DISPID id) {
        DISPPARAMS none{};
        VariantClear(&result);
        dispatch->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, &result, nullptr, nullptr);
    };
    wchar_t name[] = L"IsShowText";
    LPOLESTR names = name;
    DISPID known = DISPID_UNKNOWN;
    check(SUCCEEDED(dispatch->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &known)), "the name is unknown");
    const Contender byName = repeated(kDearCalls, [&](int) {
        DISPID id = DISPID_UNKNOWN;
        dispatch->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
        invoke(id);
    });
    VARIANT_BOOL answer = VARIANT_FALSE;
    const Contender direct = repeated(kCheapCalls, [&](int) {
        own.button->IsShowText(&answer);
        use(answer);
    });
    row("automation call by name / direct", bench.compare(byName, direct));
    check(result.vt == VT_BOOL && result.boolVal == VARIANT_TRUE, "the call by name gives another answer");
    row("automation call by number / direct", bench.compare(repeated(kDearCalls, [&](int) { invoke(known); }), direct));
}

constexpr Case kCases[] = {
    {"contract-forward", &forwardedCall}, {"contract-enabled", &enabledCall},   {"contract-property", &propertyRead},
    {"contract-notify", &notification},   {"contract-automation", &callByName},
};

} // namespace

std::span<const Case> contractCases()
{
    return kCases;
}

} // namespace bench
