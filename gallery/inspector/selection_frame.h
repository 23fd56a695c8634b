// The frame around the selected object: four thin forms over the page.
#pragma once

#include "gallery/scene.h"

#include <array>

namespace gallery {

class SelectionFrame {
public:
    explicit SelectionFrame(Scene& scene);

    /// Around the object where it is now; null or an object that is not shown: no frame.
    void surround(IVexControlBase* object);
    const std::array<ComPtr<IUIFormObj>, 4>& edges() const { return m_edges; }

private:
    void setVisible(bool isVisible);

    Scene& m_scene;
    std::array<ComPtr<IUIFormObj>, 4> m_edges;
    Rect m_shown;
    bool m_isVisible = true;
};

} // namespace gallery
