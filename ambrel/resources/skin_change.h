// Giving the controls of a window what another skin says of them.
#pragma once

#include "ambrel/properties/atoms.h"
#include "ambrel/resources/skin_import.h"

#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace ambrel {

class PropertyGroup;
class SkinObjectCore;

/// The values that a skin gives the properties of one kind of control: looked up once, set in many.
class SharedValues {
public:
    /// As setting them in `like` would look them up. `before`: what controls have already; null when they have nothing
    /// of this skin. Keeps the resources.
    SharedValues(const Description& now, const Description* before, SkinObjectCore& like,
                 const SkinResourceSet& resources);

    /// False, and nothing is set, when the control's property table is not that of the one it was made for: other
    /// groups, another number of properties, or another property where one gets a value.
    bool setIn(SkinObjectCore& core) const;

private:
    /// A group when there is no type; its properties and groups follow.
    struct Entry {
        Atom name;
        std::size_t properties = 0;
        std::size_t groups = 0;
        std::optional<enumPropType> type;
        std::optional<std::wstring> value;
        morvane::ComPtr<IDispatch> resource; // that the value names
    };

    void add(const Description& now, const Description* before, PropertyGroup& group, const SkinResourceSet& resources);
    bool fits(PropertyGroup& group, std::size_t& at) const;
    void set(PropertyGroup& group, std::size_t& at) const;

    std::vector<Entry> m_entries;
    std::size_t m_topGroups = 0;
    bool m_isEmpty = true; // nothing is to be set
};

/// One change from a skin to another for all controls that follow them. Borrows both.
class SkinChange {
public:
    SkinChange(const skin::Skin& now, const skin::Skin* before, const SkinResourceSet& resources);

    /// Sets what the new skin says differently of the control, and tells it. Leaves the redrawing to the caller. Runs
    /// foreign code.
    void applyTo(IVexControlBase& control);

private:
    struct Step {
        bool isNothing = false; // both skins say the same
        std::optional<SharedValues> values;
    };
    using Objects = std::pair<const skin::SkinObject*, const skin::SkinObject*>; // described now, and before

    Step& stepFor(const Objects& objects, SkinObjectCore& core);
    const Description* before(const Objects& objects, std::optional<Description>& place) const;

    const skin::Skin& m_now;
    const skin::Skin* m_before;
    const SkinResourceSet& m_resources;
    const skin::Skin m_none;
    ObjectIndex m_objects;
    ObjectIndex m_objectsBefore;
    bool m_sameKeys;
    std::map<Objects, Step> m_steps;
};

} // namespace ambrel
