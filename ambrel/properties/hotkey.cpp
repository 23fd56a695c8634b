#include "ambrel/properties/hotkey.h"

#include "ambrel/properties/config_node.h"
#include "ambrel/properties/value_text.h"

namespace ambrel {

using morvane::ComPtr;
using morvane::returning;

namespace {
constexpr long kMostKey = 0xFF;
constexpr long kMostModifiers = 7;
constexpr int kModifierShift = 8;

std::uint64_t g_revision = 0; // of the one user-interface thread
} // namespace

std::uint64_t hotkeyRevision() noexcept
{
    return g_revision;
}

void hotkeyGained() noexcept
{
    ++g_revision;
}

std::wstring hotkeyText(IVexHotkey& hotkey)
{
    long key = 0;
    long modifiers = 0;
    hotkey.get_wVirtualKeyCode(&key);
    hotkey.get_wModifiers(&modifiers);
    if (((modifiers & kMostModifiers) | (key & kMostKey)) == 0)
        return {}; // an object that nobody gave a key yet: looking at a property is no change of it
    return formatColor(static_cast<std::uint32_t>((modifiers & kMostModifiers) << kModifierShift | (key & kMostKey)));
}

bool setHotkeyText(IVexHotkey& hotkey, std::wstring_view text)
{
    const auto packed = text.empty() ? std::optional<std::int32_t>(0) : parseLong(text);
    if (!packed || *packed < 0 || *packed >> kModifierShift > kMostModifiers)
        return false;
    return SUCCEEDED(hotkey.put_wVirtualKeyCode(*packed & kMostKey)) &&
           SUCCEEDED(hotkey.put_wModifiers(*packed >> kModifierShift));
}

void* Hotkey::findInterface(REFIID iid) noexcept
{
    return iid == IID_IDispatch || iid == morvane::iidOf<IVexHotkey>() ? static_cast<IVexHotkey*>(this) : nullptr;
}

STDMETHODIMP Hotkey::get_wVirtualKeyCode(long* result) noexcept
{
    return returning(result, [&] { return m_key; });
}

STDMETHODIMP Hotkey::put_wVirtualKeyCode(long key) noexcept
{
    if (key < 0 || key > kMostKey)
        return E_INVALIDARG;
    m_key = key;
    return S_OK;
}

STDMETHODIMP Hotkey::get_wModifiers(long* result) noexcept
{
    return returning(result, [&] { return m_modifiers; });
}

STDMETHODIMP Hotkey::put_wModifiers(long modifiers) noexcept
{
    if (modifiers < 0 || modifiers > kMostModifiers)
        return E_INVALIDARG;
    m_modifiers = modifiers;
    return S_OK;
}

/// A hot key has no name of its own to complete a key with, so the key is always whole.
STDMETHODIMP Hotkey::AccessConfig2(hyper node, BSTR key, VARIANT_BOOL read, VARIANT_BOOL, VARIANT_BOOL* result) noexcept
{
    return morvane::filling(result, [&](VARIANT_BOOL& done) {
        const auto element = ConfigNode::fromHandle(node);
        if (!element)
            return E_INVALIDARG;
        const std::wstring_view name = morvane::viewOf(key);
        if (read == VARIANT_FALSE) {
            element->setAttribute(name, hotkeyText(*this));
            done = VARIANT_TRUE;
        } else if (const std::wstring* text = element->attribute(name)) {
            done = morvane::toVariantBool(setHotkeyText(*this, *text));
        }
        return S_OK;
    });
}

STDMETHODIMP Hotkey::SetVexRes(IVexRes* resources) noexcept
{
    m_resources = ComPtr<IVexRes>(resources);
    return S_OK;
}

STDMETHODIMP Hotkey::GetVexRes(IVexRes** result) noexcept
{
    return returning(result, [&] { return m_resources; });
}

STDMETHODIMP Hotkey::ExportConfig(hyper node, BSTR key, VARIANT_BOOL* result) noexcept
{
    return AccessConfig2(node, key, VARIANT_FALSE, VARIANT_TRUE, result);
}

} // namespace ambrel
