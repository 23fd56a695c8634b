#include "gallery/scene.h"

#include "ambrel/ambrel.h"
#include "ambrel/objects/callbacks.h"
#include "gallery/options.h"
#include "gallery/skin_folder.h"
#include "host/host_classes.h"

#include <commctrl.h>

#include <algorithm>
#include <stdexcept>

namespace gallery {

namespace {

constexpr int kButtonSkin = 2080;
constexpr int kCheckBoxSkin = 2092;
constexpr int kRadioBoxSkin = 2086;
constexpr wchar_t kFontFace[] = L"Tahoma";

std::wstring programFolder()
{
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring program(path);
    return program.substr(0, program.rfind(L'\\'));
}

std::wstring drawingsFolder(bool isDark)
{
    return programFolder() + (isDark ? L"\\pictures\\dark\\" : L"\\pictures\\light\\");
}

/// Only to compare: it keeps no reference.
const IUnknown* identityOf(IVexControlBase& control)
{
    return ComPtr<IVexControlBase>(&control).as<IUnknown>().get();
}

/// What AddMsgCallback calls; `context` is the function to run.
VARIANT_BOOL STDMETHODCALLTYPE runAction(std::int64_t context, long, std::int64_t, std::int64_t)
{
    (*reinterpret_cast<std::function<void()>*>(context))(); // not a copy: what it counts must stay
    return VARIANT_FALSE;
}

void require(HRESULT status, const char* what)
{
    if (FAILED(status))
        throw std::runtime_error(what);
}

template <class Interface>
ComPtr<Interface> require(ComPtr<Interface> object, const char* what)
{
    if (!object)
        throw std::runtime_error(what);
    return object;
}

/// Colour and font; not where the text stands.
void copyLook(IVexTextStyle& from, IVexTextStyle& to)
{
    OLE_COLOR color = 0;
    ComPtr<IVexFontEx> font;
    from.get_clrText(&color);
    from.get_fontExPtr(font.put());
    to.put_clrText(color);
    to.put_fontExPtr(font.get());
}

/// One direction of a position; near and far are distances from the parent's near edge.
PosBase held(Hold hold, long nearEdge, long farEdge, long parent)
{
    if (hold == Hold::Both)
        return {PHAT_LEFT, PHST_RIGHTWIDTH, nearEdge, parent - farEdge, 0};
    if (hold == Hold::Far)
        return {PHAT_RIGHT, PHST_LEFTWIDTH, 0, parent - farEdge, farEdge - nearEdge};
    return {PHAT_LEFT, PHST_LEFTWIDTH, nearEdge, 0, farEdge - nearEdge};
}

std::wstring keyOf(const TextLook& look)
{
    return std::to_wstring(look.color) + L'/' + std::to_wstring(look.points) + (look.isBold ? L"b" : L"") +
           std::to_wstring(static_cast<int>(look.align)) + L'+' + std::to_wstring(look.nearOffset) +
           (look.isTrimmed ? L"..." : L"");
}

} // namespace

SkinSource skinSourceOf(const Options& options, HINSTANCE controls)
{
    SkinSource source{controls, {}, options.isDark, nullptr};
    if (!options.skinFolder.empty())
        source.custom = std::make_shared<SkinFolder>(options.skinFolder, options.isDark);
    if (options.isDark) {
        // The module carries the light looks; the dark ones lie beside the program.
        source.folder = programFolder() + L"\\skins";
    }
    return source;
}

Scene::Scene(ComPtr<IVexRes> res, ComPtr<IAmbrel> root, SkinSource skins, int scale)
    : m_res(std::move(res)), m_root(std::move(root)), m_skins(std::move(skins)), m_scale(scale)
{
}

Scene::~Scene()
{
    if (const HWND handle = window())
        RemoveWindowSubclass(handle, &Scene::windowProcedure, 1);
}

Rect Scene::scaled(const Rect& rect) const
{
    return {scaled(rect.left), scaled(rect.top), scaled(rect.right), scaled(rect.bottom)};
}

std::wstring Scene::nextName(const wchar_t* kind)
{
    return kind + std::to_wstring(++m_lastName);
}

void Scene::place(IVexControlBase& control, const Rect& place) const
{
    placePixels(control, scaled(place));
}

void Scene::placePixels(IVexControlBase& control, const Rect& place) const
{
    setPlace(control, place, PHST_LEFTWIDTH);
}

void Scene::placeFitting(IVexControlBase& control, const Rect& place) const
{
    setPlace(control, scaled(place), PHST_FASTNESS);
}

void Scene::placeIn(IVexControlBase& control, const Rect& place, Size parent, Hold across, Hold down) const
{
    const Rect r = scaled(place);
    const Size around{scaled(parent.width), scaled(parent.height)};
    setPosition(control, {held(across, r.left, r.right, around.width), held(down, r.top, r.bottom, around.height)});
}

void Scene::setPlace(IVexControlBase& control, const Rect& r, PosHorzSpaceType kind) const
{
    VexPosition record{};
    record.horzPos = {PHAT_LEFT, kind, r.left, 0, r.width()};
    record.vertPos = {static_cast<PosHorzAlignType>(PVAT_TOP), static_cast<PosHorzSpaceType>(PVST_TOPHEIGHT), r.top, 0,
                      r.height()};
    setPosition(control, record);
}

void Scene::setPosition(IVexControlBase& control, const VexPosition& record) const
{
    ComPtr<IDispatch> object;
    require(CoCreateInstance(morvane::kClsidPosition, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.putVoid()),
            "position");
    const auto position = object.as<IVexPos>();
    position->SetPosStruct(record);
    control.SetPosition(position.get());
    control.ResizeThis();
}

ComPtr<IVexControlBase> Scene::create(REFCLSID classId, IVexControlBase* parent, const Rect& where)
{
    ComPtr<IVexControlBase> control;
    require(
        CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, morvane::iidOf<IVexControlBase>(), control.putVoid()),
        "a control could not be created");
    ISkinObjResBase* const owner = parent ? static_cast<ISkinObjResBase*>(parent) : m_root.get();
    std::int64_t created = 0;
    require(control->CreateObj(reinterpret_cast<std::int64_t>(m_res.get()), reinterpret_cast<std::int64_t>(owner),
                               VEXOBJTYPE_PLUGIN, VARIANT_FALSE, &created),
            "a control could not be attached");
    control->SetName(Bstr(nextName(L"Object")).get());
    place(*control, where);
    return control;
}

