// How much memory reading takes, counted by the address sanitizer's allocation hooks.
#include "ambrel/skin/limits.h"
#include "ambrel/skin/reader.h"
#include "ambrel/skin/test_packages.h"

#include <gtest/gtest.h>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define AMBREL_COUNTS_MEMORY
#include <sanitizer/allocator_interface.h>
#endif
#endif

namespace ambrel::skin::test {
namespace {

#ifdef AMBREL_COUNTS_MEMORY

bool g_counting = false; // the hooks cannot be taken out again
std::int64_t g_live = 0;
std::int64_t g_peak = 0;

void countAllocation(const volatile void*, std::size_t size)
{
    if (!g_counting)
        return;
    g_live += static_cast<std::int64_t>(size);
    g_peak = std::max(g_peak, g_live);
}

void countRelease(const volatile void* memory)
{
    const void* plain = const_cast<const void*>(memory);
    if (g_counting && plain != nullptr && __sanitizer_get_ownership(plain))
        g_live -= static_cast<std::int64_t>(__sanitizer_get_allocated_size(plain));
}

std::int64_t peakOfReading(const Bytes& archive)
{
    static const int installed = __sanitizer_install_malloc_and_free_hooks(countAllocation, countRelease);
    EXPECT_NE(installed, 0);
    g_live = static_cast<std::int64_t>(kArchiveBytes); // this one is smaller; the largest may be this large
    g_peak = g_live;
    g_counting = true;
    {
        const auto skin = readSkin(archive);
        EXPECT_TRUE(skin) << skin.error().text();
    }
    g_counting = false;
    return g_peak;
}

std::string numbered(std::string_view before, int count, std::string_view after)
{
    std::string out;
    for (int i = 0; i < count; ++i)
        out.append(before).append(std::to_string(i)).append(after);
    return out;
}

// Groups with one property each: "<G7><P ImageSecId='V7'/></G7>".
std::string groups(int count)
{
    std::string out;
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        out += "<G" + number + "><P ImageSecId='V" + number + "'/></G" + number + '>';
    }
    return out;
}

// As many of everything as the limits allow, in files as large as they may be.
PackageFiles largestPackage()
{
    const auto padded = [](std::string text) {
        text.resize(kXmlFileBytes, ' ');
        return bytesOf(text);
    };
    PackageFiles files;
    files.add("shareres.xml",
              padded("<Ambrel><share><FontExs>" + numbered("<F", 49000, "/>") + "</FontExs></share></Ambrel>"));
    files.add("mapattrib.xml", padded("<Ambrel Version='2.0'><A>" + groups(14000) + "</A></Ambrel>"));
    files.add("objects.xml",
              padded("<Ambrel><Objects>" + numbered("<A", 24000, " AddinGuid='Morvane1' Type='90000'/>") +
                     "</Objects></Ambrel>"));
    files.add("prop.xml",
              padded("<Ambrel><Property>" + numbered("<A", 24000, " W='1' X='2'/>") + "</Property></Ambrel>"));
    const std::size_t room = kPackageBytes - 4 * kXmlFileBytes;
    for (std::size_t i = 0; i < room / kFileBytes; ++i) {
        Bytes noise(kFileBytes);
        std::uint32_t state = static_cast<std::uint32_t>(i) + 1;
        for (std::size_t at = 0; at < noise.size() / 100; ++at) // enough not to count as a bomb
            noise[at] = static_cast<std::uint8_t>((state = state * 1664525u + 1013904223u) >> 24);
        files.add("noise" + std::to_string(i), std::move(noise));
    }
    return files;
}

TEST(SkinMemoryTest, ReadingTheLargestPackageStaysBelowTheStatedLimit)
{
    const std::int64_t peak = peakOfReading(writeZip(largestPackage()));
    RecordProperty("peak_megabytes", static_cast<int>(peak >> 20));
    EXPECT_LT(peak, static_cast<std::int64_t>(kMemoryOfReading));
    EXPECT_GT(peak, static_cast<std::int64_t>(kPackageBytes)); // the counting works
}

#endif

} // namespace
} // namespace ambrel::skin::test
