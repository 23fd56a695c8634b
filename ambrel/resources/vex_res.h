// The resource object: where an application's shared resources, windows and skins live.
#pragma once

#include "ambrel/ambrel.h"
#include "ambrel/objects/skin_object_core.h"
#include "ambrel/render/shared_resource.h"
#include "ambrel/resources/color_cases.h"
#include "ambrel/resources/resource_store.h"
#include "ambrel/resources/skin_resources.h"
#include "ambrel/resources/texts.h"
#include "ambrel/skin/model.h"
#include "ambrel/window/root_window.h"
#include "frame/com/dispatch.h"
#include "frame/com/result.h"

#include <functional>
#include <map>
#include <memory>
#include <tuple>

namespace ambrel {

class SkinWatch;
struct ReadSkin;
struct RunningSkin;

/// IVexRes. Statuses: S_FALSE where nothing was found or done; E_NOTIMPL for skinning foreign windows and for exporting
/// to formats that this runtime does not have. Its windows know it weakly through their objects; it knows them weakly
/// too.
class VexRes : public morvane::Dispatch<IVexRes>, private ResourceOwner {
public:
    VexRes();
    ~VexRes();
    HRESULT finalConstruct() { return S_OK; }
    void finalRelease();
    void* findInterface(REFIID iid);

    // Two bases have them; the instance completes them.
    STDMETHODIMP QueryInterface(REFIID iid, void** result) noexcept override = 0;
    STDMETHODIMP_(ULONG) AddRef() noexcept override = 0;
    STDMETHODIMP_(ULONG) Release() noexcept override = 0;

    /// The object behind an interface; null for null and for other implementations.
    static VexRes* from(IVexRes* resources) noexcept;
    static morvane::ComPtr<VexRes> make();

    ResourceStore& store() noexcept { return m_store; }
    bool isDesigning() const noexcept { return m_design; }

    /// The roots of all windows that live, in the order of creation.
    std::vector<morvane::ComPtr<RootWindow>> windows();
    /// Calls `visit(ObjectNode&)` for every object of every window until it answers true.
    bool anyObject(const std::function<bool(ObjectNode&)>& visit);
    void redrawAll();
    void showColorCase(); // the chosen one, as it is now

    /// The skin that is open; null when there is none.
    const std::shared_ptr<const skin::Skin>& skin() const noexcept { return m_skin; }
    /// Replaces the running skin by one that was read and checked, with all windows, or leaves everything as it was.
    HRESULT changeTo(std::shared_ptr<const skin::Skin> skin, std::wstring path);
    /// Gives an existing control what a packaged skin says for its class.
    HRESULT applyPackage(IVexControlBase& control, HINSTANCE module, long resourceId);
    /// The same from a zip file or a folder, read once and again whenever it changes under a watched folder.
    HRESULT applyPackageFile(IVexControlBase& control, std::wstring_view path);
    /// AmbrelWatchSkinFiles; an empty folder ends the watch.
    HRESULT watchPackages(const std::wstring& folder, AmbrelSkinFileChanged told, void* context);

