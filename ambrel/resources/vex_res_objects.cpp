// Shared resources and controls of the resource object.
#include "ambrel/resources/vex_res.h"

#include "ambrel/render/resource_factory.h"
#include "ambrel/resources/skin_import.h"
#include "ambrel/window/tree_walk.h"

#include <algorithm>
#include <array>

namespace ambrel {

using morvane::Bstr;
using morvane::ComPtr;
using morvane::filling;
using morvane::guarded;
using morvane::toVariantBool;
using morvane::viewOf;

namespace {

struct NamedType {
    const wchar_t* interfaceName;
    VexObjType type;
};
constexpr NamedType kInterfaceNames[] = {
    {L"IVexPicture", VEXOBJTYPE_IMAGE},       {L"IVexImageBase", VEXOBJTYPE_IMAGEBASE},
    {L"IVexTextStyle", VEXOBJTYPE_TEXTSTYLE}, {L"IVexFontEx", VEXOBJTYPE_FONTEX},
    {L"IVexCursor", VEXOBJTYPE_CURSOR},       {L"IAmbrel", VEXOBJTYPE_AMBREL},
    {L"IFillColor", VEXOBJTYPE_GRADIENTCLR},  {L"IVexImageList", VEXOBJTYPE_IMAGELIST},
    {L"IVexSkinSubRgn", VEXOBJTYPE_SKINRGN},  {L"IVexControlBase", VEXOBJTYPE_PLUGIN},
};

/// Class words of skins: a module word and a class number. The numbers are those that saved skins carry.
struct ClassWord {
    const wchar_t* word;
    const wchar_t* classId;
};
constexpr ClassWord kClassWords[] = {
    {L"Morvane17", L"{9D16F301-CDF1-46B8-B95E-982AF85E06AE}"}, // button
    {L"Morvane9", L"{AA5741A3-7E66-438A-9D1D-6F9829A2379B}"},  // check box
    {L"Morvane64", L"{8110881D-CA4F-43E0-99B1-0D0B9F15F364}"}, // radio box
    {L"Morvane68", L"{AA5F6FA9-4983-4FC8-A8AB-2A98AB6CBB6E}"}, // scroll bar
};

/// Of a resource that was given no name: its type's with a number.
std::wstring freeName(const ResourceStore& store, VexObjType type, IVexObj& resource)
{
    Bstr stem;
    resource.GetTypeName(stem.put());
    std::wstring name;
    for (int number = 1; name.empty() || store.find(type, name); ++number)
        name = stem.str() + std::to_wstring(number);
    return name;
}

bool isControl(VexObjType type) noexcept
{
    return type == VEXOBJTYPE_PLUGIN;
}

} // namespace

std::wstring classIdOf(std::wstring_view classWord)
{
    const auto known = std::find_if(std::begin(kClassWords), std::end(kClassWords),
                                    [&](const ClassWord& each) { return classWord == each.word; });
    const std::wstring word(known == std::end(kClassWords) ? classWord : std::wstring_view(known->classId));
    CLSID id{};
    std::array<wchar_t, 40> text{};
    if (word.empty() || FAILED(CLSIDFromString(word.c_str(), &id)) ||
        !StringFromGUID2(id, text.data(), static_cast<int>(text.size())))
        return {};
    return text.data();
}

ComPtr<IVexControlBase> createControl(std::wstring_view classWord)
{
    CLSID id{};
    ComPtr<IVexControlBase> made;
    const std::wstring classId = classIdOf(classWord);
    if (!classId.empty() && SUCCEEDED(CLSIDFromString(classId.c_str(), &id)))
        CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, morvane::iidOf<IVexControlBase>(), made.putVoid());
    if (made)
        made->SetClassId(Bstr(classId).get());
    return made;
}

// Looking up

STDMETHODIMP VexRes::GetResObject(VexObjType type, BSTR name, ISkinObjResBase* parent, VARIANT_BOOL deep,
                                  IVexObj** result) noexcept
{
    return filling(result, [&](IVexObj*& found) {
        if (type == VEXOBJTYPE_AMBREL) {
            ComPtr<IDispatch> root;
            const HRESULT status = GetAmbrelForm(name, root.put());
            found = root ? root.as<IVexObj>().detach() : nullptr;
            return status;
        }
        if (!isControl(type)) {
            found = m_store.find(type, viewOf(name)).detach();
            return found ? S_OK : S_FALSE;
        }
        ComPtr<ISkinObjResBase> control;
        if (parent) {
            parent->GetObjectByCaption(type, name, deep, control.put());
            found = control.detach();
            return found ? S_OK : S_FALSE;
        }
        for (const ComPtr<RootWindow>& each : windows()) {
            if (!control)
                each->GetObjectByCaption(type, name, deep, control.put());
        }
        found = control.detach();
        return found ? S_OK : S_FALSE;
    });
}