void Scene::applySkin(IVexControlBase& control, int package) const
{
    if (m_skins.custom && m_skins.custom->apply(*m_res, control, package))
        return;
    if (m_skins.folder.empty()) {
        require(AmbrelApplySkin(m_res.get(), &control, m_skins.module, package), "a default skin could not be applied");
        return;
    }
    const std::wstring path =
        m_skins.folder + L'\\' + std::to_wstring(package) + (m_skins.isDark ? L".dark.zip" : L".zip");
    require(AmbrelApplySkinFile(m_res.get(), &control, path.c_str()), "a skin could not be applied");
}

void Scene::finish(IVexControlBase& control) const
{
    control.FinalCreate(VARIANT_TRUE);
}

ComPtr<ICmdButton> Scene::button(IVexControlBase* parent, const Rect& where, std::wstring_view text)
{
    const auto control = create(__uuidof(CmdButton), parent, where);
    applySkin(*control, kButtonSkin);
    finish(*control);
    auto button = require(control.as<ICmdButton>(), "ICmdButton");
    button->SetText(Bstr(text).get());
    return button;
}

ComPtr<IVexCheckBox> Scene::checkBox(IVexControlBase* parent, const Rect& where, std::wstring_view text)
{
    const auto control = create(__uuidof(VexCheckBox), parent, where);
    applySkin(*control, kCheckBoxSkin);
    finish(*control);
    auto box = require(control.as<IVexCheckBox>(), "IVexCheckBox");
    box->SetText(Bstr(text).get());
    return box;
}

ComPtr<IRadioBox> Scene::radioBox(IVexControlBase* parent, const Rect& where, std::wstring_view text, long group)
{
    const auto control = create(__uuidof(RadioBox), parent, where);
    applySkin(*control, kRadioBoxSkin);
    finish(*control);
    auto box = require(control.as<IRadioBox>(), "IRadioBox");
    VARIANT_BOOL done = VARIANT_FALSE;
    box->SetGroupID(group, &done);
    box->SetText(Bstr(text).get(), VARIANT_TRUE);
    return box;
}

ComPtr<IUIFormObj> Scene::form(IVexControlBase* parent, const Rect& where, OLE_COLOR color)
{
    const auto control = create(__uuidof(UIFormObj), parent, where);
    finish(*control);
    auto form = require(control.as<IUIFormObj>(), "IUIFormObj");
    form->SetBackColor(fill(color, color, 0).get());
    form->SetDrawColor(VARIANT_TRUE);
    return form;
}

