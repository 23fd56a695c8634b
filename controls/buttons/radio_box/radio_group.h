// The group that keeps exactly one of its radio boxes checked.
#pragma once

#include "controls/buttons/radio_box/radio_members.h"
#include "controls/control_interfaces.h"
#include "frame/item.h"

#include <string_view>

namespace morvane {

class CVexRadioGroup;

inline constexpr IID kRadioMemberIid = {0x6B1E3D0A, 0x64B1, 0x4C27, {0x9D, 0x4B, 0x3C, 0x3B, 0xD1, 0xA4, 0xA6, 0xF5}};

/// What a group asks of its boxes: to change without calling back into it, and to say when they go (with forget). The
/// boxes of this library offer it under kRadioMemberIid.
class RadioMember : public IUnknown {
public:
    virtual IRadioBox& box() = 0;
    virtual void changeValue(bool isChecked) = 0;
    virtual bool isChecked() const = 0;
    virtual HWND hostWindow() const = 0; // null while it has none
    /// Takes note of the group; false from a box that chose another one while this one asked for names.
    virtual bool enterGroup(CVexRadioGroup& group) = 0;
    virtual void leftGroup(CVexRadioGroup& group) = 0;
};

/// Members are borrowed: a box says so when it goes. The host window hears of each selection.
class CVexRadioGroup : public Item<IVexRadioGroup, _IVexRadioGroupEvents> {
public:
    /// The group of that number in the window of `root`; empty when there is none.
    static ComPtr<IVexRadioGroup> find(IUnknown* root, long id);
    /// A new group, found under root and number for as long as somebody holds it.
    static ComPtr<IVexRadioGroup> make(IUnknown* root, long id, HWND window);

    STDMETHODIMP GetID(long* result) noexcept override;
    STDMETHODIMP AddObject(IRadioBox* box) noexcept override;
    STDMETHODIMP RemoveObject(BSTR name) noexcept override;
    STDMETHODIMP SetRadio(IRadioBox* box) noexcept override;
    STDMETHODIMP GetRadio(IRadioBox** result) noexcept override;

    void finalRelease();

    /// A member goes; it is not told.
    void forget(RadioMember& member) { m_members.remove(&member); }

private:
    void takeIn(RadioMember& member);
    RadioMember* memberNamed(std::wstring_view name) const;

    RadioMembers<RadioMember> m_members;
    long m_id = 0;
    HWND m_window = nullptr;    // of the first member that had one; another's once it is gone
    IUnknown* m_root = nullptr; // what the group is found by; never called
};

} // namespace morvane
