#include "tests/strange_host/host_objects.h"

#include "frame/com/bstr.h"
#include "tests/strange_host/text.h"

namespace morvane::testing {

STDMETHODIMP RectObject::GetRectStruct(SkinRect* result)
{
    called();
    *result = m_rect;
    return S_OK;
}

STDMETHODIMP PositionObject::GetPosStruct(VexPosition* result)
{
    called();
    *result = record;
    return S_OK;
}

STDMETHODIMP PositionObject::SetPosStruct(VexPosition newRecord)
{
    called();
    record = newRecord;
    return S_OK;
}

STDMETHODIMP TextStyle::get_nHAlign(short* result)
{
    called();
    *result = 0;
    return S_OK;
}

STDMETHODIMP TextStyle::get_nLeftOffset(short* result)
{
    called();
    *result = 3;
    return S_OK;
}

STDMETHODIMP TextStyle::get_nRightOffset(short* result)
{
    called();
    *result = 5;
    return S_OK;
}

STDMETHODIMP TextStyle::DrawText(hyper, BSTR text, SkinRect rect, VARIANT_BOOL draw, long format, SkinRect* extent,
                                 VARIANT_BOOL* result)
{
    called();
    if (draw || format != -1)
        return unexpected("IVexTextStyle::DrawText with other arguments than measuring and drawing have");
    if (!extent) {
        note("dc text " + toText(rect) + " \"" + narrow(viewOf(text)) + "\"");
        *result = VARIANT_TRUE;
        return S_OK;
    }
    *extent = {0, 0, static_cast<long>(viewOf(text).size()) * 7, 14};
    *result = VARIANT_TRUE;
    return S_OK;
}

STDMETHODIMP Root::GetWindowHandle(hyper* result)
{
    called();
    *result = reinterpret_cast<hyper>(window);
    return S_OK;
}

STDMETHODIMP Root::GetRenderDevice(hyper* result)
{
    called();
    *result = device;
    return S_OK;
}

STDMETHODIMP Root::GetRenderEngine(VEX_RENDERENGINE_TYPE* result)
{
    called();
    *result = {};
    return S_OK;
}

STDMETHODIMP Root::RegisterMessage(unsigned long message, ISkinObjResBase* object, VARIANT_BOOL children,
                                   VARIANT_BOOL* result)
{
    note("register " + hex(static_cast<long>(message)) + (children ? " with children" : ""));
    registered.emplace(message, object);
    *result = VARIANT_TRUE;
    return S_OK;
}

STDMETHODIMP Root::UnRegisterMessage(unsigned long message, ISkinObjResBase* object, VARIANT_BOOL* result)
{
    note("unregister " + hex(static_cast<long>(message)));
    const auto found = registered.find({message, object});
    *result = found != registered.end() ? VARIANT_TRUE : VARIANT_FALSE;
    if (found == registered.end())
        return S_FALSE;
    registered.erase(found);
    return S_OK;
}

STDMETHODIMP Root::GetCurrentFocusObject(ISkinObjResBase** result)
{
    called();
    focused.copyTo(result);
    return S_OK;
}

STDMETHODIMP Root::VexMessage(hyper, long message, hyper wParam, hyper lParam)
{
    note("framework message " + std::to_string(message) + " " + hex(wParam) + " " + hex(lParam));
    return S_OK;
}

STDMETHODIMP ObjectDraw::GetDC(VARIANT_BOOL blend, hyper* result)
{
    called();
    if (blend)
        note("blended device context");
    *result = dc;
    return S_OK;
}

STDMETHODIMP Res::IsDesignStatus(VARIANT_BOOL* result)
{
    called();
    *result = designStatus;
    return S_OK;
}

STDMETHODIMP Res::ImportSkin(hyper module, long resource, BSTR type, hyper parent, IVexControlBase** result)
{
    importedFrom = module;
    note("import " + std::to_string(resource) + " " + narrow(viewOf(type)) + " " + hex(parent) +
         (result ? "" : " without a result"));
    if (result)
        *result = nullptr;
    return S_OK;
}

} // namespace morvane::testing
