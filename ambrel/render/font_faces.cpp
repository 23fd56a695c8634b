#include "ambrel/render/font_faces.h"

#include "frame/platform/handles.h"

#include <algorithm>
#include <string_view>

namespace ambrel {

namespace {

/// Under Wine the font named Tahoma is a free stand-in: uneven outlines, and a bold that is not bold.
bool isTahomaStandIn() noexcept
{
    static const bool isWine = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
    return isWine;
}

bool isSameName(const wchar_t* a, const wchar_t* b) noexcept
{
    return lstrcmpiW(a, b) == 0;
}

/// Faces that may be replaced by one another: the platform's interface fonts and what is like them.
bool isInterfaceFace(const wchar_t* face) noexcept
{
    constexpr const wchar_t* kFaces[] = {L"Tahoma",
                                         L"Segoe UI",
                                         L"MS Shell Dlg",
                                         L"MS Shell Dlg 2",
                                         L"Microsoft Sans Serif",
                                         L"MS Sans Serif",
                                         L"Arial",
                                         L"Verdana",
                                         L""};
    return std::ranges::any_of(kFaces, [face](const wchar_t* known) { return isSameName(face, known); });
}

} // namespace

bool isFaceInstalled(const wchar_t* face)
{
    const morvane::UniqueMemoryDc dc(CreateCompatibleDC(nullptr));
    LOGFONTW wanted{};
    wanted.lfCharSet = DEFAULT_CHARSET;
    wcsncpy(wanted.lfFaceName, face, LF_FACESIZE - 1);
    bool found = false;
    const auto note = [](const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM context) -> int {
        *reinterpret_cast<bool*>(context) = true;
        return 0;
    };
    EnumFontFamiliesExW(dc.get(), &wanted, note, reinterpret_cast<LPARAM>(&found), 0);
    return found;
}

std::span<const wchar_t* const> fallbackFaces() noexcept
{
    static constexpr const wchar_t* kFaces[] = {
        L"Microsoft YaHei UI", L"Noto Sans CJK SC", L"SimSun",          L"Yu Gothic UI", L"MS Gothic",
        L"Malgun Gothic",      L"Segoe UI",         L"Segoe UI Symbol", L"DejaVu Sans",  L"Arial"};
    return kFaces;
}

void resolveFace(LOGFONTW& font)
{
    const bool isBadStandIn =
        isTahomaStandIn() && (isSameName(font.lfFaceName, L"Tahoma") || isSameName(font.lfFaceName, L"MS Shell Dlg") ||
                              isSameName(font.lfFaceName, L"MS Shell Dlg 2"));
    if (!isInterfaceFace(font.lfFaceName) ||
        (!isBadStandIn && font.lfFaceName[0] != L'\0' && isFaceInstalled(font.lfFaceName)))
        return;
    for (const wchar_t* face : {L"Segoe UI", L"Liberation Sans", L"Arial", L"DejaVu Sans", L"Noto Sans"}) {
        if (isFaceInstalled(face)) {
            wcsncpy(font.lfFaceName, face, LF_FACESIZE - 1);
            return;
        }
    }
}

} // namespace ambrel
