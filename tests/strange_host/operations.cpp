#include "tests/strange_host/operations.h"

#include "frame/com/bstr.h"
#include "host/host.h"
#include "tests/strange_host/text.h"

#include <stdexcept>

namespace morvane::testing {

namespace {

void check(HRESULT status, const char* what)
{
    if (FAILED(status))
        throw std::runtime_error(std::string(what) + " failed: " + hex(status));
}

/// The attributes of a type, given back at the end of their scope.
class Attributes {
public:
    explicit Attributes(ITypeInfo& info) : m_info(info) { check(info.GetTypeAttr(&m_attributes), "GetTypeAttr"); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    ~Attributes() { m_info.ReleaseTypeAttr(m_attributes); }
    const TYPEATTR* operator->() const { return m_attributes; }

private:
    ITypeInfo& m_info;
    TYPEATTR* m_attributes = nullptr;
};

ComPtr<ITypeInfo> referencedType(ITypeInfo& info, HREFTYPE reference)
{
    ComPtr<ITypeInfo> result;
    check(info.GetRefTypeInfo(reference, result.put()), "GetRefTypeInfo");
    return result;
}

/// The base interface, or the type itself when it derives from none.
ComPtr<ITypeInfo> baseOf(ITypeInfo& info)
{
    HREFTYPE reference = 0;
    return SUCCEEDED(info.GetRefTypeOfImplType(0, &reference)) ? referencedType(info, reference) : nullptr;
}

/// A dual interface shows its dispatch half first; the table of functions is described by the other one.
ComPtr<ITypeInfo> tableHalf(const ComPtr<ITypeInfo>& info)
{
    constexpr UINT kOtherHalf = static_cast<UINT>(-1);
    HREFTYPE reference = 0;
    if (Attributes(*info)->typekind == TKIND_DISPATCH && SUCCEEDED(info->GetRefTypeOfImplType(kOtherHalf, &reference)))
        return referencedType(*info, reference);
    return info;
}

Parameter passedAs(ITypeInfo& info, const TYPEDESC& type)
{
    switch (type.vt) {
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return {2};
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
        return {4};
    case VT_I8:
    case VT_UI8:
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
    case VT_PTR:
        return {8};
    case VT_USERDEFINED: {
        const auto definition = referencedType(info, type.hreftype);
        const Attributes attributes(*definition);
        if (attributes->typekind == TKIND_ALIAS)
            return passedAs(*definition, attributes->tdescAlias);
        if (attributes->typekind == TKIND_ENUM)
            return {4};
        return {attributes->cbSizeInstance, attributes->cbSizeInstance > 8};
    }
    default:
        throw std::runtime_error("unknown parameter type " + std::to_string(type.vt));
    }
}

std::string nameOf(ITypeInfo& info, const FUNCDESC& function)
{
    Bstr name;
    UINT count = 0;
    check(info.GetNames(function.memid, name.put(), 1, &count), "GetNames");
    const char* const prefix = function.invkind == INVOKE_PROPERTYGET   ? "get_"
                               : function.invkind == INVOKE_PROPERTYPUT ? "put_"
                                                                        : "";
    return prefix + narrow(name.view());
}

} // namespace

std::vector<Operation> operationsOf(ITypeLib& library, REFIID iid)
{
    ComPtr<ITypeInfo> dispatchHalf;
    check(library.GetTypeInfoOfGuid(iid, dispatchHalf.put()), "GetTypeInfoOfGuid");
    const ComPtr<ITypeInfo> info = tableHalf(dispatchHalf);
    const Attributes attributes(*info);
    std::vector<Operation> result;
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        FUNCDESC* function = nullptr;
        check(info->GetFuncDesc(i, &function), "GetFuncDesc");
        Operation operation{nameOf(*info, *function), static_cast<std::size_t>(function->oVft) / sizeof(void*), {}};
        for (SHORT p = 0; p < function->cParams; ++p)
            operation.parameters.push_back(passedAs(*info, function->lprgelemdescParam[p].tdesc));
        info->ReleaseFuncDesc(function);
        result.push_back(std::move(operation));
    }
    return result;
}

namespace {

bool derivesFrom(ComPtr<ITypeInfo> info, REFIID iid)
{
    for (; info; info = baseOf(*info))
        if (Attributes(*info)->guid == iid)
            return true;
    return false;
}

} // namespace

std::vector<LibraryClass> classesOf(ITypeLib& library)
{
    std::vector<LibraryClass> result;
    for (UINT i = 0; i < library.GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> info;
        check(library.GetTypeInfo(i, info.put()), "GetTypeInfo");
        const Attributes attributes(*info);
        if (attributes->typekind != TKIND_COCLASS)
            continue;
        Bstr name;
        info->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr);
        const ComPtr<ITypeInfo> defaultInterface = baseOf(*info);
        result.push_back({narrow(name.view()), attributes->guid, Attributes(*defaultInterface)->guid,
                          derivesFrom(tableHalf(defaultInterface), iidOf<IVexControlBase>())});
    }
    return result;
}

ComPtr<ITypeLib> typeLibraryOf(const std::wstring& modulePath)
{
    ComPtr<ITypeLib> result;
    check(LoadTypeLibEx(modulePath.c_str(), REGKIND_NONE, result.put()), "LoadTypeLibEx");
    return result;
}

} // namespace morvane::testing
