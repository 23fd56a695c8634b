#include "ambrel/skin/reader.h"

#include "ambrel/skin/key_map_reader.h"
#include "ambrel/skin/language_reader.h"
#include "ambrel/skin/object_reader.h"

#include <optional>

namespace ambrel::skin {

namespace {

// Takes an XML file out of the package and parses it.
void parse(std::optional<XmlDocument>& document, PackageFiles& files, std::string_view name)
{
    const Bytes* bytes = files.find(name);
    if (bytes == nullptr)
        failFile(Code::MissingFile, std::string(name), "the package lacks this file");
    document.emplace(std::string(files.spellingOf(name)), *bytes);
    files.remove(name);
}

Skin readFiles(PackageFiles files)
{
    Skin skin;
    const bool hasKeyMap = files.find(names::kKeyMapFile) != nullptr;
    const bool hasProperties = files.find(names::kPropertiesFile) != nullptr;
    skin.layout = hasKeyMap || hasProperties ? Layout::Compact : Layout::Full;

    std::optional<XmlDocument> document;
    parse(document, files, names::kResourcesFile);
    ReadResources read = readResources(*document, files);
    skin.resources = std::move(read.resources);

    std::optional<XmlDocument> properties;
    if (skin.layout == Layout::Compact) {
        parse(document, files, names::kKeyMapFile);
        skin.keys = readKeyMap(*document, read.index);
        parse(properties, files, names::kPropertiesFile);
    }
    parse(document, files, names::kObjectsFile);
    readObjects(*document, properties ? &*properties : nullptr, read.index, skin);
    if (files.find(names::kLanguagesFile)) {
        parse(document, files, names::kLanguagesFile);
        skin.languages = readLanguages(*document);
    }
    skin.files = std::move(files);
    return skin;
}

template <class Files>
Outcome<Skin> readUnpacked(Outcome<Files> files)
{
    if (!files)
        return files.error();
    return readSkin(std::move(files.value()));
}

} // namespace

Outcome<Skin> readSkin(PackageFiles files)
{
    return outcomeOf([&] { return readFiles(std::move(files)); });
}

Outcome<Skin> readSkin(std::span<const std::uint8_t> archive, const std::string& name)
{
    return readUnpacked(readZip(archive, name));
}

Outcome<Skin> loadSkin(const std::filesystem::path& path)
{
    return readUnpacked(readPackage(path));
}

} // namespace ambrel::skin
