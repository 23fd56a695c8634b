#include "ambrel/skin/changes.h"
#include "ambrel/skin/reader.h"
#include "ambrel/skin/test_packages.h"
#include "ambrel/skin/writer.h"

#include <gtest/gtest.h>

#include <fstream>

#include <unistd.h>

namespace ambrel::skin::test {
namespace {

/// A folder of its own for a test, gone with it.
class Folder {
public:
    Folder() : path(std::filesystem::temp_directory_path() / ("ambrel_changes_" + std::to_string(::getpid())))
    {
        std::filesystem::remove_all(path);
        std::filesystem::create_directories(path);
    }
    ~Folder() { std::filesystem::remove_all(path); }

    std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        for (const auto& each : std::filesystem::recursive_directory_iterator(path))
            found.push_back(std::filesystem::relative(each.path(), path).generic_string());
        std::ranges::sort(found);
        return found;
    }

    std::filesystem::path path;
};

TEST(SkinChangesTest, AValueIsSetWhereItStandsAndAddedWhereItDoesNot)
{
    for (const PackageFiles& files : {compactPackage(), fullPackage()}) {
        Skin skin = readSkin(files).value();
        SkinObject& object = skin.objects[0];
        setValue(skin, object, "Text", "Text", ValueKind::Plain, "Changed once");
        const std::size_t before = object.properties.size() + object.content.size();
        setValue(skin, object, "Text", "Text", ValueKind::Plain, "Changed");
        EXPECT_EQ(object.properties.size() + object.content.size(), before);
        setValue(skin, object, "Brand/New", "Width", ValueKind::Plain, "12");
        setValue(skin, object, "Brand/New", "Width", ValueKind::Plain, "13");
        EXPECT_EQ(object.properties.size() + object.content.size(), before + 1);
        if (skin.layout == Layout::Compact)
            addMissingKeys(skin);
        const Skin again = writtenAndRead(skin);
        EXPECT_TRUE(again == skin);
        EXPECT_EQ(again.valueOf(again.objects[0], "Text", "Text")->value, "Changed");
        EXPECT_EQ(again.valueOf(again.objects[0], "Brand/New", "Width")->value, "13");
    }
}

TEST(SkinChangesTest, AFreshKeyGivesNoMeaningToAValueThatHadNone)
{
    Skin skin = readSkin(compactPackage()).value();
    for (int number = 1; number < 20; ++number)
        skin.objects[0].otherProps.push_back({"V" + std::to_string(100 + number), "old"});
    for (int number = 0; number < 120; ++number)
        setValue(skin, skin.objects[0], "Many", "N" + std::to_string(number), ValueKind::Plain, "new");
    addMissingKeys(skin);
    EXPECT_TRUE(writtenAndRead(skin) == skin);
}

TEST(SkinChangesTest, ACopyOfAnObjectIsAnObjectOfItsOwn)
{
    for (const PackageFiles& files : {compactPackage(), fullPackage()}) {
        Skin skin = readSkin(files).value();
        const std::string type = typeOf(skin.objects[0]);
        const std::string id = freshObjectId(skin, type);
        skin.objects.push_back(copyAs(skin.objects[0], id, "Another"));
        setValue(skin, skin.objects.back(), "Text", "Text", ValueKind::Plain, "Mine");
        const Skin again = writtenAndRead(skin);
        EXPECT_TRUE(again == skin);
        EXPECT_EQ(typeOf(again.objects.back()), type);
        EXPECT_EQ(again.valueOf(again.objects.back(), "Text", "Text")->value, "Mine");
        EXPECT_NE(again.valueOf(again.objects[0], "Text", "Text")->value, "Mine");
    }
}

TEST(SkinChangesTest, AReplacedPictureTakesItsLargerFormsAwayAndLeavesThoseOfOthers)
{
    Skin skin = readSkin(compactPackage()).value();
    Picture& picture = skin.resources.pictures[0];
    const auto former = skin.bytesOf(picture.files[0]);
    Bytes bytes(former.begin(), former.end());
    const std::string former100 = picture.files[0].file;
    skin.files.add("unrelated.txt", {1, 2, 3});
    ASSERT_TRUE(replacePicture(skin, picture, bytes));
    EXPECT_EQ(picture.files.size(), 1u);
    EXPECT_TRUE(writtenAndRead(skin) == skin);
    EXPECT_NE(skin.files.find("unrelated.txt"), nullptr);

    const Skin whole = skin;
    EXPECT_EQ(replacePicture(skin, skin.resources.pictures[0], {'n', 'o'}).error().code, Code::UnknownPicture);
    EXPECT_TRUE(skin == whole);

    Picture shared = skin.resources.pictures[0];
    shared.id = "PicShared";
    skin.resources.pictures.push_back(shared);
    bytes.push_back(0); // another file, still a picture
    ASSERT_TRUE(replacePicture(skin, skin.resources.pictures[0], bytes));
    EXPECT_NE(skin.resources.pictures[0].files[0].file, former100);
    EXPECT_EQ(skin.resources.pictures.back().files[0].file, former100);
    EXPECT_TRUE(writtenAndRead(skin) == skin);
}

TEST(SkinChangesTest, AFolderIsSavedWholeOrNotAtAll)
{
    const Folder folder;
    Skin skin = readSkin(compactPackage()).value();
    std::ofstream(folder.path / "shareres.xml.new") << "somebody's own";
    ASSERT_TRUE(saveSkin(skin, folder.path));
    std::ifstream own(folder.path / "shareres.xml.new");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(own), {}), "somebody's own");
    std::filesystem::remove(folder.path / "shareres.xml.new");
    const auto loaded = loadSkin(folder.path);
    ASSERT_TRUE(loaded) << loaded.error().text();
    EXPECT_TRUE(loaded.value() == skin);
    const auto names = folder.names();

    // A file that cannot be replaced: a folder stands in its place.
    Skin changed = skin;
    setValue(changed, changed.objects[0], "Text", "Text", ValueKind::Plain, "Changed");
    changed.resources.textStyles[0].hAlign = 2;
    std::filesystem::remove(folder.path / "shareres.xml");
    std::filesystem::create_directories(folder.path / "shareres.xml" / "inside");
    EXPECT_EQ(saveSkin(changed, folder.path).error().code, Code::CannotWrite);
    std::filesystem::remove_all(folder.path / "shareres.xml");
    ASSERT_TRUE(saveSkin(skin, folder.path));
    EXPECT_TRUE(loadSkin(folder.path).value() == skin);
    EXPECT_EQ(folder.names(), names) << "nothing is left behind";

    const auto untouched = std::filesystem::last_write_time(folder.path / "prop.xml");
    changed = skin;
    changed.resources.textStyles[0].hAlign = 2;
    ASSERT_TRUE(saveSkin(changed, folder.path));
    EXPECT_EQ(std::filesystem::last_write_time(folder.path / "prop.xml"), untouched);
    EXPECT_TRUE(loadSkin(folder.path).value() == changed);
}

TEST(SkinChangesTest, AFileThatCannotBeWrittenIsAnErrorThatNamesIt)
{
    const Folder folder;
    const Skin skin = readSkin(fullPackage()).value();
    const auto missing = saveSkin(skin, folder.path / "no such folder" / "skin.zip");
    EXPECT_EQ(missing.error().code, Code::CannotWrite);
    EXPECT_NE(missing.error().file.find("skin.zip"), std::string::npos);
    EXPECT_TRUE(folder.names().empty());
    ASSERT_TRUE(saveSkin(skin, folder.path / "sub" / ""));
    EXPECT_TRUE(loadSkin(folder.path / "sub").value() == skin);
}

} // namespace
} // namespace ambrel::skin::test
