// The pages of the gallery: one file each under pages/.
#pragma once

#include "gallery/scene.h"

#include <span>

namespace gallery {

struct PageInfo {
    const wchar_t* name;  // on the command line and in the files of --shot
    const wchar_t* title; // in the list
    /// Fills the form `page`, whose inside is kPageSize large.
    void (*build)(Scene& scene, IVexControlBase& page);
};

inline constexpr Size kPageSize{760, 560};

std::span<const PageInfo> allPages();

// One per file.
void buildCommandButtonPage(Scene& scene, IVexControlBase& page);
void buildCheckBoxPage(Scene& scene, IVexControlBase& page);
void buildRadioBoxPage(Scene& scene, IVexControlBase& page);
void buildFormPage(Scene& scene, IVexControlBase& page);
void buildSettingsPage(Scene& scene, IVexControlBase& page);
void buildResourcesPage(Scene& scene, IVexControlBase& page);
void buildTextPage(Scene& scene, IVexControlBase& page);
void buildLayoutPage(Scene& scene, IVexControlBase& page);

/// The heading and the sentence at the top of a page; the rest begins at the returned y.
int pageHeading(Scene& scene, IVexControlBase& page, const wchar_t* title, const wchar_t* sentence);
/// Sets a property by its path ("Graphics/RightAlign") to a value as skins write it.
void setProperty(IVexControlBase& control, std::wstring_view path, const std::wstring& value);
/// The same with a shared resource, such as an image section or a text style; null for none.
void setProperty(IVexControlBase& control, std::wstring_view path, IDispatch* resource);

/// Leaves a sample alone that shall not answer the mouse or the Tab key.
void makeStill(IVexControlBase& control);
/// A still mark of the focus around a sample: they cannot all have the focus at once.
void focusSample(Scene& scene, IVexControlBase& page, const Rect& sample);
/// The look of a push button that stays down because it is checked.
ComPtr<IVexImageBase> chosenButtonSection(const Scene& scene);

/// A small heading over a part of a page.
void sectionHeading(Scene& scene, IVexControlBase& page, Point at, const wchar_t* text);

} // namespace gallery