STDMETHODIMP VexRes::GetGlobalResObj(VexObjType type, BSTR name, IVexObj** result) noexcept
{
    return GetResObject(type, name, nullptr, VARIANT_TRUE, result);
}

STDMETHODIMP VexRes::GetResObjectByGuid(VexObjType type, BSTR id, IVexObj** result) noexcept
{
    return filling(result, [&](IVexObj*& found) {
        if (!isControl(type)) {
            found = m_store.findById(type, viewOf(id)).detach();
            return found ? S_OK : S_FALSE;
        }
        anyObject([&](ObjectNode& node) {
            const ComPtr<ISkinObjResBase> face = faceOf(&node);
            Bstr own;
            if (face && SUCCEEDED(face->GetObjectID(own.put())) && own.view() == viewOf(id))
                found = ComPtr<ISkinObjResBase>(face).detach();
            return found != nullptr;
        });
        return found ? S_OK : S_FALSE;
    });
}

ComPtr<IVexObj> VexRes::objectOfNumber(hyper number)
{
    // A number is trusted only when it is that of an object that lives here.
    const auto matches = [&](IVexObj* object) {
        hyper own = 0;
        return reinterpret_cast<hyper>(object) == number || (SUCCEEDED(object->GetObjPtr(&own)) && own == number);
    };
    ComPtr<IVexObj> found;
    if (!number)
        return found;
    for (const NamedType& each : kInterfaceNames) {
        for (const ComPtr<IVexObj>& object : m_store.all(each.type)) {
            if (matches(object.get()))
                return object;
        }
    }
    for (const ComPtr<RootWindow>& each : windows()) {
        if (matches(each.get()))
            return ComPtr<IVexObj>(each.get());
    }
    anyObject([&](ObjectNode& node) {
        const ComPtr<ISkinObjResBase> face = faceOf(&node);
        if (face && matches(face.get()))
            found = ComPtr<IVexObj>(face.get());
        return static_cast<bool>(found);
    });
    return found;
}

STDMETHODIMP VexRes::GetComDispatch(hyper number, IVexObj** result) noexcept
{
    return filling(result, [&](IVexObj*& found) {
        found = objectOfNumber(number).detach();
        return found ? S_OK : S_FALSE;
    });
}
STDMETHODIMP VexRes::GetObjectFromLong(hyper number, IVexObj** result) noexcept
{
    return GetComDispatch(number, result);
}

STDMETHODIMP VexRes::ConvertINameToType(BSTR name, VexObjType* result) noexcept
{
    return filling(result, [&](VexObjType& type) {
        const auto known = std::find_if(std::begin(kInterfaceNames), std::end(kInterfaceNames),
                                        [&](const NamedType& each) { return viewOf(name) == each.interfaceName; });
        if (known == std::end(kInterfaceNames))
            return S_FALSE;
        type = known->type;
        return S_OK;
    });
}

STDMETHODIMP VexRes::ConvertTypeToIName(VexObjType type, BSTR* result) noexcept
{
    return filling(result, [&](BSTR& name) {
        const auto known = std::find_if(std::begin(kInterfaceNames), std::end(kInterfaceNames),
                                        [&](const NamedType& each) { return each.type == type; });
        if (known == std::end(kInterfaceNames))
            return S_FALSE;
        name = Bstr(known->interfaceName).detach();
        return S_OK;
    });
}

std::vector<ComPtr<RootWindow>> VexRes::windowsOf(VexObjType type)
{
    return type == VEXOBJTYPE_AMBREL ? windows() : std::vector<ComPtr<RootWindow>>();
}

STDMETHODIMP VexRes::EnumObjectsToHwnd(VexObjType type, LONG message, hyper window) noexcept
{
    return guarded([&] {
        const auto target = reinterpret_cast<HWND>(window);
        if (!IsWindow(target))
            return E_INVALIDARG;
        const auto tell = [&](IVexObj* object) {
            SendMessageW(target, static_cast<UINT>(message), reinterpret_cast<WPARAM>(object), 0);
        };
        for (const ComPtr<IVexObj>& each : m_store.all(type))
            tell(each.get());
        for (const ComPtr<RootWindow>& each : windowsOf(type))
            tell(each.get());
        if (isControl(type))
            anyObject([&](ObjectNode& node) { return tell(faceOf(&node).get()), false; });
        return S_OK;
    });
}

STDMETHODIMP VexRes::EnumObjectsToCallback(VexObjType type, hyper callback, hyper parameter) noexcept
{
    if (!callback)
        return E_POINTER;
    return guarded([&] {
        const auto tell = reinterpret_cast<void(STDMETHODCALLTYPE*)(IVexObj*, hyper)>(callback);
        for (const ComPtr<IVexObj>& each : m_store.all(type))
            tell(each.get(), parameter);
        for (const ComPtr<RootWindow>& each : windowsOf(type))
            tell(each.get(), parameter);
        if (isControl(type))
            anyObject([&](ObjectNode& node) { return tell(faceOf(&node).get(), parameter), false; });
        return S_OK;
    });
}

