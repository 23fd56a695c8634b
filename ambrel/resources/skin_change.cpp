#include "ambrel/resources/skin_change.h"

#include "ambrel/objects/skin_object_core.h"
#include "ambrel/properties/property_group.h"

namespace ambrel {

using morvane::ComPtr;

namespace {

/// Gives the one resource that was found before.
class FoundResource final : public ResourceResolver {
public:
    explicit FoundResource(const ComPtr<IDispatch>& resource) noexcept : m_resource(resource) {}
    ComPtr<IDispatch> find(enumPropType, std::wstring_view) const override { return m_resource; }

private:
    const ComPtr<IDispatch>& m_resource;
};

} // namespace

SharedValues::SharedValues(const Description& now, const Description* before, SkinObjectCore& like,
                           const SkinResourceSet& resources)
{
    for (const ComPtr<ICtrlPluginProp>& each : like.groups()) {
        if (const ComPtr<PropertyGroup> group = PropertyGroup::from(each.get())) {
            add(now, before, *group.get(), resources);
            ++m_topGroups;
        }
    }
}

void SharedValues::add(const Description& now, const Description* before, PropertyGroup& group,
                       const SkinResourceSet& resources)
{
    const std::string path = narrowed(group.path(L"/"));
    m_entries.push_back({Atom(group.name()), group.properties().size(), group.groups().size(), {}, {}, {}});
    for (const ComPtr<IVexPropBase>& each : group.properties()) {
        const PropertyCore& property = *ambrel::coreOf(each.get());
        Entry entry{property.name(), 0, 0, property.type(), {}, {}};
        const std::string name = narrowed(property.name().text());
        const auto value = now.skin.valueOf(now.object, path, name);
        const auto former = before ? before->skin.valueOf(before->object, path, name) : std::nullopt;
        if (value && !(former && former->value == value->value)) {
            entry.value = widened(value->value);
            entry.resource = resources.find(property.type(), *entry.value);
            m_isEmpty = false;
        }
        m_entries.push_back(std::move(entry));
    }
    for (const ComPtr<PropertyGroup>& child : group.groups())
        add(now, before, *child.get(), resources);
}

bool SharedValues::fits(PropertyGroup& group, std::size_t& at) const
{
    if (at >= m_entries.size())
        return false;
    const Entry& entry = m_entries[at++];
    if (entry.type || group.properties().size() != entry.properties || group.groups().size() != entry.groups ||
        group.name() != entry.name.text())
        return false;
    for (const ComPtr<IVexPropBase>& each : group.properties()) {
        // Those that get no value are not looked at: with thousands of controls, reaching for them is what costs.
        const Entry& own = m_entries[at++];
        const PropertyCore* const property = own.value ? ambrel::coreOf(each.get()) : nullptr;
        if (property && (!(property->name() == own.name) || property->type() != own.type))
            return false;
    }
    for (const ComPtr<PropertyGroup>& child : group.groups()) {
        if (!fits(*child.get(), at))
            return false;
    }
    return true;
}

void SharedValues::set(PropertyGroup& group, std::size_t& at) const
{
    ++at;
    // What a property lets go may be an application's own object, whose end changes the table.
    group.eachProperty([&](PropertyCore& property) {
        if (at >= m_entries.size())
            return;
        const Entry& entry = m_entries[at++];
        if (entry.value)
            property.kind().setText(property, *entry.value, FoundResource(entry.resource), Notify::No);
    });
    group.eachGroup([&](PropertyGroup& child) { set(child, at); });
}

bool SharedValues::setIn(SkinObjectCore& core) const
{
    if (m_isEmpty)
        return true;
    std::size_t at = 0;
    std::size_t groups = 0;
    for (const ComPtr<ICtrlPluginProp>& each : core.groups()) {
        const ComPtr<PropertyGroup> group = PropertyGroup::from(each.get());
        if (group && (++groups > m_topGroups || !fits(*group.get(), at)))
            return false;
    }
    if (groups != m_topGroups)
        return false;
    at = 0;
    for (std::size_t i = 0; i < core.groups().size(); ++i) {
        if (const ComPtr<PropertyGroup> group = PropertyGroup::from(core.groups()[i].get()))
            set(*group.get(), at);
    }
    return true;
}

SkinChange::SkinChange(const skin::Skin& now, const skin::Skin* before, const SkinResourceSet& resources)
    : m_now(now), m_before(before), m_resources(resources), m_objects(now), m_objectsBefore(before ? *before : m_none),
      m_sameKeys(before && before->keys == now.keys)
{
}

const Description* SkinChange::before(const Objects& objects, std::optional<Description>& place) const
{
    return objects.second ? &place.emplace(Description{*m_before, *objects.second}) : nullptr;
}

SkinChange::Step& SkinChange::stepFor(const Objects& objects, SkinObjectCore& core)
{
    const auto [place, isNew] = m_steps.try_emplace(objects);
    Step& step = place->second;
    if (!isNew)
        return step;
    step.isNothing = objects.second && m_sameKeys && *objects.first == *objects.second;
    std::optional<Description> former;
    if (!step.isNothing)
        step.values.emplace(Description{m_now, *objects.first}, before(objects, former), core, m_resources);
    return step;
}

void SkinChange::applyTo(IVexControlBase& control)
{
    SkinObjectCore* const core = coreOf(&control);
    const auto identity = ObjectIndex::Control::of(control);
    const Objects objects(m_objects.find(identity), m_objectsBefore.find(identity));
    if (!core || !objects.first)
        return;
    const ComPtr<IVexControlBase> hold(&control);
    const Step& step = stepFor(objects, *core);
    if (step.isNothing)
        return;
    const Description now{m_now, *objects.first};
    std::optional<Description> former;
    const Description* const had = before(objects, former);
    if (step.values->setIn(*core))
        applySettings(now, had, control, m_resources);
    else
        applyChanges(now, had, control, m_resources);
}

} // namespace ambrel
