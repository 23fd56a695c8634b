// Texts in several languages and the properties that show them.
#pragma once

#include "ambrel/skin/model.h"
#include "host/host.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ambrel {

/// Which property shows the text of which key. Properties are told by their addresses, which are never followed here.
class BoundTexts {
public:
    struct Binding {
        std::wstring key;
        std::wstring own; // its text where a language has none
        hyper property;
    };

    /// Replaces the same property's binding to the same key.
    void add(std::wstring_view key, std::wstring_view text, hyper property);
    bool remove(std::wstring_view key, hyper property);
    const std::vector<Binding>& bindings() const noexcept { return m_bindings; }

    /// What a key means in a language: as the skin says, else, in the language that is in use, as the first property of
    /// the key has it.
    std::optional<std::wstring> find(const skin::Skin* skin, VEX_LANGUAGE language, VEX_LANGUAGE used,
                                     std::wstring_view key) const;

    /// All texts, for translators: those of the skin, and under the language that is in use those of the properties.
    std::vector<skin::LanguageTexts> all(const skin::Skin* skin, VEX_LANGUAGE used) const;

private:
    std::vector<Binding> m_bindings;
};

/// The skin's texts of a language; null when it has none.
const skin::LanguageTexts* textsOf(const skin::Skin* skin, VEX_LANGUAGE language) noexcept;

} // namespace ambrel
