#include "ambrel/resources/skin_export.h"

#include "ambrel/objects/skin_object_core.h"
#include "ambrel/properties/property_group.h"
#include "ambrel/resources/resource_export.h"
#include "ambrel/resources/skin_import.h"
#include "ambrel/resources/vex_res.h"
#include "ambrel/skin/text.h"
#include "ambrel/skin/writer.h"

#include <map>
#include <set>

namespace ambrel {

using morvane::Bstr;
using morvane::ComPtr;

namespace {

skin::ValueKind kindFor(enumPropType type) noexcept
{
    switch (type) {
    case _PROPTYPE_IMAGESECTION:
        return skin::ValueKind::ImageSection;
    case _PROPTYPE_TEXTSTYLE:
        return skin::ValueKind::TextStyle;
    case _PROPTYPE_FONT:
        return skin::ValueKind::Font;
    case _PROPTYPE_CURSOR:
        return skin::ValueKind::Cursor;
    case _PROPTYPE_FILLCOLOR:
        return skin::ValueKind::Gradient;
    default:
        return skin::ValueKind::Plain;
    }
}

/// Without the characters that XML cannot hold: one of them in a text must not keep the whole skin from being saved.
std::string storable(std::string_view text)
{
    std::string result;
    while (!text.empty()) {
        const std::size_t length = skin::characterLength(text);
        result.append(text.substr(0, length));
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return result;
}

/// One property of a control.
struct Setting {
    std::string path;
    std::string name;
    skin::ValueKind kind;
    std::string value;
};

/// A control's settings that a skin can give.
skin::ObjectSettings settingsOf(SkinObjectCore& core)
{
    const ObjectNode& node = core.node();
    skin::ObjectSettings settings;
    settings.opacity = node.opacity();
    settings.visible = node.has(NodeFlag::Visible);
    settings.disposeMouse = node.has(NodeFlag::TakesMouse);
    settings.blendWithParent = node.has(NodeFlag::BlendsWithParent);
    settings.tabStop = node.has(NodeFlag::TabStop);
    settings.drawFocus = node.has(NodeFlag::DrawsFocus);
    settings.tabOrder = node.tabOrder();
    VEX_HAVECANVASFLAGES flags = VEX_HCF_NONE;
    VARIANT_BOOL hasCanvas = VARIANT_FALSE;
    if (core.control())
        core.control()->IsHaveCanvas(&flags, &hasCanvas);
    settings.haveCanvas = hasCanvas != VARIANT_FALSE ? 1 : 0;
    settings.canvasFlags = flags;
    return settings;
}

skin::PositionAxis axisOf(const PositionHalf& half)
{
    return {static_cast<std::int32_t>(half.anchor), static_cast<std::int32_t>(half.space), half.nearGap, half.farGap,
            half.size};
}

skin::Position positionOf(SkinObjectCore& core)
{
    const Position& position = core.node().position();
    return {axisOf(position.horizontal), axisOf(position.vertical)};
}

/// Overwrites what the skin says; what it leaves out is only written where it differs from what the class gives.
template <class Value>
void takeSetting(std::optional<Value>& place, const std::optional<Value>& now, const std::optional<Value>& byClass)
{
    if (place || now != byClass)
        place = now;
}

class SkinExporter {
public:
    explicit SkinExporter(const RunningSkin& running)
        : m_running(running), m_skin(running.opened ? *running.opened : skin::Skin()),
          m_resources(m_skin, running.resources), m_index(running.opened ? *running.opened : m_none)
    {
    }

    skin::Outcome<ExportedSkin> run()
    {
        m_resources.updateEntries();
        m_resources.addFrom(m_running.store);
        if (m_running.opened)
            pairUp(m_running.opened->objects, m_skin.objects);
        takeNamed();
        takeOthers();
        for (skin::SkinObject& each : m_added)
            m_skin.objects.push_back(std::move(each));
        m_resources.removeGone(m_running.store);
        if (m_resources.error())
            return *m_resources.error();
        if (m_skin.layout == skin::Layout::Compact)
            skin::addMissingKeys(m_skin);
        return ExportedSkin{std::move(m_skin), m_resources.resources()};
    }

private:
    /// What a control of a class has before anybody sets anything.
    struct ByClass {
        std::map<std::string, std::string> values; // by path and name
        skin::ObjectSettings settings;
    };

    void pairUp(const std::vector<skin::SkinObject>& opened, std::vector<skin::SkinObject>& copies)
    {
        for (std::size_t i = 0; i < opened.size(); ++i) {
            m_copies.emplace(&opened[i], &copies[i]);
            pairUp(opened[i].children, copies[i].children);
        }
    }

    void takeNamed()
    {
        for (const auto& control : m_running.controls) {
            const auto identity = ObjectIndex::Control::of(*control.get());
            const skin::SkinObject* object = m_index.find(identity);
            if (object && ObjectIndex::isNamed(*object, identity) && m_taken.insert(object).second)
                takeInto(*m_copies.at(object), *control.get());
        }
    }

    void takeOthers()
    {
        std::set<std::pair<std::wstring, std::string>> named; // by class and name; the first of several counts
        for (const auto& control : m_running.controls) {
            const auto identity = ObjectIndex::Control::of(*control.get());
            const skin::SkinObject* object = m_index.find(identity);
            if (object && ObjectIndex::isNamed(*object, identity))
                continue;
            if (identity.name.empty()) {
                if (object && m_taken.insert(object).second)
                    takeInto(*m_copies.at(object), *control.get());
            } else if (!coreOf(control.get())->node().has(NodeFlag::Composed) &&
                       named.emplace(identity.classId + widened(identity.type), identity.name).second) {
                addOwn(*control.get(), identity, object ? m_copies.at(object) : nullptr);
            }
        }
    }

    void addOwn(IVexControlBase& control, const ObjectIndex::Control& identity, const skin::SkinObject* alike)
    {
        if (!alike && identity.classId.empty())
            return; // nothing would make it again
        const std::string type = alike ? skin::typeOf(*alike) : typeNameOf(control);
        const auto isTaken = [&](const std::string& id) {
            return std::ranges::any_of(m_added, [&](const auto& each) { return each.id == id; }) || hasObject(id);
        };
        const std::string id = skin::freshName(type, isTaken);
        skin::SkinObject own;
        if (alike) {
            own = skin::copyAs(*alike, id, identity.name);
        } else {
            own.id = id;
            own.name = identity.name;
            own.className = narrowed(identity.classId);
        }
        const skin::SkinObject before = own;
        takeInto(own, control);
        if (own == before)
            return;
        own.position = positionOf(*coreOf(&control));
        m_added.push_back(std::move(own));
    }

    bool hasObject(const std::string& id) const
    {
        return std::ranges::any_of(m_copies, [&](const auto& each) { return each.second->id == id; });
    }

    static std::string typeNameOf(IVexControlBase& control)
    {
        Bstr type;
        control.GetControlTypeName(type.put());
        std::string name = narrowed(type.view());
        std::erase_if(name, [](char c) { return !((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')); });
        return name.empty() ? "Control" : name;
    }

    void takeInto(skin::SkinObject& object, IVexControlBase& control)
    {
        SkinObjectCore& core = *coreOf(&control);
        const ByClass& byClass = byClassOf(control, object);
        for (Setting& each : settingsIn(core)) {
            if (const auto given = m_skin.valueOf(object, each.path, each.name)) {
                if (given->value != each.value)
                    skin::setValue(m_skin, object, each.path, each.name, each.kind, std::move(each.value));
                continue;
            }
            const auto first = byClass.values.find(each.path + '/' + each.name);
            if (first == byClass.values.end() || first->second != each.value)
                skin::setValue(m_skin, object, each.path, each.name, each.kind, std::move(each.value));
        }
        takeSettings(object, core, byClass.settings);
        takeCursor(object.settings, control, byClass.settings);
    }

    void takeCursor(skin::ObjectSettings& settings, IVexControlBase& control, const skin::ObjectSettings& byClass)
    {
        skin::ObjectSettings now;
        now.cursor = settings.cursor;
        if (!giveCursor(now, control))
            return;
        takeSetting(settings.customCursor, now.customCursor, byClass.customCursor);
        takeSetting(settings.cursor, now.cursor, byClass.cursor);
    }

    /// As the skin says it: an entry, or the number of one of the system's cursors, of which the arrow is what shows
    /// without any. False, and nothing is said, for a cursor that shows nothing.
    bool giveCursor(skin::ObjectSettings& settings, IVexControlBase& control)
    {
        constexpr std::int32_t kArrow = 32512;
        ComPtr<IVexCursor> cursor;
        ComPtr<IVexPicture> picture;
        VARIANT_BOOL isStandard = VARIANT_FALSE;
        long number = kArrow;
        control.GetCursorPtr(cursor.put());
        settings.customCursor = m_resources.knownIdOf(cursor.get());
        if (!settings.customCursor->empty())
            return true;
        if (cursor) {
            cursor->IsStandardCursor(&isStandard);
            cursor->get_ImageObj(picture.put());
        }
        if (!cursor || isStandard != VARIANT_FALSE) {
            if (cursor)
                cursor->GetStandardCursorID(&number);
            settings.cursor = static_cast<std::int32_t>(number);
            return true;
        }
        if (picture)
            settings.customCursor = m_resources.idOf(_PROPTYPE_CURSOR, cursor.get());
        return picture != nullptr;
    }

    static void takeSettings(skin::SkinObject& object, SkinObjectCore& core, const skin::ObjectSettings& byClass)
    {
        const skin::ObjectSettings now = settingsOf(core);
        skin::ObjectSettings& settings = object.settings;
        takeSetting(settings.opacity, now.opacity, byClass.opacity);
        takeSetting(settings.visible, now.visible, byClass.visible);
        takeSetting(settings.disposeMouse, now.disposeMouse, byClass.disposeMouse);
        takeSetting(settings.blendWithParent, now.blendWithParent, byClass.blendWithParent);
        takeSetting(settings.tabOrder, now.tabOrder, byClass.tabOrder);
        takeSetting(settings.haveCanvas, now.haveCanvas, byClass.haveCanvas);
        takeSetting(settings.canvasFlags, now.canvasFlags, byClass.canvasFlags);
        // Controls set these themselves once they are in a window.
        takeSetting(settings.tabStop, now.tabStop, now.tabStop);
        takeSetting(settings.drawFocus, now.drawFocus, now.drawFocus);
        if (object.position)
            object.position = positionOf(core);
    }

    std::vector<Setting> settingsIn(SkinObjectCore& core)
    {
        std::vector<Setting> settings;
        for (const ComPtr<ICtrlPluginProp>& each : core.groups()) {
            if (const auto group = PropertyGroup::from(each.get()))
                addSettings(*group.get(), settings);
        }
        return settings;
    }

    /// What an application named as no skin can is left out.
    void addSettings(PropertyGroup& group, std::vector<Setting>& settings)
    {
        if (!skin::isXmlName(narrowed(group.name())))
            return;
        const std::string path = narrowed(group.path(L"/"));
        group.eachProperty([&](PropertyCore& property) {
            std::string name = narrowed(property.name().text());
            if (!skin::isXmlName(name))
                return;
            const skin::ValueKind kind = kindFor(property.type());
            std::string value;
            if (kind == skin::ValueKind::Plain) {
                value = storable(narrowed(property.kind().text(property)));
            } else {
                ComPtr<IDispatch> resource;
                property.asInterface().GetDispatch(resource.put());
                value = m_resources.idOf(property.type(), resource.get());
            }
            settings.push_back({path, std::move(name), kind, std::move(value)});
        });
        group.eachGroup([&](PropertyGroup& child) { addSettings(child, settings); });
    }

    const ByClass& byClassOf(IVexControlBase& control, const skin::SkinObject& object)
    {
        Bstr classId;
        control.GetClassId(classId.put());
        const std::wstring key = classId.empty() ? classIdOf(widened(object.className)) : classId.str();
        const auto [place, isNew] = m_byClass.try_emplace(key);
        const ComPtr<IVexControlBase> fresh = isNew ? createControl(key) : nullptr;
        hyper created = 0;
        if (!fresh || FAILED(fresh->CreateObj(0, 0, VEXOBJTYPE_PLUGIN, VARIANT_FALSE, &created)))
            return place->second;
        SkinObjectCore& core = *coreOf(fresh.get());
        for (Setting& each : settingsIn(core))
            place->second.values.emplace(each.path + '/' + each.name, std::move(each.value));
        place->second.settings = settingsOf(core);
        giveCursor(place->second.settings, *fresh.get());
        core.destroy();
        return place->second;
    }

    const RunningSkin& m_running;
    const skin::Skin m_none;
    skin::Skin m_skin;
    ResourceExport m_resources;
    ObjectIndex m_index;                                           // of the opened skin
    std::map<const skin::SkinObject*, skin::SkinObject*> m_copies; // its objects in the one that is saved
    std::set<const skin::SkinObject*> m_taken;
    std::vector<skin::SkinObject> m_added;
    std::map<std::wstring, ByClass> m_byClass;
};

} // namespace

skin::Outcome<ExportedSkin> exportSkin(const RunningSkin& running)
{
    return SkinExporter(running).run();
}

} // namespace ambrel
