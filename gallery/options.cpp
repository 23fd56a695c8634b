#include "gallery/options.h"

#include <cwchar>
#include <functional>
#include <map>
#include <string_view>

namespace gallery {

const wchar_t kUsage[] =
    L"gallery                        opens the gallery\n"
    L"  --page NAME                  shows (or renders) this page only\n"
    L"  --dark                       the dark palette\n"
    L"  --scale PERCENT              100 to 300\n"
    L"  --skin FOLDER                looks from this folder (2080.zip or a folder 2080, and so on), also while they\n"
    L"                               change; what the folder lacks looks as usual\n"
    L"  --inspect                    with the inspector open\n"
    L"  --shot FOLDER                renders pages to PNG, without a display\n"
    L"  --shot FOLDER --sheet NAME   renders the state sheet of a control (Button, CheckBox, RadioBox, UIForm)\n";

namespace {

bool parseScale(const std::wstring& text, int& scale)
{
    wchar_t* end = nullptr;
    const long value = std::wcstol(text.c_str(), &end, 10);
    if (end == text.c_str() || *end != L'\0' || value < 100 || value > 300)
        return false;
    scale = static_cast<int>(value);
    return true;
}

} // namespace

ParsedOptions parseOptions(int count, const wchar_t* const* arguments)
{
    ParsedOptions result;
    Options& o = result.options;
    using WithValue = std::function<bool(const std::wstring&)>;
    const std::map<std::wstring_view, WithValue> withValue = {
        {L"--page",
         [&](const auto& v) {
             o.page = v;
             return true;
         }},
        {L"--skin",
         [&](const auto& v) {
             o.skinFolder = v;
             return true;
         }},
        {L"--shot",
         [&](const auto& v) {
             o.shotFolder = v;
             return true;
         }},
        {L"--sheet",
         [&](const auto& v) {
             o.sheet = v;
             return true;
         }},
        {L"--scale", [&](const auto& v) { return parseScale(v, o.scale); }},
    };
    const std::map<std::wstring_view, bool*> flags = {
        {L"--dark", &o.isDark}, {L"--inspect", &o.isInspectorShown}, {L"--help", &o.isHelpAsked}};

    for (int i = 1; i < count; ++i) {
        const std::wstring_view name = arguments[i];
        if (const auto flag = flags.find(name); flag != flags.end()) {
            *flag->second = true;
        } else if (const auto option = withValue.find(name); option != withValue.end()) {
            if (i + 1 == count || !option->second(arguments[++i]))
                result.error = L"bad value of " + std::wstring(name);
        } else {
            result.error = L"unknown option " + std::wstring(name);
        }
    }
    if (o.sheet && !o.shotFolder)
        result.error = L"--sheet goes with --shot";
    return result;
}

} // namespace gallery
