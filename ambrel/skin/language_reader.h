#pragma once

#include "ambrel/skin/model.h"
#include "ambrel/skin/xml_document.h"

namespace ambrel::skin {

/// Reads languages.xml: an element for each language, in it one for each text.
std::vector<LanguageTexts> readLanguages(const XmlDocument& document);

/// The same as a file: what translators work on.
Bytes writeLanguages(const std::vector<LanguageTexts>& languages);

} // namespace ambrel::skin
