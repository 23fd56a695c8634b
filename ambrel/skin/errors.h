#pragma once

#include <stdexcept>
#include <string>
#include <utility>
#include <variant>

namespace ambrel::skin {

/// What is wrong with a skin package. The numbers are stable: tools and documentation quote them.
enum class Code {
    // The container
    NotFound = 100,           ///< no such file or folder, or it cannot be read
    NotAPackage = 101,        ///< neither a zip archive nor a folder
    TruncatedArchive = 102,   ///< a zip record reaches past the end
    BrokenArchive = 103,      ///< zip records contradict each other
    UnsupportedArchive = 104, ///< encrypted, split, 64-bit, or compressed in a way other than deflate
    BadFileName = 105,        ///< a name that could leave the package or that Windows cannot hold
    DuplicateFile = 106,      ///< two files whose names differ in letter case at most
    TooManyFiles = 107,
    FileTooLarge = 108,
    PackageTooLarge = 109,
    BadChecksum = 110,
    LinkInFolder = 111, ///< a symbolic link, or anything else that is neither a file nor a folder
    CannotWrite = 112,
    MissingFile = 113, ///< the package lacks one of its XML files
    // The XML text
    BadXml = 200,
    BadEncoding = 201, ///< not UTF-8, or a character XML does not allow
    DoctypeRefused = 202,
    TooDeep = 203,
    TooManyNodes = 204,
    DuplicateAttribute = 205,
    TextTooLong = 206,
    // The contents
    UnexpectedElement = 300,
    MissingElement = 301,
    MissingAttribute = 302,
    BadNumber = 303,
    OutOfRange = 304,
    BadBoolean = 305,
    BadColour = 306,
    BadPosition = 307,
    BadClass = 308,
    BadType = 309,
    DuplicateName = 310,
    UnknownReference = 311, ///< no resource of that kind has the name
    WrongReference = 312,   ///< the name belongs to a resource of another kind
    LoopingReference = 313,
    MissingKeyMap = 314,
    BadKeyMap = 315,
    BadName = 316,
    // The pictures
    MissingPicture = 400,
    UnknownPicture = 401, ///< the bytes are no picture of a known kind
    BrokenPicture = 402,
    PictureTooLarge = 403,
    OutsidePicture = 404, ///< an image section reaches beyond its picture
    // Saving
    NotTheSame = 500, ///< the saved package would not read back as the skin it was made from
};

/// One fault of a package, with the place a person would look at.
struct SkinError {
    Code code = Code::NotAPackage;
    std::string file;      ///< name inside the package, or the package's own path
    int line = 0;          ///< from 1; 0 when the fault is not at a place in a text
    int column = 0;        ///< from 1, in characters
    std::string element;   ///< the element concerned, empty for none
    std::string attribute; ///< the attribute concerned, empty for none
    std::string message;

    /// The error as one line: "file:line:column: <element> attribute: message (error 304)".
    std::string text() const;

    bool operator==(const SkinError&) const = default;
};

/// A value, or the error that kept it from being made.
template <class Value>
class [[nodiscard]] Outcome {
public:
    Outcome(Value value) : m_state(std::move(value)) {}
    Outcome(SkinError error) : m_state(std::move(error)) {}

    bool ok() const { return m_state.index() == 0; }
    explicit operator bool() const { return ok(); }

    /// The value; only when ok().
    Value& value() { return std::get<0>(m_state); }
    const Value& value() const { return std::get<0>(m_state); }
    Value* operator->() { return &value(); }
    const Value* operator->() const { return &value(); }

    /// The error; only when not ok().
    const SkinError& error() const { return std::get<1>(m_state); }

private:
    std::variant<Value, SkinError> m_state;
};

/// Carries an error from the place that found it to the public function that was called; never leaves this folder.
class SkinFailure : public std::runtime_error {
public:
    explicit SkinFailure(SkinError error) : std::runtime_error(error.message), m_error(std::move(error)) {}
    const SkinError& error() const { return m_error; }

private:
    SkinError m_error;
};

/// Raises a failure that concerns a file as a whole.
[[noreturn]] void failFile(Code code, std::string file, std::string message);

/// Runs `make` and turns a failure inside it into the outcome's error.
template <class Make>
auto outcomeOf(Make make) -> Outcome<decltype(make())>
{
    try {
        return make();
    } catch (const SkinFailure& failure) {
        return failure.error();
    }
}

} // namespace ambrel::skin
