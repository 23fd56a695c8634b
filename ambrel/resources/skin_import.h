// Giving controls the look and settings of a skin.
#pragma once

#include "ambrel/resources/skin_resources.h"
#include "ambrel/skin/errors.h"

#include <memory>

namespace ambrel {

class VexRes;

/// A skin that was read and checked, or the error that is reported already (trace and IErrorInfo).
struct ReadSkin {
    HRESULT status = E_FAIL;
    std::shared_ptr<const skin::Skin> skin;
};

/// Reads a package from a module's resources.
ReadSkin readModuleSkin(HINSTANCE module, long resourceId, std::wstring_view resourceType);
/// Reads a zip file or a folder.
ReadSkin readSkinFrom(std::wstring_view path);

/// Reports an error: to the trace, and as the thread's IErrorInfo. Answers the status that stands for its code.
HRESULT reportSkinError(const skin::SkinError& error, IUnknown* object);

/// Which of a skin's objects describe which controls, looked up quickly. Borrows the skin.
class ObjectIndex {
public:
    explicit ObjectIndex(const skin::Skin& skin);

    /// What a control is found by.
    struct Control {
        std::string name;
        std::wstring classId;
        std::string type; // only of a control that does not know its class
        static Control of(IVexControlBase& control);
    };

    /// The object of the control's class and name, else the first of its class, those at the top before those within
    /// others; null when there is none.
    const skin::SkinObject* find(const Control& control) const;
    /// Whether the object is called like the control.
    static bool isNamed(const skin::SkinObject& object, const Control& control) noexcept
    {
        return !control.name.empty() && (object.name == control.name || object.id == control.name);
    }

private:
    struct Entry {
        const skin::SkinObject* object;
        std::wstring classId;
        std::string type;
    };
    std::vector<Entry> m_entries;
};

/// Sets the properties and settings that a skin gives an object; others keep their values. The control is told once
/// (VEXSM_ACCESSCONFIGED) and redrawn. `moves`: its position too.
void applyObject(const skin::Skin& skin, const skin::SkinObject& object, IVexControlBase& control,
                 const SkinResourceSet& resources, bool moves);

/// An object as a skin describes it.
struct Description {
    const skin::Skin& skin;
    const skin::SkinObject& object;
};

/// The same for a control that has what an earlier edition of the skin gave it (null: it has nothing of it): only what
/// that one said differently is set, so that what the application changed meanwhile stays.
void applyChanges(const Description& now, const Description* before, IVexControlBase& control,
                  const SkinResourceSet& resources);
/// The same when the properties are set already: only the settings, and the control is told.
void applySettings(const Description& now, const Description* before, IVexControlBase& control,
                   const SkinResourceSet& resources);

/// Creates the object and what lies beneath it under a parent (may be null) and gives them their look. Null when its
/// class cannot be created.
morvane::ComPtr<IVexControlBase> createObject(const skin::Skin& skin, const skin::SkinObject& object, IVexRes* owner,
                                              ISkinObjResBase* parent, const SkinResourceSet& resources);

} // namespace ambrel
