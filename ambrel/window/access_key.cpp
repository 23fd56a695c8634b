#include "ambrel/window/access_key.h"

namespace ambrel {

wchar_t accessKeyOf(std::wstring_view caption) noexcept
{
    wchar_t key = 0;
    for (std::size_t at = caption.find(L'&'); at != std::wstring_view::npos && at + 1 < caption.size();
         at = caption.find(L'&', at + 2)) {
        const wchar_t marked = caption[at + 1];
        if (marked != L'&')
            key = marked == L' ' ? L'\0' : marked;
    }
    return key;
}

} // namespace ambrel
