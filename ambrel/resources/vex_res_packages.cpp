// Packages: the looks that modules carry and files hold, given to single controls.
#include "ambrel/resources/skin_import.h"
#include "ambrel/resources/skin_watch.h"
#include "ambrel/resources/vex_res.h"

#include <functional>

namespace ambrel {

using morvane::Bstr;
using morvane::ComPtr;
using morvane::filling;
using morvane::viewOf;

namespace {

std::wstring fullPath(const std::wstring& path)
{
    const DWORD room = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring full(room, L'\0');
    full.resize(room ? GetFullPathNameW(path.c_str(), room, full.data(), nullptr) : 0);
    while (!full.empty() && full.back() == L'\\')
        full.pop_back();
    return full;
}

/// Both are full paths.
bool isBeneath(std::wstring_view folder, std::wstring_view path) noexcept
{
    return path.size() > folder.size() && path[folder.size()] == L'\\' &&
           CompareStringOrdinal(path.data(), static_cast<int>(folder.size()), folder.data(),
                                static_cast<int>(folder.size()), TRUE) == CSTR_EQUAL;
}

/// By what a package in a file is known among those of modules.
std::tuple<HINSTANCE, long, std::wstring> fileKey(std::wstring_view path)
{
    return {nullptr, 0, std::wstring(path)};
}

} // namespace

HRESULT VexRes::package(const PackageKey& key, const std::function<ReadSkin()>& read, std::shared_ptr<Package>& result)
{
    std::shared_ptr<Package>& place = m_packages[key];
    if (!place) {
        const ReadSkin source = read();
        if (!source.skin)
            return source.status;
        SkinResourceSet::Pictures pictures;
        if (const auto error = SkinResourceSet::decode(*source.skin, pictures))
            return reportSkinError(*error, static_cast<IVexRes*>(this));
        auto made = std::make_shared<Package>();
        made->skin = source.skin;
        made->resources.adopt(*source.skin, std::move(pictures), this);
        place = std::move(made);
    }
    result = place;
    return S_OK;
}

HRESULT VexRes::package(HINSTANCE module, long resourceId, std::wstring_view type, std::shared_ptr<Package>& result)
{
    return package(
        {module, resourceId, std::wstring(type)}, [&] { return readModuleSkin(module, resourceId, type); }, result);
}

STDMETHODIMP VexRes::ImportSkin(hyper module, LONG resourceId, BSTR type, hyper parent,
                                IVexControlBase** result) noexcept
{
    return filling(result, [&](IVexControlBase*& first) {
        auto* const parentObject = reinterpret_cast<ISkinObjResBase*>(parent);
        if (parentObject && !coreOf(parentObject))
            return E_INVALIDARG;
        std::shared_ptr<Package> source;
        const HRESULT status = package(reinterpret_cast<HINSTANCE>(module), resourceId, viewOf(type), source);
        if (FAILED(status))
            return status;
        const ComPtr<IVexRes> hold(this);
        ComPtr<IVexControlBase> made;
        for (const skin::SkinObject& each : source->skin->objects) {
            ComPtr<IVexControlBase> control = createObject(*source->skin, each, this, parentObject, source->resources);
            if (!made)
                made = std::move(control);
        }
        if (!made)
            return S_FALSE;
        first = made.detach();
        return S_OK;
    });
}

HRESULT VexRes::applyPackage(IVexControlBase& control, HINSTANCE module, long resourceId)
{
    std::shared_ptr<Package> source;
    const HRESULT status = package(module, resourceId, L"UIFILES", source);
    return FAILED(status) ? status : applyTo(control, *source);
}

HRESULT VexRes::applyPackageFile(IVexControlBase& control, std::wstring_view path)
{
    std::shared_ptr<Package> source;
    const HRESULT status = package(
        fileKey(path), [&] { return readSkinFrom(path); }, source);
    if (FAILED(status))
        return status;
    const HRESULT applied = applyTo(control, *source);
    if (applied == S_OK && isWatched(path)) {
        std::vector<WeakNode>& wearers = source->wearers;
        if (wearers.size() == wearers.capacity()) // grows only by those that live
            std::erase_if(wearers, [](const WeakNode& each) { return !each; });
        wearers.emplace_back(&coreOf(&control)->node());
    }
    return applied;
}

HRESULT VexRes::applyTo(IVexControlBase& control, const Package& source)
{
    const skin::SkinObject* object = ObjectIndex(*source.skin).find(ObjectIndex::Control::of(control));
    if (!object)
        return S_FALSE;
    applyObject(*source.skin, *object, control, source.resources, false);
    return S_OK;
}

// Packages in files, while their folder is watched

HRESULT VexRes::watchPackages(const std::wstring& folder, AmbrelSkinFileChanged told, void* context)
{
    const std::shared_ptr<PackageWatch> former = std::move(m_packageWatch); // it may be what calls
    m_packageWatch.reset();
    if (folder.empty())
        return S_OK;
    if (!isFolder(folder))
        return HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND);
    m_packageWatch = std::make_shared<PackageWatch>(PackageWatch{fullPath(folder), told, context, nullptr});
    m_packageWatch->watch = std::make_unique<SkinWatch>(m_packageWatch->folder, [this] { readPackagesAgain(); });
    return S_OK;
}

