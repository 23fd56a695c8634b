// shareres.xml: entries are read first, then the names in them are followed, so that their order does not matter.
#include "ambrel/skin/resource_reader.h"

#include "ambrel/skin/limits.h"
#include "ambrel/skin/text.h"

#include <algorithm>
#include <map>
#include <set>

namespace ambrel::skin {

void ResourceIndex::check(const AttributeAt& at, Section section, const std::string& id) const
{
    if (id.empty() || has(section, id))
        return;
    for (std::size_t other = 1; other < kSections; ++other) {
        const auto otherSection = static_cast<Section>(other);
        if (has(otherSection, id))
            at.fail(Code::WrongReference, '"' + printable(id) + "\" is " + std::string(describe(otherSection)) +
                                              ", not " + std::string(describe(section)));
    }
    at.fail(Code::UnknownReference,
            "there is no entry \"" + printable(id) + "\" in <" + std::string(sectionName(section)) + '>');
}

namespace {

// "Guid" and 32 hexadecimal digits; other names are free.
bool isBrokenGuidName(std::string_view id)
{
    if (!id.starts_with("Guid"))
        return false;
    const std::string_view digits = id.substr(4);
    const auto isHex = [](char c) {
        return std::string_view("0123456789abcdefABCDEF").find(c) != std::string_view::npos;
    };
    return digits.size() != 32 || !std::all_of(digits.begin(), digits.end(), isHex);
}

class ResourceReader {
public:
    ResourceReader(const XmlDocument& document, const PackageFiles& files) : m_document(document), m_files(files) {}

    ReadResources read()
    {
        const pugi::xml_node root = m_document.root(names::kRoot);
        const pugi::xml_node share = root.child(names::kShare.data());
        if (!share)
            m_document.fail(Code::MissingElement, root, "the element <share> is missing");
        for (const pugi::xml_node section : elementsOf(share))
            readSection(section);
        resolveColours();
        follow(m_out.resources.fonts);
        follow(m_out.resources.gradients);
        follow(m_out.resources.imageSections);
        follow(m_out.resources.textStyles);
        follow(m_out.resources.cursors);
        readPictures();
        checkImageSections();
        return std::move(m_out);
    }

private:
    std::vector<pugi::xml_node>& nodesOf(Section section) { return m_nodes[static_cast<std::size_t>(section)]; }

    void readSection(pugi::xml_node section)
    {
        if (!m_seen.insert(section.name()).second)
            m_document.fail(Code::DuplicateName, section, "the section stands there twice");
        SharedResources& all = m_out.resources;
        const bool known = readSectionAs(section, all.colours) || readSectionAs(section, all.pictures) ||
                           readSectionAs(section, all.fonts) || readSectionAs(section, all.gradients) ||
                           readSectionAs(section, all.imageSections) || readSectionAs(section, all.textStyles) ||
                           readSectionAs(section, all.cursors);
        if (!known)
            all.others.push_back(readRaw(section));
    }

    template <class Entry>
    bool readSectionAs(pugi::xml_node section, std::vector<Entry>& entries)
    {
        if (section.name() != sectionName(kSectionOf<Entry>))
            return false;
        for (const pugi::xml_node element : elementsOf(section)) {
            entries.push_back(readEntry<Entry>(element));
            nodesOf(kSectionOf<Entry>).push_back(element);
        }
        return true;
    }

    template <class Entry>
    Entry readEntry(pugi::xml_node element)
    {
        Entry entry;
        entry.id = element.name();
        if (isBrokenGuidName(entry.id))
            m_document.fail(Code::BadName, element, "\"Guid\" must be followed by 32 hexadecimal digits");
        if (m_out.index.has(kSectionOf<Entry>, entry.id))
            m_document.fail(Code::DuplicateName, element, "another entry of the section has this name");
        m_out.index.add(kSectionOf<Entry>, entry.id);
        for (const pugi::xml_attribute attribute : element.attributes()) {
            const AttributeAt at{m_document, element, attribute};
            if (!isBookkeeping(at.name()) && !readField(at, entry))
                entry.others.push_back({attribute.name(), attribute.value()});
        }
        return entry;
    }

    // Predefined colours may name one another; every chain must end at a number.
    void resolveColours()
    {
        auto& colours = m_out.resources.colours;
        std::unordered_map<std::string, std::size_t> places;
        for (std::size_t i = 0; i < colours.size(); ++i)
            places.emplace(colours[i].id, i);
        std::vector<Colour> resolved;
        for (std::size_t i = 0; i < colours.size(); ++i) {
            const pugi::xml_node element = nodesOf(Section::Colours)[i];
            const AttributeAt at{m_document, element, element.attribute("clrValue")};
            std::size_t end = i;
            for (std::size_t steps = 0; !colours[end].colour.predefined.empty(); ++steps) {
                if (steps == kLongestColourChain)
                    at.fail(Code::LoopingReference,
                            "the predefined colours name one another in a circle or in too long a chain");
                m_out.index.check(at, Section::Colours, colours[end].colour.predefined);
                end = places.at(colours[end].colour.predefined);
            }
            resolved.push_back(colours[end].colour);
            m_colours.emplace(colours[i].id, resolved.back().value);
        }
        for (std::size_t i = 0; i < colours.size(); ++i)
            colours[i].colour.value = resolved[i].value;
    }

