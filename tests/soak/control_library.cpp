#include "tests/soak/control_library.h"

#include "frame/com/bstr.h"

#include <stdexcept>

namespace morvane::soak {

namespace {

using Kind = Parameter::Kind;

std::string narrow(BSTR text)
{
    std::string result;
    for (UINT i = 0; i < SysStringLen(text); ++i)
        result += static_cast<char>(text[i]);
    SysFreeString(text);
    return result;
}

std::string nameOf(ITypeInfo& info, MEMBERID member)
{
    BSTR name = nullptr;
    info.GetDocumentation(member, &name, nullptr, nullptr, nullptr);
    return narrow(name);
}

template <class Use>
void withAttributes(ITypeInfo& info, Use use)
{
    TYPEATTR* attributes = nullptr;
    if (FAILED(info.GetTypeAttr(&attributes)))
        return;
    use(*attributes);
    info.ReleaseTypeAttr(attributes);
}

Parameter userDefined(ITypeInfo& owner, HREFTYPE reference);

Parameter given(ITypeInfo& owner, const TYPEDESC& type)
{
    switch (type.vt) {
    case VT_R4:
        return {Kind::Real32, {}};
    case VT_R8:
        return {Kind::Real64, {}};
    case VT_I8:
    case VT_UI8:
        return {Kind::Wide, {}};
    case VT_BSTR:
        return {Kind::Text, {}};
    case VT_VARIANT:
        return {Kind::Variant, {}};
    case VT_DISPATCH:
        return {Kind::Object, {}, IID_IDispatch, 0};
    case VT_UNKNOWN:
        return {Kind::Object, {}, IID_IUnknown};
    case VT_USERDEFINED:
        return userDefined(owner, type.hreftype);
    default:
        return {Kind::Number, {}};
    }
}

Parameter userDefined(ITypeInfo& owner, HREFTYPE reference)
{
    Parameter result{Kind::Number, {}};
    ComPtr<ITypeInfo> info;
    if (FAILED(owner.GetRefTypeInfo(reference, info.put())))
        return result;
    withAttributes(*info, [&](const TYPEATTR& attributes) {
        if (attributes.typekind == TKIND_ALIAS)
            result = given(*info, attributes.tdescAlias);
        else if (attributes.typekind == TKIND_RECORD)
            result = {Kind::Record, {}, {}, attributes.cbSizeInstance};
        else if (attributes.typekind == TKIND_INTERFACE || attributes.typekind == TKIND_DISPATCH)
            result = {Kind::Object, {}, attributes.guid};
    });
    return result;
}

Parameter parameterOf(ITypeInfo& owner, const TYPEDESC& type)
{
    if (type.vt != VT_PTR)
        return given(owner, type);
    const TYPEDESC& target = *type.lptdesc;
    if (target.vt == VT_USERDEFINED) {
        const Parameter inner = userDefined(owner, target.hreftype);
        if (inner.kind == Kind::Object)
            return inner; // a pointer to an interface
        return {Kind::OutOther, {}, {}, inner.size};
    }
    if (target.vt == VT_BSTR)
        return {Kind::OutText, {}};
    if (target.vt == VT_VARIANT)
        return {Kind::OutVariant, {}};
    const bool isObject = target.vt == VT_DISPATCH || target.vt == VT_UNKNOWN ||
                          (target.vt == VT_PTR && parameterOf(owner, target).kind == Kind::Object);
    return {isObject ? Kind::OutObject : Kind::OutOther, {}};
}

Method methodOf(ITypeInfo& info, const FUNCDESC& function, const std::string& interfaceName, const IID& iid)
{
    BSTR names[32]{};
    UINT count = 0;
    info.GetNames(function.memid, names, 32, &count);
    Method method{
        interfaceName + "::" + narrow(count ? names[0] : nullptr), iid, static_cast<std::size_t>(function.oVft), {}};
    if (function.invkind != INVOKE_FUNC)
        method.name += function.invkind == INVOKE_PROPERTYGET ? " (get)" : " (put)";
    for (SHORT i = 0; i < function.cParams; ++i) {
        Parameter parameter = parameterOf(info, function.lprgelemdescParam[i].tdesc);
        const auto at = static_cast<UINT>(i) + 1;
        parameter.name = narrow(at < count ? names[at] : nullptr);
        method.parameters.push_back(std::move(parameter));
    }
    return method;
}

/// The methods of an interface and of those it derives from, IDispatch and IUnknown left out.
void collectMethods(ITypeInfo& info, std::vector<Method>& methods)
{
    withAttributes(info, [&](const TYPEATTR& attributes) {
        if (attributes.guid == IID_IDispatch || attributes.guid == IID_IUnknown)
            return;
        HREFTYPE base = 0;
        ComPtr<ITypeInfo> baseInfo;
        if (attributes.cImplTypes && SUCCEEDED(info.GetRefTypeOfImplType(0, &base)) &&
            SUCCEEDED(info.GetRefTypeInfo(base, baseInfo.put())))
            collectMethods(*baseInfo, methods);
        const std::string name = nameOf(info, MEMBERID_NIL);
        for (UINT i = 0; i < attributes.cFuncs; ++i) {
            FUNCDESC* function = nullptr;
            if (FAILED(info.GetFuncDesc(i, &function)))
                continue;
            methods.push_back(methodOf(info, *function, name, attributes.guid));
            info.ReleaseFuncDesc(function);
        }
    });
}

/// The table behind the first interface of a class.
ComPtr<ITypeInfo> defaultInterface(ITypeInfo& coclass)
{
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> dispatch;
    if (FAILED(coclass.GetRefTypeOfImplType(0, &reference)) ||
        FAILED(coclass.GetRefTypeInfo(reference, dispatch.put())))
        return nullptr;
    ComPtr<ITypeInfo> table;
    if (SUCCEEDED(dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)) &&
        SUCCEEDED(dispatch->GetRefTypeInfo(reference, table.put())))
        return table;
    return dispatch;
}

ControlClass interfaceOf(ITypeLib& library, const char* name, REFIID iid)
{
    ControlClass result;
    result.name = name;
    ComPtr<ITypeInfo> info;
    if (FAILED(library.GetTypeInfoOfGuid(iid, info.put())))
        return result;
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> table;
    if (SUCCEEDED(info->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)) &&
        SUCCEEDED(info->GetRefTypeInfo(reference, table.put())))
        info = table;
    collectMethods(*info, result.methods);
    return result;
}

} // namespace

