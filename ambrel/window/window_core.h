// One window of the runtime: the host window, its object tree's services, its input, messages and painting.
#pragma once

#include "ambrel/ambrel.h"
#include "ambrel/objects/invalid_region.h"
#include "ambrel/objects/skin_object_core.h"
#include "ambrel/trace/clock.h"
#include "ambrel/window/frame_regions.h"
#include "ambrel/window/host_window.h"
#include "ambrel/window/input_router.h"
#include "ambrel/window/message_registry.h"
#include "ambrel/window/outline_drag.h"
#include "ambrel/window/tool_tip.h"
#include "ambrel/window/tree_scene.h"
#include "ambrel/window/window_surface.h"

#include <unordered_map>
#include <utility>
#include <vector>

namespace ambrel {

/// How a window behaves towards the desktop.
struct WindowTraits {
    SkinRect resizeBorder{4, 4, 4, 4}; // widths at 96 dots per inch
    SkinSize minSize{0, 0};
    SkinSize maxSize{0, 0}; // 0: no limit
    bool resizable = false;
    bool dragable = false;         // by its content
    bool dragsFull = true;         // false: an outline is moved or sized, and the window when the button is released
    bool popup = true;             // false: a child of its parent window
    bool perPixel = false;         // the window's own alpha reaches the desktop
    bool shaped = false;           // its region follows what is painted
    bool blendsWithParent = false; // a child window: where nothing is drawn, it shows what its parent shows there
    bool usesFrameRegions = false;
    bool startsAfresh = false; // its objects are told each time it is shown again
};

/// What RootWindow, the face of the tree's root, stands on. Lives inside it; while the platform's window exists it
/// holds the face, so a window lives until it is closed or its holder destroys it.
class WindowCore final : public RootServices, private HostWindow::Client, private SceneWindow, private Clock::Listener {
public:
    WindowCore(SkinObjectCore& root, IAmbrel& face);
    WindowCore(const WindowCore&) = delete;
    WindowCore& operator=(const WindowCore&) = delete;
    ~WindowCore();

    bool create(HWND parent, const Rect& rect);
    void destroy() noexcept { m_window.destroy(); }

    // RootServices
    IAmbrel* ambrel() noexcept override { return &m_face; }
    HWND window() const noexcept override { return m_window.handle(); }
    hyper renderDevice() const noexcept override { return m_surface.device(); }
    IVexRenderDC* renderContext() noexcept override { return m_surface.context(); }
    IVexRes* resources() noexcept override;
    void invalidate(const Rect& rect) override;
    void paintNow() override;
    ObjectNode* focusNode() const noexcept override { return nodeOf(m_router.focused()); }
    bool setFocus(ObjectNode* node) override;
    void shiftFocus(bool forward) override { m_router.shiftFocus(forward); }
    bool showsFocusMarks() const noexcept override { return m_keyboardCues; }
    ObjectNode* captureNode() const noexcept override { return nodeOf(m_router.captured()); }
    ObjectNode* hotNode() const noexcept override { return nodeOf(m_router.hot()); }
    void nodeWithdrawn(ObjectNode& node) override;
    void nodeDetached(ObjectNode& node) noexcept override;
    void finalCreatePending(ObjectNode& node) override;
    void finalCreateDone(ObjectNode& node) noexcept override;
    void objectEvent(ObjectNode& node, long id, hyper wParam, hyper lParam) override;
    void toolTipChanged(ObjectNode& node) override;

