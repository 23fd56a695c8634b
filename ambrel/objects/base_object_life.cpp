// How a control comes to be part of a tree, is told so, is copied, and reads and writes its configuration.
#include "ambrel/objects/base_object.h"

namespace ambrel {

namespace {

/// The fitting interface of an object that crosses the contract as a number.
template <class T>
T* fromNumber(hyper number) noexcept
{
    return reinterpret_cast<T*>(number);
}

ComPtr<IVexControlBase> createControl(const std::wstring& classId)
{
    CLSID id{};
    ComPtr<IVexControlBase> made;
    if (!classId.empty() && SUCCEEDED(CLSIDFromString(classId.c_str(), &id)))
        CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, morvane::iidOf<IVexControlBase>(), made.putVoid());
    return made;
}

} // namespace

STDMETHODIMP BaseObject::CreateObj(hyper resources, hyper parent, long type, VARIANT_BOOL first, hyper* result) noexcept
{
    return filling(result, [&](hyper& created) {
        if (m_node.has(NodeFlag::Created))
            return E_UNEXPECTED;
        SkinObjectCore* const parentCore = coreOf(fromNumber<ISkinObjResBase>(parent));
        if (parent && !parentCore)
            return E_INVALIDARG;
        const ComPtr<IVexControlBase> hold(control());
        if (parentCore && !parentCore->addChild(*this, first != VARIANT_FALSE ? 0 : parentCore->node().childCount()))
            return E_INVALIDARG;
        if (resources)
            setResources(fromNumber<IVexRes>(resources));
        if (type)
            m_type = static_cast<VexObjType>(type);
        RootServices* const window = services();
        if (window && m_resources.get() == window->resources())
            m_resources.reset(); // found through the window; no need to keep it alive

        hold->CreateProps();
        m_node.set(NodeFlag::Created, true);
        accessConfiguration(true);
        if (RootServices* const present = services()) {
            present->finalCreatePending(m_node);
            initialise();
        }
        created = reinterpret_cast<hyper>(hold.get());
        return S_OK;
    });
}

void BaseObject::initialise()
{
    if (!m_node.set(NodeFlag::Initialised, true))
        return;
    VARIANT_BOOL tabStop = VARIANT_FALSE;
    VARIANT_BOOL drawsFocus = VARIANT_FALSE;
    tell(VEXSM_GETTABINFO, reinterpret_cast<hyper>(&tabStop), reinterpret_cast<hyper>(&drawsFocus));
    m_node.set(NodeFlag::TabStop, tabStop != VARIANT_FALSE);
    m_node.set(NodeFlag::DrawsFocus, drawsFocus != VARIANT_FALSE);
    tell(VEXSM_INITOBJECT);
    if (!m_node.rect().isEmpty())
        layOutNow(true);
}

void BaseObject::windowEntered(bool fromAnother)
{
    if (!m_node.has(NodeFlag::Created))
        return;
    const ComPtr<IVexControlBase> hold(control());
    if (fromAnother || !m_node.has(NodeFlag::Initialised))
        tell(VEXSM_ACCESSCONFIGED, true); // the control learns its window
    initialise();
}

STDMETHODIMP BaseObject::FinalCreate(VARIANT_BOOL newObject) noexcept
{
    return guarded([&] {
        if (!m_node.set(NodeFlag::FinallyCreated, true))
            return S_FALSE;
        const ComPtr<IVexControlBase> hold(control());
        if (RootServices* const window = services())
            window->finalCreateDone(m_node);
        tell(VEXSM_FINALCREATE, newObject != VARIANT_FALSE);
        ChildIteration children(m_node);
        while (ObjectNode* child = children.next()) {
            const ComPtr<IVexControlBase> childControl(coreOf(*child).control());
            if (childControl && child->has(NodeFlag::Created))
                childControl->FinalCreate(newObject);
        }
        tell(VEXSM_INITDIALOG);
        return S_OK;
    });
}

bool BaseObject::accessConfiguration(bool read)
{
    const ComPtr<IVexControlBase> hold(control());
    bool done = false;
    if (const hyper node = configuration()) {
        for (std::size_t i = 0; i < groups().size(); ++i) {
            const ComPtr<ICtrlPluginProp> group = groups()[i];
            VARIANT_BOOL worked = VARIANT_FALSE;
            group->AccessConfig(node, morvane::toVariantBool(read), &worked);
            done = done || worked != VARIANT_FALSE;
        }
    }
    tell(VEXSM_ACCESSCONFIGED, read);
    return done;
}

