#include "ambrel/resources/skin_import.h"

#include "ambrel/objects/skin_object_core.h"
#include "ambrel/properties/property_group.h"
#include "ambrel/resources/vex_res.h"
#include "ambrel/skin/reader.h"
#include "ambrel/trace/trace.h"
#include "frame/com/instance.h"

#include <filesystem>

namespace ambrel {

using morvane::Bstr;
using morvane::ComPtr;
using morvane::toVariantBool;

namespace {

constexpr WORD kPackageLanguage = MAKELANGID(LANG_CHINESE, SUBLANG_CHINESE_SIMPLIFIED);

/// Codes of skin errors follow the first 512 of the facility, which are the system's own.
HRESULT statusOf(skin::Code code) noexcept
{
    return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_ITF, 0x200 + static_cast<int>(code));
}

ReadSkin outcomeOf(skin::Outcome<skin::Skin> outcome)
{
    if (!outcome)
        return {reportSkinError(outcome.error(), nullptr), nullptr};
    return {S_OK, std::make_shared<const skin::Skin>(std::move(outcome.value()))};
}

HRSRC findPackage(HINSTANCE module, long id, const std::wstring& type) noexcept
{
    const auto name = MAKEINTRESOURCEW(id);
    const HRSRC inLanguage = FindResourceExW(module, type.c_str(), name, kPackageLanguage);
    return inLanguage ? inLanguage : FindResourceW(module, name, type.c_str());
}

/// `before`: what the control has already; null when it has nothing of this skin.
void setProperties(const Description& now, const Description* before, PropertyGroup& group,
                   const SkinResourceSet& resources)
{
    const std::string path = narrowed(group.path(L"/"));
    group.eachProperty([&](PropertyCore& property) {
        const std::string name = narrowed(property.name().text());
        const auto value = now.skin.valueOf(now.object, path, name);
        if (!value)
            return;
        const auto former = before ? before->skin.valueOf(before->object, path, name) : std::nullopt;
        if (!former || former->value != value->value)
            property.kind().setText(property, widened(value->value), resources, Notify::No);
    });
    group.eachGroup([&](PropertyGroup& child) { setProperties(now, before, child, resources); });
}

void setAllProperties(const Description& now, const Description* before, SkinObjectCore& core,
                      const SkinResourceSet& resources)
{
    for (std::size_t i = 0; i < core.groups().size(); ++i) {
        if (const ComPtr<PropertyGroup> group = PropertyGroup::from(core.groups()[i].get()))
            setProperties(now, before, *group.get(), resources);
    }
}

/// Tells the control that its values were read.
void tellConfigured(SkinObjectCore& core)
{
    VexNotify notice{};
    notice.eVexMsgId = VEXSM_ACCESSCONFIGED;
    notice.lParam1 = 1;
    core.notify(notice);
}

PositionHalf halfOf(const skin::PositionAxis& axis)
{
    return {static_cast<Anchor>(axis.align), static_cast<Space>(axis.space), axis.nearDistance, axis.farDistance,
            axis.size};
}

/// A cursor of the skin, or one of the system's. The arrow is what controls show without any.
void setCursor(const skin::ObjectSettings& s, IVexControlBase& control, const SkinResourceSet& resources)
{
    constexpr std::int32_t kArrow = 32512;
    ComPtr<IVexCursor> cursor;
    if (s.customCursor && !s.customCursor->empty()) {
        if (const auto found = resources.find(_PROPTYPE_CURSOR, widened(*s.customCursor)))
            cursor = found.as<IVexCursor>();
    } else if (s.cursor && *s.cursor != kArrow) {
        const auto standard = morvane::Instance<Cursor>::make();
        standard->setStandard(*s.cursor);
        cursor = ComPtr<IVexCursor>(standard.get());
    }
    ComPtr<IVexCursor> former;
    control.GetCursorPtr(former.put());
    if ((s.customCursor || s.cursor) && cursor.get() != former.get())
        control.SetCursorPtr(cursor.get());
}

void setCanvas(const skin::ObjectSettings& s, IVexControlBase& control)
{
    VEX_HAVECANVASFLAGES flags = VEX_HCF_NONE;
    VARIANT_BOOL has = VARIANT_FALSE;
    control.IsHaveCanvas(&flags, &has);
    if (s.haveCanvas)
        has = toVariantBool(*s.haveCanvas != 0);
    if (s.canvasFlags)
        flags = static_cast<VEX_HAVECANVASFLAGES>(*s.canvasFlags);
    VARIANT_BOOL changed = VARIANT_FALSE;
    if (s.haveCanvas || s.canvasFlags)
        control.SetHaveCanvas(has, flags, &changed);
}

void setSettings(const skin::SkinObject& object, SkinObjectCore& core, IVexControlBase& control,
                 const SkinResourceSet& resources)
{
    const skin::ObjectSettings& s = object.settings;
    setCursor(s, control, resources);
    if (s.opacity)
        core.setOpacity(*s.opacity);
    if (s.visible)
        core.setVisible(*s.visible, false);
    if (s.disposeMouse)
        control.SetDisposeMouse(toVariantBool(*s.disposeMouse));
    if (s.blendWithParent)
        control.SetBlendWithParent(toVariantBool(*s.blendWithParent));
    setCanvas(s, control);
    if (s.tabOrder)
        core.node().setTabOrder(*s.tabOrder);
    if (s.tabStop)
        control.SetTabStop(toVariantBool(*s.tabStop));
    if (s.drawFocus)
        control.SetDrawFocus(toVariantBool(*s.drawFocus));
}

void setPlace(const skin::SkinObject& object, SkinObjectCore& core)
{
    if (object.position) {
        core.place({halfOf(object.position->horizontal), halfOf(object.position->vertical)});
        return;
    }
    if (!core.node().rect().isEmpty() || !object.settings.width || !object.settings.height)
        return;
    Position position = core.node().position();
    position.horizontal.size = *object.settings.width;
    position.vertical.size = *object.settings.height;
    core.place(position);
}

} // namespace

