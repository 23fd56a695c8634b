// How a radio box finds its group, joins it and leaves it.
#include "controls/buttons/radio_box/radio_box.h"

#include "frame/parts/property_access.h"

#include <algorithm>

namespace morvane {

bool CRadioBox::enterGroup(CVexRadioGroup& group)
{
    if (m_joining == &group && m_group.get() != &group)
        return false;
    m_memberships.push_back(&group);
    return true;
}

void CRadioBox::leftGroup(CVexRadioGroup& group)
{
    std::erase(m_memberships, &group);
}

void CRadioBox::leaveGroups()
{
    for (CVexRadioGroup* group : std::exchange(m_memberships, {}))
        group->forget(*this);
    m_group.reset();
}

void CRadioBox::changeValue(bool isChecked)
{
    m_isChecked = isChecked;
    redraw();
}

void CRadioBox::joinGroup()
{
    IVexControlBase* const inner = innerBase();
    if (m_group || !inner)
        return;
    ComPtr<ISkinObjResBase> parent;
    inner->GetParent(parent.put());
    if (!parent)
        return;
    const int ownId = m_properties.groupId.value();
    const long id = ownId != 0 ? ownId : static_cast<long>(reinterpret_cast<std::intptr_t>(parent.get()) & 0xFFFFFFFF);
    ComPtr<ISkinObjResBase> root;
    inner->GetRoot(root.put());
    ComPtr<IVexRadioGroup> group = CVexRadioGroup::find(root.get(), id);
    if (!group)
        group = groupOfSiblings(*parent, id);
    if (m_group)
        return; // joined while the others were asked
    if (!group)
        group = CVexRadioGroup::make(root.get(), id, host().window);
    m_group = group;
    IVexRadioGroup* const before = std::exchange(m_joining, group.get());
    group->AddObject(this); // asks for names: the box may leave or move on meanwhile
    m_joining = before;
}

/// The group of another radio box of the parent that has the number as its own.
ComPtr<IVexRadioGroup> CRadioBox::groupOfSiblings(ISkinObjResBase& parent, long id)
{
    short count = 0;
    parent.GetChildCount(&count);
    for (short i = 0; i < count; ++i) {
        ComPtr<ISkinObjResBase> child;
        parent.GetSubObject(i, child.put());
        const ComPtr<IVexControlBase> object = child.as<IVexControlBase>();
        ComPtr<IVexControlBase> real;
        if (object)
            object->GetRealCtrlPtr(real.put());
        const ComPtr<IRadioBox> box = real.as<IRadioBox>();
        if (!box || box.get() == static_cast<IRadioBox*>(this))
            continue;
        long siblingId = 0;
        ComPtr<IVexRadioGroup> group;
        box->GetGroupID(&siblingId);
        box->GetGroup(group.put());
        if (siblingId == id && group)
            return group;
    }
    return nullptr;
}

void CRadioBox::leaveOwnGroup()
{
    const ComPtr<IVexRadioGroup> former = std::exchange(m_group, nullptr);
    const auto place = std::find(m_memberships.begin(), m_memberships.end(), former.get());
    if (place == m_memberships.end())
        return;
    (*place)->forget(*this);
    m_memberships.erase(place);
}

STDMETHODIMP CRadioBox::SetGroupID(long id, VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& done) {
        done = VARIANT_TRUE;
        long current = 0;
        if (m_group && SUCCEEDED(m_group->GetID(&current)) && current == id)
            return S_OK;
        m_properties.groupId.set(static_cast<int>(id));
        leaveOwnGroup();
        joinGroup();
        return S_OK;
    });
}

STDMETHODIMP CRadioBox::GetGroupID(long* result) noexcept
{
    return fetch(m_properties.groupId, result);
}

STDMETHODIMP CRadioBox::GetGroup(IVexRadioGroup** result) noexcept
{
    return returning(result, [&] { return m_group; });
}

} // namespace morvane