    // For the face.
    WindowTraits& traits() noexcept { return m_traits; }
    InputRouter& router() noexcept { return m_router; }
    MessageRegistry& messages() noexcept { return m_messages; }
    ObjectNode& rootNode() noexcept { return m_root.node(); }
    /// Gives a window that was made already a parent (owner) and a place in it; null keeps the one it has.
    bool moveInto(HWND parent, const Rect& rect);
    /// Makes it a child of its parent or a window of its own, as the traits say.
    void applyParent();
    /// Brings the platform's styles in line with the traits.
    void applyTraits();
    void sendToReceiver(HWND window, long message, hyper wParam, hyper lParam);
    void setReceiver(AmbrelEventReceiver* receiver) noexcept { m_receiver = receiver; }
    AmbrelEventReceiver* receiver() const noexcept { return m_receiver; }
    /// What the platform would answer to the message that is being handled; 0 when none is.
    LRESULT defaultForCurrent();
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) { return windowMessage(message, wParam, lParam); }
    void setFrozen(bool frozen);
    bool isFrozen() const noexcept { return m_frozen; }
    /// The part that freezing concerns; empty for all of it.
    void setFrozenPart(const Rect& part);
    void setBatching(bool batching);
    bool isBatching() const noexcept { return m_batching; }
    /// Paints all of it into the surface, whatever waits; for pictures without a display and for Draw.
    void renderAll(Size size);
    WindowSurface& surface() noexcept { return m_surface; }
    /// The rectangles painted by the last paint, joined.
    const Rect& lastPainted() const noexcept { return m_lastPainted; }
    void setRefreshType(VEX_REFRESH_TYPE type) noexcept { m_refreshType = type; }
    VEX_REFRESH_TYPE refreshType() const noexcept { return m_refreshType; }
    void setHotKeys(bool used) noexcept { m_hotKeys = used; }
    bool usesHotKeys() const noexcept override { return m_hotKeys; }
    void updateShape();
    void fade(bool show, VEX_FADE_TYPE type);
    /// Gives the client area this size; false without a window.
    bool resizeWindow(Size client);
    /// Moves the window into the middle of its owner, or of the monitor's work area; false without a window.
    bool centre();
    FrameRegions& frameRegions() noexcept { return m_frameRegions; }
    /// The object that is pressed gets every move and the release, wherever they happen; without one, the window does.
    bool capturePointer(bool captured);
    void acceptFiles(ObjectNode& node, bool accept);
    /// A foreign window that hears of object drags over it by VEXSM_DRAGING and VEXSM_ENDDRAG: wParam the source
    /// object, lParam the point in its client area.
    bool acceptDrags(HWND window);
    bool refuseDrags(HWND window) noexcept;
    /// A window that moves along with this one, until it or the control it was registered for ends.
    void followMoves(HWND window, ObjectNode* control);
    bool unfollowMoves(HWND window) noexcept;
    void moveFollowers();
    /// A message that is passed on to the parent (owner) window.
    void passOn(UINT message, bool pass);

private:
    struct Running; // the message being handled
    struct Follower {
        HWND window;
        WeakNode control;
        bool hasControl;
    };
    /// A position that was adapted to another resolution, so that the way back is exact.
    struct Rescaled {
        Position original;
        int dpi; // of the original
        Position given;
    };
    class Painting;

    void startAfresh() noexcept;

    // HostWindow::Client
    LRESULT windowMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void windowGone() noexcept override;

    // SceneWindow
    void setPointerCapture(bool captured) override;
    bool dragsObjects() override;
    void dragged(const InputAction& action, SkinObjectCore& source) override;

    void clockMoved() override; // Clock::Listener

    // Drags (window_drag.cpp)
    /// What lies under the pointer during an object drag, in whichever window of the runtime.
    struct DragTarget {
        ObjectNode* node = nullptr;
        Point inWindow;            // in the client area of its window
        ComPtr<IVexRes> resources; // of its window
    };
    DragTarget dragTargetAt(Point point);
    void setDragRecord(ISkinObjResBase* source, const DragTarget& target);
    /// What the target's controls wrote into the record of their window comes into this window's.
    void fetchDragRecord();
    void takeBackDragRecord() noexcept;
    void clearDragRecord() noexcept;
    HWND acceptingWindowUnder(Point point, POINT& inWindow);
    ObjectNode* fileReceiverAt(Point point);
    bool onDropFiles(WPARAM, LPARAM, LRESULT&);

    /// Tells every object beneath the root.
    void tellAll(VexMsgID id, hyper lParam1 = 0, hyper lParam2 = 0);
    void finishWaitingObjects();
    /// A window of the platform's has the keyboard now: the object that it belongs to gets the focus here.
    void keyboardWentTo(HWND window);
    void dismissTipUnless(InputTarget hot) noexcept;

