#include "module/registration/script_reader.h"

#include <array>

namespace morvane::registration {

namespace {

struct RootName {
    Root root;
    std::u16string_view abbreviation;
    std::u16string_view full;
};

constexpr std::array kRoots{
    RootName{Root::ClassesRoot, u"HKCR", u"HKEY_CLASSES_ROOT"},
    RootName{Root::CurrentUser, u"HKCU", u"HKEY_CURRENT_USER"},
    RootName{Root::LocalMachine, u"HKLM", u"HKEY_LOCAL_MACHINE"},
    RootName{Root::Users, u"HKU", u"HKEY_USERS"},
    RootName{Root::PerformanceData, u"HKPD", u"HKEY_PERFORMANCE_DATA"},
    RootName{Root::DynamicData, u"HKDD", u"HKEY_DYN_DATA"},
    RootName{Root::CurrentConfig, u"HKCC", u"HKEY_CURRENT_CONFIG"},
};

/// The value of a digit in the given base, -1 for anything else.
int digitValue(char16_t c, int base) noexcept
{
    int value = -1;
    if (c >= u'0' && c <= u'9')
        value = c - u'0';
    else if (c >= u'a' && c <= u'f')
        value = c - u'a' + 10;
    else if (c >= u'A' && c <= u'F')
        value = c - u'A' + 10;
    return value < base ? value : -1;
}

/// Decimal, or hexadecimal behind "0x" or "&H".
std::uint32_t parseNumber(const Word& word)
{
    std::u16string_view digits = word.text;
    const bool hex = digits.size() > 2 &&
                     (equalIgnoringCase(digits.substr(0, 2), u"0x") || equalIgnoringCase(digits.substr(0, 2), u"&h"));
    if (hex)
        digits.remove_prefix(2);
    const int base = hex ? 16 : 10;
    std::uint64_t number = 0;
    for (char16_t c : digits) {
        const int digit = digitValue(c, base);
        if (digit < 0)
            throw ScriptError(word.position, "not a number");
        number = number * static_cast<unsigned>(base) + static_cast<unsigned>(digit);
        if (number > UINT32_MAX)
            throw ScriptError(word.position, "the number needs more than 32 bits");
    }
    if (digits.empty())
        throw ScriptError(word.position, "not a number");
    return static_cast<std::uint32_t>(number);
}

Bytes parseBytes(const Word& word)
{
    if (word.text.size() % 2 != 0)
        throw ScriptError(word.position, "bytes are pairs of hexadecimal digits");
    Bytes bytes;
    for (std::size_t i = 0; i < word.text.size(); i += 2) {
        const int high = digitValue(word.text[i], 16);
        const int low = digitValue(word.text[i + 1], 16);
        if (high < 0 || low < 0)
            throw ScriptError(word.position, "bytes are pairs of hexadecimal digits");
        bytes.push_back(static_cast<std::uint8_t>(high * 16 + low));
    }
    return bytes;
}

class Parser {
public:
    explicit Parser(ExpandedText text) : m_words(std::move(text)) {}

    Script parse()
    {
        Script script;
        while (!current().atEnd)
            script.push_back(parseSection());
        return script;
    }

private:
    const Word& current() const noexcept { return m_words.current(); }

    void expect(std::u16string_view symbol, const char* reason)
    {
        if (!current().is(symbol))
            throw ScriptError(current().position, reason);
        m_words.take();
    }

    Section parseSection()
    {
        const Word name = m_words.take();
        const auto root = name.quoted ? std::nullopt : rootNamed(name.text);
        if (!root)
            throw ScriptError(name.position, "a root key such as HKCR is expected");
        Key top;
        parseBlock(top, 1);
        return {*root, std::move(top.keys)};
    }

    /// What stands between braces. The values and keys go into `parent`.
    void parseBlock(Key& parent, int depth)
    {
        expect(u"{", "an opening brace is expected");
        while (!current().is(u"}")) {
            if (current().atEnd)
                throw ScriptError(current().position, "a closing brace is missing");
            if (!current().isKeyword(u"val"))
                parent.keys.push_back(parseKey(depth));
            else if (depth > 1)
                parent.values.push_back(parseNamedValue());
            else
                throw ScriptError(current().position, "a root key takes no values");
        }
        m_words.take();
    }

    Key parseKey(int depth)
    {
        if (depth > kMaxDepth)
            throw ScriptError(current().position, "keys are nested too deep");
        Key key;
        if (current().isKeyword(u"NoRemove") || current().isKeyword(u"ForceRemove")) {
            const Word rule = m_words.take();
            key.removal = rule.isKeyword(u"NoRemove") ? Removal::NoRemove : Removal::ForceRemove;
        }
        key.name = parseName("the name of a key is expected");
        if (current().is(u"=")) {
            m_words.take();
            key.defaultValue = parseData();
        }
        if (current().is(u"{"))
            parseBlock(key, depth + 1);
        return key;
    }

    std::u16string parseName(const char* missing)
    {
        const Word name = m_words.take();
        if (name.atEnd || name.is(u"{") || name.is(u"}") || name.is(u"="))
            throw ScriptError(name.position, missing);
        if (name.text.empty() || name.text.size() > kMaxNameLength || hasForbidden(name.text))
            throw ScriptError(name.position, "a name has 1 to 255 characters, none of them a backslash or zero");
        return name.text;
    }

    static bool hasForbidden(std::u16string_view name) noexcept
    {
        return name.find(u'\\') != std::u16string_view::npos || name.find(u'\0') != std::u16string_view::npos;
    }

    NamedValue parseNamedValue()
    {
        m_words.take();
        NamedValue value;
        value.name = parseName("the name of a value is expected");
        expect(u"=", "a named value needs an equals sign");
        value.data = parseData();
        return value;
    }

    Data parseData()
    {
        const Word type = m_words.take();
        const bool known = type.isKeyword(u"s") || type.isKeyword(u"d") || type.isKeyword(u"b");
        if (!known)
            throw ScriptError(type.position, "the type letter s, d or b is expected");
        if (current().atEnd)
            throw ScriptError(current().position, "the value is missing");
        const Word content = m_words.take();
        if (type.isKeyword(u"d"))
            return parseNumber(content);
        if (type.isKeyword(u"b"))
            return parseBytes(content);
        if (!content.quoted)
            throw ScriptError(content.position, "a string stands in single quotes");
        return content.text;
    }

    WordReader m_words;
};

} // namespace

std::u16string_view abbreviationOf(Root root) noexcept
{
    for (const RootName& name : kRoots)
        if (name.root == root)
            return name.abbreviation;
    return {};
}

std::optional<Root> rootNamed(std::u16string_view word) noexcept
{
    for (const RootName& name : kRoots)
        if (equalIgnoringCase(word, name.abbreviation) || equalIgnoringCase(word, name.full))
            return name.root;
    return std::nullopt;
}

Script parseScript(std::u16string_view text, const Replacements& replacements)
{
    return Parser(expand(text, replacements)).parse();
}

} // namespace morvane::registration
