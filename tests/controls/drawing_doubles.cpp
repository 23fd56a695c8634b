#include "tests/controls/drawing_doubles.h"

#include "frame/com/bstr.h"
#include "tests/strange_host/text.h"

namespace morvane::testing {

namespace {

template <class T>
HRESULT give(T* place, T value)
{
    *place = value;
    return S_OK;
}

std::string flags(VARIANT_BOOL stretch, OLE_COLOR transparent)
{
    return std::string(stretch == VARIANT_TRUE ? "" : " unstretched") + (transparent == 0 ? "" : " keyed");
}

} // namespace

STDMETHODIMP RenderImage::GetWidth(long* result)
{
    called();
    return give(result, 24L);
}
STDMETHODIMP RenderImage::GetHeight(long* result)
{
    called();
    return give(result, 16L);
}

STDMETHODIMP RenderImage::Draw(IVexRenderDC*, SkinRect target, SkinRect source, VARIANT_BOOL stretch,
                               OLE_COLOR transparent, VARIANT_BOOL* result)
{
    note("draw " + name + " " + toText(target) + " from " + toText(source) + flags(stretch, transparent));
    return give(result, VARIANT_TRUE);
}

STDMETHODIMP RenderImage::DrawAll(IVexRenderDC*, SkinRect target, VARIANT_BOOL stretch, OLE_COLOR transparent,
                                  VARIANT_BOOL* result)
{
    note("draw all of " + name + " " + toText(target) + flags(stretch, transparent));
    return give(result, VARIANT_TRUE);
}

STDMETHODIMP Picture::SetName(BSTR name)
{
    note("picture " + narrow(viewOf(name)));
    return S_OK;
}

STDMETHODIMP Picture::ImportFile(BSTR path, VARIANT_BOOL* result)
{
    const bool isThere = !viewOf(path).starts_with(L"missing");
    note("import " + narrow(viewOf(path)));
    *result = isThere ? VARIANT_TRUE : VARIANT_FALSE;
    return isThere ? S_OK : S_FALSE;
}

STDMETHODIMP Picture::GetWidth(short* result)
{
    called();
    return give<short>(result, 64);
}
STDMETHODIMP Picture::GetHeight(short* result)
{
    called();
    return give<short>(result, 16);
}

STDMETHODIMP ImageSection::get_ImageObj(IVexPicture** result)
{
    called();
    picture.copyTo(result);
    return S_OK;
}

STDMETHODIMP ImageSection::put_ImageObj(IVexPicture* newPicture)
{
    called();
    picture = ComPtr<IVexPicture>(newPicture);
    return S_OK;
}

STDMETHODIMP ImageSection::put_rect(SkinRect* rect)
{
    called();
    source = *rect;
    return S_OK;
}

STDMETHODIMP ImageSection::StretchAll(VARIANT_BOOL stretch)
{
    note(name + (stretch ? " stretches" : " does not stretch"));
    return S_OK;
}

STDMETHODIMP ImageSection::GetWidth(long* result)
{
    called();
    return give(result, source.right - source.left);
}

STDMETHODIMP ImageSection::Draw(hyper, SkinRect rect, VARIANT_BOOL* result)
{
    note("dc " + name + " " + toText(rect));
    return give(result, VARIANT_TRUE);
}

STDMETHODIMP ImageSection::RenderDraw(IVexRenderDC*, SkinRect rect, short index, VARIANT_BOOL* result)
{
    note("draw " + name + " " + toText(rect) + " from " + toText(source) + " #" + std::to_string(index) +
         (picture ? "" : " without a picture"));
    return give(result, VARIANT_TRUE);
}

STDMETHODIMP Fill::Draw(hyper, SkinRect rect, VARIANT_BOOL* result)
{
    note("dc fill " + toText(rect));
    return give(result, VARIANT_TRUE);
}

STDMETHODIMP PictureRes::IsDesignStatus(VARIANT_BOOL* result)
{
    called();
    return give(result, designStatus);
}

STDMETHODIMP PictureRes::ImportSkin(hyper, long resource, BSTR type, hyper parent, IVexControlBase** result)
{
    note("import " + std::to_string(resource) + " " + narrow(viewOf(type)) + " " + hex(parent));
    return give<IVexControlBase*>(result, nullptr);
}

STDMETHODIMP PictureRes::CreateImageByHandle(hyper device, BSTR name, hyper handle, VEX_PICTURE_TYPE type,
                                             IVexRenderImage** result)
{
    note("make " + narrow(viewOf(name)) + " of " + hex(handle) + " type " + std::to_string(type) + " device " +
         hex(device));
    *result = ledger().make<RenderImage>(narrow(viewOf(name))).detach();
    return S_OK;
}

STDMETHODIMP PictureRes::CreateImageByPath(hyper device, BSTR path, IVexRenderImage** result)
{
    note("make " + narrow(viewOf(path)) + " device " + hex(device));
    *result = ledger().make<RenderImage>(narrow(viewOf(path))).detach();
    return S_OK;
}

STDMETHODIMP PictureRes::DestroyImage(IVexRenderImage* image, VARIANT_BOOL* result)
{
    note("destroy " + static_cast<RenderImage*>(image)->name);
    return give(result, VARIANT_TRUE);
}

STDMETHODIMP PictureRes::GetResObject(VexObjType type, BSTR name, ISkinObjResBase*, VARIANT_BOOL, IVexObj** result)
{
    const auto found = shared.find({type, std::wstring(viewOf(name))});
    (found == shared.end() ? ComPtr<IVexObj>() : found->second).copyTo(result);
    return *result ? S_OK : S_FALSE;
}

STDMETHODIMP PictureRes::AddResObject(VexObjType type, IVexObj* owner, BSTR name, VARIANT_BOOL first, IVexObj** result)
{
    note("add " + narrow(viewOf(name)) + (owner ? " owned" : "") + (first ? " first" : ""));
    ComPtr<IVexObj> made;
    if (type == VEXOBJTYPE_IMAGE)
        made = ComPtr<IVexObj>(ledger().make<Picture>().get());
    else
        made = ComPtr<IVexObj>(ledger().make<ImageSection>(narrow(viewOf(name))).get());
    shared[{type, std::wstring(viewOf(name))}] = made;
    made.copyTo(result);
    return S_OK;
}

} // namespace morvane::testing