HRESULT reportSkinError(const skin::SkinError& error, IUnknown* object)
{
    const std::wstring text = widened(error.text());
    const HRESULT status = statusOf(error.code);
    traceText(AMBREL_TRACE_SKIN_ERROR, object, static_cast<long>(error.code), text.c_str());
    ComPtr<ICreateErrorInfo> info;
    if (SUCCEEDED(CreateErrorInfo(info.put()))) {
        info->SetDescription(const_cast<LPOLESTR>(text.c_str()));
        info->SetSource(const_cast<LPOLESTR>(L"Ambrel"));
        info->SetGUID(morvane::iidOf<IVexRes>());
        if (const auto readable = info.as<IErrorInfo>())
            SetErrorInfo(0, readable.get());
    }
    return status;
}

ReadSkin readModuleSkin(HINSTANCE module, long resourceId, std::wstring_view resourceType)
{
    const HRSRC found = findPackage(module, resourceId, std::wstring(resourceType));
    const HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
    const auto* bytes = static_cast<const std::uint8_t*>(loaded ? LockResource(loaded) : nullptr);
    const std::string name = "resource " + std::to_string(resourceId);
    if (!bytes) {
        skin::SkinError error;
        error.code = skin::Code::NotFound;
        error.file = name;
        error.message = "the module has no such package";
        return {reportSkinError(error, nullptr), nullptr};
    }
    return outcomeOf(skin::readSkin({bytes, SizeofResource(module, found)}, name));
}

ReadSkin readSkinFrom(std::wstring_view path)
{
    return outcomeOf(skin::loadSkin(std::filesystem::path(path)));
}

ObjectIndex::ObjectIndex(const skin::Skin& skin)
{
    for (const skin::SkinObject& each : skin.objects)
        m_entries.push_back({&each, classIdOf(widened(each.className)), skin::typeOf(each)});
    for (std::size_t i = 0; i < m_entries.size(); ++i) { // level by level
        for (const skin::SkinObject& each : m_entries[i].object->children)
            m_entries.push_back({&each, classIdOf(widened(each.className)), skin::typeOf(each)});
    }
}

ObjectIndex::Control ObjectIndex::Control::of(IVexControlBase& control)
{
    Bstr name;
    Bstr classId;
    control.GetName(name.put());
    control.GetClassId(classId.put());
    Control result{narrowed(name.view()), classId.str(), {}};
    if (classId.empty()) { // created by its class object directly
        Bstr type;
        control.GetControlTypeName(type.put());
        result.type = narrowed(type.view());
    }
    return result;
}

const skin::SkinObject* ObjectIndex::find(const Control& control) const
{
    const skin::SkinObject* ofClass = nullptr;
    for (const Entry& each : m_entries) {
        if (control.classId.empty() ? each.type != control.type : each.classId != control.classId)
            continue;
        if (isNamed(*each.object, control))
            return each.object;
        if (!ofClass)
            ofClass = each.object;
    }
    return ofClass;
}

void applyObject(const skin::Skin& skin, const skin::SkinObject& object, IVexControlBase& control,
                 const SkinResourceSet& resources, bool moves)
{
    SkinObjectCore* const core = coreOf(&control);
    if (!core)
        return;
    const ComPtr<IVexControlBase> hold(&control);
    setAllProperties({skin, object}, nullptr, *core, resources);
    setSettings(object, *core, control, resources);
    if (moves)
        setPlace(object, *core);
    tellConfigured(*core);
    core->redraw();
}

void applyChanges(const Description& now, const Description* before, IVexControlBase& control,
                  const SkinResourceSet& resources)
{
    SkinObjectCore* const core = coreOf(&control);
    if (!core)
        return;
    const ComPtr<IVexControlBase> hold(&control);
    setAllProperties(now, before, *core, resources);
    applySettings(now, before, control, resources);
    core->redraw();
}

void applySettings(const Description& now, const Description* before, IVexControlBase& control,
                   const SkinResourceSet& resources)
{
    SkinObjectCore* const core = coreOf(&control);
    if (!core)
        return;
    const ComPtr<IVexControlBase> hold(&control);
    if (!before || now.object.settings != before->object.settings)
        setSettings(now.object, *core, control, resources);
    tellConfigured(*core);
}

ComPtr<IVexControlBase> createObject(const skin::Skin& skin, const skin::SkinObject& object, IVexRes* owner,
                                     ISkinObjResBase* parent, const SkinResourceSet& resources)
{
    ComPtr<IVexControlBase> control = createControl(widened(object.className));
    if (!control)
        return nullptr;
    control->SetName(Bstr(widened(object.name.empty() ? object.id : object.name)).get());
    hyper created = 0;
    const HRESULT status = control->CreateObj(reinterpret_cast<hyper>(owner), reinterpret_cast<hyper>(parent),
                                              VEXOBJTYPE_PLUGIN, VARIANT_FALSE, &created);
    if (FAILED(status))
        return nullptr;
    applyObject(skin, object, *control.get(), resources, true);
    for (const skin::SkinObject& child : object.children)
        createObject(skin, child, owner, control.get(), resources);
    return control;
}

} // namespace ambrel
