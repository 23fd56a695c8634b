// docs/writing-a-skin.md and the reader know the same words, and the page's example is a skin.
#include "ambrel/skin/reader.h"
#include "ambrel/skin/test_packages.h"
#include "ambrel/skin/vocabulary.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

namespace ambrel::skin {
namespace {

std::vector<std::string> linesOfThePage()
{
    std::ifstream in(AMBREL_SKIN_PAGE);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

// The text between the first two marks of a line, when the line begins with `start`.
std::string codeAfter(const std::string& line, const std::string& start)
{
    return line.starts_with(start + '`')
               ? line.substr(start.size() + 1, line.find('`', start.size() + 1) - start.size() - 1)
               : "";
}

std::set<Word> wordsOfThePage()
{
    std::set<Word> words;
    std::string element;
    for (const std::string& line : linesOfThePage()) {
        if (line.starts_with("## "))
            element.clear();
        if (const std::string name = codeAfter(line, "### "); !name.empty()) {
            element = name;
            words.insert({element, ""});
        }
        if (const std::string name = codeAfter(line, "| "); !name.empty() && !element.empty())
            words.insert({element, name});
    }
    return words;
}

Bytes fromBase64(const std::string& text)
{
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    Bytes out;
    unsigned bits = 0;
    int count = 0;
    for (const char c : text) {
        const std::size_t digit = kDigits.find(c);
        if (digit == std::string_view::npos)
            continue;
        bits = bits << 6 | static_cast<unsigned>(digit);
        count += 6;
        if (count >= 8) {
            count -= 8;
            out.push_back(static_cast<std::uint8_t>(bits >> count));
        }
    }
    return out;
}

// A line with nothing but a file's name, then a block with the whole file.
PackageFiles exampleOfThePage()
{
    PackageFiles files;
    std::string name;
    std::string language;
    std::string content;
    for (const std::string& line : linesOfThePage()) {
        if (line.starts_with("```") && language.empty()) {
            language = line.substr(3);
        } else if (line == "```") {
            files.add(name, language == "base64" ? fromBase64(content) : test::bytesOf(content));
            language.clear();
            content.clear();
        } else if (!language.empty()) {
            content += line + '\n';
        } else if (const std::string code = codeAfter(line, ""); code.size() + 2 == line.size()) {
            name = code;
        }
    }
    return files;
}

std::string listed(const std::set<Word>& all, const std::set<Word>& known)
{
    std::ostringstream out;
    for (const Word& word : all) {
        if (!known.contains(word))
            out << word.element << ' ' << word.attribute << '\n';
    }
    return out.str();
}

TEST(SkinDocumentationTest, ThePageAndTheReaderKnowTheSameWords)
{
    const auto words = vocabulary();
    const std::set<Word> known(words.begin(), words.end());
    const std::set<Word> described = wordsOfThePage();
    EXPECT_EQ(listed(known, described), "") << "not on the page";
    EXPECT_EQ(listed(described, known), "") << "not known to the reader";
}

TEST(SkinDocumentationTest, TheExampleOfThePageIsASkin)
{
    const PackageFiles files = exampleOfThePage();
    EXPECT_EQ(files.all().size(), 5u);
    const auto skin = readSkin(files);
    ASSERT_TRUE(skin) << skin.error().text();
    const SkinObject& button = skin->objects.at(0);
    EXPECT_EQ(skin->valueOf(button, "Normal", "Image")->value, "Face");
    EXPECT_EQ(skin->valueOf(button, "Press", "TextStyle")->value, "Label");
    EXPECT_EQ(skin->valueOf(button, "Text", "Text")->value, "Press me");
    // A state without a picture would let the button vanish.
    for (const char* state : {"Normal", "Press", "Disabled", "Hot", "Focus", "Inactive"})
        EXPECT_TRUE(skin->valueOf(button, state, "Image") && skin->valueOf(button, state, "TextStyle")) << state;
    EXPECT_EQ(skin->imageSection("Face")->right, 4);
}

TEST(SkinDocumentationTest, TheErrorThePageShowsIsTheOneYouGet)
{
    const auto files = test::replaced(exampleOfThePage(), "shareres.xml", "VAlign=\"1\"", "VAlign=\"3\"");
    const auto skin = readSkin(files);
    ASSERT_FALSE(skin);
    bool shown = false;
    for (const std::string& line : linesOfThePage())
        shown = shown || line == "    " + skin.error().text();
    EXPECT_TRUE(shown) << skin.error().text();
}

} // namespace
} // namespace ambrel::skin
