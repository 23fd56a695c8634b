#include "tests/soak/world.h"

#include "host/host_classes.h"
#include "tests/soak/step_log.h"

#include <stdexcept>

namespace morvane::soak {

namespace {

constexpr std::size_t kMostMembers = 60;
constexpr int kDeepestInterruption = 3;
constexpr std::size_t kBetweenInterruptions = 40;
constexpr SkinRect kWindowPlace{40, 40, 640, 480};

/// The world whose callbacks run; a callback's context is checked against it, since random calls pass anything.
World* theWorld = nullptr;

std::vector<std::wstring> skinFiles()
{
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring program(path);
    const std::wstring folder = program.substr(0, program.rfind(L'\\')) + L"\\skins\\";
    std::vector<std::wstring> files;
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW((folder + L"*.zip").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return files;
    do
        files.push_back(folder + found.cFileName);
    while (FindNextFileW(search, &found));
    FindClose(search);
    return files;
}

ICtrlPluginProp** groupsOf(IVexControlBase& control)
{
    hyper* list = nullptr;
    return SUCCEEDED(control.GetProps(&list)) ? reinterpret_cast<ICtrlPluginProp**>(list) : nullptr;
}

} // namespace

World::World(const ControlLibrary& library, Random& random, HWND owner)
    : m_library(library), m_random(random), m_owner(owner), m_dc(CreateCompatibleDC(nullptr)), m_skins(skinFiles())
{
    const HDC gone = CreateCompatibleDC(nullptr);
    m_formerDc = reinterpret_cast<std::int64_t>(gone);
    DeleteDC(gone);
    theWorld = this;
    AmbrelSetTraceSink(&World::traced, this);
    if (FAILED(AmbrelCreateRes(m_res.put())))
        throw std::runtime_error("no resource object");
    for (Window& each : m_windows)
        openWindow(each);
    for (int i = 0; i < 12; ++i)
        addControl();
}

World::~World()
{
    m_interruption = nullptr;
    AmbrelSetTraceSink(nullptr, nullptr);
    for (Window& each : m_windows) {
        if (isAlive(each))
            DestroyWindow(each.handle);
    }
    m_members.clear();
    m_windows = {};
    m_res.reset();
    DeleteDC(m_dc);
    theWorld = nullptr;
}

void World::openWindow(Window& window)
{
    ComPtr<IDispatch> made;
    m_res->CreateAmbrel(Bstr(L"Soak").get(), 0, made.put());
    window.root = made.as<IAmbrel>();
    if (!window.root)
        throw std::runtime_error("no window object");
    VARIANT_BOOL created = VARIANT_FALSE;
    hyper handle = 0;
    window.root->SetResizable(VARIANT_TRUE);
    window.root->Create(reinterpret_cast<hyper>(m_owner), kWindowPlace, &created);
    window.root->GetWindowHandle(&handle);
    window.handle = reinterpret_cast<HWND>(handle);
    if (!isAlive(window))
        throw std::runtime_error("no window");
    ShowWindow(window.handle, SW_SHOWNOACTIVATE);
}

const World::Window& World::someWindowPlace() const
{
    const std::size_t index = m_random.oneIn(4) ? 1 : 0;
    return isAlive(m_windows[index]) ? m_windows[index] : m_windows[1 - index];
}

ComPtr<ISkinObjResBase> World::someParentOrRoot(IVexControlBase* parent) const
{
    if (parent && m_random.oneIn(2))
        return ComPtr<ISkinObjResBase>(parent);
    return ComPtr<ISkinObjResBase>(m_random.oneIn(10) ? nullptr : root());
}

void World::addControl()
{
    if (!hasWindow() || m_members.size() >= kMostMembers)
        return;
    std::vector<const ControlClass*> candidates;
    for (const ControlClass& each : m_library.classes())
        if (each.isControl)
            candidates.push_back(&each);
    const ControlClass* const type = m_random.pick(candidates);
    logDetail("a " + type->name);
    ComPtr<IVexControlBase> control;
    if (FAILED(CoCreateInstance(type->id, nullptr, CLSCTX_INPROC_SERVER, iidOf<IVexControlBase>(), control.putVoid())))
        return;
    const ComPtr<IVexControlBase> parent = anyControl();
    ComPtr<ISkinObjResBase> above = someParentOrRoot(parent.get());
    if (!above)
        above = ComPtr<ISkinObjResBase>(root());
    hyper created = 0;
    m_members.push_back({control.as<IDispatch>(), type});
    control->CreateObj(reinterpret_cast<hyper>(m_res.get()), reinterpret_cast<hyper>(above.get()), VEXOBJTYPE_PLUGIN,
                       VARIANT_FALSE, &created);
    control->SetName(Bstr(L"Object" + std::to_wstring(++m_lastName)).get());
    place(*control);
    if (!m_random.oneIn(4))
        changeSkin(*control);
    VARIANT_BOOL done = VARIANT_FALSE;
    static constexpr long kMessages[] = {VEXSM_LBUTTONDOWN, VEXSM_LBUTTONUP, VEXSM_MOUSEENTER, VEXSM_MOUSELEAVE,
                                         VEXSM_LBUTTONDBCLICK};
    control->AddMsgCallback(m_random.pick(kMessages), callbackAddress(), reinterpret_cast<hyper>(this), &done);
    if (!m_random.oneIn(8))
        control->FinalCreate(VARIANT_TRUE);
}

void World::addItem()
{
    std::vector<const ControlClass*> candidates;
    for (const ControlClass& each : m_library.classes())
        if (!each.isControl)
            candidates.push_back(&each);
    if (candidates.empty() || m_members.size() >= kMostMembers)
        return;
    const ControlClass* const type = m_random.pick(candidates);
    ComPtr<IDispatch> item;
    if (SUCCEEDED(CoCreateInstance(type->id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, item.putVoid())))
        m_members.push_back({item, type});
}

Member World::anyMember() const
{
    return m_members.empty() ? Member{nullptr, nullptr} : m_random.pick(m_members);
}

ComPtr<IVexControlBase> World::anyControl() const
{
    for (int attempt = 0; attempt < 4 && !m_members.empty(); ++attempt)
        if (auto control = m_random.pick(m_members).control())
            return control;
    return nullptr;
}

ComPtr<IUnknown> World::anyObject(REFIID iid) const
{
    ComPtr<IUnknown> found;
    const auto offer = [&](IUnknown* candidate) {
        if (candidate && !found)
            candidate->QueryInterface(iid, found.putVoid());
    };
    if (iid == iidOf<IVexObjectDraw>())
        CoCreateInstance(kClsidObjectDraw, nullptr, CLSCTX_INPROC_SERVER, iid, found.putVoid());
    if (iid == iidOf<IVexPos>())
        CoCreateInstance(kClsidPosition, nullptr, CLSCTX_INPROC_SERVER, iid, found.putVoid());
    if (iid == iidOf<IVexPicture>())
        CoCreateInstance(kClsidPicture, nullptr, CLSCTX_INPROC_SERVER, iid, found.putVoid());
    if (iid == iidOf<IVexImageBase>())
        CoCreateInstance(kClsidImage, nullptr, CLSCTX_INPROC_SERVER, iid, found.putVoid());
    for (int attempt = 0; attempt < 3 && !found; ++attempt)
        offer(anyMember().object.get());
    offer(root());
    offer(m_res.get());
    if (const auto control = anyControl(); control && !found) {
        ComPtr<IVexRect> rect;
        ComPtr<IVexRenderDC> dc;
        control->GetRect(rect.put());
        control->GetVexRenderDC(dc.put());
        offer(rect.get());
        offer(dc.get());
        offer(anyProperty(*control).get());
        offer(anyGroup(*control).get());
    }
    return found;
}

ComPtr<IVexPropBase> World::anyProperty(IVexControlBase& control) const
{
    std::vector<ComPtr<IVexPropBase>> properties;
    for (ICtrlPluginProp** group = groupsOf(control); group && *group; ++group) {
        long count = 0;
        (*group)->GetPropBaseCount(&count);
        for (long i = 0; i < count; ++i) {
            ComPtr<IVexPropBase> property;
            (*group)->GetAtPropBase(i, property.put());
            if (property)
                properties.push_back(std::move(property));
        }
    }
    return properties.empty() ? nullptr : m_random.pick(properties);
}

ComPtr<ICtrlPluginProp> World::anyGroup(IVexControlBase& control) const
{
    std::vector<ComPtr<ICtrlPluginProp>> groups;
    for (ICtrlPluginProp** group = groupsOf(control); group && *group; ++group)
        groups.emplace_back(*group);
    return groups.empty() ? nullptr : m_random.pick(groups);
}

std::int64_t World::someNode() const
{
    hyper node = 0;
    const auto control = m_random.oneIn(8) ? nullptr : anyControl();
    if (control)
        control->GetXMLNode(&node);
    return m_random.oneIn(20) ? m_random.oddNumber() : node;
}

std::wstring World::someSkinFile() const
{
    return m_skins.empty() ? std::wstring() : m_random.pick(m_skins);
}

void World::importSkin()
{
    if (!m_res || m_members.size() >= kMostMembers)
        return;
    static constexpr long kPackages[] = {2080, 2086, 2092, 2022, 1};
    const auto parent = anyControl();
    const auto above = someParentOrRoot(parent.get());
    ComPtr<IVexControlBase> control;
    m_res->ImportSkin(reinterpret_cast<hyper>(m_library.module()), m_random.pick(kPackages), Bstr(L"UIFILES").get(),
                      reinterpret_cast<hyper>(above.get()), control.put());
    if (!control)
        return;
    Bstr type;
    control->GetControlTypeName(type.put());
    for (const ControlClass& each : m_library.classes()) {
        if (each.isControl && each.typeName == type.view()) {
            m_members.push_back({control.as<IDispatch>(), &each});
            return;
        }
    }
}

void World::changeSkin(IVexControlBase& control)
{
    if (!m_res)
        return;
    static constexpr long kPackages[] = {2022, 2025, 2033, 2034, 2049, 2063, 2075, 2080, 2086, 2092};
    if (m_skins.empty() || m_random.oneIn(2))
        AmbrelApplySkin(m_res.get(), &control, m_library.module(), m_random.pick(kPackages));
    else
        AmbrelApplySkinFile(m_res.get(), &control, m_random.pick(m_skins).c_str());
    SetErrorInfo(0, nullptr);
}

void World::place(IVexControlBase& control)
{
    const int left = m_random.between(-20, 500);
    const int top = m_random.between(-20, 380);
    SkinRect rect{left, top, left + m_random.between(0, 250), top + m_random.between(0, 150)};
    long changed = 0;
    control.Resize(&rect, &changed);
}

void World::removeSomething()
{
    const auto control = anyControl();
    if (!control)
        return;
    VARIANT_BOOL done = VARIANT_FALSE;
    ComPtr<ISkinObjResBase> parent;
    switch (m_random.below(5)) {
    case 0:
        control->DelAllSubObjects();
        break;
    case 1:
        control->RemoveAllSubObjects();
        break;
    case 2:
        control->GetParent(parent.put());
        if (parent)
            parent->RemoveSubObject(control.get(), &done);
        break;
    case 3:
        if (m_res)
            m_res->ReleasePluginResObject(control.get());
        break;
    default:
        control->Remove(&done);
    }
    if (m_random.oneIn(2))
        forgetSomething();
}

void World::forgetSomething()
{
    if (m_members.empty())
        return;
    const std::size_t index = m_random.below(m_members.size());
    const Member last = std::move(m_members[index]); // let go of when nothing here is half done
    m_members.erase(m_members.begin() + static_cast<std::ptrdiff_t>(index));
}

void World::destroyWindow()
{
    const Window& window = someWindowPlace();
    m_formerWindow = reinterpret_cast<std::int64_t>(window.handle);
    if (isAlive(window))
        DestroyWindow(window.handle);
}

std::int64_t World::someWindow()
{
    const std::int64_t choices[] = {0, reinterpret_cast<std::int64_t>(window()),
                                    reinterpret_cast<std::int64_t>(m_owner), m_formerWindow, 0x12345};
    return m_random.pick(choices);
}

std::int64_t World::someDeviceContext()
{
    const std::int64_t choices[] = {0, reinterpret_cast<std::int64_t>(m_dc), m_formerDc, 0x7654321};
    return m_random.pick(choices);
}

std::int64_t World::callbackAddress()
{
    return reinterpret_cast<std::int64_t>(&World::calledBack);
}

VARIANT_BOOL STDMETHODCALLTYPE World::calledBack(hyper, long message, hyper, hyper)
{
    if (!theWorld)
        return VARIANT_FALSE;
    if (theWorld->m_random.oneIn(6)) {
        logDetail("called back for " + std::to_string(message));
        theWorld->interrupt();
    }
    return theWorld->m_random.oneIn(10) ? VARIANT_TRUE : VARIANT_FALSE;
}

void STDMETHODCALLTYPE World::traced(void* context, const AmbrelTraceEntry* entry)
{
    World& world = *static_cast<World*>(context);
    if (entry->kind == AMBREL_TRACE_NOTIFICATION && world.m_random.oneIn(kBetweenInterruptions)) {
        logDetail("at notification " + std::to_string(entry->id));
        world.interrupt();
    }
}

void World::interrupt()
{
    if (!m_interruption || m_depth >= kDeepestInterruption)
        return;
    ++m_depth;
    m_interruption();
    --m_depth;
}

} // namespace morvane::soak