    /// Checks the names in each entry and gives colours that are names their values.
    template <class Entry>
    void follow(std::vector<Entry>& entries)
    {
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const pugi::xml_node element = nodesOf(kSectionOf<Entry>)[i];
            for (const pugi::xml_attribute attribute : element.attributes()) {
                const Field<Entry>* field = findField<Entry>(attribute.name());
                if (field != nullptr)
                    followField({m_document, element, attribute}, *field, entries[i]);
            }
        }
    }

    template <class Entry>
    void followField(const AttributeAt& at, const Field<Entry>& field, Entry& entry)
    {
        if (const auto* text = std::get_if<std::string Entry::*>(&field.member);
            text && field.refersTo != Section::None)
            m_out.index.check(at, field.refersTo, entry.*(*text));
        if (const auto* colour = std::get_if<Colour Entry::*>(&field.member)) {
            Colour& value = entry.*(*colour);
            m_out.index.check(at, Section::Colours, value.predefined);
            if (!value.predefined.empty())
                value.value = m_colours.at(value.predefined);
        }
    }

    void readPictures()
    {
        auto& pictures = m_out.resources.pictures;
        for (std::size_t i = 0; i < pictures.size(); ++i) {
            const pugi::xml_node element = nodesOf(Section::Pictures)[i];
            if (!addPictureFile(pictures[i], element, pictures[i].caption, 100))
                m_document.fail(Code::MissingPicture, element, "Caption",
                                "the package has no file \"" + printable(pictures[i].caption) + '"');
            for (const std::int32_t scale : kLargerScales)
                addPictureFile(pictures[i], element, scaledFileName(pictures[i].caption, scale), scale);
        }
    }

    // A file that several entries name is looked at once.
    bool addPictureFile(Picture& picture, pugi::xml_node element, const std::string& name, std::int32_t scale)
    {
        const std::string spelling(m_files.spellingOf(name));
        if (spelling.empty())
            return false;
        auto known = m_probed.find(spelling);
        if (known == m_probed.end()) {
            const auto info = probePicture(*m_files.find(spelling), spelling);
            if (!info)
                m_document.fail(info.error().code, element, "Caption", spelling + ": " + info.error().message);
            known = m_probed.emplace(spelling, info.value()).first;
        }
        // Each entry becomes a picture of its own, also where several name one file.
        m_pixels += std::int64_t(known->second.width) * known->second.height * known->second.frames;
        m_pictureBytes += m_files.find(spelling)->size();
        if (m_pixels > kPixelsOfPackage || m_pictureBytes > kPackageBytes)
            m_document.fail(Code::PictureTooLarge, element, "Caption", "the package's pictures are too large together");
        picture.files.push_back({scale, spelling, known->second});
        return true;
    }

    void checkImageSections()
    {
        std::unordered_map<std::string, const Picture*> pictures;
        for (const Picture& picture : m_out.resources.pictures)
            pictures.emplace(picture.id, &picture);
        const auto& sections = m_out.resources.imageSections;
        for (std::size_t i = 0; i < sections.size(); ++i)
            checkImageSection(sections[i], nodesOf(Section::ImageSections)[i], pictures);
    }

    void checkImageSection(const ImageSection& section, pugi::xml_node element,
                           const std::unordered_map<std::string, const Picture*>& pictures) const
    {
        const std::int32_t width = section.right - section.left;
        const std::int32_t height = section.bottom - section.top;
        if (width < 0 || height < 0)
            m_document.fail(Code::OutOfRange, element, width < 0 ? "right" : "bottom",
                            "the source rectangle is turned inside out");
        if (section.picture.empty())
            return;
        const PictureInfo& info = pictures.at(section.picture)->files.front().info;
        const std::string size = std::to_string(info.width) + " x " + std::to_string(info.height);
        if (section.right > info.width || section.bottom > info.height)
            m_document.fail(Code::OutsidePicture, element, section.right > info.width ? "right" : "bottom",
                            "the source rectangle reaches beyond its picture of " + size);
        const bool isWhole = width == 0 || height == 0;
        const std::int32_t longer = isWhole ? std::max(info.width, info.height) : std::max(width, height);
        if (section.imageCount.value_or(1) > longer)
            m_document.fail(Code::OutOfRange, element, "ImageCount", "the section has fewer pixels than images");
        if (section.leftWidth + section.rightWidth > width)
            m_document.fail(Code::OutsidePicture, element, "LeftWidth", "the fixed borders are wider than the section");
        if (section.topHeight + section.bottomHeight > height)
            m_document.fail(Code::OutsidePicture, element, "TopHeight",
                            "the fixed borders are higher than the section");
    }

    static constexpr std::size_t kLongestColourChain = 64;

    const XmlDocument& m_document;
    const PackageFiles& m_files;
    ReadResources m_out;
    std::array<std::vector<pugi::xml_node>, kSections> m_nodes;
    std::set<std::string> m_seen;
    std::unordered_map<std::string, std::uint32_t> m_colours;
    std::map<std::string, PictureInfo> m_probed;
    std::int64_t m_pixels = 0;
    std::size_t m_pictureBytes = 0;
};

} // namespace

ReadResources readResources(const XmlDocument& document, const PackageFiles& files)
{
    return ResourceReader(document, files).read();
}

} // namespace ambrel::skin
