#include "tests/soak/resource_steps.h"

#include "tests/soak/random_call.h"
#include "tests/soak/step_log.h"

namespace morvane::soak {

namespace {

/// A file of this process's own, overwritten each time.
std::wstring savedSkin()
{
    wchar_t folder[MAX_PATH] = L"";
    GetTempPathW(MAX_PATH, folder);
    return std::wstring(folder) + L"morvane_soak_" + std::to_wstring(GetCurrentProcessId()) + L".zip";
}

std::wstring program()
{
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return path;
}

/// Paths of skins that are there, of files that are no skins, and of nothing.
std::wstring somePackage(World& world)
{
    switch (world.random().below(6)) {
    case 0:
        return program(); // no package
    case 1:
        return L"";
    case 2:
        return L"Z:\\no such folder\\skin.zip";
    case 3:
        return savedSkin();
    default:
        return world.someSkinFile();
    }
}

void freeStrings(VEX_COLORCASE& record)
{
    SysFreeString(record.strName);
    SysFreeString(record.strText);
    SysFreeString(record.strFile);
}

void colourCaseStep(World& world, IVexRes& res)
{
    static constexpr const wchar_t* kNames[] = {L"", L"Red", L"Blue", L"Night"};
    Random& random = world.random();
    const Bstr name(random.pick(kNames));
    const Bstr text(L"A colour case");
    VARIANT_BOOL done = VARIANT_FALSE;
    VEX_COLORCASE record{};
    switch (random.below(4)) {
    case 0:
        record.clrCase = static_cast<OLE_COLOR>(random.oddNumber());
        record.nHue = static_cast<unsigned char>(random.below(256));
        record.nSat = static_cast<unsigned char>(random.below(256));
        record.fBlend = 0.5f;
        record.bEnabled = VARIANT_TRUE;
        record.strText = text.get();
        res.AddColorCase(name.get(), &record);
        return; // the record's strings are ours
    case 1:
        res.RemoveColorCase(name.get(), &done);
        return;
    case 2:
        res.SetCurColorCase(name.get(), &done);
        return;
    default:
        for (HRESULT status = res.GetFirstColorCase(&record); status == S_OK; status = res.GetNextColorCase(&record)) {
            freeStrings(record);
            record = {};
        }
    }
}

void dragStep(World& world, IVexRes& res)
{
    Random& random = world.random();
    VEX_DRAGINFO info{};
    if (random.oneIn(2)) {
        const auto from = world.anyControl();
        const auto to = world.anyControl();
        info.pFromObj = from.get();
        info.pToObj = random.oneIn(2) ? to.get() : nullptr;
        info.hData1 = random.oddNumber();
        res.SetDragInfo(info);
        res.SetDrag(random.oneIn(2) ? VARIANT_TRUE : VARIANT_FALSE);
        return;
    }
    if (SUCCEEDED(res.GetDragInfo(&info))) {
        const auto from = ComPtr<ISkinObjResBase>::adopt(info.pFromObj);
        const auto to = ComPtr<ISkinObjResBase>::adopt(info.pToObj);
    }
}

ComPtr<ICtrlPluginProp> someGroup(World& world)
{
    const auto control = world.anyControl();
    return control ? world.anyGroup(*control) : nullptr;
}

} // namespace

void resourceCallStep(World& world)
{
    const ComPtr<IVexRes> res(world.res());
    callAnything(world, {res.as<IDispatch>(), &world.library().resources()});
}

void skinOfAllStep(World& world)
{
    const ComPtr<IVexRes> res(world.res());
    if (!res)
        return;
    Random& random = world.random();
    VARIANT_BOOL done = VARIANT_FALSE;
    const Bstr path(somePackage(world));
    const auto choice = random.below(5);
    logDetail("skin of all " + std::to_string(choice));
    switch (choice) {
    case 0:
        res->OpenSkin(path.get(), nullptr, VARIANT_FALSE, &done);
        break;
    case 1:
        res->ChangeSkn(path.get(), &done);
        break;
    case 2:
        res->CloseSkin(&done);
        break;
    case 3:
        res->Save(Bstr(savedSkin()).get(), &done);
        break;
    default:
        world.importSkin();
    }
    SetErrorInfo(0, nullptr);
}

void sharedStateStep(World& world)
{
    const ComPtr<IVexRes> res(world.res());
    if (!res)
        return;
    Random& random = world.random();
    VARIANT_BOOL done = VARIANT_FALSE;
    switch (random.below(6)) {
    case 0:
        res->ChangeLanguage(static_cast<VEX_LANGUAGE>(random.between(-1, 40)));
        break;
    case 1:
        res->SetDesignStatus(random.oneIn(4) ? VARIANT_TRUE : VARIANT_FALSE, &done);
        break;
    case 2:
        res->AddColorFilterColorize(static_cast<short>(random.oddNumber()), static_cast<short>(random.oddNumber()), 50,
                                    &done);
        break;
    case 3:
        res->RemoveColorFilters(&done);
        break;
    case 4:
        dragStep(world, *res.get());
        break;
    default:
        colourCaseStep(world, *res.get());
    }
}

void groupCallStep(World& world)
{
    if (const auto group = someGroup(world))
        callAnything(world, {group.as<IDispatch>(), &world.library().group()});
}

void groupStep(World& world)
{
    const auto group = someGroup(world);
    const auto other = someGroup(world);
    if (!group || !other)
        return;
    Random& random = world.random();
    VARIANT_BOOL done = VARIANT_FALSE;
    const std::int64_t node = world.someNode();
    const auto choice = random.below(6);
    logDetail("group " + std::to_string(choice));
    switch (choice) {
    case 0:
        group->Clone(other.get());
        break;
    case 1:
        group->AccessConfig2(random.oneIn(2) ? nullptr : Bstr(L"Parent").get(), node,
                             random.oneIn(2) ? VARIANT_TRUE : VARIANT_FALSE, &done);
        break;
    case 2:
        group->ExportConfig(Bstr(L"Object").get(), node, &done);
        break;
    case 3: { // out and in again, so that the control keeps a table to work with
        ComPtr<IVexPropBase> property;
        group->GetAtPropBase(0, property.put());
        if (property) {
            group->RemovePropBase(property.get());
            group->AddPropBase(property.get());
        }
        break;
    }
    case 4: {
        const auto control = world.anyControl();
        ComPtr<ICtrlPluginProp> made;
        ComPtr<IVexPropBase> property;
        if (!control)
            return;
        control->CreateGroupProp(random.oneIn(2) ? group.get() : nullptr, Bstr(L"Added").get(), VARIANT_TRUE,
                                 made.put());
        control->CreateProp(made.get(), static_cast<enumPropType>(random.between(-1, 15)), Bstr(L"One").get(),
                            Bstr(L"").get(), VARIANT_FALSE, nullptr, property.put());
        break;
    }
    default:
        group->AddProp(other.get());
        group->RemoveProp(other.get());
    }
}

void moveStep(World& world)
{
    const auto control = world.anyControl();
    if (!control)
        return;
    const auto parent = world.anyControl();
    const ComPtr<ISkinObjResBase> target = world.someParentOrRoot(parent.get());
    VARIANT_BOOL done = VARIANT_FALSE;
    short index = 0;
    switch (world.random().below(3)) {
    case 0:
        control->SetParent(target.get());
        break;
    case 1:
        if (target)
            target->AddSubObject(control.get(), world.random().oneIn(2) ? VARIANT_TRUE : VARIANT_FALSE, &done);
        break;
    default:
        if (target)
            target->InsertSubObject(control.get(), static_cast<short>(world.random().between(-1, 5)), &index);
    }
}

} // namespace morvane::soak
