// Cursors as shared resources.
#pragma once

#include "ambrel/render/picture.h"
#include "frame/platform/handles.h"

namespace ambrel {

/// IVexCursor: one of the system's cursors, or a picture, which follows the scale as pictures do. A cursor file keeps
/// its hot spot; other pictures have theirs at the left top corner.
class Cursor : public SharedResource<IVexCursor> {
public:
    static constexpr IID kImplementationIid = {
        0x48E1D0F7, 0xA263, 0x4B8C, {0x85, 0x3D, 0x92, 0x6F, 0xC4, 0x17, 0xB0, 0xE9}};

    Cursor() : SharedResource(VEXOBJTYPE_CURSOR, L"SkinCursor") {}
    void* findInterface(REFIID iid) noexcept;

    /// A system cursor by its number (32512 is the arrow); 0 for the picture.
    void setStandard(long id) noexcept;
    /// The cursor to show, owned by this object or by the system; the arrow when there is no other.
    HCURSOR handle();

    STDMETHODIMP get_ImageObj(IVexPicture** result) noexcept override { return give(m_pictureObject, result); }
    STDMETHODIMP put_ImageObj(IVexPicture* picture) noexcept override;
    STDMETHODIMP GetStandardCursorID(long* result) noexcept override { return give(m_standard, result); }
    STDMETHODIMP IsStandardCursor(VARIANT_BOOL* result) noexcept override { return give(m_standard != 0, result); }
    STDMETHODIMP GetCursorHandle(hyper* result) noexcept override;
    STDMETHODIMP SetCursor() noexcept override;

protected:
    void readConfig(const ConfigNode& node) override;
    void writeConfig(ConfigNode& node) const override;
    void dropReferences() override;

private:
    static constexpr long kArrow = 32512;

    /// Null when there is no picture to show.
    HCURSOR pictureCursor();

    long m_standard = kArrow;
    morvane::ComPtr<IVexPicture> m_pictureObject;
    morvane::UniqueCursor m_made;  // from the picture, when first asked for
    unsigned m_madeGeneration = 0; // of the picture
    Scale m_madeScale;
};

} // namespace ambrel