    // Messages (window_messages.cpp)
    using Handler = bool (WindowCore::*)(WPARAM, LPARAM, LRESULT&);
    struct HandlerEntry {
        UINT message;
        Handler handler;
    };
    static const HandlerEntry* handlerFor(UINT message) noexcept;
    LRESULT dispatch(UINT message, WPARAM wParam, LPARAM lParam);
    bool serveRegistered(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    bool forward(ObjectNode& node, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result, bool fromParent);
    bool onTimer(WPARAM, LPARAM, LRESULT&);
    bool onTipMessage(WPARAM, LPARAM, LRESULT&);
    bool onShowWindow(WPARAM, LPARAM, LRESULT&);
    bool onDestroy(WPARAM, LPARAM, LRESULT&);
    bool onSceneChanged(WPARAM, LPARAM, LRESULT&);
    bool onGroundChanged(WPARAM, LPARAM, LRESULT&);
    bool onGroundNeeded(WPARAM, LPARAM, LRESULT&);
    void tellGroundChanged();

    // Geometry and the desktop (window_frame.cpp)
    bool onSize(WPARAM, LPARAM, LRESULT&);
    bool onMove(WPARAM, LPARAM, LRESULT&);
    bool onHitTest(WPARAM, LPARAM, LRESULT&);
    bool onCalculateClient(WPARAM, LPARAM, LRESULT&);
    bool onMinMaxInfo(WPARAM, LPARAM, LRESULT&);
    bool onDpiChanged(WPARAM, LPARAM, LRESULT&);
    void moveFollower(HWND follower, Point by) const;
    void rescalePositions(int from, int to);
    bool isTransparentAt(Point onScreen) const;

    // Painting (window_painting.cpp)
    bool onEraseBackground(WPARAM, LPARAM, LRESULT&);
    bool onPaint(WPARAM, LPARAM, LRESULT&);
    bool onPrintClient(WPARAM, LPARAM, LRESULT&);
    void paint(HDC dc, const RECT* exposed);
    /// Takes what is to be painted now out of what waits.
    InvalidRegion takeInvalid();
    /// Asks the system for a paint message for a part, all of it for null. Nothing without a window.
    void askForPaint(const RECT* part);
    /// The same for everything that waits.
    void requestPaint();
    bool presentPerPixel(int opacity = 255);
    void fadeLayer(bool show);

    // Pointer and keys (window_input.cpp)
    PointerFact factOf(WPARAM wParam, LPARAM lParam) const;
    bool onMouseMove(WPARAM, LPARAM, LRESULT&);
    bool onMouseLeave(WPARAM, LPARAM, LRESULT&);
    bool onLeftDown(WPARAM, LPARAM, LRESULT&);
    bool onLeftUp(WPARAM, LPARAM, LRESULT&);
    bool onRightDown(WPARAM, LPARAM, LRESULT&);
    bool onRightUp(WPARAM, LPARAM, LRESULT&);
    bool onWheel(WPARAM, LPARAM, LRESULT&);
    bool onCaptureChanged(WPARAM, LPARAM, LRESULT&);
    bool onKeyDown(WPARAM, LPARAM, LRESULT&);
    bool onKeyUp(WPARAM, LPARAM, LRESULT&);
    bool onCharacter(WPARAM, LPARAM, LRESULT&);
    bool onSystemCharacter(WPARAM, LPARAM, LRESULT&);
    bool character(const CharacterFact& fact);
    bool onSystemCommand(WPARAM, LPARAM, LRESULT&);
    bool onGroupChoice(WPARAM, LPARAM, LRESULT&);
    bool onSetFocus(WPARAM, LPARAM, LRESULT&);
    bool onKillFocus(WPARAM, LPARAM, LRESULT&);
    bool onSetCursor(WPARAM, LPARAM, LRESULT&);
    void trackLeaving();
    bool dragsWindow() const;
    // Moves and sizes by an outline (window_outline.cpp)
    bool beginsOutline(WPARAM command, LPARAM where);
    void moveOutline(Point inWindow);
    void endOutline(bool accepted);
    SizeLimits sizeLimits() const;
    void setKeyboardCues(bool shown);
    void recheckSceneSoon() noexcept;
    void armTipTimer();
    std::int64_t messageTimeMs() const noexcept;

    SkinObjectCore& m_root;
    IAmbrel& m_face;
    HostWindow m_window;
    HWND m_parent = nullptr;      // or owner; as given
    ComPtr<IAmbrel> m_windowHold; // while the platform's window exists
    MessageRegistry m_messages;
    TreeScene m_scene;
    InputRouter m_router;
    InvalidRegion m_invalid;
    int m_requests = 0; // for paint messages, since the last one
    WindowSurface m_surface;
    ToolTip m_tip;
    OutlineDrag m_outline;
    WindowTraits m_traits;
    AmbrelEventReceiver* m_receiver = nullptr;
    Running* m_running = nullptr;
    Rect m_lastPainted;
    Rect m_frozenPart;
    VEX_REFRESH_TYPE m_refreshType = VEX_REFRESH_PART;
    Point m_lastPosition; // on the screen
    int m_dpi = 96;
    std::vector<WeakNode> m_waitingForFinalCreate;
    std::vector<WeakNode> m_fileReceivers;
    std::vector<HWND> m_dragReceivers;
    std::vector<Follower> m_followers;
    std::unordered_map<const ObjectNode*, std::pair<WeakNode, Rescaled>> m_rescaled;
    FrameRegions m_frameRegions;
    std::vector<UINT> m_passedOn;
    WeakNode m_dragOver;
    ComPtr<IVexRes> m_dragResources; // of the other window that the running object drag is over, when they are others
    bool m_dragRecorded = false;     // the record of the running object drag holds objects
    bool m_movesFollowers = false;
    bool m_dragArmed = false;
    Point m_dragPress;
    bool m_keyHandledByFocus = false; // the raw key message, by the object that has the focus
    bool m_keyUsed = false;           // the last key pressed: the character it makes is nobody's any more
    bool m_altUsed = false;           // with another key, since it was pressed
    bool m_trackingLeave = false;
    bool m_keyboardCues = false;
    bool m_hotKeys = true;
    bool m_frozen = false;
    bool m_batching = false;
    bool m_painting = false;
    bool m_recheckPosted = false;
    bool m_changingCapture = false;
    bool m_capturesForApplication = false;
    bool m_wasShown = false;
    bool m_isGround = false; // of a child window that blends with it
    bool m_destroying = false;
};

} // namespace ambrel
