// Pictures of every format and form through the platform's decoders: right pixels, and nothing for damaged bytes.
#include "ambrel/pixels/encoded_pictures.h"
#include "ambrel/render/picture.h"
#include "ambrel/render/test_support.h"
#include "frame/com/bstr.h"
#include "frame/com/instance.h"

#include <random>

namespace ambrel {
namespace {

using namespace test;

constexpr Pixel kHalfWhite = packPixel(128, 128, 128, 128);

Bytes keptFile(const std::wstring& name)
{
    auto bytes = readFile(AMBREL_RENDER_PICTURES L"/" + name);
    EXPECT_TRUE(bytes) << "a kept file is missing";
    return bytes.value_or(Bytes());
}

bool isNear(Pixel a, Pixel b, int tolerance)
{
    const auto near_ = [&](int one, int other) { return std::abs(one - other) <= tolerance; };
    return near_(alphaOf(a), alphaOf(b)) && near_(redOf(a), redOf(b)) && near_(greenOf(a), greenOf(b)) &&
           near_(blueOf(a), blueOf(b));
}

// Formats -------------------------------------------------------------------------------------------------------------

struct Quarters {
    const wchar_t* file;
    ImageFormat format;
    Pixel upperLeft, upperRight, lowerLeft, lowerRight;
    int tolerance = 0;
};

TEST(PictureDecoderTest, EachFormGivesTheSameQuarters)
{
    constexpr Pixel kGreyRed = 0xFF4C4C4C;
    constexpr Pixel kGreyGreen = 0xFF969696;
    constexpr Pixel kGreyBlue = 0xFF1D1D1D;
    const Quarters kCases[] = {
        {L"quarters-interlaced.png", ImageFormat::Png, kRed, kGreen, kBlue, kHalfWhite},
        {L"quarters-16-bit.png", ImageFormat::Png, kRed, kGreen, kBlue, kHalfWhite},
        {L"quarters-palette.png", ImageFormat::Png, kRed, kGreen, kBlue, kWhite},
        {L"quarters.jpg", ImageFormat::Jpeg, kRed, kGreen, kBlue, kWhite, 4},
        {L"quarters-progressive.jpg", ImageFormat::Jpeg, kRed, kGreen, kBlue, kWhite, 4},
        {L"quarters-grey.jpg", ImageFormat::Jpeg, kGreyRed, kGreyGreen, kGreyBlue, kWhite, 60},
        {L"quarters-ycck.jpg", ImageFormat::Jpeg, kRed, kGreen, kBlue, kWhite, 4},
        {L"quarters-cmyk.jpg", ImageFormat::Jpeg, kRed, kGreen, kBlue, kWhite, 4},
        {L"quarters-cmyk-bare.jpg", ImageFormat::Jpeg, kRed, kGreen, kBlue, kWhite, 4},
    };
    for (const Quarters& c : kCases) {
        const std::wstring name(c.file);
        SCOPED_TRACE(std::string(name.begin(), name.end()));
        const auto picture = decodePicture(keptFile(c.file));
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->format, c.format);
        const ConstPixelView pixels = picture->frames.front().view();
        ASSERT_EQ(pixels.bounds(), (Rect{0, 0, 16, 16}));
        const std::pair<Point, Pixel> kExpected[] = {
            {{3, 3}, c.upperLeft}, {{12, 3}, c.upperRight}, {{3, 12}, c.lowerLeft}, {{12, 12}, c.lowerRight}};
        for (const auto& [at, colour] : kExpected)
            EXPECT_TRUE(isNear(pixels.at(at.x, at.y), colour, c.tolerance))
                << at.x << ' ' << at.y << std::hex << " is " << pixels.at(at.x, at.y) << ", not " << colour;
    }
}

// Icons ---------------------------------------------------------------------------------------------------------------

TEST(PictureDecoderTest, TheLargestAndDeepestPictureOfAnIconIsTaken)
{
    const IconImage small{16, 32, 0xFFFF0000};
    const IconImage shallow{32, 4, 0xFF00FF00};
    const IconImage deep{32, 32, 0x80FFFFFF};
    for (const auto& images : {std::vector{small, shallow, deep}, {deep, shallow, small}, {shallow, deep}}) {
        const auto picture = decodePicture(icoFile(images));
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->format, ImageFormat::Ico);
        ASSERT_EQ(picture->frames.front().size(), (Size{32, 32}));
        EXPECT_EQ(picture->frames.front().view().at(20, 20), kHalfWhite);
    }
    const auto alone = decodePicture(icoFile({shallow}));
    ASSERT_TRUE(alone);
    EXPECT_EQ(alone->frames.front().view().at(5, 5), kGreen);
}

// Animations ----------------------------------------------------------------------------------------------------------

