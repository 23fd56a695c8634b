#include "tools/describe/library_reader.h"

#include <map>
#include <memory>
#include <stdexcept>

namespace describe {

namespace {

template <class T>
T require(T object, const char* what)
{
    if (!object)
        throw std::runtime_error(what);
    return object;
}

/// The descriptions that a type information lends, given back at the end.
template <class Record, void (STDMETHODCALLTYPE ITypeInfo::*GiveBack)(Record*)>
class Lent {
public:
    explicit Lent(ITypeInfo& info) : m_info(&info) {}
    Lent(const Lent&) = delete;
    Lent& operator=(const Lent&) = delete;
    ~Lent()
    {
        if (m_record)
            ((*m_info).*GiveBack)(m_record);
    }
    Record** put() { return &m_record; }
    const Record* operator->() const { return m_record; }
    explicit operator bool() const { return m_record != nullptr; }

private:
    ComPtr<ITypeInfo> m_info;
    Record* m_record = nullptr;
};
using TypeRecord = Lent<TYPEATTR, &ITypeInfo::ReleaseTypeAttr>;
using FunctionRecord = Lent<FUNCDESC, &ITypeInfo::ReleaseFuncDesc>;
using VariableRecord = Lent<VARDESC, &ITypeInfo::ReleaseVarDesc>;

ComPtr<ITypeInfo> referenced(ITypeInfo& info, HREFTYPE reference)
{
    ComPtr<ITypeInfo> result;
    info.GetRefTypeInfo(reference, result.put());
    return result;
}

std::wstring typeText(ITypeInfo& info, const TYPEDESC& type)
{
    static const std::map<VARTYPE, const wchar_t*> kNames = {
        {VT_BSTR, L"BSTR"},         {VT_BOOL, L"VARIANT_BOOL"},
        {VT_I2, L"short"},          {VT_I4, L"long"},
        {VT_INT, L"int"},           {VT_I8, L"hyper"},
        {VT_R4, L"float"},          {VT_R8, L"double"},
        {VT_UI1, L"byte"},          {VT_UI2, L"unsigned short"},
        {VT_UI4, L"unsigned long"}, {VT_UINT, L"unsigned int"},
        {VT_VARIANT, L"VARIANT"},   {VT_DISPATCH, L"IDispatch*"},
        {VT_UNKNOWN, L"IUnknown*"}, {VT_VOID, L"void"},
        {VT_HRESULT, L"HRESULT"},   {VT_ERROR, L"SCODE"},
        {VT_CY, L"CURRENCY"},       {VT_DATE, L"DATE"},
    };
    if (type.vt == VT_PTR)
        return typeText(info, *type.lptdesc) + L"*";
    if (type.vt == VT_USERDEFINED) {
        const auto named = referenced(info, type.hreftype);
        return named ? nameOf(*named) : std::wstring(L"?");
    }
    const auto known = kNames.find(type.vt);
    return known == kNames.end() ? L"VARTYPE " + std::to_wstring(type.vt) : known->second;
}

/// A dual interface is described twice; this is the description with the real signatures.
ComPtr<ITypeInfo> callable(ITypeInfo& info)
{
    TypeRecord type(info);
    info.GetTypeAttr(type.put());
    HREFTYPE reference = 0;
    if (type && type->typekind == TKIND_DISPATCH &&
        SUCCEEDED(info.GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)))
        if (auto other = referenced(info, reference))
            return other;
    return ComPtr<ITypeInfo>(&info);
}

void writeParameters(JsonWriter& json, ITypeInfo& info, const FUNCDESC& function, const std::vector<Bstr>& names)
{
    json.key("parameters").beginArray();
    for (SHORT i = 0; i < function.cParams; ++i) {
        const ELEMDESC& parameter = function.lprgelemdescParam[i];
        const USHORT flags = parameter.paramdesc.wParamFlags;
        const auto place = static_cast<std::size_t>(i) + 1;
        json.beginObject();
        json.key("name").value(place < names.size() ? names[place].view() : std::wstring_view());
        json.key("type").value(typeText(info, parameter.tdesc));
        json.key("out").value((flags & PARAMFLAG_FOUT) != 0);
        json.key("result").value((flags & PARAMFLAG_FRETVAL) != 0);
        json.endObject();
    }
    json.endArray();
}

void writeFunction(JsonWriter& json, ITypeInfo& info, const FUNCDESC& function)
{
    constexpr UINT kMostNames = 32;
    BSTR raw[kMostNames]{};
    UINT count = 0;
    info.GetNames(function.memid, raw, kMostNames, &count);
    std::vector<Bstr> names(count);
    for (UINT i = 0; i < count; ++i)
        *names[i].put() = raw[i];
    Bstr help;
    info.GetDocumentation(function.memid, nullptr, help.put(), nullptr, nullptr);
    json.beginObject();
    json.key("name").value(count > 0 ? names[0].view() : std::wstring_view());
    json.key("id").value(std::int64_t{function.memid});
    json.key("help").value(help.view());
    writeParameters(json, info, function, names);
    json.endObject();
}

} // namespace

