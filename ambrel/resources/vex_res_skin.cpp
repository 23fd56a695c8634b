// Opening, changing, importing and saving skins.
#include "ambrel/resources/skin_change.h"
#include "ambrel/resources/skin_export.h"
#include "ambrel/resources/skin_import.h"
#include "ambrel/resources/skin_watch.h"
#include "ambrel/resources/vex_res.h"
#include "ambrel/skin/writer.h"
#include "ambrel/trace/trace.h"

#include <charconv>
#include <filesystem>
#include <functional>

namespace ambrel {

using morvane::Bstr;
using morvane::ComPtr;
using morvane::filling;
using morvane::toVariantBool;
using morvane::viewOf;

namespace {

/// The two numbers of a skin's version, "2.1".
void parseVersion(std::string_view text, LONG& main, LONG& sub) noexcept
{
    const char* const end = text.data() + text.size();
    const auto first = std::from_chars(text.data(), end, main);
    if (first.ec == std::errc() && first.ptr != end && *first.ptr == '.')
        std::from_chars(first.ptr + 1, end, sub);
}

} // namespace

void VexRes::applyToAll(const skin::Skin* former)
{
    const std::shared_ptr<const skin::Skin> running = m_skin; // a control may change the skin again
    SkinChange change(*running, former, m_skinResources);
    anyObject([&](ObjectNode& node) {
        if (const ComPtr<IVexControlBase> control{coreOf(node).control()})
            change.applyTo(*control.get());
        return running != m_skin;
    });
}

HRESULT VexRes::changeTo(std::shared_ptr<const skin::Skin> skin, std::wstring path)
{
    // Everything that can fail happens before anything of the running skin is touched.
    SkinResourceSet::Pictures pictures;
    if (const auto error = SkinResourceSet::decode(*skin, pictures))
        return reportSkinError(*error, static_cast<IVexRes*>(this));

    const ComPtr<IVexRes> hold(this);
    notifyAll(VEXSM_CHANGESKINSTART);
    const std::shared_ptr<const skin::Skin> former = m_skin; // a control may have changed the skin when it was told
    m_skinResources.adopt(*skin, std::move(pictures), this);
    m_store.clear(true);
    m_skinResources.publish(*skin, m_store);
    m_skin = std::move(skin);
    m_skinPath = std::move(path);
    // Resources changed inside the objects that controls hold; only what the new skin says differently about controls'
    // own values is set again.
    if (!(former && former->keys == m_skin->keys && former->objects == m_skin->objects))
        applyToAll(former.get());
    showTexts();
    notifyAll(VEXSM_CHANGESKIN);
    redrawAll();
    return S_OK;
}

void VexRes::applyOpenSkin(IVexControlBase& control)
{
    if (!m_skin)
        return;
    if (const skin::SkinObject* object = ObjectIndex(*m_skin).find(ObjectIndex::Control::of(control)))
        applyObject(*m_skin, *object, control, m_skinResources, true);
}

HRESULT VexRes::open(std::wstring_view path, VARIANT_BOOL* result)
{
    return filling(result, [&](VARIANT_BOOL& opened) {
        const ReadSkin read = readSkinFrom(path);
        const HRESULT status = read.skin ? changeTo(read.skin, std::wstring(path)) : read.status;
        if (FAILED(status))
            return status;
        opened = VARIANT_TRUE;
        m_watch.reset();
        if (isFolder(m_skinPath))
            m_watch = std::make_unique<SkinWatch>(m_skinPath, [this] { reload(); });
        return S_OK;
    });
}

void VexRes::reload()
{
    const ComPtr<IVexRes> hold(this);
    const ReadSkin read = readSkinFrom(m_skinPath); // reports what is wrong; the running skin stays
    if (read.skin && !(m_skin && *read.skin == *m_skin))
        changeTo(read.skin, m_skinPath);
}

STDMETHODIMP VexRes::OpenSkin(BSTR skinPath, BSTR packagePath, VARIANT_BOOL, VARIANT_BOOL* result) noexcept
{
    if (!result)
        return E_POINTER;
    // The second path, where one is given, is that of the package; the first one then is the folder it is relative to.
    return morvane::guarded([&] {
        std::filesystem::path path{std::wstring(viewOf(skinPath))};
        if (!viewOf(packagePath).empty())
            path /= std::wstring(viewOf(packagePath));
        return open(path.wstring(), result);
    });
}

STDMETHODIMP VexRes::ChangeSkn(BSTR path, VARIANT_BOOL* result) noexcept
{
    return result ? morvane::guarded([&] { return open(viewOf(path), result); }) : E_POINTER;
}
STDMETHODIMP VexRes::OpenTheme(BSTR path, VARIANT_BOOL* result) noexcept
{
    return ChangeSkn(path, result);
}

STDMETHODIMP VexRes::CloseSkin(VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& closed) {
        m_watch.reset();
        if (!m_skin)
            return S_FALSE;
        m_skin.reset();
        m_skinPath.clear();
        m_store.clear(true);
        m_skinResources = {};
        closed = VARIANT_TRUE;
        return S_OK;
    });
}
STDMETHODIMP VexRes::ReleaseSkin(VARIANT_BOOL* result) noexcept
{
    return CloseSkin(result);
}

STDMETHODIMP VexRes::GetSkinFilePath(BSTR* result) noexcept
{
    return morvane::returning(result, [&] { return Bstr(m_skinPath); });
}

STDMETHODIMP VexRes::GetSkinVersion(LONG* main, LONG* sub) noexcept
{
    if (!main || !sub)
        return E_POINTER;
    *main = *sub = 0;
    if (!m_skin || !m_skin->info)
        return S_FALSE;
    for (const skin::Attribute& each : m_skin->info->attributes) {
        if (each.name == "Version")
            parseVersion(each.value, *main, *sub);
    }
    return S_OK;
}

RunningSkin VexRes::runningSkin()
{
    RunningSkin running{m_skin.get(), m_skinResources, m_store, {}};
    anyObject([&](ObjectNode& node) {
        if (IVexControlBase* const control = coreOf(node).control())
            running.controls.emplace_back(control);
        return false;
    });
    return running;
}

STDMETHODIMP VexRes::Save(BSTR path, VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& saved) {
        const std::filesystem::path target(viewOf(path).empty() ? m_skinPath : std::wstring(viewOf(path)));
        if (target.empty())
            return E_INVALIDARG;
        const ComPtr<IVexRes> hold(this);
        const std::shared_ptr<const skin::Skin> running = m_skin; // making controls runs foreign code
        auto exported = exportSkin(runningSkin());
        if (!exported)
            return reportSkinError(exported.error(), static_cast<IVexRes*>(this));
        if (exported->skin == skin::Skin())
            return S_FALSE; // no skin, no controls: nothing to save
        std::error_code fault;
        const bool isOpen = running && running == m_skin && std::filesystem::equivalent(target, m_skinPath, fault);
        const auto outcome = skin::saveSkin(exported->skin, target, isOpen ? &running->files : nullptr);
        if (!outcome)
            return reportSkinError(outcome.error(), static_cast<IVexRes*>(this));
        saved = VARIANT_TRUE;
        if (isOpen) {
            // The open package says now what the controls have: a watch of its folder finds nothing new.
            m_skin = std::make_shared<const skin::Skin>(std::move(exported->skin));
            m_skinResources = std::move(exported->resources);
        }
        return S_OK;
    });
}
STDMETHODIMP VexRes::ExportSknVexFile(BSTR path, VARIANT_BOOL* result) noexcept
{
    return Save(path, result);
}

} // namespace ambrel
