#include "frame/module_resources.h"

namespace morvane {

HMODULE namedModule() noexcept
{
    return GetModuleHandleW(L"Morvane.dll");
}

HICON loadModuleIcon(WORD id, Size size) noexcept
{
    return static_cast<HICON>(LoadImageW(namedModule(), MAKEINTRESOURCEW(id), IMAGE_ICON, size.width, size.height,
                                         LR_CREATEDIBSECTION | LR_DEFAULTSIZE));
}

HCURSOR loadModuleCursor(WORD id) noexcept
{
    return LoadCursorW(namedModule(), MAKEINTRESOURCEW(id));
}

} // namespace morvane
