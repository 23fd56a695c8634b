// A package in either layout, given as text: a line "=== NAME" begins each file. A skin that reads must save and read
// back equal, and looking things up in it must be safe.
#include "ambrel/skin/reader.h"
#include "ambrel/skin/writer.h"
#include "fuzz/fuzz.h"

namespace {

using namespace ambrel::skin;

constexpr std::string_view kMark = "=== ";

PackageFiles filesOf(std::string_view text)
{
    PackageFiles files;
    while (text.starts_with(kMark)) {
        const std::size_t nameEnd = text.find('\n');
        if (nameEnd == std::string_view::npos)
            break;
        const std::string_view name = text.substr(kMark.size(), nameEnd - kMark.size());
        const std::size_t next = text.find("\n=== ", nameEnd);
        const std::string_view content =
            text.substr(nameEnd + 1, next == std::string_view::npos ? next : next - nameEnd);
        if (content.size() <= 1u << 20)
            files.add(std::string(name), Bytes(content.begin(), content.end()));
        text.remove_prefix(next == std::string_view::npos ? text.size() : next + 1);
    }
    return files;
}

void lookAround(const Skin& skin, const SkinObject& object)
{
    for (const Property& property : object.properties) {
        const auto value = skin.valueOf(object, property.group, property.name);
        fuzz::require(value.has_value(), "a property that is there is found");
    }
    skin.valueOf(object, "Normal/Hot", "Image");
    for (const SkinObject& child : object.children)
        lookAround(skin, child);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto files = outcomeOf([&] { return filesOf(fuzz::textOf(data, size)); });
    if (!files)
        return 0;
    const auto skin = readSkin(files.value());
    if (!skin) {
        fuzz::require(!skin.error().file.empty() && !skin.error().message.empty(),
                      "an error names its file and reason");
        return 0;
    }
    for (const SkinObject& object : skin->objects)
        lookAround(skin.value(), object);
    for (const Picture& picture : skin->resources.pictures)
        fuzz::require(!skin->bytesOf(fileForScale(picture, 150)).empty(), "a picture has bytes");
    const auto written = writeSkin(skin.value());
    fuzz::require(written.ok(), "a skin that was read can be written");
    const auto again = readSkin(written.value());
    if (!again)
        std::fprintf(stderr, "%s\n", again.error().text().c_str());
    fuzz::require(again.ok() && again.value() == skin.value(), "a saved skin reads back equal");
    return 0;
}
