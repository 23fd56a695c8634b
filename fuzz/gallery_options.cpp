// Any words as the gallery's command line, one to a line: they are understood or explained.
#include "fuzz/fuzz.h"
#include "gallery/options.h"

#include <vector>

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::vector<std::wstring> words{L"gallery"};
    words.emplace_back();
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == '\n')
            words.emplace_back();
        else
            words.back() += static_cast<wchar_t>(data[i]);
    }
    std::vector<const wchar_t*> arguments;
    for (const std::wstring& word : words)
        arguments.push_back(word.c_str());
    const auto parsed = gallery::parseOptions(static_cast<int>(arguments.size()), arguments.data());
    if (parsed.error.empty())
        fuzz::require(parsed.options.scale >= 100 && parsed.options.scale <= 300, "an accepted scale can be shown");
    return 0;
}
