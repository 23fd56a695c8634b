// Any UTF-16 text as a registration script: a script that is understood is written and understood again.
#include "fuzz/fuzz.h"
#include "module/registration/script.h"

#include <cstring>

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace morvane::registration;
    // The first byte tells whether the rest is UTF-16 or one byte per character; the latter is what mutation does best.
    if (size == 0)
        return 0;
    std::u16string text;
    if (data[0] == 'W') {
        text.resize((size - 1) / 2);
        std::memcpy(text.data(), data + 1, text.size() * 2);
    } else {
        text.assign(data + 1, data + size);
    }
    const Replacements replacements = {{u"MODULE", u"C:\\a ''b''.dll"}, {u"EMPTY", u""}};
    try {
        const Script script = parseScript(text, replacements);
        try {
            fuzz::require(parseScript(writeScript(script), {}) == script, "a written script reads back equal");
        } catch (const ScriptError& error) {
            std::fprintf(stderr, "%s\n", error.what());
            fuzz::require(false, "a written script is understood");
        }
    } catch (const ScriptError& error) {
        fuzz::require(error.position().line >= 1 && error.position().column >= 1, "an error has a place");
    }
    return 0;
}
