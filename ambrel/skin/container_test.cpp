#include "ambrel/skin/limits.h"
#include "ambrel/skin/test_packages.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>

#include <unistd.h>

namespace ambrel::skin::test {
namespace {

namespace fs = std::filesystem;

PackageFiles twoFiles()
{
    PackageFiles files;
    files.add("a.txt", bytesOf("a"));
    files.add("sub/b.txt", bytesOf(std::string(5000, 'b')));
    return files;
}

void put(Bytes& bytes, std::size_t at, std::uint32_t value, int count)
{
    for (int i = 0; i < count; ++i)
        bytes.at(at + i) = static_cast<std::uint8_t>(value >> (8 * i));
}

std::size_t find(const Bytes& bytes, std::string_view text, std::size_t from = 0)
{
    return std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()).find(text, from);
}

// Offsets in the archive of twoFiles().
std::size_t firstEntry(const Bytes& zip)
{
    return find(zip, "PK\1\2");
}
std::size_t secondEntry(const Bytes& zip)
{
    return find(zip, "PK\1\2", firstEntry(zip) + 1);
}
std::size_t endRecord(const Bytes& zip)
{
    return find(zip, "PK\5\6");
}

Code codeOf(const Outcome<PackageFiles>& outcome)
{
    return outcome ? Code{} : outcome.error().code;
}

class TemporaryFolder {
public:
    TemporaryFolder() : m_path(fs::temp_directory_path() / ("ambrel_skin_" + std::to_string(::getpid())))
    {
        fs::remove_all(m_path);
        fs::create_directories(m_path);
    }
    ~TemporaryFolder() { fs::remove_all(m_path); }
    const fs::path& path() const { return m_path; }

private:
    fs::path m_path;
};

void writeText(const fs::path& path, std::string_view text)
{
    std::ofstream(path, std::ios::binary) << text;
}

TEST(SkinZipTest, WritesAndReadsBackTheSameFiles)
{
    const Bytes zip = writeZip(twoFiles());
    EXPECT_LT(zip.size(), 1000u); // the longer file was compressed
    const auto again = readZip(zip);
    ASSERT_TRUE(again) << again.error().text();
    EXPECT_EQ(again.value(), twoFiles());
    EXPECT_EQ(writeZip(again.value()), zip);
}

TEST(SkinZipTest, RefusesDamagedAndHostileArchives)
{
    struct Case {
        const char* what;
        std::function<void(Bytes&)> damage;
        Code code;
    };
    const Case cases[] = {
        {"not a zip", [](Bytes& z) { z[0] = 'Q'; }, Code::NotAPackage},
        {"end cut off", [](Bytes& z) { z.resize(z.size() - 1); }, Code::TruncatedArchive},
        {"a comment that is not there", [](Bytes& z) { put(z, endRecord(z) + 20, 9, 2); }, Code::TruncatedArchive},
        {"directory beyond the end", [](Bytes& z) { put(z, endRecord(z) + 16, 0x7FFFFFFF, 4); }, Code::BrokenArchive},
        {"more entries than there are",
         [](Bytes& z) {
             put(z, endRecord(z) + 8, 3, 2);
             put(z, endRecord(z) + 10, 3, 2);
         },
         Code::BrokenArchive},
        {"split archive", [](Bytes& z) { put(z, endRecord(z) + 4, 1, 2); }, Code::UnsupportedArchive},
        {"64-bit directory", [](Bytes& z) { put(z, endRecord(z) + 16, 0xFFFFFFFF, 4); }, Code::UnsupportedArchive},
        {"64-bit entry", [](Bytes& z) { put(z, firstEntry(z) + 24, 0xFFFFFFFF, 4); }, Code::UnsupportedArchive},
        {"too many entries",
         [](Bytes& z) {
             put(z, endRecord(z) + 8, 2000, 2);
             put(z, endRecord(z) + 10, 2000, 2);
         },
         Code::TooManyFiles},
        {"encrypted", [](Bytes& z) { put(z, firstEntry(z) + 8, 0x0801, 2); }, Code::UnsupportedArchive},
        {"unknown compression", [](Bytes& z) { put(z, firstEntry(z) + 10, 12, 2); }, Code::UnsupportedArchive},
        {"huge size", [](Bytes& z) { put(z, firstEntry(z) + 24, kFileBytes + 1, 4); }, Code::FileTooLarge},
        {"bomb", [](Bytes& z) { put(z, secondEntry(z) + 24, kFileBytes, 4); }, Code::FileTooLarge},
        {"size that is not the file's", [](Bytes& z) { put(z, secondEntry(z) + 24, 5001, 4); }, Code::BrokenArchive},
        {"packed data beyond the directory", [](Bytes& z) { put(z, secondEntry(z) + 20, 500, 4); },
         Code::TruncatedArchive},
        {"wrong checksum", [](Bytes& z) { z.at(firstEntry(z) + 16) ^= 1; }, Code::BadChecksum},
        {"name that differs from the file's own", [](Bytes& z) { z.at(firstEntry(z) + 46) = 'z'; },
         Code::BrokenArchive},
        {"both entries are one file",
         [](Bytes& z) {
             Bytes entry(z.begin() + static_cast<std::ptrdiff_t>(firstEntry(z)),
                         z.begin() + static_cast<std::ptrdiff_t>(secondEntry(z)));
             const std::size_t end = endRecord(z);
             z.insert(z.begin() + static_cast<std::ptrdiff_t>(end), entry.begin(), entry.end());
             put(z, endRecord(z) + 12, static_cast<std::uint32_t>(endRecord(z) - firstEntry(z)), 4);
             put(z, endRecord(z) + 8, 3, 2);
             put(z, endRecord(z) + 10, 3, 2);
         },
         Code::DuplicateFile},
    };
    for (const Case& one : cases) {
        Bytes zip = writeZip(twoFiles());
        one.damage(zip);
        EXPECT_EQ(codeOf(readZip(zip)), one.code) << one.what;
    }
}

TEST(SkinZipTest, SurvivesBeingCutAnywhere)
{
    const Bytes zip = writeZip(twoFiles());
    for (std::size_t size = 0; size < zip.size(); ++size)
        EXPECT_FALSE(readZip(std::span(zip).first(size)).ok()) << size;
}

TEST(SkinFileNameTest, RefusesNamesThatLeaveThePackageOrThatWindowsCannotHold)
{
    for (const char* name : {"",
                             "/a",
                             "a/",
                             "a//b",
                             "../a",
                             "a/../b",
                             "a/..",
                             "./a",
                             "C:/a",
                             "C:a",
                             "\\a",
                             "a\\..\\b",
                             "//server/a",
                             "con",
                             "CON.txt",
                             "a/NUL",
                             "com1",
                             "LPT9.png",
                             "aux .txt",
                             "a.",
                             "a ",
                             "COM\xC2\xB9",
                             "lpt\xC2\xB3.png",
                             "CONIN$",
                             "a\nb",
                             "a*b",
                             "a?b",
                             "x:y",
                             "\xFF",
                             "\xC0\xAF",
                             "a/b/c/d/e/f/g/h/i"}) {
        const auto added = outcomeOf([&] {
            PackageFiles files;
            files.add(name, {});
            return files;
        });
        EXPECT_EQ(codeOf(added), Code::BadFileName) << name;
    }
    EXPECT_NO_THROW(checkFileName("ScrollThumb.Ver.Normal"));
    EXPECT_NO_THROW(checkFileName("sub/\xC3\xA4 b@150.png"));
    EXPECT_NO_THROW(checkFileName("console.txt"));
    EXPECT_NO_THROW(checkFileName("com12"));
}

TEST(SkinFileNameTest, LetterCaseDoesNotTellFilesApart)
{
    PackageFiles files = twoFiles();
    EXPECT_EQ(files.spellingOf("A.TXT"), "a.txt");
    EXPECT_THROW(files.add("A.txt", {}), SkinFailure);
}

TEST(SkinPackageFilesTest, StopsAtTheLimitsOfAPackage)
{
    PackageFiles files;
    EXPECT_THROW(files.add("large", Bytes(kFileBytes + 1)), SkinFailure);
    for (int i = 0; i < 4; ++i)
        files.add(std::to_string(i), Bytes(kFileBytes));
    EXPECT_THROW(files.add("one byte too many", Bytes(1)), SkinFailure);
    files.remove("0");
    EXPECT_NO_THROW(files.add("fits again", Bytes(1)));
}

TEST(SkinFolderTest, ReadsWhatWasWrittenAndTheSameAsFromAZipFile)
{
    const TemporaryFolder folder;
    ASSERT_TRUE(writeFolder(twoFiles(), folder.path() / "skin"));
    const auto fromFolder = readPackage(folder.path() / "skin");
    ASSERT_TRUE(fromFolder) << fromFolder.error().text();
    EXPECT_EQ(fromFolder.value(), twoFiles());

    ASSERT_TRUE(replaceFile(folder.path() / "skin.zip", writeZip(twoFiles())));
    const auto fromZip = readPackage(folder.path() / "skin.zip");
    ASSERT_TRUE(fromZip) << fromZip.error().text();
    EXPECT_EQ(fromZip.value(), twoFiles());
}

TEST(SkinFolderTest, RefusesLinksAndWhatIsNoFile)
{
    const TemporaryFolder folder;
    writeText(folder.path() / "outside.txt", "secret");
    fs::create_directories(folder.path() / "skin");
    fs::create_symlink(folder.path() / "outside.txt", folder.path() / "skin" / "a.txt");
    EXPECT_EQ(codeOf(readFolder(folder.path() / "skin")), Code::LinkInFolder);

    fs::remove(folder.path() / "skin" / "a.txt");
    fs::create_directory_symlink(folder.path(), folder.path() / "skin" / "loop");
    EXPECT_EQ(codeOf(readFolder(folder.path() / "skin")), Code::LinkInFolder);

    EXPECT_EQ(codeOf(readPackage(folder.path() / "nowhere")), Code::NotFound);
    EXPECT_EQ(codeOf(readPackage("/dev/zero")), Code::NotAPackage);
    EXPECT_EQ(codeOf(readPackage(folder.path() / "outside.txt")), Code::NotAPackage);
}

} // namespace
} // namespace ambrel::skin::test
