#pragma once

#include "ambrel/skin/model.h"

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

/// Adds a file of a picture to the package's files, under a name that is free: `wish`, or with a number before its
/// ending. Answers the name; fails as PackageFiles::add does.
Outcome<std::string> addFile(Skin& skin, std::string_view wish, Bytes bytes);

/// Replaces the bytes of the picture's 100 percent file and forgets its larger forms, which show the former picture.
/// The files stay where another picture uses them. Fails, and changes nothing, when the bytes are no picture.
Outcome<std::monostate> replacePicture(Skin& skin, Picture& picture, Bytes bytes);

} // namespace ambrel::skin
