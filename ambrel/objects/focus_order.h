// The order in which the Tab key walks over a window, and the arrow keys over a group in it.
#pragma once

#include "ambrel/objects/object_node.h"

#include <optional>

namespace ambrel {

/// What makes objects members of one group: two are in the same one when both parts are equal.
struct FocusGroup {
    const ObjectNode* parent = nullptr; // null for groups that are numbered throughout the window
    long number = 0;

    friend bool operator==(const FocusGroup&, const FocusGroup&) = default;
};

/// Objects of which one at a time is chosen, such as radio boxes: Tab stops once for all of them. Answers without
/// running foreign code.
class FocusGroups {
public:
    /// Nothing for an object in no group.
    virtual std::optional<FocusGroup> groupOf(ObjectNode& node) const = 0;
    virtual bool isChosen(const ObjectNode& node) const = 0;

protected:
    ~FocusGroups() = default;
};

/// The tab stop after (or before) `from`: those that have a place in the tab order, by that, then the others in tree
/// order, a parent before its children and lower children first; wraps around. Only shown, usable tab stops with an
/// area count, and of a group the chosen one; when none is, the one that is met first. With `from` null (or not beneath
/// `root`) the first (last) one. Null when there is none but `from` and its group.
ObjectNode* nextTabStop(ObjectNode& root, ObjectNode* from, bool forward, const FocusGroups* groups = nullptr);

/// The tab stop after (or before) `from` in its group; wraps around. Null when `from` is in no group or alone there.
ObjectNode* nextInGroup(ObjectNode& root, ObjectNode& from, bool forward, const FocusGroups& groups);

} // namespace ambrel
