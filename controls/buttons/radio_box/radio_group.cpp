#include "controls/buttons/radio_box/radio_group.h"

#include <map>
#include <utility>

namespace morvane {

namespace {

constexpr UINT kGroupSelectionChanged = 3025;

/// The groups of the module under root object and number. A group is entered while it lives: a kept one would name a
/// window and a root that are gone, and hold the module in memory.
class GroupRegistry {
public:
    using Key = std::pair<IUnknown*, long>;

    CVexRadioGroup* find(const Key& key)
    {
        const auto found = m_groups.find(key);
        return found == m_groups.end() ? nullptr : found->second;
    }
    void enter(const Key& key, CVexRadioGroup& group) { m_groups[key] = &group; }
    void leave(const Key& key, const CVexRadioGroup& group)
    {
        const auto found = m_groups.find(key);
        if (found != m_groups.end() && found->second == &group)
            m_groups.erase(found);
    }

private:
    std::map<Key, CVexRadioGroup*> m_groups;
};

/// Used on the user-interface thread only, like everything it names.
GroupRegistry& registry()
{
    static GroupRegistry groups;
    return groups;
}

Bstr nameOf(IRadioBox& box)
{
    Bstr name;
    box.GetName(name.put());
    return name;
}

ComPtr<RadioMember> memberOf(IRadioBox& box)
{
    ComPtr<RadioMember> member;
    box.QueryInterface(kRadioMemberIid, member.putVoid());
    return member;
}

} // namespace

ComPtr<IVexRadioGroup> CVexRadioGroup::find(IUnknown* root, long id)
{
    return ComPtr<IVexRadioGroup>(registry().find({root, id}));
}

ComPtr<IVexRadioGroup> CVexRadioGroup::make(IUnknown* root, long id, HWND window)
{
    const auto object = Instance<CVexRadioGroup>::make();
    CVexRadioGroup& group = *object;
    group.m_id = id;
    group.m_window = window;
    group.m_root = root;
    registry().enter({root, id}, group);
    return object;
}

void CVexRadioGroup::finalRelease()
{
    registry().leave({m_root, m_id}, *this);
    for (RadioMember* member : m_members.all())
        member->leftGroup(*this);
}

STDMETHODIMP CVexRadioGroup::GetID(long* result) noexcept
{
    return returning(result, [&] { return m_id; });
}

STDMETHODIMP CVexRadioGroup::AddObject(IRadioBox* box) noexcept
{
    if (!box)
        return S_FALSE;
    return guarded([&]() -> HRESULT {
        const ComPtr<RadioMember> member = memberOf(*box);
        if (!member)
            return E_NOINTERFACE; // nobody would tell when it goes
        const Bstr name = nameOf(*box);
        if ((!name.empty() && memberNamed(name.view())) || m_members.has(member.get()))
            return S_FALSE;
        m_members.add(member.get());
        const HRESULT status = guarded([&] { return member->enterGroup(*this) ? S_OK : S_FALSE; });
        if (status == S_OK)
            takeIn(*member);
        else
            m_members.remove(member.get()); // it would not say when it goes
        return status;
    });
}

/// Names are asked for when they matter: a box joins before the application has named it.
RadioMember* CVexRadioGroup::memberNamed(std::wstring_view name) const
{
    return m_members.find([&](RadioMember* member) {
        const ComPtr<RadioMember> held(member);
        return nameOf(held->box()).view() == name;
    });
}

/// A box that was checked elsewhere becomes the checked one here, or gives way to the one there is.
void CVexRadioGroup::takeIn(RadioMember& member)
{
    if (!member.isChecked())
        return;
    if (m_members.current())
        member.changeValue(false);
    else
        m_members.makeCurrent(&member);
}

STDMETHODIMP CVexRadioGroup::RemoveObject(BSTR name) noexcept
{
    return guarded([&] {
        RadioMember* const member = memberNamed(viewOf(name));
        if (!member)
            return S_FALSE;
        m_members.remove(member);
        member->leftGroup(*this);
        return S_OK;
    });
}

STDMETHODIMP CVexRadioGroup::SetRadio(IRadioBox* box) noexcept
{
    if (!box)
        return S_FALSE;
    return guarded([&] {
        // By identity: another box may have the same name.
        const ComPtr<RadioMember> member = memberOf(*box);
        if (!member || !m_members.has(member.get()))
            return S_OK;
        const ComPtr<IVexRadioGroup> hold(this); // the host may take boxes and group apart
        const auto isStillChosen = [&] { return m_members.current() == member.get(); };
        // A box that is current already is unchecked and checked again, and the host hears of it again. A redraw may
        // run code that chooses another box: the last choice stands.
        const ComPtr<RadioMember> former(m_members.makeCurrent(member.get()));
        if (former)
            former->changeValue(false);
        if (isStillChosen())
            member->changeValue(true);
        if (!isStillChosen())
            return S_OK;
        if (!IsWindow(m_window))
            m_window = member->hostWindow();
        SendMessageW(m_window, kGroupSelectionChanged, static_cast<WPARAM>(m_id),
                     reinterpret_cast<LPARAM>(&member->box()));
        return S_OK;
    });
}

STDMETHODIMP CVexRadioGroup::GetRadio(IRadioBox** result) noexcept
{
    return returning(result, [&] {
        RadioMember* const current = m_members.current();
        return current ? ComPtr<IRadioBox>(&current->box()) : ComPtr<IRadioBox>();
    });
}

} // namespace morvane