TEST(PictureDecoderTest, FramesOfAnAnimationTakeThemselvesBackOrLeaveAHoleAsTheySay)
{
    const auto picture = decodePicture(keptFile(L"disposal.gif"));
    ASSERT_TRUE(picture);
    ASSERT_EQ(picture->frames.size(), 4u);
    EXPECT_EQ(picture->delaysMs, (std::vector<std::int32_t>{50, 200, 100, 70})); // none given: a tenth of a second
    EXPECT_EQ(picture->plays, 3);
    const struct {
        std::size_t frame;
        int x, y;
        Pixel colour;
    } kExpected[] = {{0, 2, 1, kRed},   {1, 2, 1, kBlue}, {1, 3, 2, kBlue}, {1, 4, 2, kRed},  {2, 2, 1, kRed},
                     {2, 1, 1, kGreen}, {3, 1, 1, 0},     {3, 2, 1, kRed},  {3, 5, 3, kWhite}};
    for (const auto& e : kExpected)
        EXPECT_EQ(picture->frames[e.frame].view().at(e.x, e.y), e.colour) << e.frame << ' ' << e.x << ' ' << e.y;
}

TEST(PictureDecoderTest, AnAnimationThatBreaksOffKeepsTheFramesBeforeTheBreak)
{
    const Bytes whole = keptFile(L"disposal.gif");
    const Bytes part(whole.begin(), whole.end() - 30); // inside the last frame
    const auto picture = decodePicture(part);
    if (picture) {
        EXPECT_GE(picture->frames.size(), 1u);
        EXPECT_LE(picture->frames.size(), 4u);
        EXPECT_EQ(picture->frames.front().view().at(2, 1), kRed);
        EXPECT_EQ(picture->delaysMs.size(), picture->frames.size());
    }
}

// Scales --------------------------------------------------------------------------------------------------------------

/// A file that goes with its test.
class TemporaryFile {
public:
    TemporaryFile(const std::wstring& path, std::span<const std::uint8_t> bytes) : m_path(path)
    {
        EXPECT_TRUE(writeFile(path, bytes));
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() { DeleteFileW(m_path.c_str()); }

private:
    std::wstring m_path;
};

TEST(PictureFileTest, FormsForLargerScalesLieBesideTheFile)
{
    wchar_t folder[MAX_PATH] = L"";
    GetTempPathW(MAX_PATH, folder);
    const std::wstring name = std::wstring(folder) + L"ambrel_forms";
    const Bytes damaged = {'P', 'N', 'G'};
    const TemporaryFile plain(name + L".png", encodePng(surfaceOf({10, 10}, kRed).view()));
    const TemporaryFile half(name + L"@150.png", damaged);
    const TemporaryFile twice(name + L"@200.png", encodePng(surfaceOf({20, 20}, kBlue).view()));
    const auto picture = morvane::Instance<Picture>::make();
    VARIANT_BOOL done = VARIANT_FALSE;
    ASSERT_EQ(picture->ImportFile(morvane::Bstr(name + L".png").get(), &done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(picture->size(), (Size{10, 10}));
    EXPECT_EQ(picture->frame(Scale(100)).percent, 100);
    EXPECT_EQ(picture->frame(Scale(125)).percent, 200); // the damaged one counts as missing
    EXPECT_EQ(picture->frame(Scale(200)).pixels.at(5, 5), kBlue);
}

// Damage --------------------------------------------------------------------------------------------------------------

std::vector<Bytes> everyKindOfFile()
{
    std::vector<Bytes> files;
    for (const BmpKind& kind : everyBmpKind())
        files.push_back(bmpFile(kind));
    files.push_back(icoFile({{16, 32, 0xFFFF0000}, {8, 4, 0xFF00FF00}}));
    for (const wchar_t* name : {L"disposal.gif", L"quarters.jpg", L"quarters-progressive.jpg",
                                L"quarters-interlaced.png", L"quarters-palette.png"})
        files.push_back(keptFile(name));
    return files;
}

/// Whatever comes out is whole: frames of one size, a delay for each.
void expectWholeOrNothing(const Bytes& bytes)
{
    const auto picture = decodePicture(bytes);
    if (!picture)
        return;
    ASSERT_FALSE(picture->frames.empty());
    EXPECT_EQ(picture->delaysMs.size(), picture->frames.size());
    for (const Surface& frame : picture->frames)
        EXPECT_EQ(frame.size(), picture->frames.front().size());
}

TEST(PictureDecoderTest, EveryPrefixOfAFileIsAPictureOrNone)
{
    for (const Bytes& file : everyKindOfFile())
        for (std::size_t length = 0; length < file.size(); length += 1 + file.size() / 100)
            expectWholeOrNothing(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length)));
}

TEST(PictureDecoderTest, ChangedBytesGiveAPictureOrNone)
{
    constexpr int kTries = 60;
    std::mt19937 random(4711);
    for (const Bytes& file : everyKindOfFile()) {
        for (int i = 0; i < kTries; ++i) {
            Bytes changed = file;
            for (int change = 0; change < 3; ++change)
                changed[random() % std::min<std::size_t>(changed.size(), 64)] = static_cast<std::uint8_t>(random());
            expectWholeOrNothing(changed);
        }
    }
}

} // namespace
} // namespace ambrel
