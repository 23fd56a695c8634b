// Registration scripts: a tree of keys and values in a small language. Portable; text is UTF-16, as the registry keeps
// it.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace morvane::registration {

/// The keys that a script can start from.
enum class Root { ClassesRoot, CurrentUser, LocalMachine, Users, PerformanceData, DynamicData, CurrentConfig };

using Bytes = std::vector<std::uint8_t>;

/// What a value holds: the letters `s`, `d` and `b` of the language.
using Data = std::variant<std::u16string, std::uint32_t, Bytes>;

struct NamedValue {
    std::u16string name;
    Data data;
    bool operator==(const NamedValue&) const = default;
};

enum class Removal {
    Whole,       // unregistration deletes the key with everything below it
    NoRemove,    // unregistration keeps the key and removes only what the script lists below it
    ForceRemove, // as Whole; registration, too, deletes everything below before it writes
};

struct Key {
    std::u16string name;
    Removal removal = Removal::Whole;
    std::optional<Data> defaultValue;
    std::vector<NamedValue> values;
    std::vector<Key> keys;
    bool operator==(const Key&) const = default;
};

/// One root and the keys below it.
struct Section {
    Root root = Root::ClassesRoot;
    std::vector<Key> keys;
    bool operator==(const Section&) const = default;
};

using Script = std::vector<Section>;

/// Where in the script's text something stands; both count from 1, columns in characters of the text before
/// replacement.
struct Position {
    int line = 1;
    int column = 1;
    bool operator==(const Position&) const = default;
};

/// A script that cannot be understood. what() is "line:column: reason".
class ScriptError : public std::runtime_error {
public:
    ScriptError(Position at, const std::string& reason)
        : std::runtime_error(std::to_string(at.line) + ":" + std::to_string(at.column) + ": " + reason), m_position(at)
    {
    }
    Position position() const noexcept { return m_position; }

private:
    Position m_position;
};

/// Name between percent signs -> text that stands for it. The text is interpreted with the script: quotes in it are
/// doubled.
using Replacements = std::map<std::u16string, std::u16string, std::less<>>;

/// Keys deeper than this, and longer names, the registry would refuse.
inline constexpr int kMaxDepth = 64;
inline constexpr std::size_t kMaxNameLength = 255;

/// Reads a whole script; nothing is done with it yet. Throws ScriptError.
Script parseScript(std::u16string_view text, const Replacements& replacements);

/// The text of a script: parseScript reads the same tree from it.
std::u16string writeScript(const Script& script);

/// The script's abbreviation of a root ("HKCR").
std::u16string_view abbreviationOf(Root root) noexcept;

/// The root that an abbreviation or full name means; letters in any case. Empty for other words.
std::optional<Root> rootNamed(std::u16string_view word) noexcept;

} // namespace morvane::registration