std::wstring nameOf(ITypeInfo& info)
{
    Bstr name;
    info.GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr);
    return name.str();
}

std::wstring guidText(const GUID& id)
{
    wchar_t text[40] = L"";
    StringFromGUID2(id, text, 40);
    return text;
}

std::vector<ClassEntry> classesOf(ITypeLib& library)
{
    std::vector<ClassEntry> classes;
    for (UINT i = 0; i < library.GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> info;
        library.GetTypeInfo(i, info.put());
        TypeRecord type(*require(info, "the type library ends early"));
        info->GetTypeAttr(type.put());
        if (!type || type->typekind != TKIND_COCLASS)
            continue;
        ClassEntry entry{nameOf(*info), type->guid, {}, {}};
        for (UINT face = 0; face < type->cImplTypes; ++face) {
            INT flags = 0;
            HREFTYPE reference = 0;
            info->GetImplTypeFlags(face, &flags);
            info->GetRefTypeOfImplType(face, &reference);
            ((flags & IMPLTYPEFLAG_FSOURCE) != 0 ? entry.events : entry.defaultInterface) =
                referenced(*info, reference);
        }
        classes.push_back(std::move(entry));
    }
    return classes;
}

void writeInterface(JsonWriter& json, ITypeInfo& info)
{
    const auto real = callable(info);
    TypeRecord type(*real);
    real->GetTypeAttr(type.put());
    Bstr help;
    info.GetDocumentation(MEMBERID_NIL, nullptr, help.put(), nullptr, nullptr);
    HREFTYPE base = 0;
    const auto parent = SUCCEEDED(real->GetRefTypeOfImplType(0, &base)) ? referenced(*real, base) : nullptr;

    json.beginObject();
    json.key("name").value(nameOf(info));
    json.key("id").value(guidText(type ? type->guid : GUID{}));
    json.key("help").value(help.view());
    json.key("base").value(parent ? nameOf(*parent) : std::wstring());
    json.key("methods").beginArray();
    for (UINT i = 0; type && i < type->cFuncs; ++i) {
        FunctionRecord function(*real);
        if (SUCCEEDED(real->GetFuncDesc(i, function.put())))
            writeFunction(json, *real, *function.operator->());
    }
    json.endArray();
    json.endObject();
}

void writeEnumerations(JsonWriter& json, ITypeLib& library)
{
    json.beginObject();
    for (UINT i = 0; i < library.GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> info;
        library.GetTypeInfo(i, info.put());
        TypeRecord type(*require(info, "the type library ends early"));
        info->GetTypeAttr(type.put());
        if (!type || type->typekind != TKIND_ENUM)
            continue;
        Bstr name;
        Bstr help;
        info->GetDocumentation(MEMBERID_NIL, name.put(), help.put(), nullptr, nullptr);
        json.key(name.view()).beginObject();
        json.key("help").value(help.view());
        json.key("values").beginArray();
        for (UINT v = 0; v < type->cVars; ++v) {
            VariableRecord variable(*info);
            Bstr valueName;
            if (FAILED(info->GetVarDesc(v, variable.put())) || variable->varkind != VAR_CONST)
                continue;
            info->GetDocumentation(variable->memid, valueName.put(), nullptr, nullptr, nullptr);
            json.beginObject();
            json.key("name").value(valueName.view());
            json.key("value").value(std::int64_t{V_I4(variable->lpvarValue)});
            json.endObject();
        }
        json.endArray();
        json.endObject();
    }
    json.endObject();
}

} // namespace describe
