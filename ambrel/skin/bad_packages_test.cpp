// Packages as they come from broken disks, half-finished downloads, wrong editors and people who mean harm.
#include "ambrel/skin/reader.h"
#include "ambrel/skin/test_packages.h"

#include <gtest/gtest.h>

namespace ambrel::skin::test {
namespace {

SkinError errorOf(const PackageFiles& files)
{
    const auto skin = readSkin(files);
    return skin ? SkinError() : skin.error();
}

PackageFiles withFile(PackageFiles files, const std::string& name, std::string_view content)
{
    files.remove(name);
    files.add(name, bytesOf(content));
    return files;
}

PackageFiles withLanguages(std::string_view content)
{
    return withFile(compactPackage(), "languages.xml", "<Ambrel>\n" + std::string(content) + "</Ambrel>");
}

TEST(BadSkinPackagesTest, AFileOfNoBytesIsToldByItsName)
{
    EXPECT_EQ(readSkin(std::span<const std::uint8_t>()).error().code, Code::NotAPackage);
    for (const char* name : {"shareres.xml", "objects.xml", "prop.xml", "mapattrib.xml", "languages.xml"}) {
        const SkinError error = errorOf(withFile(compactPackage(), name, ""));
        EXPECT_NE(error.code, SkinError().code) << name;
        EXPECT_EQ(error.file, name) << error.text();
        EXPECT_GT(error.line, 0) << error.text();
    }
    const SkinError picture = errorOf(withFile(compactPackage(), "back.png", ""));
    EXPECT_EQ(picture.element, "Pic1") << picture.text();
    EXPECT_GE(static_cast<int>(picture.code), 400);
}

TEST(BadSkinPackagesTest, OnlyUtf8IsUnderstood)
{
    const std::string text = "<Ambrel/>";
    std::string little = "\xFF\xFE";
    std::string big = "\xFE\xFF";
    for (const char c : text) {
        little += {c, '\0'};
        big += {'\0', c};
    }
    for (const std::string& content :
         {little, big, std::string("<Ambrel a='\xC0\x80'/>"), std::string("<Ambrel a='\xED\xA0\x80'/>"),
          std::string("<Ambrel>\0</Ambrel>", 18)}) {
        const SkinError error = errorOf(withFile(compactPackage(), "objects.xml", content));
        EXPECT_EQ(error.code, Code::BadEncoding) << error.text();
        EXPECT_EQ(error.file, "objects.xml");
    }

    for (const char* reference : {"&#0;", "&#x000;", "a&#00;b", "&#xD800;", "&#xFFFE;", "&#x110000;"}) {
        const std::string content = "<Ambrel a='" + std::string(reference) + "'/>";
        const SkinError error = errorOf(withFile(compactPackage(), "objects.xml", content));
        EXPECT_EQ(error.code, Code::BadEncoding) << reference << ' ' << error.text();
    }

    const PackageFiles whole = compactPackage();
    const Bytes& plain = *whole.find("shareres.xml");
    const std::string marked = "\xEF\xBB\xBF" + std::string(plain.begin(), plain.end());
    EXPECT_TRUE(readSkin(withFile(whole, "shareres.xml", marked))) << "a byte order mark is no fault";
}

TEST(BadSkinPackagesTest, OnePictureNamedManyTimesIsAsManyPictures)
{
    Bytes padded = png(4, 4);
    padded.resize(9u << 20); // what follows the picture is no fault
    for (const auto& [bytes, most] : {std::pair(png(4000, 4000), 4), std::pair(padded, 7)}) {
        for (const int count : {most, most + 1}) {
            std::string entries;
            for (int i = 0; i < count; ++i)
                entries += "<Pic" + std::to_string(i) + " Caption='large.png'/>";
            PackageFiles files;
            files.add("large.png", bytes);
            files.add("objects.xml", bytesOf("<Ambrel><Objects/></Ambrel>"));
            files.add("shareres.xml", bytesOf("<Ambrel><share><Images>" + entries + "</Images></share></Ambrel>"));
            const auto read = readSkin(files);
            EXPECT_EQ(read.ok(), count == most) << count;
            if (!read) {
                EXPECT_EQ(read.error().code, Code::PictureTooLarge) << read.error().text();
            }
        }
    }
}

TEST(BadSkinPackagesTest, EntitiesOfTheTextItselfAreRefusedInEveryFile)
{
    const std::string bomb = "<!DOCTYPE a [<!ENTITY x \"ha\"><!ENTITY y \"&x;&x;&x;&x;\">]><Ambrel b=\"&y;\"/>";
    for (const char* name : {"shareres.xml", "objects.xml", "prop.xml", "mapattrib.xml", "languages.xml"}) {
        const SkinError error = errorOf(withFile(compactPackage(), name, bomb));
        EXPECT_EQ(error.code, Code::DoctypeRefused) << error.text();
    }
}

TEST(BadSkinPackagesTest, LanguagesTellWhatIsWrongWithThem)
{
    struct Row {
        const char* text;
        Code code;
        const char* element;
        const char* attribute;
    };
    const Row rows[] = {
        {"<Language/>", Code::MissingAttribute, "Language", "Number"},
        {"<Language Number='5'/>", Code::OutOfRange, "Language", "Number"},
        {"<Language Number='de'/>", Code::BadNumber, "Language", "Number"},
        {"<Language Number='4'/><Language Number='4'/>", Code::DuplicateName, "Language", "Number"},
        {"<Tongue Number='4'/>", Code::UnexpectedElement, "Tongue", ""},
        {"<Language Number='4'><Word/></Language>", Code::UnexpectedElement, "Word", ""},
        {"<Language Number='4'><Text Value=''/></Language>", Code::MissingAttribute, "Text", "Key"},
        {"<Language Number='4'><Text Key='a'/></Language>", Code::MissingAttribute, "Text", "Value"},
        {"<Language Number='4'><Text Key='a' Value=''/><Text Key='a' Value='b'/></Language>", Code::DuplicateName,
         "Text", "Key"},
    };
    for (const Row& row : rows) {
        const SkinError error = errorOf(withLanguages(row.text));
        EXPECT_EQ(error.code, row.code) << row.text << ": " << error.text();
        EXPECT_EQ(error.element, row.element) << error.text();
        EXPECT_EQ(error.attribute, row.attribute) << error.text();
        EXPECT_EQ(error.file, "languages.xml");
        EXPECT_EQ(error.line, 2) << error.text();
    }
    const auto good = readSkin(withLanguages("<Language Number='4'><Text Key='a' Value=''/></Language>"));
    ASSERT_TRUE(good) << good.error().text();
    EXPECT_EQ(*good->languages.at(0).find("a"), "");
    EXPECT_EQ(good->languages.at(0).find("b"), nullptr);
}

} // namespace
} // namespace ambrel::skin::test
