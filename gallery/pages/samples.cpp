#include "gallery/pages/samples.h"

#include "host/host_classes.h"

#include <stdexcept>

namespace gallery {

namespace {

std::wstring besideProgram(const wchar_t* file)
{
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring program(path);
    return program.substr(0, program.rfind(L'\\')) + L"\\pictures\\" + file;
}

template <class Interface>
ComPtr<Interface> create(REFCLSID classId)
{
    ComPtr<Interface> object;
    if (FAILED(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, morvane::iidOf<Interface>(), object.putVoid())))
        throw std::runtime_error("a picture object could not be made");
    return object;
}

/// A resource that only those keep who use it: its name is given back at once.
template <class Interface>
ComPtr<Interface> createResource(Scene& scene, VexObjType type)
{
    ComPtr<IVexObj> object;
    VARIANT_BOOL done = VARIANT_FALSE;
    scene.res().AddResObject(type, nullptr, Bstr(L"Gallery.Sample").get(), VARIANT_FALSE, object.put());
    auto resource = object.as<Interface>();
    if (!resource)
        throw std::runtime_error("a resource could not be made");
    scene.res().DeleteResObj(object.get(), &done);
    return resource;
}

} // namespace

ComPtr<IVexPicture> samplePicture(const wchar_t* file)
{
    const auto picture = create<IVexPicture>(morvane::kClsidPicture);
    VARIANT_BOOL done = VARIANT_FALSE;
    picture->ImportFile(Bstr(besideProgram(file)).get(), &done);
    if (done == VARIANT_FALSE)
        throw std::runtime_error("a sample picture could not be read");
    return picture;
}

ComPtr<IVexImageBase> sectionOf(IVexPicture& picture)
{
    const auto section = create<IVexImageBase>(morvane::kClsidImage);
    section->put_ImageObj(&picture);
    section->StretchAll(VARIANT_TRUE);
    return section;
}

ComPtr<IUIFormObj> board(Scene& scene, IVexControlBase& page, const Rect& place)
{
    const auto section = sectionOf(*samplePicture(L"board.png"));
    section->StretchAll(VARIANT_FALSE);
    return showSection(scene, page, place, *section);
}

ComPtr<IUIFormObj> showSection(Scene& scene, IVexControlBase& parent, const Rect& place, IVexImageBase& section)
{
    const auto form = scene.form(&parent, place, scene.theme().window);
    form->SetDrawColor(VARIANT_FALSE);
    form->SetBackImageSec(&section);
    return form;
}

void caption(Scene& scene, IVexControlBase& page, const Rect& sample, std::wstring_view text)
{
    scene.label(&page, {sample.left, sample.bottom + 3, sample.right, sample.bottom + 19}, text,
                {scene.theme().textSoft, 8, false, TextAlign::Centre});
}

ComPtr<IVexTextStyle> sampleStyle(Scene& scene, const SampleFont& sample)
{
    const auto font = createResource<IVexFontEx>(scene, VEXOBJTYPE_FONTEX);
    const Bstr face(sample.face);
    VEXLOGFONT description{};
    description.lfHeight = -MulDiv(sample.points, 96, 72); // at 100 percent
    description.lfWeight = sample.isBold ? FW_BOLD : FW_NORMAL;
    description.lfItalic = sample.isItalic;
    description.lfUnderline = sample.isUnderlined;
    description.lfStrikeOut = sample.isStruckOut;
    description.lfCharSet = DEFAULT_CHARSET;
    description.lfFaceName = face.get();
    description.lfAntiAlisaing = 1;
    font->SetLogFont(description);

    const auto style = createResource<IVexTextStyle>(scene, VEXOBJTYPE_TEXTSTYLE);
    style->put_fontExPtr(font.get());
    style->put_clrText(scene.theme().text);
    style->put_bSingleLine(VARIANT_TRUE);
    style->put_bHotkeyPrefixShow(VARIANT_FALSE);
    style->put_nVAlign(1);
    style->put_nHAlign(1);
    return style;
}

ComPtr<ICmdButton> showText(Scene& scene, IVexControlBase& parent, const Rect& place, std::wstring_view text,
                            IVexTextStyle& style)
{
    const auto object = scene.label(&parent, place, text, {scene.theme().text});
    for (int state = VEX_BTN_NORMAL; state < VEX_BTN_LAST; ++state)
        object->SetBackTextStyle(static_cast<VEX_BUTTONSTATE>(state), &style);
    return object;
}

ComPtr<ICmdButton> showTextBox(Scene& scene, IVexControlBase& page, const Rect& place, std::wstring_view text,
                               IVexTextStyle& style)
{
    const auto line = scene.form(&page, place, scene.theme().line);
    const Rect inside = Rect::at({1, 1}, {place.width() - 2, place.height() - 2});
    const auto surface = scene.form(line.get(), inside, scene.theme().surface);
    return showText(scene, *surface, Rect::at({}, inside.size()), text, style);
}

} // namespace gallery
