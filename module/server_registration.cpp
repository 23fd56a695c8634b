#include "module/server_registration.h"

#include "frame/com/bstr.h"
#include "frame/com/com_ptr.h"
#include "module/module_path.h"
#include "module/registration/registry_store.h"

#include <array>

namespace morvane {

namespace {

using registration::Key;
using registration::Mode;
using registration::Removal;

constexpr const wchar_t* kScriptType = L"REGISTRY";

HRESULT lastError() noexcept
{
    return HRESULT_FROM_WIN32(GetLastError());
}

std::u16string utf16(std::wstring_view text)
{
    return {text.begin(), text.end()};
}

std::u16string braced(const GUID& id)
{
    std::array<wchar_t, 40> text{};
    StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
    return utf16(text.data());
}

/// The texts that scripts name between percent signs.
registration::Replacements replacements()
{
    std::u16string module;
    for (wchar_t c : modulePath())
        module.append(c == L'\'' ? 2 : 1, static_cast<char16_t>(c)); // the path stands inside quotes
    // The module has no application identifier: class keys get an empty one.
    return {{u"MODULE", module}, {u"APPID", u""}};
}

HRESULT loadScript(UINT script, std::u16string& text)
{
    const HRSRC place = FindResourceW(thisModule(), MAKEINTRESOURCEW(script), kScriptType);
    if (!place)
        return lastError();
    const HGLOBAL resource = LoadResource(thisModule(), place);
    if (!resource)
        return lastError();
    const std::string_view bytes(static_cast<const char*>(LockResource(resource)), SizeofResource(thisModule(), place));
    text.assign(bytes.begin(), bytes.end()); // scripts are ASCII
    return S_OK;
}

/// Leaves the reason of a failure where automation clients look for it.
void explain(UINT script, const registration::ScriptError& error)
{
    const std::string what = "Registration script " + std::to_string(script) + ", " + error.what();
    Bstr description(std::wstring(what.begin(), what.end()));
    ComPtr<ICreateErrorInfo> info;
    if (FAILED(CreateErrorInfo(info.put())))
        return;
    info->SetDescription(description.get());
    SetErrorInfo(0, info.as<IErrorInfo>().get());
}

HRESULT runInRegistry(const registration::Script& script, Mode mode)
{
    registration::RegistryStore store;
    try {
        run(script, mode, store);
        return S_OK;
    } catch (const registration::StoreError& error) {
        return HRESULT_FROM_WIN32(error.code);
    }
}

/// The category of a toolbox class below its class key. A class whose script writes another identifier has no class
/// key: nothing is made for it.
HRESULT runCategory(const ComponentClass& component, Mode mode)
{
    if (!component.inToolbox)
        return S_OK;
    registration::RegistryStore store;
    const registration::KeyPath classes{registration::Root::ClassesRoot, u"CLSID"};
    if (mode == Mode::Register && !store.hasKey(classes / braced(component.clsid)))
        return S_OK;
    const Key category{braced(kToolboxCategory), Removal::Whole, {}, {}, {}};
    const Key categories{u"Implemented Categories", Removal::NoRemove, {}, {}, {category}};
    const Key classKey{braced(component.clsid), Removal::NoRemove, {}, {}, {categories}};
    const Key all{u"CLSID", Removal::NoRemove, {}, {}, {classKey}};
    return runInRegistry({{registration::Root::ClassesRoot, {all}}}, mode);
}

HRESULT loadTypeLibrary(std::wstring& path, ComPtr<ITypeLib>& library)
{
    path = modulePath();
    return LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.put());
}

HRESULT registerTypeLibrary()
{
    std::wstring path;
    ComPtr<ITypeLib> library;
    const HRESULT loaded = loadTypeLibrary(path, library);
    if (FAILED(loaded))
        return loaded;
    std::wstring helpFolder = folderOf(path);
    return RegisterTypeLib(library.get(), path.data(), helpFolder.data());
}

HRESULT unregisterTypeLibrary()
{
    std::wstring path;
    ComPtr<ITypeLib> library;
    const HRESULT loaded = loadTypeLibrary(path, library);
    if (FAILED(loaded))
        return loaded;
    TLIBATTR* attributes = nullptr;
    const HRESULT known = library->GetLibAttr(&attributes);
    if (FAILED(known))
        return known;
    const TLIBATTR copy = *attributes;
    library->ReleaseTLibAttr(attributes);
    return UnRegisterTypeLib(copy.guid, copy.wMajorVerNum, copy.wMinorVerNum, copy.lcid, copy.syskind);
}

} // namespace

HRESULT runScript(UINT script, Mode mode)
{
    std::u16string text;
    const HRESULT loaded = loadScript(script, text);
    if (FAILED(loaded))
        return loaded;
    try {
        return runInRegistry(registration::parseScript(text, replacements()), mode);
    } catch (const registration::ScriptError& error) {
        explain(script, error);
        return HRESULT_FROM_WIN32(ERROR_BAD_FORMAT);
    }
}

HRESULT registerClasses(std::span<const ComponentClass> table)
{
    for (const ComponentClass& component : table) {
        HRESULT status = runScript(component.script, Mode::Register);
        if (SUCCEEDED(status))
            status = runCategory(component, Mode::Register);
        if (FAILED(status))
            return status;
    }
    return registerTypeLibrary();
}

HRESULT unregisterClasses(std::span<const ComponentClass> table)
{
    for (const ComponentClass& component : table) {
        HRESULT status = runCategory(component, Mode::Unregister);
        if (SUCCEEDED(status))
            status = runScript(component.script, Mode::Unregister);
        if (FAILED(status))
            return status;
    }
    return unregisterTypeLibrary();
}

} // namespace morvane