ControlLibrary::ControlLibrary() : m_module(LoadLibraryW(L"Morvane.dll"))
{
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(m_module, path, MAX_PATH);
    ComPtr<ITypeLib> library;
    if (!m_module || FAILED(LoadTypeLibEx(path, REGKIND_NONE, library.put())))
        throw std::runtime_error("Morvane.dll is not beside the program, or without its type library");
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        TYPEKIND kind{};
        ComPtr<ITypeInfo> info;
        if (FAILED(library->GetTypeInfoType(i, &kind)) || kind != TKIND_COCLASS ||
            FAILED(library->GetTypeInfo(i, info.put())))
            continue;
        ControlClass each;
        each.name = nameOf(*info, MEMBERID_NIL);
        withAttributes(*info, [&](const TYPEATTR& attributes) { each.id = attributes.guid; });
        if (!offer(each))
            continue; // not built yet
        if (const auto table = defaultInterface(*info))
            collectMethods(*table, each.methods);
        m_classes.push_back(std::move(each));
    }
    m_root = interfaceOf(*library, "Root", iidOf<IAmbrel>());
    m_resources = interfaceOf(*library, "Resources", iidOf<IVexRes>());
    m_property = interfaceOf(*library, "Property", iidOf<IVexPropBase>());
    m_group = interfaceOf(*library, "Group", iidOf<ICtrlPluginProp>());
}

bool ControlLibrary::offer(ControlClass& each)
{
    const auto getClassObject =
        reinterpret_cast<LPFNGETCLASSOBJECT>(reinterpret_cast<void*>(GetProcAddress(m_module, "DllGetClassObject")));
    ComPtr<IClassFactory> factory;
    DWORD registration = 0;
    if (FAILED(getClassObject(each.id, IID_IClassFactory, factory.putVoid())) ||
        FAILED(CoRegisterClassObject(each.id, factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &registration)))
        return false;
    m_registrations.push_back(registration);
    ComPtr<IDispatch> sample;
    if (FAILED(factory->CreateInstance(nullptr, IID_IDispatch, sample.putVoid())))
        return false;
    if (const auto control = sample.as<IVexControlBase>()) {
        Bstr typeName;
        control->GetControlTypeName(typeName.put());
        each.isControl = true;
        each.typeName = typeName.view();
    }
    return true;
}

bool ControlLibrary::canUnload() const
{
    const auto canUnloadNow =
        reinterpret_cast<HRESULT(WINAPI*)()>(reinterpret_cast<void*>(GetProcAddress(m_module, "DllCanUnloadNow")));
    return canUnloadNow() == S_OK;
}

void ControlLibrary::withdrawClasses()
{
    for (const DWORD registration : m_registrations)
        CoRevokeClassObject(registration);
    m_registrations.clear();
}

ControlLibrary::~ControlLibrary()
{
    withdrawClasses();
}

} // namespace morvane::soak
