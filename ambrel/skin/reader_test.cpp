#include "ambrel/skin/limits.h"
#include "ambrel/skin/reader.h"
#include "ambrel/skin/test_packages.h"

#include <gtest/gtest.h>

namespace ambrel::skin::test {
namespace {

Skin read(const PackageFiles& files)
{
    auto skin = readSkin(files);
    EXPECT_TRUE(skin) << skin.error().text();
    return skin ? std::move(skin.value()) : Skin();
}

SkinError errorOf(const PackageFiles& files)
{
    const auto skin = readSkin(files);
    return skin ? SkinError{.code = Code{}} : skin.error();
}

std::string valueOf(const Skin& skin, std::string_view group, std::string_view name)
{
    const auto value = skin.valueOf(skin.objects.front(), group, name);
    return value ? std::string(value->value) : "(default)";
}

TEST(SkinReaderTest, FindsValuesOfTheCompactLayoutByTheKeyMap)
{
    const Skin skin = read(compactPackage());
    ASSERT_EQ(skin.layout, Layout::Compact);
    ASSERT_EQ(skin.objects.size(), 1u);
    EXPECT_EQ(valueOf(skin, "Normal", "Image"), "ImageSection1");
    EXPECT_EQ(skin.valueOf(skin.objects[0], "Normal", "Image")->kind, ValueKind::ImageSection);
    EXPECT_EQ(valueOf(skin, "Normal", "Graphics"), "");      // there, and empty
    EXPECT_EQ(valueOf(skin, "Text", "Text"), "Push \"me\""); // the key map's default
    EXPECT_EQ(valueOf(skin, "Text", "ShowText"), "0");       // the object's own value goes before the default
    EXPECT_EQ(valueOf(skin, "Cursor/Deep", "Image"), "ImageSection1");
    EXPECT_EQ(valueOf(skin, "AutoResize", "MaxTextWidth"), "(default)"); // not in the key map
    EXPECT_EQ(valueOf(skin, "Normal", "NormalIsExpand"), "(default)");
}

TEST(SkinReaderTest, ReadsSettingsFromBothFilesOfTheCompactLayout)
{
    const Skin skin = read(compactPackage());
    const SkinObject& button = skin.objects.front();
    EXPECT_EQ(button.className, "Morvane17");
    EXPECT_EQ(typeOf(button), "Button");
    EXPECT_EQ(button.settings.tabStop, true);
    EXPECT_EQ(button.settings.opacity, 255);
    EXPECT_EQ(button.settings.region, "Rgn1");
    EXPECT_FALSE(button.settings.drawFocus);
    ASSERT_TRUE(button.position);
    EXPECT_EQ(button.position->horizontal, (PositionAxis{0, 3, 114, 0, 206}));
}

TEST(SkinReaderTest, ReadsTheFullLayoutWithNestedObjects)
{
    const Skin skin = read(fullPackage());
    ASSERT_EQ(skin.layout, Layout::Full);
    const SkinObject& form = skin.objects.front();
    EXPECT_EQ(form.name, "UIForm1");
    ASSERT_EQ(form.children.size(), 1u);
    EXPECT_EQ(form.children[0].name, "Static1");
    ASSERT_TRUE(form.position);
    EXPECT_EQ(form.position->vertical, (PositionAxis{2, 0, -4, 5, 60}));
    EXPECT_EQ(valueOf(skin, "Back", "DrawColor"), "1");
    EXPECT_EQ(valueOf(skin, "Text", "Text"), "two\nlines & \"more\"");
    EXPECT_EQ(valueOf(skin, "Back", "Image"), "Guid00000000000000000000000000000002");
    EXPECT_EQ(skin.valueOf(form, "Back", "Image")->kind, ValueKind::ImageSection);
    EXPECT_TRUE(form.others.empty()); // the designer's bookkeeping is dropped
}

TEST(SkinReaderTest, ResolvesResources)
{
    const Skin skin = read(compactPackage());
    EXPECT_EQ(skin.textStyle("TextStyle1")->text, (Colour{0x00D96325, "Ink"}));
    EXPECT_EQ(skin.textStyle("TextStyle1")->font, "FontEx1");
    EXPECT_EQ(skin.gradient("Gradient1")->end.value, 0x00FFFFFFu);
    EXPECT_EQ(skin.font("FontEx1")->weight, 700);
    EXPECT_EQ(skin.imageSection("ImageSection1")->bottomHeight, 2);
    EXPECT_EQ(skin.font("TextStyle1"), nullptr);
}

TEST(SkinReaderTest, TakesTheNearestLargerPictureForAScale)
{
    const Skin skin = read(compactPackage());
    const Picture& picture = *skin.picture("Pic1");
    ASSERT_EQ(picture.files.size(), 3u);
    EXPECT_EQ(fileForScale(picture, 100).file, "back.png");
    EXPECT_EQ(fileForScale(picture, 125).file, "back@150.png");
    EXPECT_EQ(fileForScale(picture, 300).file, "back@200.png");
    EXPECT_EQ(skin.bytesOf(picture.files[2]).size(), png(20, 12).size());
}

TEST(SkinReaderTest, RefusesBadPackagesWithThePlaceAndTheNames)
{
    struct Case {
        const char* file;
        const char* from;
        const char* to;
        Code code;
        const char* element;
        const char* attribute;
    };
    const Case cases[] = {
        {"shareres.xml", "</Ambrel>", "", Code::BadXml, "", ""},
        {"shareres.xml", "<Ambrel>", "<!DOCTYPE a [<!ENTITY b \"c\">]><Ambrel>", Code::DoctypeRefused, "", ""},
        {"shareres.xml", "Plain", "Pl\xFF", Code::BadEncoding, "", ""},
        {"shareres.xml", "Plain", "Pl&#1;", Code::BadEncoding, "TextStyle1", "Caption"},
        {"shareres.xml", "HAlign=\"1\"", "HAlign=\"1\" HAlign=\"1\"", Code::DuplicateAttribute, "TextStyle1", "HAlign"},
        {"shareres.xml", "<Ambrel>", "<Amber></Amber><Ambrel>", Code::UnexpectedElement, "Amber", ""},
        {"shareres.xml", "HAlign=\"1\"", "HAlign=\"3\"", Code::OutOfRange, "TextStyle1", "HAlign"},
        {"shareres.xml", "weight=\"700\"", "weight=\"99999999999999999999\"", Code::OutOfRange, "FontEx1", "weight"},
        {"shareres.xml", "weight=\"700\"", "weight=\"bold\"", Code::BadNumber, "FontEx1", "weight"},
        {"shareres.xml", "IsTrans=\"1\"", "IsTrans=\"yes\"", Code::BadBoolean, "ImageSection1", "IsTrans"},
        {"shareres.xml", "0x00FFFFFF", "0xFFFFFF", Code::BadColour, "Gradient1", "clrEnd"},
        {"shareres.xml", "clrText=\"Ink\"", "clrText=\"Pink\"", Code::UnknownReference, "TextStyle1", "clrText"},
        {"shareres.xml", "0x00D96325", "Ink", Code::LoopingReference, "Ink", "clrValue"},
        {"shareres.xml", "PreFontGUID0=\"FontEx1\"", "PreFontGUID0=\"Pic1\"", Code::WrongReference, "TextStyle1",
         "PreFontGUID0"},
        {"shareres.xml", "IsTrans=\"1\" PicId=\"Pic1\"", "PicId=\"ImageSection1\"", Code::WrongReference,
         "ImageSection1", "PicId"},
        {"shareres.xml", "IsTrans=\"1\" PicId=\"Pic1\"", "PicId=\"Pic2\"", Code::UnknownReference, "ImageSection1",
         "PicId"},
        {"shareres.xml", "back.PNG", "gone.png", Code::MissingPicture, "Pic1", "Caption"},
        {"shareres.xml", "back.PNG", "../../etc/passwd", Code::MissingPicture, "Pic1", "Caption"},
        {"shareres.xml", "back.PNG", "readme.txt", Code::UnknownPicture, "Pic1", "Caption"},
        {"shareres.xml", "right=\"10\"", "right=\"11\"", Code::OutsidePicture, "ImageSection1", "right"},
        {"shareres.xml", "LeftWidth=\"3\"", "LeftWidth=\"8\"", Code::OutsidePicture, "ImageSection1", "LeftWidth"},
        {"shareres.xml", "left=\"0\"", "left=\"30\"", Code::OutOfRange, "ImageSection1", "right"},
        {"shareres.xml", "<FontEx1", "<Guid12", Code::BadName, "Guid12", ""},
        {"shareres.xml", "<Accent", "<Ink", Code::DuplicateName, "Ink", ""},
        {"shareres.xml", "<SkinRgns>", "<Images/><SkinRgns>", Code::DuplicateName, "Images", ""},
        {"objects.xml", "Morvane17", "17", Code::BadClass, "Button1", "AddinGuid"},
        {"objects.xml", "AddinGuid=\"Morvane17\"", "", Code::MissingAttribute, "Button1", "AddinGuid"},
        {"objects.xml", "90000", "100", Code::BadType, "Button1", "Type"},
        {"objects.xml", "Width=\"200\"", "Width=\"-1\"", Code::OutOfRange, "Button1", "Width"},
        {"objects.xml", "<SkinCtrls/>", "<Objects/>", Code::DuplicateName, "Objects", ""},
        {"objects.xml", "Odd=\"kept\"/>", "/><Button1 AddinGuid=\"Morvane17\" Type=\"90000\"/>", Code::DuplicateName,
         "Button1", ""},
        {"prop.xml", "HA0,HST3", "HA0,HST", Code::BadPosition, "Button1", "DragPosition"},
        {"prop.xml", "V2=\"TextStyle1\"", "V2=\"ImageSection1\"", Code::WrongReference, "Button1", "V2"},
        {"prop.xml", "V5=\"Cursor1\"", "V5=\"Cursor2\"", Code::UnknownReference, "Button1", "V5"},
        {"prop.xml", "\"Rgn1\"", "\"Rgn2\"", Code::UnknownReference, "Button1", "RgnInfo.SkinRgnId"},
        {"prop.xml", "<Button1", "<Button2", Code::UnknownReference, "Button2", ""},
        {"prop.xml", "<Property>", "<Property><Button1/>", Code::DuplicateName, "Button1", ""},
        {"mapattrib.xml", "2.0", "3.0", Code::BadKeyMap, "Ambrel", "Version"},
        {"mapattrib.xml", "V6=\"V6\"", "V6=\"V7\"", Code::BadKeyMap, "ShowText", ""},
        {"mapattrib.xml", "V6=\"V6\"", "V4=\"V4\"", Code::DuplicateName, "ShowText", "V4"},
        {"mapattrib.xml", "V6=\"V6\"", "Visible=\"Visible\"", Code::BadKeyMap, "ShowText", "Visible"},
        {"mapattrib.xml", "<ShowText V6", "<Text V6", Code::DuplicateName, "Text", ""},
        {"mapattrib.xml", "Default=\"ImageSection1\"", "Default=\"FontEx1\"", Code::WrongReference, "Image", "Default"},
        {"mapattrib.xml", "<Button>", "<Button Default=\"1\"><Text V4=\"V4\"><A/></Text>", Code::BadKeyMap, "Text",
         "V4"},
    };
    for (const Case& one : cases) {
        const SkinError error = errorOf(replaced(compactPackage(), one.file, one.from, one.to));
        EXPECT_EQ(error.code, one.code) << one.to << " in " << one.file << ": " << error.text();
        EXPECT_EQ(error.file, one.file) << one.to;
        EXPECT_EQ(error.element, one.element) << one.to;
        EXPECT_EQ(error.attribute, one.attribute) << one.to;
        EXPECT_GT(error.line, 0) << one.to;
        EXPECT_GT(error.column, 0) << one.to;
    }
}

TEST(SkinReaderTest, CountsLinesAndColumnsInCharacters)
{
    const auto files = replaced(compactPackage(), "shareres.xml", "<TextStyle1 Caption=\"Plain\" HAlign=\"1\"",
                                "<TextStyle1 Caption=\"\xC3\xA4\xE4\xBD\xA0 HAlign='1'\"\n HAlign='x'");
    const SkinError error = errorOf(files);
    EXPECT_EQ(error.line, 23);
    EXPECT_EQ(error.column, 2);
    EXPECT_EQ(error.text(), "shareres.xml:23:2: <TextStyle1> attribute HAlign: \"x\" is no number (error 303)");

    const auto sameLine = replaced(compactPackage(), "shareres.xml", "Caption=\"Plain\" HAlign=\"1\"",
                                   "Caption=\"\xC3\xA4\xE4\xBD\xA0\" HAlign=\"x\"");
    EXPECT_EQ(errorOf(sameLine).column, 32);
}

TEST(SkinReaderTest, RefusesShortKeysOfATypeThatTheKeyMapLacks)
{
    const SkinError error = errorOf(replaced(replaced(compactPackage(), "mapattrib.xml", "<Button>", "<CheckBox>"),
                                             "mapattrib.xml", "</Button>", "</CheckBox>"));
    EXPECT_EQ(error.code, Code::MissingKeyMap);
    EXPECT_EQ(error.attribute, "V1");
}

TEST(SkinReaderTest, NamesTheFileThatIsMissing)
{
    for (const char* name : {"objects.xml", "shareres.xml", "mapattrib.xml", "prop.xml"}) {
        PackageFiles files = compactPackage();
        files.remove(name);
        const SkinError error = errorOf(files);
        EXPECT_EQ(error.code, Code::MissingFile);
        EXPECT_EQ(error.file, name);
    }
}

PackageFiles withObjects(const std::string& objects)
{
    PackageFiles files = fullPackage();
    files.remove("objects.xml");
    files.add("objects.xml", bytesOf("<Ambrel><Objects/>" + objects + "</Ambrel>"));
    return files;
}

std::string repeated(std::string_view text, std::size_t count)
{
    std::string out;
    for (std::size_t i = 0; i < count; ++i)
        out += text;
    return out;
}

TEST(SkinReaderTest, StopsAtTheLimitsOfXml)
{
    EXPECT_EQ(errorOf(withObjects(repeated("<a>", 20) + repeated("</a>", 20))).code, Code{});
    EXPECT_EQ(errorOf(withObjects(repeated("<a>", 20000) + repeated("</a>", 20000))).code, Code::TooDeep);
    EXPECT_EQ(errorOf(withObjects(repeated("<a/>", 60000))).code, Code::TooManyNodes);
    EXPECT_EQ(errorOf(withObjects("<a>" + std::string(kXmlValueBytes + 1, 'x') + "</a>")).code, Code::TextTooLong);
    EXPECT_EQ(errorOf(withObjects("<a b='" + std::string(kXmlValueBytes + 1, 'x') + "'/>")).code, Code::TextTooLong);
    EXPECT_EQ(errorOf(withObjects('<' + std::string(kXmlNameBytes + 1, 'x') + "/>")).code, Code::BadName);
    EXPECT_EQ(errorOf(withObjects(std::string(kXmlFileBytes, ' '))).code, Code::FileTooLarge);
}

TEST(SkinReaderTest, StopsAtTheLimitOfAllPicturesTogether)
{
    PackageFiles files = fullPackage();
    std::string images;
    for (int i = 0; i < 5; ++i) {
        const std::string name = "large" + std::to_string(i) + ".png";
        files.add(name, png(4096, 4096));
        images += "<P" + std::to_string(i) + " Caption=\"" + name + "\"/>";
    }
    EXPECT_EQ(errorOf(replaced(files, "shareres.xml", "<Images>", "<Images>" + images)).code, Code::PictureTooLarge);
}

} // namespace
} // namespace ambrel::skin::test
