// A key with its modifiers, as hot-key properties hold it.
#pragma once

#include "frame/com/dispatch.h"
#include "frame/com/instance.h"
#include "host/host.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace ambrel {

/// The object behind IVexHotkey. Modifiers: 1 Shift, 2 Ctrl, 4 Alt. As text it is one number: the modifiers above the
/// key's eight bits ("0x00000641" is Ctrl, Alt and A); no key is the empty text, and read as 0, too.
class Hotkey : public morvane::Dispatch<IVexHotkey> {
public:
    static morvane::ComPtr<IVexHotkey> create()
    {
        return morvane::ComPtr<IVexHotkey>(morvane::Instance<Hotkey>::make().get());
    }

    HRESULT finalConstruct() noexcept { return S_OK; }
    void finalRelease() noexcept {}
    void* findInterface(REFIID iid) noexcept;

    STDMETHODIMP get_wVirtualKeyCode(long* result) noexcept override;
    /// E_INVALIDARG outside 0 to 255.
    STDMETHODIMP put_wVirtualKeyCode(long key) noexcept override;
    STDMETHODIMP get_wModifiers(long* result) noexcept override;
    /// E_INVALIDARG outside 0 to 7.
    STDMETHODIMP put_wModifiers(long modifiers) noexcept override;
    STDMETHODIMP AccessConfig2(hyper node, BSTR key, VARIANT_BOOL read, VARIANT_BOOL isWholeKey,
                               VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP SetVexRes(IVexRes* resources) noexcept override;
    STDMETHODIMP GetVexRes(IVexRes** result) noexcept override;
    STDMETHODIMP ExportConfig(hyper node, BSTR key, VARIANT_BOOL* result) noexcept override;

private:
    long m_key = 0;
    long m_modifiers = 0;
    morvane::ComPtr<IVexRes> m_resources;
};

/// Grows whenever a property of this process may have come to a hot key, or a table to a property that has one: while
/// it stands, tables that were found without hot keys have none.
std::uint64_t hotkeyRevision() noexcept;
void hotkeyGained() noexcept;

/// The text of any hot key; false when the text is none.
std::wstring hotkeyText(IVexHotkey& hotkey);
bool setHotkeyText(IVexHotkey& hotkey, std::wstring_view text);

} // namespace ambrel