ComPtr<ICmdButton> Scene::label(IVexControlBase* parent, const Rect& where, std::wstring_view text,
                                const TextLook& look)
{
    const auto control = create(__uuidof(CmdButton), parent, where);
    finish(*control);
    control->SetTabStop(VARIANT_FALSE);
    auto label = require(control.as<ICmdButton>(), "ICmdButton");
    const auto style = textStyle(look);
    for (int state = VEX_BTN_NORMAL; state < VEX_BTN_LAST; ++state)
        label->SetBackTextStyle(static_cast<VEX_BUTTONSTATE>(state), style.get());
    label->SetText(Bstr(text).get());
    return label;
}

Bstr Scene::drawing(const std::wstring& name) const
{
    const wchar_t* form = L"";
    for (const auto& [percent, ending] : {std::pair{125, L"@125"}, {150, L"@150"}, {200, L"@200"}})
        form = m_scale >= percent ? ending : form;
    return Bstr(drawingsFolder(m_skins.isDark) + name + form + L".png");
}

ComPtr<IVexImageBase> Scene::drawingSection(const std::wstring& name, long border) const
{
    ComPtr<IVexImageBase> section;
    m_res->GetImageBaseFromFile(Bstr(drawingsFolder(m_skins.isDark) + name + L".png").get(), section.put());
    require(section, "a drawing is not beside the program")->put_rcBorder({border, border, border, border});
    return section;
}

ComPtr<IVexFontEx> Scene::font(int points, bool isBold)
{
    const std::wstring name = std::wstring(kFontFace) + L',' + std::to_wstring(points) + (isBold ? L",bold" : L"");
    const Bstr key(name);
    ComPtr<IVexObj> object;
    m_res->GetResObject(VEXOBJTYPE_FONTEX, key.get(), nullptr, VARIANT_TRUE, object.put());
    if (!object) {
        m_res->AddResObject(VEXOBJTYPE_FONTEX, nullptr, key.get(), VARIANT_FALSE, object.put());
        const auto font = require(object.as<IVexFontEx>(), "a font could not be made");
        const Bstr face(kFontFace);
        VEXLOGFONT description{};
        description.lfHeight = -MulDiv(points, 96, 72); // at 100 percent
        description.lfWeight = isBold ? FW_BOLD : FW_NORMAL;
        description.lfCharSet = DEFAULT_CHARSET;
        description.lfFaceName = face.get();
        description.lfAntiAlisaing = 1;
        font->SetLogFont(description);
    }
    return require(object.as<IVexFontEx>(), "a font could not be made");
}

ComPtr<IVexTextStyle> Scene::textStyle(const TextLook& look)
{
    const std::wstring key = keyOf(look);
    for (const auto& [known, style] : m_textStyles)
        if (known == key)
            return style;
    const Bstr name(L"Gallery." + key);
    ComPtr<IVexObj> object;
    m_res->AddResObject(VEXOBJTYPE_TEXTSTYLE, nullptr, name.get(), VARIANT_FALSE, object.put());
    const auto style = require(object.as<IVexTextStyle>(), "a text style could not be made");
    style->put_clrText(look.color);
    style->put_fontExPtr(font(look.points, look.isBold).get());
    style->put_nHAlign(static_cast<short>(look.align));
    style->put_nVAlign(1);
    style->put_nLeftOffset(static_cast<short>(look.nearOffset));
    style->put_bSingleLine(VARIANT_TRUE);
    style->put_bHotkeyPrefixShow(look.isTrimmed ? VARIANT_FALSE : VARIANT_TRUE);
    style->put_nStringTrimming(look.isTrimmed ? 3 : 0);
    m_textStyles.emplace_back(key, style);
    return style;
}

