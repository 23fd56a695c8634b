#include "ambrel/skin/language_reader.h"

#include "ambrel/skin/field_reader.h"
#include "ambrel/skin/vocabulary.h"
#include "ambrel/skin/xml_writer.h"

#include <set>

namespace ambrel::skin {

namespace {

AttributeAt needed(const XmlDocument& document, pugi::xml_node element, std::string_view name)
{
    const pugi::xml_attribute attribute = element.attribute(name.data());
    if (!attribute)
        document.fail(Code::MissingAttribute, element, name, "the attribute is missing");
    return {document, element, attribute};
}

void expectElement(const XmlDocument& document, pugi::xml_node element, std::string_view name)
{
    if (element.name() != name)
        document.fail(Code::UnexpectedElement, element, "only <" + std::string(name) + "> stands here");
}

LanguageTexts readLanguage(const XmlDocument& document, pugi::xml_node element)
{
    expectElement(document, element, names::kLanguage);
    LanguageTexts language;
    language.language = readInteger(needed(document, element, names::kNumber), 0, kLanguages - 1);
    std::set<std::string> keys;
    for (const pugi::xml_node each : elementsOf(element)) {
        expectElement(document, each, names::kText);
        const AttributeAt key = needed(document, each, names::kKey);
        if (!keys.insert(std::string(key.value())).second)
            key.fail(Code::DuplicateName, "another text of the language has this key");
        language.texts.push_back(
            {std::string(key.value()), std::string(needed(document, each, names::kValue).value())});
    }
    return language;
}

} // namespace

std::vector<LanguageTexts> readLanguages(const XmlDocument& document)
{
    std::vector<LanguageTexts> languages;
    std::set<std::int32_t> numbers;
    for (const pugi::xml_node element : elementsOf(document.root(names::kRoot))) {
        languages.push_back(readLanguage(document, element));
        if (!numbers.insert(languages.back().language).second)
            document.fail(Code::DuplicateName, element, names::kNumber, "the language stands there twice");
    }
    return languages;
}

Bytes writeLanguages(const std::vector<LanguageTexts>& languages)
{
    XmlWriter out;
    out.begin(names::kRoot);
    for (const LanguageTexts& language : languages) {
        out.begin(names::kLanguage);
        out.attribute(names::kNumber, std::to_string(language.language));
        for (const KeyedText& each : language.texts) {
            out.begin(names::kText);
            out.attribute(names::kKey, each.key);
            out.attribute(names::kValue, each.text);
            out.end();
        }
        out.end();
    }
    out.end();
    return out.take();
}

} // namespace ambrel::skin
