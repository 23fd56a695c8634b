// The default skins that the module carries, as the build packs them.
#include "ambrel/skin/reader.h"
#include "ambrel/skin/writer.h"

#include <gtest/gtest.h>

#include <set>

namespace ambrel::skin {
namespace {

TEST(DefaultSkinsTest, AllReadWithoutErrorAndSurviveSaving)
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(MORVANE_SKINS_DIR)) {
        if (entry.path().extension() != ".zip")
            continue;
        names.insert(entry.path().filename().string());
        const auto skin = loadSkin(entry.path());
        ASSERT_TRUE(skin) << entry.path() << ": " << skin.error().text();
        EXPECT_FALSE(skin->objects.empty()) << entry.path();
        const auto files = writeSkin(skin.value());
        ASSERT_TRUE(files) << files.error().text();
        const auto again = readSkin(files.value());
        ASSERT_TRUE(again) << entry.path() << ": " << again.error().text();
        EXPECT_TRUE(again.value() == skin.value()) << entry.path();
    }
    for (const char* package : {"2022", "2025", "2033", "2034", "2049", "2063", "2075", "2080", "2086", "2092"})
        EXPECT_TRUE(names.contains(std::string(package) + ".zip")) << package;
}

TEST(DefaultSkinsTest, TheButtonHasAPictureForEveryStateAndLeavesAutoSizeToTheControl)
{
    const auto skin = loadSkin(std::filesystem::path(MORVANE_SKINS_DIR) / "2080.zip");
    ASSERT_TRUE(skin) << skin.error().text();
    const SkinObject& button = skin->objects.front();
    for (const char* state : {"Normal", "Press", "Disabled", "Hot", "Focus"}) {
        const auto image = skin->valueOf(button, state, "Image");
        ASSERT_TRUE(image) << state;
        EXPECT_NE(skin->imageSection(image->value), nullptr) << state;
    }
    EXPECT_FALSE(skin->valueOf(button, "AutoResize", "MaxTextWidth"));
}

} // namespace
} // namespace ambrel::skin