ComPtr<IVexTextStyle> Scene::textStyleLike(IVexTextStyle& source, const TextPlacement& placement)
{
    for (const Derived& known : m_derivedStyles)
        if (known.source.get() == &source && known.placement == placement)
            return known.style;
    const Bstr name(nextName(L"Gallery.Derived"));
    ComPtr<IVexObj> object;
    m_res->AddResObject(VEXOBJTYPE_TEXTSTYLE, nullptr, name.get(), VARIANT_FALSE, object.put());
    Derived made{ComPtr<IVexTextStyle>(&source), require(object.as<IVexTextStyle>(), "a text style could not be made"),
                 placement};
    made.style->put_bSingleLine(VARIANT_TRUE);
    made.style->put_bHotkeyPrefixShow(VARIANT_TRUE);
    made.style->put_nHAlign(static_cast<short>(placement.align));
    made.style->put_nVAlign(1);
    made.style->put_nLeftOffset(static_cast<short>(placement.left));
    made.style->put_nRightOffset(static_cast<short>(placement.right));
    made.style->put_nTopOffset(static_cast<short>(placement.top));
    made.style->put_nBottomOffset(static_cast<short>(placement.bottom));
    copyLook(*made.source, *made.style);
    m_derivedStyles.push_back(made);
    return made.style;
}

void Scene::setLook(SkinSource skins, int scale)
{
    m_skins = std::move(skins);
    m_scale = scale;
}

void Scene::skinChanged()
{
    for (const Derived& each : m_derivedStyles)
        copyLook(*each.source, *each.style);
}

ComPtr<IFillColor> Scene::fill(OLE_COLOR from, OLE_COLOR to, int degrees)
{
    const std::array<long, 3> look{static_cast<long>(from), static_cast<long>(to), degrees};
    if (const auto known = m_fills.find(look); known != m_fills.end())
        return known->second;
    const Bstr name(nextName(L"Gallery.Fill"));
    ComPtr<IVexObj> object;
    m_res->AddResObject(VEXOBJTYPE_GRADIENTCLR, nullptr, name.get(), VARIANT_FALSE, object.put());
    const auto fill = require(object.as<IFillColor>(), "a fill could not be made");
    fill->put_clrStart(from);
    fill->put_clrEnd(to);
    fill->put_nGradientIrotation(degrees);
    m_fills.emplace(look, fill);
    return fill;
}

void Scene::onMessage(IVexControlBase& control, long message, std::function<void()> action)
{
    auto kept = std::make_unique<std::function<void()>>(std::move(action));
    VARIANT_BOOL done = VARIANT_FALSE;
    const ambrel::MessageCallback callback = &runAction;
    control.AddMsgCallback(message, reinterpret_cast<std::int64_t>(callback),
                           reinterpret_cast<std::int64_t>(kept.get()), &done);
    m_callbacks.push_back({identityOf(control), std::move(kept)});
}

void Scene::onClick(IVexControlBase& control, std::function<void()> action)
{
    // A press that ends elsewhere, or with Escape, brings no release.
    onMessage(control, VEXSM_LBUTTONUP, std::move(action));
}

HWND Scene::window() const
{
    std::int64_t window = 0;
    m_root->GetWindowHandle(&window);
    return reinterpret_cast<HWND>(window);
}

LRESULT CALLBACK Scene::windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                        DWORD_PTR scene)
{
    const auto& actions = reinterpret_cast<Scene*>(scene)->m_windowActions;
    if (const auto found = actions.find(message); found != actions.end()) {
        const auto action = found->second; // it may be replaced inside
        (*action)(wParam);
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

void Scene::onWindowMessage(UINT message, std::function<void(WPARAM)> action)
{
    m_windowActions[message] = std::make_shared<std::function<void(WPARAM)>>(std::move(action));
    SetWindowSubclass(window(), &Scene::windowProcedure, 1, reinterpret_cast<DWORD_PTR>(this));
}

void Scene::every(int periodMs, IVexControlBase& control, std::function<void()> action)
{
    std::erase_if(m_tickers, [](const auto& ticker) { return !ticker->isRunning(); });
    m_tickers.push_back(std::make_unique<Ticker>(control, periodMs, std::move(action)));
}

void Scene::forgetActions(IVexControlBase& control)
{
    const IUnknown* const identity = identityOf(control);
    for (Callback& callback : m_callbacks)
        if (callback.control == identity)
            m_retired.push_back(std::move(callback.action));
    std::erase_if(m_callbacks, [](const Callback& callback) { return !callback.action; });
    short count = 0;
    control.GetChildCount(&count);
    for (short index = 0; index < count; ++index) {
        ComPtr<ISkinObjResBase> child;
        control.GetSubObject(index, child.put());
        if (const auto inner = child.as<IVexControlBase>())
            forgetActions(*inner);
    }
}

void Scene::remove(IVexControlBase& control)
{
    m_retired.clear();
    forgetActions(control);
    VARIANT_BOOL done = VARIANT_FALSE;
    control.DelAllSubObjects();
    control.Remove(&done);
}

} // namespace gallery
