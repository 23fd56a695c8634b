#pragma once

#include "ambrel/skin/container.h"
#include "ambrel/skin/model.h"

#include <string>
#include <string_view>
#include <vector>

namespace ambrel::skin {

/// Writes an XML text, indented by two spaces, that reads back as what was given.
class XmlWriter {
public:
    XmlWriter();

    /// Begins an element; attributes follow until the next begin, text or end.
    void begin(std::string_view name);
    void attribute(std::string_view name, std::string_view value);
    void attributes(const std::vector<Attribute>& all);
    void end();

    void raw(const RawElement& element);
    void raw(const std::vector<RawElement>& elements);

    /// The whole text; after every element has ended.
    Bytes take();

private:
    struct Open {
        std::string name;
        bool hasChildren = false;
        bool hasText = false;
    };

    void text(std::string_view text);
    void finishTag();
    bool insideText() const;

    std::string m_out;
    std::vector<Open> m_open;
    bool m_tagOpen = false;
};

} // namespace ambrel::skin
