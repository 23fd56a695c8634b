#pragma once

#include "ambrel/skin/model.h"
#include "ambrel/skin/vocabulary.h"

#include <functional>

/// Changing a skin that was read or made by code, so that writing and reading it gives what was set.
namespace ambrel::skin {

/// Gives a property of an object a value, where the skin has one already there, else as one of the object's own. A key
/// map may lack its key then, see addMissingKeys. `kind` counts where the skin does not know the property.
void setValue(const Skin& skin, SkinObject& object, std::string_view groupPath, std::string_view name, ValueKind kind,
              std::string value);

/// "Pic1", "Pic2"...: the first one that is not taken.
std::string freshName(std::string_view stem, const std::function<bool(const std::string&)>& isTaken);

/// A name for a new object of a control type, which no object of the skin has. Its type is found by it (see typeOf).
std::string freshObjectId(const Skin& skin, std::string_view type);

/// The object as another one of the same class and look, called `name`: without its children.
SkinObject copyAs(const SkinObject& object, std::string id, std::string name);

/// The bytes of a picture for a scale in percent.
struct PictureForm {
    std::int32_t scale;
    Bytes bytes;
};

/// Gives a picture other files, by ascending scale, the first for 100 percent. They are called as the picture's files
/// were, else as its caption wishes, with a number before the ending where such names are taken; the caption follows.
/// Former files stay where another picture uses them. Fails, and changes nothing, when the bytes are no picture or the
/// package cannot take them.
Outcome<std::monostate> replacePicture(Skin& skin, Picture& picture, std::vector<PictureForm> forms);

/// Takes those entries out of shareres.xml for which `isGone` answers true and to which nothing in the skin refers,
/// pictures with their files. What only such an entry refers to goes, too, when it is gone as well.
void removeUnused(Skin& skin, const std::function<bool(Section, const std::string& id)>& isGone);

} // namespace ambrel::skin