bool VexRes::isWatched(std::wstring_view packagePath) const
{
    return m_packageWatch && isBeneath(m_packageWatch->folder, fullPath(std::wstring(packagePath)));
}

void VexRes::readPackagesAgain()
{
    const ComPtr<IVexRes> hold(this);
    const std::shared_ptr<PackageWatch> watch = m_packageWatch; // it may be ended meanwhile
    std::vector<std::wstring> paths;
    for (const auto& [key, package] : m_packages) {
        if (key == fileKey(std::get<std::wstring>(key)) && isWatched(std::get<std::wstring>(key)))
            paths.push_back(std::get<std::wstring>(key));
    }
    for (const std::wstring& path : paths) {
        const HRESULT status = readAgain(path);
        if (m_packageWatch != watch)
            return;
        if (watch->told)
            watch->told(watch->context, path.c_str(), status);
        if (m_packageWatch != watch)
            return;
    }
    if (watch->told)
        watch->told(watch->context, nullptr, S_OK);
}

HRESULT VexRes::readAgain(const std::wstring& packagePath)
{
    const ReadSkin read = readSkinFrom(packagePath);
    if (!read.skin)
        return read.status;
    const std::shared_ptr<Package> known = m_packages[fileKey(packagePath)];
    if (!known) { // could not be read so far: nothing wears it
        std::shared_ptr<Package> made;
        return package(
            fileKey(packagePath), [&] { return read; }, made);
    }
    if (*known->skin == *read.skin)
        return S_FALSE;
    SkinResourceSet::Pictures pictures;
    if (const auto error = SkinResourceSet::decode(*read.skin, pictures))
        return reportSkinError(*error, static_cast<IVexRes*>(this));
    change(*known, read.skin, std::move(pictures));
    return S_OK;
}

void VexRes::change(Package& package, std::shared_ptr<const skin::Skin> skin, SkinResourceSet::Pictures pictures)
{
    notifyAll(VEXSM_CHANGESKINSTART);
    const std::shared_ptr<const skin::Skin> former = std::exchange(package.skin, std::move(skin));
    const std::shared_ptr<const skin::Skin> now = package.skin;
    package.resources.adopt(*now, std::move(pictures), this);
    const ObjectIndex objectsNow(*now);
    const ObjectIndex objectsBefore(*former);
    const std::vector<WeakNode> wearers = package.wearers; // controls may come and go meanwhile
    for (const WeakNode& each : wearers) {
        const ComPtr<IVexControlBase> control(each ? coreOf(*each.get()).control() : nullptr);
        if (!control)
            continue;
        const auto identity = ObjectIndex::Control::of(*control.get());
        const skin::SkinObject* const described = objectsNow.find(identity);
        const skin::SkinObject* const before = objectsBefore.find(identity);
        if (described && before) {
            const Description had{*former, *before};
            applyChanges({*now, *described}, &had, *control.get(), package.resources);
        }
    }
    notifyAll(VEXSM_CHANGESKIN);
    redrawAll();
}

} // namespace ambrel
