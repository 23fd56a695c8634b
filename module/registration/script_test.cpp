#include "module/registration/script.h"

#include <gtest/gtest.h>

namespace morvane::registration {
namespace {

Key onlyKey(std::u16string_view text, const Replacements& replacements = {})
{
    return parseScript(u"HKCR { " + std::u16string(text) + u" }", replacements).at(0).keys.at(0);
}

std::string refusal(std::u16string_view text)
{
    try {
        parseScript(text, {{u"MODULE", u"C:\\a"}});
        return "accepted";
    } catch (const ScriptError& error) {
        return error.what();
    }
}

TEST(RegistrationScript, ReadsKeysRulesAndValuesOfEveryType)
{
    const Key key = onlyKey(u"NoRemove CLSID { ForceRemove {9D16} = s 'It''s \"it\"' { val Model = s 'Both' "
                            u"val Count = d 4294967295 val Mask = d &H1f val Raw = b '00fF' 'Empty one' } }");
    Key expected{u"{9D16}", Removal::ForceRemove, u"It's \"it\"", {}, {Key{u"Empty one", Removal::Whole, {}, {}, {}}}};
    expected.values = {{u"Model", u"Both"}, {u"Count", 4294967295U}, {u"Mask", 31U}, {u"Raw", Bytes{0x00, 0xFF}}};
    EXPECT_EQ(key, (Key{u"CLSID", Removal::NoRemove, {}, {}, {expected}}));
}

TEST(RegistrationScript, KeywordsInQuotesAreNames)
{
    EXPECT_EQ(onlyKey(u"'val' { 'NoRemove' }").keys.at(0).name, u"NoRemove");
    EXPECT_EQ(onlyKey(u"'{'").name, u"{");
}

TEST(RegistrationScript, RootsAreKnownByBothTheirNames)
{
    const Script script = parseScript(u"HKLM { a } hkey_current_user { b }", {});
    ASSERT_EQ(script.size(), 2u);
    EXPECT_EQ(script[0].root, Root::LocalMachine);
    EXPECT_EQ(script[1].root, Root::CurrentUser);
}

TEST(RegistrationScript, ReplacementsAreReadAsPartOfTheScript)
{
    const Replacements replacements{{u"MODULE", u"C:\\it''s\\Morvane.dll"}, {u"APPID", u""}};
    EXPECT_EQ(onlyKey(u"a = s '%MODULE% 50%%'", replacements).defaultValue, Data(u"C:\\it's\\Morvane.dll 50%"));
    EXPECT_EQ(onlyKey(u"a { val AppID = s '%APPID%' }", replacements).values.at(0).data, Data(u""));
}

TEST(RegistrationScript, ErrorsNameLineAndColumnOfTheTextBeforeReplacement)
{
    EXPECT_EQ(refusal(u"HKCR\n{\n    a = s '%MODULE%' x = q\n}"), "3:26: the type letter s, d or b is expected");
    EXPECT_EQ(refusal(u"HKCR\n{\n  a = s '%MODUL%'\n}"),
              "3:10: nothing is registered for this name between percent signs");
    EXPECT_EQ(refusal(u"HKXX { a }"), "1:1: a root key such as HKCR is expected");
    EXPECT_EQ(refusal(u"HKCR { a { b }"), "1:15: a closing brace is missing");
    EXPECT_EQ(refusal(u"HKCR { a = s 'b }"), "1:14: the quoted text does not end");
    EXPECT_EQ(refusal(u"HKCR { a = s 5% }"), "1:15: a percent sign without a second one");
}

TEST(RegistrationScript, RefusesWhatTheRegistryCouldNotHold)
{
    for (const char16_t* bad : {u"HKCR { '' }",
                                u"HKCR { 'a\\b' }",
                                u"HKCR { a = s b }",
                                u"HKCR { a = s'b' }",
                                u"HKCR { a = d 4294967296 }",
                                u"HKCR { a = d 0x }",
                                u"HKCR { a = d '' }",
                                u"HKCR { a = d -1 }",
                                u"HKCR { a = b 123 }",
                                u"HKCR { a = b 1g }",
                                u"HKCR { val a = s 'b' }",
                                u"HKCR { a { val b } }",
                                u"HKCR { a = }",
                                u"HKCR { a = s",
                                u"HKCR { = }",
                                u"HKCR { NoRemove }",
                                u"HKCR",
                                u"'HKCR' { a }",
                                u"HKCR { a } }",
                                u"HKCR { a { val } }"}) {
        EXPECT_NE(refusal(bad), "accepted") << std::string(bad, bad + std::u16string_view(bad).size());
    }
    EXPECT_NE(refusal(u"HKCR { " + std::u16string(256, u'a') + u" }"), "accepted");
}

TEST(RegistrationScript, NestingStopsBeforeItExhaustsTheStack)
{
    const auto nested = [](int depth) {
        std::u16string text = u"HKCR {";
        for (int i = 0; i < depth; ++i)
            text += u" a {";
        for (int i = 0; i <= depth; ++i)
            text += u" }";
        return text;
    };
    EXPECT_EQ(refusal(nested(kMaxDepth)), "accepted");
    EXPECT_NE(refusal(nested(100000)), "accepted");
}

TEST(RegistrationScript, AWrittenScriptReadsBackTheSame)
{
    const Script script{{Root::ClassesRoot,
                         {Key{u"NoRemove",
                              Removal::NoRemove,
                              u"100% 'sure'",
                              {{u"val", 0U}, {u"two words", Bytes{}}, {u"it's", u"line\nbreak"}},
                              {Key{u"{9D16-F301}", Removal::ForceRemove, Bytes{0xAB, 0x09}, {}, {}},
                               Key{u"}", Removal::Whole, {}, {}, {}}}}}},
                        {Root::CurrentConfig, {}}};
    EXPECT_EQ(parseScript(writeScript(script), {}), script);
}

} // namespace
} // namespace morvane::registration
