#include "ambrel/render/font.h"

#include <cstring>

namespace ambrel {

LOGFONTW toLogFont(const VEXLOGFONT& record) noexcept
{
    LOGFONTW font{};
    font.lfHeight = record.lfHeight;
    font.lfWidth = record.lfWidth;
    font.lfEscapement = record.lfEscapement;
    font.lfOrientation = record.lfOrientation;
    font.lfWeight = record.lfWeight;
    font.lfItalic = static_cast<BYTE>(record.lfItalic != 0);
    font.lfUnderline = static_cast<BYTE>(record.lfUnderline != 0);
    font.lfStrikeOut = static_cast<BYTE>(record.lfStrikeOut != 0);
    font.lfCharSet = static_cast<BYTE>(record.lfCharSet);
    font.lfOutPrecision = static_cast<BYTE>(record.lfOutPrecision);
    font.lfClipPrecision = static_cast<BYTE>(record.lfClipPrecision);
    font.lfQuality = static_cast<BYTE>(record.lfQuality);
    font.lfPitchAndFamily = static_cast<BYTE>(record.lfPitchAndFamily);
    const std::wstring_view face = morvane::viewOf(record.lfFaceName);
    face.copy(font.lfFaceName, LF_FACESIZE - 1);
    return font;
}

VEXLOGFONT toVexLogFont(const LOGFONTW& font)
{
    VEXLOGFONT record{};
    record.lfHeight = font.lfHeight;
    record.lfWidth = font.lfWidth;
    record.lfEscapement = font.lfEscapement;
    record.lfOrientation = font.lfOrientation;
    record.lfWeight = font.lfWeight;
    record.lfItalic = font.lfItalic;
    record.lfUnderline = font.lfUnderline;
    record.lfStrikeOut = font.lfStrikeOut;
    record.lfCharSet = font.lfCharSet;
    record.lfOutPrecision = font.lfOutPrecision;
    record.lfClipPrecision = font.lfClipPrecision;
    record.lfQuality = font.lfQuality;
    record.lfPitchAndFamily = font.lfPitchAndFamily;
    record.lfFaceName = morvane::Bstr(font.lfFaceName).detach();
    return record;
}

Font::Font() : SharedResource(VEXOBJTYPE_FONTEX, L"FontEx"), m_font(defaultLogFont()) {}

void* Font::findInterface(REFIID iid) noexcept
{
    return findResourceInterface(iid, kImplementationIid);
}

void Font::setLogFont(const LOGFONTW& font) noexcept
{
    m_font = font;
    m_handleFont.reset();
    ++m_generation;
    changed();
}

STDMETHODIMP Font::GetLogFont(VEXLOGFONT* result) noexcept
{
    return morvane::filling(result, [&](VEXLOGFONT& record) {
        record = toVexLogFont(m_font);
        record.lfAntiAlisaing = m_antiAliasing;
        return S_OK;
    });
}

STDMETHODIMP Font::GetHFont(hyper* result) noexcept
{
    return morvane::returning(result, [&] {
        m_handleFont = FontCache::instance().get(m_font, currentScale());
        return reinterpret_cast<hyper>(m_handleFont->handle());
    });
}

STDMETHODIMP Font::SetLogFont(VEXLOGFONT font) noexcept
{
    m_antiAliasing = font.lfAntiAlisaing;
    setLogFont(toLogFont(font));
    return S_OK;
}

void Font::readConfig(const ConfigNode& node)
{
    LOGFONTW font = m_font;
    readNumber(node, L"height", font.lfHeight);
    readNumber(node, L"width", font.lfWidth);
    readNumber(node, L"escape", font.lfEscapement);
    readNumber(node, L"orien", font.lfOrientation);
    readNumber(node, L"weight", font.lfWeight);
    readShort(node, L"italic", font.lfItalic);
    readShort(node, L"underline", font.lfUnderline);
    readShort(node, L"strikeout", font.lfStrikeOut);
    readShort(node, L"charset", font.lfCharSet);
    readShort(node, L"outprec", font.lfOutPrecision);
    readShort(node, L"clippre", font.lfClipPrecision);
    readShort(node, L"quality", font.lfQuality);
    readShort(node, L"pitch", font.lfPitchAndFamily);
    readShort(node, L"AntiAlias", m_antiAliasing);
    if (const std::wstring face = readText(node, L"fontname"); !face.empty()) {
        std::memset(font.lfFaceName, 0, sizeof font.lfFaceName);
        face.copy(font.lfFaceName, LF_FACESIZE - 1);
    }
    setLogFont(font);
}

void Font::writeConfig(ConfigNode& node) const
{
    const std::pair<const wchar_t*, long> numbers[] = {
        {L"height", m_font.lfHeight},        {L"width", m_font.lfWidth},           {L"escape", m_font.lfEscapement},
        {L"orien", m_font.lfOrientation},    {L"weight", m_font.lfWeight},         {L"italic", m_font.lfItalic},
        {L"underline", m_font.lfUnderline},  {L"strikeout", m_font.lfStrikeOut},   {L"charset", m_font.lfCharSet},
        {L"outprec", m_font.lfOutPrecision}, {L"clippre", m_font.lfClipPrecision}, {L"quality", m_font.lfQuality},
        {L"pitch", m_font.lfPitchAndFamily}, {L"AntiAlias", m_antiAliasing}};
    for (const auto& [name, value] : numbers)
        writeNumber(node, name, value);
    node.setAttribute(L"fontname", m_font.lfFaceName);
}

} // namespace ambrel
