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
    ASSERT_TRUE(replacePicture(skin, picture, {{100, bytes}}));
    EXPECT_EQ(picture.files.size(), 1u);
    EXPECT_TRUE(writtenAndRead(skin) == skin);
    EXPECT_NE(skin.files.find("unrelated.txt"), nullptr);

    const Skin whole = skin;
    const auto refused = replacePicture(skin, skin.resources.pictures[0], {{100, bytes}, {200, {'n', 'o'}}});
    EXPECT_EQ(refused.error().code, Code::UnknownPicture);
    EXPECT_TRUE(skin == whole);

    Picture shared = skin.resources.pictures[0];
    shared.id = "PicShared";
    skin.resources.pictures.push_back(shared);
    bytes.push_back(0); // another file, still a picture
    ASSERT_TRUE(replacePicture(skin, skin.resources.pictures[0], {{100, bytes}}));
    EXPECT_NE(skin.resources.pictures[0].files[0].file, former100);
    EXPECT_EQ(skin.resources.pictures.back().files[0].file, former100);
    EXPECT_TRUE(writtenAndRead(skin) == skin);
}

TEST(SkinChangesTest, ANewPictureBringsItsLargerFormsUnderNamesThatNobodyHas)
{
    Skin skin = readSkin(compactPackage()).value();
    Picture added;
    added.id = "PicAdded";
    added.caption = "look.png";
    skin.files.add("look@200.png", png(9, 9)); // nobody's, and yet it would be taken for a larger form
    skin.resources.pictures.push_back(added);
    Picture& picture = skin.resources.pictures.back();
    ASSERT_TRUE(replacePicture(skin, picture, {{100, png(4, 4)}, {150, png(6, 6)}, {400, png(16, 16)}}));
    EXPECT_EQ(picture.caption, "look1.png");
    ASSERT_EQ(picture.files.size(), 3u);
    EXPECT_EQ(picture.files[1].file, "look1@150.png");
    EXPECT_EQ(picture.files[2].info.width, 16);
    EXPECT_TRUE(writtenAndRead(skin) == skin);
    ASSERT_TRUE(replacePicture(skin, picture, {{100, png(4, 4)}, {300, png(12, 12)}}));
    EXPECT_EQ(picture.caption, "look1.png");
    EXPECT_EQ(skin.files.find("look1@150.png"), nullptr);
    EXPECT_TRUE(writtenAndRead(skin) == skin);
}

TEST(SkinChangesTest, OnlyEntriesThatNothingRefersToAreTakenOut)
{
    const auto removedFrom = [](Skin skin, auto isGone) {
        removeUnused(skin, isGone);
        EXPECT_TRUE(writtenAndRead(skin) == skin);
        return skin;
    };
    const auto all = [](Section, const std::string&) { return true; };
    for (const PackageFiles& files : {compactPackage(), fullPackage()}) {
        Skin skin = readSkin(files).value();
        skin.resources.pictures.push_back({{"PicGone", "gone.png", {}}, {}, false, {}});
        ASSERT_TRUE(replacePicture(skin, skin.resources.pictures.back(), {{100, png(4, 4)}, {200, png(8, 8)}}));
        skin.resources.imageSections.emplace_back();
        skin.resources.imageSections.back().id = "SectionGone";
        skin.resources.imageSections.back().picture = "PicGone";

        const Skin used = removedFrom(skin, all);
        EXPECT_EQ(used.imageSection("SectionGone"), nullptr);
        EXPECT_EQ(used.picture("PicGone"), nullptr) << "only what is gone referred to it";
        EXPECT_EQ(used.files.find("gone.png"), nullptr);
        EXPECT_EQ(used.files.find("gone@200.png"), nullptr);
        const auto pictureOnly = [](Section section, const std::string& id) {
            return section == Section::Pictures && id == "PicGone";
        };
        EXPECT_TRUE(removedFrom(skin, pictureOnly) == skin) << "a section shows it";
        EXPECT_TRUE(removedFrom(skin, [](Section, const std::string&) { return false; }) == skin);
        SkinObject& object = skin.objects[0];
        setValue(skin, object, "Some", "Look", ValueKind::ImageSection, "SectionGone");
        if (skin.layout == Layout::Compact)
            addMissingKeys(skin);
        EXPECT_NE(removedFrom(skin, all).picture("PicGone"), nullptr);
    }
}

TEST(SkinChangesTest, ASavedFolderReadsAsTheSavedSkinWhateverItHadBefore)
{
    const Folder folder;
    Skin compact = readSkin(compactPackage()).value();
    const auto former = compact.bytesOf(compact.resources.pictures[0].files[0]);
    const Bytes bytes(former.begin(), former.end());
    ASSERT_TRUE(replacePicture(compact, compact.resources.pictures[0], {{100, bytes}, {200, png(16, 16)}}));
    ASSERT_TRUE(saveSkin(compact, folder.path / ""));
    Skin smaller = loadSkin(folder.path).value();
    ASSERT_TRUE(smaller == compact);
    ASSERT_TRUE(replacePicture(smaller, smaller.resources.pictures[0], {{100, bytes}}));
    std::ofstream(folder.path / "notes.txt") << "the author's own";
    ASSERT_TRUE(saveSkin(smaller, folder.path, &compact.files));
    EXPECT_TRUE(std::filesystem::exists(folder.path / "notes.txt"));
    std::filesystem::remove(folder.path / "notes.txt");
    EXPECT_TRUE(loadSkin(folder.path).value() == smaller) << "without the larger form";
    const Skin full = readSkin(fullPackage()).value();
    ASSERT_TRUE(saveSkin(full, folder.path));
    const auto again = loadSkin(folder.path);
    ASSERT_TRUE(again) << again.error().text();
    EXPECT_EQ(again->layout, Layout::Full);
    EXPECT_TRUE(again->resources == full.resources && again->objects == full.objects);
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
