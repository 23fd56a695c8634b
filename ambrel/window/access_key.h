// The access key that a caption marks: "&Save" can be reached with S.
#pragma once

#include <string_view>

namespace ambrel {

/// The character behind a single ampersand, which is the one that is drawn underlined; of several the last. 0 when
/// there is none: two ampersands stand for one that is shown, and a space cannot be marked.
wchar_t accessKeyOf(std::wstring_view caption) noexcept;

} // namespace ambrel
