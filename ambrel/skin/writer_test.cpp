#include "ambrel/skin/reader.h"
#include "ambrel/skin/test_packages.h"
#include "ambrel/skin/writer.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace ambrel::skin::test {
namespace {

TEST(SkinWriterTest, BothLayoutsReadBackEqual)
{
    for (const PackageFiles& files : {compactPackage(), fullPackage()}) {
        const auto skin = readSkin(files);
        ASSERT_TRUE(skin) << skin.error().text();
        EXPECT_TRUE(writtenAndRead(skin.value()) == skin.value());
    }
}

TEST(SkinWriterTest, TextsOfAnyCharactersSurvive)
{
    Skin skin = readSkin(fullPackage()).value();
    for (const char* text :
         {"", " ", "\t", "\n\n", " a\r\nb ", "&<>\"'", "&amp;", "]]>", "\xE4\xBD\xA0\xF0\x9F\x98\x80"}) {
        skin.objects[0].properties[1] = {"", "TextText", ValueKind::Plain, text};
        skin.info = RawElement{"SkinInfo", {{"Author", text}}, text, {{"Inner", {}, text, {{"Leaf", {}, "", {}}}}}};
        EXPECT_TRUE(writtenAndRead(skin) == skin) << '"' << text << '"';
    }
}

TEST(SkinWriterTest, AChangedSkinIsSavedWithItsChangesAndNewKeys)
{
    Skin skin = readSkin(compactPackage()).value();
    skin.resources.textStyles[0].hAlign = 2;
    skin.resources.textStyles[0].text = {0x00112233, {}};
    skin.objects[0].settings.opacity = 128;
    skin.objects[0].position.reset();
    skin.objects[0].properties.push_back({"Hot/Inner", "Image", ValueKind::ImageSection, "ImageSection1"});
    addMissingKeys(skin);
    const Skin again = writtenAndRead(skin);
    EXPECT_TRUE(again == skin);
    EXPECT_EQ(again.valueOf(again.objects[0], "Hot/Inner", "Image")->value, "ImageSection1");
}

TEST(SkinWriterTest, SavesAFileThatLoadsAndRefusesASkinThatWouldNot)
{
    const auto path = std::filesystem::temp_directory_path() / ("ambrel_saved_" + std::to_string(::getpid()) + ".zip");
    Skin skin = readSkin(compactPackage()).value();
    ASSERT_TRUE(saveSkin(skin, path));
    const auto loaded = loadSkin(path);
    ASSERT_TRUE(loaded) << loaded.error().text();
    EXPECT_TRUE(loaded.value() == skin);

    Skin keyless = skin;
    keyless.objects[0].properties.push_back({"Hot", "Image", ValueKind::ImageSection, "ImageSection1"});
    EXPECT_EQ(saveSkin(keyless, path).error().code, Code::NotTheSame);
    Skin broken = skin;
    broken.resources.imageSections[0].picture = "gone";
    EXPECT_EQ(saveSkin(broken, path).error().code, Code::UnknownReference);
    EXPECT_TRUE(loadSkin(path).value() == skin); // the older file is still whole
    std::filesystem::remove(path);
}

} // namespace
} // namespace ambrel::skin::test
