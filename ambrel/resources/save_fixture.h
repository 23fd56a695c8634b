// Windows whose skin is saved and opened again by a second application.
#pragma once

#include "ambrel/resources/skin_fixture.h"
#include "ambrel/skin/changes.h"
#include "ambrel/skin/reader.h"
#include "ambrel/skin/writer.h"

#include <filesystem>

namespace ambrel::testing {

namespace fs = std::filesystem;

class SkinSaveTest : public ButtonWindowTest {
protected:
    ComPtr<IVexControlBase> addButton(const wchar_t* name) { return addButton(*resources.get(), *root.get(), name); }

    static ComPtr<IVexControlBase> addButton(IVexRes& owner, IAmbrel& parent, const wchar_t* name)
    {
        ComPtr<IVexControlBase> button;
        owner.AddPluginResObject(&parent, Bstr(name ? name : L"").get(), Bstr(L"Morvane17").get(), button.put());
        if (button)
            button->FinalCreate(VARIANT_TRUE);
        return button;
    }

    /// A second application that opens what the first one saved.
    struct Reader {
        Reader(LoadedRuntime& runtime, const fs::path& path)
        {
            runtime.AmbrelCreateRes()(resources.put());
            VARIANT_BOOL opened = VARIANT_FALSE;
            status = resources->ChangeSkn(Bstr(path.wstring()).get(), &opened);
            ComPtr<IDispatch> made;
            resources->CreateAmbrel(Bstr(L"Reader").get(), 0, made.put());
            root = made.as<IAmbrel>();
        }
        ~Reader()
        {
            hyper handle = 0;
            root->GetWindowHandle(&handle);
            DestroyWindow(reinterpret_cast<HWND>(handle));
        }
        Reader(const Reader&) = delete;
        Reader& operator=(const Reader&) = delete;

        ComPtr<IVexControlBase> add(const wchar_t* name) { return addButton(*resources.get(), *root.get(), name); }

        HRESULT status = E_FAIL;
        ComPtr<IVexRes> resources;
        ComPtr<IAmbrel> root;
    };

    static ComPtr<IVexTextStyle> styleOf(IVexControlBase& control, std::wstring_view state)
    {
        ComPtr<IDispatch> value;
        property(control, state, L"TextStyle")->GetDispatch(value.put());
        return value ? value.as<IVexTextStyle>() : nullptr;
    }

    static ComPtr<IVexPropBase> property(IVexControlBase& control, std::wstring_view group, std::wstring_view name)
    {
        hyper list = 0;
        control.GetPropList(&list);
        for (auto** each = reinterpret_cast<ICtrlPluginProp**>(list); each && *each; ++each) {
            Bstr own;
            (*each)->get_strName(own.put());
            long count = 0;
            (*each)->GetPropBaseCount(&count);
            for (long i = 0; own.view() == group && i < count; ++i) {
                ComPtr<IVexPropBase> found;
                Bstr ownName;
                (*each)->GetAtPropBase(i, found.put());
                found->GetName(ownName.put());
                if (ownName.view() == name)
                    return found;
            }
        }
        return nullptr;
    }

    static std::wstring text(IVexControlBase& control, std::wstring_view group, std::wstring_view name)
    {
        ComPtr<IVexPropType> type;
        Bstr value;
        const auto found = property(control, group, name);
        if (found && SUCCEEDED(found->GetPropTypePtr(type.put())))
            type->get_strValue(value.put());
        return value.str();
    }

    static HRESULT setText(IVexControlBase& control, std::wstring_view group, std::wstring_view name,
                           const wchar_t* value)
    {
        ComPtr<IVexPropType> type;
        const auto found = property(control, group, name);
        return found && SUCCEEDED(found->GetPropTypePtr(type.put())) ? type->put_strValue(Bstr(value).get()) : E_FAIL;
    }

    static void setPlain(skin::Skin& skin, std::string_view group, std::string_view name, const char* value)
    {
        skin::setValue(skin, skin.objects[0], group, name, skin::ValueKind::Plain, value);
        skin::addMissingKeys(skin);
    }

    template <class Object>
    ComPtr<Object> resource(VexObjType type, const wchar_t* name)
    {
        ComPtr<IVexObj> found;
        resources->GetResObject(type, Bstr(name).get(), nullptr, VARIANT_FALSE, found.put());
        return found ? found.as<Object>() : nullptr;
    }

    HRESULT open(const fs::path& path)
    {
        VARIANT_BOOL opened = VARIANT_FALSE;
        return resources->ChangeSkn(Bstr(path.wstring()).get(), &opened);
    }

    HRESULT save(const fs::path& path)
    {
        VARIANT_BOOL saved = VARIANT_FALSE;
        const HRESULT status = resources->Save(Bstr(path.wstring()).get(), &saved);
        EXPECT_EQ(saved != VARIANT_FALSE, status == S_OK);
        return status;
    }

    static std::string errorText()
    {
        ComPtr<IErrorInfo> info;
        Bstr text;
        if (GetErrorInfo(0, info.put()) == S_OK)
            info->GetDescription(text.put());
        return std::string(text.view().begin(), text.view().end());
    }
};

} // namespace ambrel::testing