    // IVexRes
    STDMETHODIMP OpenSkin(BSTR strSkinPath, BSTR strSknPath, VARIANT_BOOL bSkinCtrls,
                          VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP CloseSkin(VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP CreateAmbrel(BSTR strName, hyper hWndParent, IDispatch** pAmbrel) noexcept override;
    STDMETHODIMP GetAmbrelForm(BSTR strName, IDispatch** pAmbrel) noexcept override;
    STDMETHODIMP GetResObject(VexObjType eType, BSTR strName, ISkinObjResBase* pObjParent, VARIANT_BOOL bDeep,
                              IVexObj** pResult) noexcept override;
    STDMETHODIMP GetImageBaseFromFile(BSTR strFilePath, IVexImageBase** pImgResult) noexcept override;
    STDMETHODIMP GetEventHandle(IVexEvents** pEventHandle) noexcept override;
    STDMETHODIMP GetComDispatch(hyper pVexObj, IVexObj** pResult) noexcept override;
    STDMETHODIMP GetResObjectByGuid(VexObjType eType, BSTR strGuid, IVexObj** pResult) noexcept override;
    STDMETHODIMP RemoveObject(hyper pVexObj, VARIANT_BOOL bRelease, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP AddScriptObjects(hyper pScriptObject, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP IsDesignStatus(VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP DrawImageSection(SkinRect rect, IVexImageBase* pImageSection, hyper* phResult) noexcept override;
    STDMETHODIMP DrawTextStyle(SkinRect rect, BSTR strText, IVexTextStyle* pTextStyle,
                               hyper* phResult) noexcept override;
    STDMETHODIMP AccessAttribRect(hyper pXmlEle, BSTR strAttribName, SkinRect* prcValue, VARIANT_BOOL bRead,
                                  VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP AccessAttribSize(hyper pXmlEle, BSTR strAttribName, SkinSize* psizeValue, VARIANT_BOOL bRead,
                                  VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP AccessAttribLong(hyper pXmlEle, BSTR strAttribName, LONG* plValue, VARIANT_BOOL bRead,
                                  VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP AccessAttribFloat(hyper pXmlEle, BSTR strAttribName, float* pfValue, VARIANT_BOOL bRead,
                                   VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP AccessAttribDouble(hyper pXmlEle, BSTR strAttribName, double* pdValue, VARIANT_BOOL bRead,
                                    VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP AccessAttribBOOL(hyper pXmlEle, BSTR strAttribName, VARIANT_BOOL* pbValue, VARIANT_BOOL bRead,
                                  VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP AccessAttribString(hyper pXmlEle, BSTR strAttribName, BSTR* pstrValue, VARIANT_BOOL bRead,
                                    VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP AccessAttribColor(hyper pXmlEle, BSTR strAttribName, OLE_COLOR* pclrValue, VARIANT_BOOL bRead,
                                   VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP GradientFill(hyper hDC, SkinRect rect, OLE_COLOR clrFrom, OLE_COLOR clrTo, LONG nIrotation,
                              VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP SetVexResObjPtr(hyper lResObjPtr) noexcept override;
    STDMETHODIMP GetVexResObjPtr(hyper* plResObjPtr) noexcept override;
    STDMETHODIMP CreateVexResObj(LONG* plResObjPtr) noexcept override;
    STDMETHODIMP CloseVexResObj(VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP ImportSkin(hyper hInstance, LONG uResID, BSTR strResSec, hyper hObjParent,
                            IVexControlBase** phResult) noexcept override;
    STDMETHODIMP GetHwndPrintBmp(hyper hDC, hyper hWnd, hyper* phResult) noexcept override;
    STDMETHODIMP DrawSkinImage(hyper hDC, SkinRect rect, IVexImageBase* pImageBase,
                               VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP EnumObjectsToHwnd(VexObjType objType, LONG nMsg, hyper hWndMsg) noexcept override;
    STDMETHODIMP EnumObjectsToCallback(VexObjType objType, hyper pFunCallback, hyper nParam) noexcept override;
    STDMETHODIMP AddResObject(VexObjType objType, IVexObj* pOwnerObj, BSTR strName, VARIANT_BOOL bInsertFirst,
                              IVexObj** pResult) noexcept override;
    STDMETHODIMP DeleteResObj(IVexObj* pObj, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP RemoveResObject(IVexObj* pObj, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP GetRgnFromHBitmap(hyper hBitmap, OLE_COLOR clrTrans, hyper* phResult) noexcept override;
    STDMETHODIMP AddPluginResObject(IVexObj* pOwnerObj, BSTR strName, BSTR strGuid,
                                    IVexControlBase** pResult) noexcept override;
    STDMETHODIMP DrawIcon(hyper hDC, short xLeft, short yTop, short cxWidth, short cyHeight, hyper hIcon,
                          VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP ConvertINameToType(BSTR bstrInterfaceName, VexObjType* pResult) noexcept override;
    STDMETHODIMP ConvertTypeToIName(VexObjType eType, BSTR* pResult) noexcept override;
    STDMETHODIMP Save(BSTR bstrPath, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP SetDesignStatus(VARIANT_BOOL bDesign, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP GetSkinFilePath(BSTR* pResult) noexcept override;
    STDMETHODIMP SetDynClearZipInfo(VARIANT_BOOL bClear) noexcept override;
    STDMETHODIMP IsDynClearZipInfo(VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP IsPerpixelDraw(VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP GetImageListFromHIMAGELIST(hyper hImageList, IVexImageList** pImgResult) noexcept override;
    STDMETHODIMP GetImageListFromImageBase(IVexImageBase* pImageBase, short cx, OLE_COLOR crMask,
                                           IVexImageList** pImgResult) noexcept override;
    STDMETHODIMP GetImageListFromFile(BSTR strFilePath, short cx, OLE_COLOR crMask,
                                      IVexImageList** pImgResult) noexcept override;
    STDMETHODIMP ReleasePluginResObject(IVexControlBase* pPlugin) noexcept override;
    STDMETHODIMP CreatePluginResObject(BSTR strGuid, IVexControlBase** ppResult) noexcept override;
    STDMETHODIMP IsRegKbHookObj(IVexControlBase* pObject, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP RegisterKbHookObj(IVexControlBase* pObject, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP UnRegisterKbHookObj(IVexControlBase* pObject, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP CallNextKBHook(LONG nCode, hyper wParam, hyper lParam, LONG* pnResult) noexcept override;
    STDMETHODIMP IsRegisterHookObject(VEX_HOOKTYPE dwHookType, IVexControlBase* pObject,
                                      VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP RegisterHookObject(VEX_HOOKTYPE dwHookType, IVexControlBase* pObject,
                                    VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP UnRegisterHookObject(VEX_HOOKTYPE dwHookType, IVexControlBase* pObject,
                                      VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP StartHook(VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP EndHook(VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP GetObjectFromLong(hyper nObject, IVexObj** pResult) noexcept override;
    STDMETHODIMP GetVexWindow(IVexWindow** pResult) noexcept override;
    STDMETHODIMP ChangeSkn(BSTR strSkinPath, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP OpenTheme(BSTR strSkinPath, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP ExportSknVexFile(BSTR strSkinPath, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP AddPluginResObject2(IVexObj* pOwnerObj, BSTR strName, BSTR strGuid, VARIANT_BOOL bIsComposeCtrl,
                                     IVexControlBase** pResult) noexcept override;
    STDMETHODIMP AccessAttribString2(BSTR strAttribName, BSTR* pstrValue, VARIANT_BOOL bRead,
                                     VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP AddStrProp(BSTR strKey, BSTR strValue, hyper pStrProp) noexcept override;
    STDMETHODIMP RemoveStrProp(BSTR strKey, hyper pStrProp) noexcept override;
    STDMETHODIMP ChangeLanguage(VEX_LANGUAGE eLang) noexcept override;
    STDMETHODIMP GetCurAllLang(VEX_LANGUAGE* peLang, LONG eLangSize, LONG* pResult) noexcept override;
    STDMETHODIMP GenerateLanguageXML(BSTR strXMLPath) noexcept override;
    STDMETHODIMP GetCurLanguage(VEX_LANGUAGE* peLang) noexcept override;
    STDMETHODIMP SetUseSkin(SKINCTRL_CLASSTYPE eClassType, VARIANT_BOOL bUseSkin) noexcept override;
    STDMETHODIMP IsUseSkin(SKINCTRL_CLASSTYPE eClassType, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP SetSkinHwnd(hyper hWnd, VARIANT_BOOL bChildSkin) noexcept override;
    STDMETHODIMP SetNoSkinHwnd(hyper hWnd, VARIANT_BOOL bChildNoSkin) noexcept override;
    STDMETHODIMP IsNoSkinHwnd(hyper hWnd, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP AddColorFilterColorize(short nHue, short nSaturation, short nBlend,
                                        VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP AddColorFilterShiftRGB(short nRed, short nGreen, short nBlue,
                                        VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP RemoveColorFilters(VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP RedrawAllControls(VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP GetVersion(LONG* mainVersion, LONG* subVerson) noexcept override;
    STDMETHODIMP GetSkinVersion(LONG* mainVersion, LONG* subVerson) noexcept override;
    STDMETHODIMP SetDragInfo(VEX_DRAGINFO info) noexcept override;
    STDMETHODIMP GetDragInfo(VEX_DRAGINFO* info) noexcept override;
    STDMETHODIMP SetDrag(VARIANT_BOOL bDrag) noexcept override;
    STDMETHODIMP GetDrag(VARIANT_BOOL* bDrag) noexcept override;
    STDMETHODIMP SetAutoUseSkin(VARIANT_BOOL bAutoSkin) noexcept override;
    STDMETHODIMP CallScripEvent(BSTR strGuid, LONG nMsgID, hyper wParam, hyper lParam, LONG nVexMsgId,
                                VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP GetString(VEX_LANGUAGE eLang, BSTR strKey, BSTR* strValue) noexcept override;
    STDMETHODIMP ShowAmbrelWnd(BSTR strText, LONG Style, LONG WindowStyle, ShowWindowFlags nFlag,
                               hyper* pnResult) noexcept override;
    STDMETHODIMP CreateVexWindow(BSTR strText, hyper hWndParent, LONG dwSdyle, hyper* pnResult) noexcept override;
    STDMETHODIMP CreateEdit(BSTR strText, hyper hWndParent, LONG dwSdyle, LONG x, LONG y, LONG cx, LONG cy,
                            hyper* pnResult) noexcept override;
    STDMETHODIMP GetGlobalResObj(VexObjType eType, BSTR strName, IVexObj** pResult) noexcept override;
    STDMETHODIMP CreateImageByHandle(hyper pDevice, BSTR strName, hyper hHandle, VEX_PICTURE_TYPE eType,
                                     IVexRenderImage** ppResult) noexcept override;
    STDMETHODIMP CreateImageByPath(hyper pDevice, BSTR strPath, IVexRenderImage** ppResult) noexcept override;
    STDMETHODIMP GetImageByName(hyper pDevice, BSTR strName, IVexRenderImage** ppResult) noexcept override;
    STDMETHODIMP ReleaseImageByName(hyper pDevice, BSTR strName, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP DestroyImage(IVexRenderImage* pImage, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP GetFontByLogFont(hyper pDevice, BSTR strName, VEXLOGFONT* pLogFont, hyper* ppFont) noexcept override;
    STDMETHODIMP GetFontByName(hyper pDevice, BSTR strName, hyper* ppFont) noexcept override;
    STDMETHODIMP ReleaseFontByName(hyper pDevice, BSTR strName, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP ReleaseFontByHandle(hyper pDevice, hyper pFont, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP GetColorCaseCount(LONG* pnResult) noexcept override;
    STDMETHODIMP GetCurColorCaseName(BSTR* pstrResult) noexcept override;
    STDMETHODIMP SetCurColorCase(BSTR strName, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP GetCurColorCase(VEX_COLORCASE* pResult) noexcept override;
    STDMETHODIMP GetColorCase(BSTR strName, VEX_COLORCASE* pResult) noexcept override;
    STDMETHODIMP AddColorCase(BSTR strName, VEX_COLORCASE* pResult) noexcept override;
    STDMETHODIMP RemoveColorCase(BSTR strName, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP GetFirstColorCase(VEX_COLORCASE* pResult) noexcept override;
    STDMETHODIMP GetNextColorCase(VEX_COLORCASE* pResult) noexcept override;
    STDMETHODIMP SetSkinEncryptPassword(BSTR strPassword) noexcept override;
    STDMETHODIMP ReleaseSkin(VARIANT_BOOL* pbResult) noexcept override;

private:
    // ResourceOwner
    std::weak_ptr<ResourceOwner> link() const noexcept override { return m_link; }
    HRESULT rename(IVexObj& resource, std::wstring_view name) override;

    /// A package of a module; read once, its resources shared by all controls that import it.
    struct Package {
        std::shared_ptr<const skin::Skin> skin;
        SkinResourceSet resources;
        std::vector<WeakNode> wearers; // the controls it was given to; kept only while it is watched
    };
    using PackageKey = std::tuple<HINSTANCE, long, std::wstring>; // module and number with the type, or just a path
    HRESULT package(const PackageKey& key, const std::function<ReadSkin()>& read, std::shared_ptr<Package>& result);
    HRESULT package(HINSTANCE module, long resourceId, std::wstring_view type, std::shared_ptr<Package>& result);
    HRESULT applyTo(IVexControlBase& control, const Package& source);
    bool isWatched(std::wstring_view packagePath) const;
    void readPackagesAgain();
    HRESULT readAgain(const std::wstring& packagePath);
    void change(Package& package, std::shared_ptr<const skin::Skin> skin, SkinResourceSet::Pictures pictures);
    HRESULT open(std::wstring_view path, VARIANT_BOOL* result);
    void reload();
    /// Sets what the running skin says about each control and the former one did not.
    void applyToAll(const skin::Skin* former);
    void applyOpenSkin(IVexControlBase& control);
    RunningSkin runningSkin();
    /// Puts the texts of the language that is in use into the properties that are bound to keys. Runs foreign code.
    void showTexts();
    morvane::ComPtr<IVexControlBase> addPlugin(IVexObj* owner, BSTR name, BSTR guid, bool composed);
    morvane::ComPtr<IVexObj> objectOfNumber(hyper number);
    std::vector<morvane::ComPtr<RootWindow>> windowsOf(VexObjType type); // none for any other type
    void notifyAll(VexMsgID id, hyper lParam1 = 0);

    struct RenderFont {
        morvane::ComPtr<IVexTextStyle> style;
        hyper handle;
        unsigned device; // its serial; 0 for a device of another maker
        long uses = 1;
    };
    RenderFont* fontOf(hyper device, BSTR name);

    std::shared_ptr<ResourceOwner> m_link; // points here, and ends with this
    ResourceStore m_store;
    std::map<std::pair<hyper, std::wstring>, RenderFont> m_fonts; // by device and name
    std::vector<WeakNode> m_windows;
    std::shared_ptr<const skin::Skin> m_skin;
    SkinResourceSet m_skinResources;
    std::map<PackageKey, std::shared_ptr<Package>> m_packages;
    std::wstring m_skinPath;
    std::unique_ptr<SkinWatch> m_watch;

    struct PackageWatch {
        std::wstring folder; // a full path
        AmbrelSkinFileChanged told;
        void* context;
        std::unique_ptr<SkinWatch> watch;
    };
    std::shared_ptr<PackageWatch> m_packageWatch;
    ColorCases m_colorCases;
    std::optional<Colourise> m_tint; // of the chosen case
    BoundTexts m_texts;
    std::map<std::wstring, std::wstring, std::less<>> m_settings; // texts of the skin itself
    hyper m_objectPointer = 0;
    VEX_LANGUAGE m_language = VEX_ENGLISH;
    VEX_DRAGINFO m_dragInfo{};
    WeakNode m_dragFrom;
    WeakNode m_dragTo;
    bool m_drags = false;
    bool m_design = false;
    bool m_clearsPackages = true;
};

/// Finds the implementation behind IVexRes.
inline constexpr IID kIidVexRes = {0x8B7D0C55, 0x5A7E, 0x4B0B, {0x92, 0x1D, 0x34, 0x61, 0x0A, 0x7F, 0xC2, 0x5E}};

/// A control by class identifier ("{...}"), ProgID, or the class words of skins ("Morvane17"); null when there is none.
morvane::ComPtr<IVexControlBase> createControl(std::wstring_view classWord);
/// The class identifier of a class word; empty when it names none.
std::wstring classIdOf(std::wstring_view classWord);

} // namespace ambrel
