// The running skin with what was changed in it, for saving.
#pragma once

#include "ambrel/resources/resource_store.h"
#include "ambrel/resources/skin_resources.h"
#include "ambrel/skin/errors.h"

#include <span>

namespace ambrel {

/// What a skin is made of when it is saved. Borrowed.
struct RunningSkin {
    const skin::Skin* opened; // null when none is open: a new skin in the full layout is made
    const SkinResourceSet& resources;
    const ResourceStore& store;
    std::vector<morvane::ComPtr<IVexControlBase>> controls; // of all windows, in tree order
};

struct ExportedSkin {
    skin::Skin skin;
    SkinResourceSet resources; // of its entries: those of the running skin, and those that were added
};

/// The opened skin with the values that its resources and controls have now.
///
/// An object of the skin takes the values of the control of its class and name, else of the first control without a
/// name that follows it. A named control that follows an object of another name, or none, gets an object of its own
/// when its values differ from what the skin, or its class, gives it. Parts of composite controls are their owners'
/// business.
///
/// Only differences are written: what nobody changed stays as the skin spells it. Runs foreign code (a control of each
/// class is made to know what the class starts with).
skin::Outcome<ExportedSkin> exportSkin(const RunningSkin& running);

} // namespace ambrel