HRESULT VexRes::rename(IVexObj& resource, std::wstring_view name)
{
    Bstr former;
    resource.GetName(former.put());
    if (m_store.rename(&resource, former.view(), name))
        return S_OK;
    skin::SkinError error;
    error.code = skin::Code::DuplicateName;
    error.file = narrowed(name);
    error.message = "another resource of this kind has the name";
    return reportSkinError(error, &resource);
}

// Making

STDMETHODIMP VexRes::AddResObject(VexObjType type, IVexObj*, BSTR name, VARIANT_BOOL first, IVexObj** result) noexcept
{
    return filling(result, [&](IVexObj*& made) {
        if (type == VEXOBJTYPE_AMBREL) {
            ComPtr<IDispatch> root;
            const HRESULT status = CreateAmbrel(name, 0, root.put());
            made = SUCCEEDED(status) ? root.as<IVexObj>().detach() : nullptr;
            return status;
        }
        if (isControl(type))
            return E_INVALIDARG; // a control needs its class: AddPluginResObject
        if (ComPtr<IVexObj> existing = viewOf(name).empty() ? nullptr : m_store.find(type, viewOf(name))) {
            made = existing.detach();
            return S_FALSE;
        }
        ComPtr<IVexObj> resource;
        const HRESULT status = createResource(type, viewOf(name), this, resource.put());
        if (FAILED(status))
            return status;
        std::wstring called(viewOf(name));
        if (called.empty()) {
            called = freeName(m_store, type, *resource.get());
            resource->SetName(Bstr(called).get());
        }
        m_store.add(type, called, resource, false);
        if (first != VARIANT_FALSE)
            m_store.moveToFront(resource.get());
        made = resource.detach();
        return S_OK;
    });
}

ComPtr<IVexControlBase> VexRes::addPlugin(IVexObj* owner, BSTR name, BSTR guid, bool composed)
{
    ComPtr<IVexControlBase> control = createControl(viewOf(guid));
    if (!control)
        return nullptr;
    control->SetName(name);
    control->SetIsComposeCtrl(toVariantBool(composed));
    SkinObjectCore* const parent = coreOf(owner);
    hyper created = 0;
    const HRESULT status = control->CreateObj(reinterpret_cast<hyper>(static_cast<IVexRes*>(this)),
                                              reinterpret_cast<hyper>(parent ? parent->face() : nullptr),
                                              VEXOBJTYPE_PLUGIN, VARIANT_FALSE, &created);
    if (FAILED(status))
        return nullptr;
    applyOpenSkin(*control.get());
    return control;
}

STDMETHODIMP VexRes::AddPluginResObject(IVexObj* owner, BSTR name, BSTR guid, IVexControlBase** result) noexcept
{
    return AddPluginResObject2(owner, name, guid, VARIANT_FALSE, result);
}

STDMETHODIMP VexRes::AddPluginResObject2(IVexObj* owner, BSTR name, BSTR guid, VARIANT_BOOL composed,
                                         IVexControlBase** result) noexcept
{
    return filling(result, [&](IVexControlBase*& made) {
        made = addPlugin(owner, name, guid, composed != VARIANT_FALSE).detach();
        return made ? S_OK : S_FALSE;
    });
}

STDMETHODIMP VexRes::CreatePluginResObject(BSTR guid, IVexControlBase** result) noexcept
{
    return filling(result, [&](IVexControlBase*& made) {
        made = createControl(viewOf(guid)).detach();
        return made ? S_OK : S_FALSE;
    });
}

// Removing

STDMETHODIMP VexRes::ReleasePluginResObject(IVexControlBase* control) noexcept
{
    return guarded([&] {
        SkinObjectCore* const core = coreOf(control);
        if (!core)
            return E_INVALIDARG;
        const ComPtr<IVexControlBase> hold(control);
        core->destroy();
        return S_OK;
    });
}

STDMETHODIMP VexRes::RemoveResObject(IVexObj* object, VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& removed) {
        const ComPtr<IVexObj> hold(object);
        SkinObjectCore* const core = coreOf(object);
        removed = toVariantBool(core ? core->detach() : m_store.remove(object));
        return removed ? S_OK : S_FALSE;
    });
}

STDMETHODIMP VexRes::DeleteResObj(IVexObj* object, VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& removed) {
        SkinObjectCore* const core = coreOf(object);
        if (!core)
            return RemoveResObject(object, &removed);
        const ComPtr<IVexObj> hold(object);
        core->destroy();
        removed = VARIANT_TRUE;
        return S_OK;
    });
}

STDMETHODIMP VexRes::RemoveObject(hyper number, VARIANT_BOOL release, VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& removed) {
        const ComPtr<IVexObj> object = objectOfNumber(number);
        if (!object)
            return S_FALSE;
        return release ? DeleteResObj(object.get(), &removed) : RemoveResObject(object.get(), &removed);
    });
}

} // namespace ambrel
