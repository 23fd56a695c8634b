// What the objects of a window ask of it. Implemented by the root; found through any node by ObjectNode::services().
#pragma once

#include "ambrel/objects/object_node.h"
#include "host/host.h"

namespace ambrel {

/// Everything borrowed unless said otherwise. Calls may run foreign code only where it says so.
class RootServices {
public:
    virtual IAmbrel* ambrel() noexcept = 0;
    /// The host window, null before it is created and after it is gone.
    virtual HWND window() const noexcept = 0;
    virtual hyper renderDevice() const noexcept = 0;
    /// The drawing context of the window's surface; null outside of painting.
    virtual IVexRenderDC* renderContext() noexcept = 0;
    /// The resource object of the window's skin; may be null.
    virtual IVexRes* resources() noexcept = 0;

    /// Asks for a part of the window (window coordinates, already cut to what the object shows) to be painted.
    virtual void invalidate(const Rect& rect) = 0;
    /// Paints at once what waits to be painted. Runs foreign code.
    virtual void paintNow() = 0;

    virtual ObjectNode* focusNode() const noexcept = 0;
    /// Moves the keyboard focus to a node of this window, or away from all with null: records the change, then tells
    /// the old owner by SkinObjectCore::focusLost and the new one by focusGained. False when the node may not have it.
    /// Runs foreign code.
    virtual bool setFocus(ObjectNode* node) = 0;
    /// Moves the focus to the next (previous) tab stop. Runs foreign code.
    virtual void shiftFocus(bool forward) = 0;
    /// Whether the keyboard is in use, so that the focus mark is shown.
    virtual bool showsFocusMarks() const noexcept = 0;

    virtual ObjectNode* captureNode() const noexcept = 0;
    virtual ObjectNode* hotNode() const noexcept = 0;

    /// A subtree was hidden or disabled: focus, capture and hover leave it. Runs foreign code.
    virtual void nodeWithdrawn(ObjectNode& node) = 0;
    /// A subtree is no part of the window any more (already unlinked): focus, capture and hover leave it without being
    /// told. Message registrations stay, are not served until it is part of a window again, and end with the node; keep
    /// them by WeakNode. No foreign code runs.
    virtual void nodeDetached(ObjectNode& node) noexcept = 0;

    /// An object was attached and still waits for FinalCreate; the window finishes what is still waiting when it is
    /// shown.
    virtual void finalCreatePending(ObjectNode& node) = 0;
    virtual void finalCreateDone(ObjectNode& node) noexcept = 0;

    /// An object's CallEvent, on its way to the event receiver and scripts. Runs foreign code.
    virtual void objectEvent(ObjectNode& node, long id, hyper wParam, hyper lParam) = 0;
    /// An object's tool tip changed or should be shown.
    virtual void toolTipChanged(ObjectNode& node) = 0;

protected:
    ~RootServices() = default;
};

} // namespace ambrel
