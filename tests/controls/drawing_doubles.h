// Pictures, image sections and render images that note what controls do with them.
#pragma once

#include "tests/strange_host/stubs.h" // generated

#include <map>

namespace morvane::testing {

/// 24 by 16 pixels.
class RenderImage final : public IVexRenderImageStub<IVexRenderImage> {
public:
    RenderImage(Ledger& ledger, std::string label) : IVexRenderImageStub(ledger), name(std::move(label)) {}
    STDMETHODIMP GetWidth(long* result) override;
    STDMETHODIMP GetHeight(long* result) override;
    STDMETHODIMP Draw(IVexRenderDC* dc, SkinRect target, SkinRect source, VARIANT_BOOL stretch, OLE_COLOR transparent,
                      VARIANT_BOOL* result) override;
    STDMETHODIMP DrawAll(IVexRenderDC* dc, SkinRect target, VARIANT_BOOL stretch, OLE_COLOR transparent,
                         VARIANT_BOOL* result) override;

    const std::string name;
};

/// 64 by 16 pixels from any file but those whose path starts with "missing".
class Picture final : public IVexPictureStub<IVexPicture> {
public:
    using IVexPictureStub::IVexPictureStub;
    STDMETHODIMP SetName(BSTR name) override;
    STDMETHODIMP ImportFile(BSTR path, VARIANT_BOOL* result) override;
    STDMETHODIMP GetWidth(short* result) override;
    STDMETHODIMP GetHeight(short* result) override;
};

class ImageSection final : public IVexImageBaseStub<IVexImageBase> {
public:
    ImageSection(Ledger& ledger, std::string label = "section") : IVexImageBaseStub(ledger), name(std::move(label)) {}
    STDMETHODIMP get_ImageObj(IVexPicture** result) override;
    STDMETHODIMP put_ImageObj(IVexPicture* newPicture) override;
    STDMETHODIMP put_rect(SkinRect* rect) override;
    STDMETHODIMP BuildPerPixImage() override { return S_OK; }
    STDMETHODIMP StretchAll(VARIANT_BOOL stretch) override;
    STDMETHODIMP GetWidth(long* result) override;
    STDMETHODIMP Draw(hyper dc, SkinRect rect, VARIANT_BOOL* result) override;
    STDMETHODIMP RenderDraw(IVexRenderDC* dc, SkinRect rect, short index, VARIANT_BOOL* result) override;

    const std::string name;
    ComPtr<IVexPicture> picture;
    SkinRect source{};

protected:
    void lastRelease() override { picture.reset(); }
};

class Fill final : public IFillColorStub<IFillColor> {
public:
    using IFillColorStub::IFillColorStub;
    STDMETHODIMP Draw(hyper dc, SkinRect rect, VARIANT_BOOL* result) override;
};

/// A skin that makes render images and holds shared pictures and sections.
class PictureRes final : public IVexResStub<IVexRes> {
public:
    using IVexResStub::IVexResStub;
    STDMETHODIMP IsDesignStatus(VARIANT_BOOL* result) override;
    STDMETHODIMP ImportSkin(hyper module, long resource, BSTR type, hyper parent, IVexControlBase** result) override;
    STDMETHODIMP CreateImageByHandle(hyper device, BSTR name, hyper handle, VEX_PICTURE_TYPE type,
                                     IVexRenderImage** result) override;
    STDMETHODIMP CreateImageByPath(hyper device, BSTR path, IVexRenderImage** result) override;
    STDMETHODIMP DestroyImage(IVexRenderImage* image, VARIANT_BOOL* result) override;
    STDMETHODIMP GetResObject(VexObjType type, BSTR name, ISkinObjResBase* parent, VARIANT_BOOL deep,
                              IVexObj** result) override;
    STDMETHODIMP AddResObject(VexObjType type, IVexObj* owner, BSTR name, VARIANT_BOOL first,
                              IVexObj** result) override;

    VARIANT_BOOL designStatus = VARIANT_FALSE;
    std::map<std::pair<VexObjType, std::wstring>, ComPtr<IVexObj>> shared;

protected:
    void lastRelease() override { shared.clear(); }
};

} // namespace morvane::testing