STDMETHODIMP BaseObject::Load() noexcept
{
    return guarded([&] { return accessConfiguration(true) ? S_OK : S_FALSE; });
}

STDMETHODIMP BaseObject::ImportConfig(IVexRes* resources, hyper parent, IVexControlBase** result) noexcept
{
    return finding(result, [&] {
        ComPtr<IVexControlBase> made;
        tell(VEXSM_IMPORTCONFIG, reinterpret_cast<hyper>(resources), parent, reinterpret_cast<hyper>(made.put()));
        return made;
    });
}

STDMETHODIMP BaseObject::ExportConfig(hyper node, VARIANT_BOOL* result) noexcept
{
    return answering(result, [&] {
        bool done = false;
        if (!node)
            return false; // nothing is written, and nothing can be added to it
        for (std::size_t i = 0; i < groups().size(); ++i) {
            const ComPtr<ICtrlPluginProp> group = groups()[i];
            VARIANT_BOOL worked = VARIANT_FALSE;
            group->ExportConfig(nullptr, node, &worked);
            done = done || worked != VARIANT_FALSE;
        }
        tell(VEXSM_EXPORTCONFIGED, node);
        return done;
    });
}

STDMETHODIMP BaseObject::Clone(IVexObj* parent, IVexObj** result) noexcept
{
    return filling(result, [&](IVexObj*& made) -> HRESULT {
        SkinObjectCore* const parentCore = coreOf(parent);
        if (parent && !parentCore)
            return E_INVALIDARG;
        const ComPtr<IVexControlBase> source(control());
        const ComPtr<IVexControlBase> copy = createControl(m_belongings ? m_belongings->classId : std::wstring());
        SkinObjectCore* const core = coreOf(copy.get());
        if (!core)
            return copy ? E_NOINTERFACE : REGDB_E_CLASSNOTREG; // the class is known once SetClassId was called
        core->setName(name());
        core->node().setPosition(m_node.position());
        core->node().setOpacity(m_node.opacity());
        hyper object = 0;
        const ComPtr<IVexRes> skin = SkinObjectCore::resources();
        const HRESULT status = copy->CreateObj(reinterpret_cast<hyper>(skin.get()),
                                               reinterpret_cast<hyper>(parentCore ? parentCore->face() : nullptr),
                                               m_type, VARIANT_FALSE, &object);
        if (FAILED(status))
            return status;
        copy->SetClassId(Bstr(m_belongings->classId).get());
        copy->VexSetToolTip(Bstr(m_belongings->toolTip).get());
        copy->SetCursorPtr(m_belongings->cursor.get());
        for (const NodeFlag each : {NodeFlag::TakesMouse, NodeFlag::TabStop, NodeFlag::DrawsFocus, NodeFlag::Dragable,
                                    NodeFlag::BlendsWithParent})
            core->node().set(each, m_node.has(each));
        copy->CloneProp(source.get());
        copy->SetVisible(morvane::toVariantBool(m_node.has(NodeFlag::Visible)), VARIANT_TRUE, VARIANT_FALSE);
        VARIANT_BOOL done = VARIANT_FALSE;
        copy->EnableObject(morvane::toVariantBool(m_node.has(NodeFlag::Enabled)), VARIANT_TRUE, &done);
        VexNotify notice{};
        notice.eVexMsgId = VEXSM_CLONED;
        notice.lParam1 = reinterpret_cast<hyper>(source.get());
        core->notify(notice);
        made = ComPtr<IVexControlBase>(copy).detach();
        return S_OK;
    });
}

STDMETHODIMP BaseObject::AddPlugInObj(IVexControlBase* object) noexcept
{
    VARIANT_BOOL added = VARIANT_FALSE;
    return AddSubObject(object, VARIANT_FALSE, &added);
}

STDMETHODIMP BaseObject::RemovePlugInObj(IVexControlBase* object) noexcept
{
    VARIANT_BOOL removed = VARIANT_FALSE;
    return RemoveSubObject(object, &removed);
}

STDMETHODIMP BaseObject::DesignStatusChanged(VARIANT_BOOL design) noexcept
{
    return guarded([&] {
        const ComPtr<IVexControlBase> hold(control());
        tell(VEXSM_DESIGNSTATUSCHANGED, design != VARIANT_FALSE);
        ChildIteration children(m_node);
        while (ObjectNode* child = children.next()) {
            const ComPtr<IVexControlBase> childControl(coreOf(*child).control());
            if (childControl)
                childControl->DesignStatusChanged(design);
        }
    });
}

} // namespace ambrel
