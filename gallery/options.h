// What the gallery was asked to do on its command line.
#pragma once

#include <optional>
#include <string>

namespace gallery {

struct Options {
    std::optional<std::wstring> shotFolder; // render pages there as PNG instead of opening a window
    std::optional<std::wstring> sheet;      // render the state sheet of this control (its type name) instead of pages
    std::wstring page;                      // show or render only this one; empty: the first, or all
    std::wstring skinFolder;                // skins from this folder instead of the module's own; empty: the module's
    int scale = 100;                        // percent
    bool isDark = false;
    bool isInspectorShown = false;
    bool isHelpAsked = false;
};

/// The options of this process; a message to show instead when they make no sense.
struct ParsedOptions {
    Options options;
    std::wstring error;
};
ParsedOptions parseOptions(int count, const wchar_t* const* arguments);

extern const wchar_t kUsage[];

} // namespace gallery
