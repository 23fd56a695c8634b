// Decides which object a window's raw input concerns. Portable: it sees points, keys and a scene that answers
// questions, and speaks to objects only through that scene.
#pragma once

#include "base/geometry.h"

#include <cstdint>
#include <vector>

namespace ambrel {

/// An object for as long as it stands in the scene; 0 is none. Never reused while a router still knows it: whoever
/// takes an object out of the scene tells the router (objectGone).
using InputTarget = std::uint64_t;

enum class PointerButton { Left, Right, Middle };

/// What the platform reports with every pointer fact.
struct PointerFact {
    morvane::Point point;    // in window coordinates
    unsigned flags = 0;      // the buttons and modifier keys held, as the platform's messages carry them
    std::int64_t timeMs = 0; // on any clock that does not go back
};

struct KeyFact {
    int key = 0; // virtual key
    bool control = false;
    bool alt = false;
    bool shift = false;
    bool repeated = false;  // held down
    bool makesText = false; // Ctrl and Alt together stand for AltGr, which writes characters
};

struct CharacterFact {
    wchar_t character = 0; // as the user's keyboard makes it
    bool alt = false;
    bool repeated = false;
};

enum class InputKind {
    Enter,
    Move,
    Leave,
    LeftDown,
    LeftUp,
    LeftDoubleClick, // in place of the second LeftDown
    PressCancelled,  // a press ended without a release on the object
    RightDown,
    RightUp,
    Wheel,
    FocusGained,
    FocusLost,
    Activate, // a press and release by the keyboard
    HotKey,   // its combination was pressed
    DragStart,
    DragMove,
    DragEnd,    // released; the point tells where
    DragCancel, // given up: Escape, capture lost, object gone
};

struct InputAction {
    InputKind kind;
    InputTarget target;
    morvane::Point point;
    unsigned flags = 0;
    int wheelDelta = 0;
    bool byKeyboard = false; // a press or release by a key: the point means nothing
    bool isPressed = false;  // the left button went down on the target and is still held
    KeyFact key = {};        // of a HotKey
};

/// What the router asks of the objects. Calls to `deliver` may do anything: change the tree, move the focus, take
/// objects out of the scene, even end the window (which then calls InputRouter::shutDown).
class InputScene {
public:
    virtual ~InputScene() = default;

    /// The topmost visible object that takes the pointer at a point, enabled or not; 0 for none.
    virtual InputTarget hitTest(morvane::Point) = 0;
    /// Whether the object itself covers the point, regardless of what lies above it.
    virtual bool covers(InputTarget, morvane::Point) = 0;
    /// Whether the object is shown and can be used.
    virtual bool isEnabled(InputTarget) = 0;
    /// Whether a press gives the object the keyboard focus.
    virtual bool takesFocus(InputTarget) = 0;
    virtual bool isDraggable(InputTarget) = 0;
    /// The next object in tab order that can take the focus; from 0 the first (or last). 0 when there is none.
    virtual InputTarget nextInTabOrder(InputTarget from, bool forward) = 0;
    /// The next (previous) object that can take the focus among those of which one is chosen, wrapping round. 0 when
    /// there is none, or when the object is not of such a group.
    virtual InputTarget nextInGroup(InputTarget from, bool forward) = 0;
    /// The enabled, visible object that a key combination activates from anywhere in the window; 0 for none.
    virtual InputTarget hotKeyOwner(const KeyFact&) = 0;
    /// The enabled, visible objects that show this character as their access key, whatever its case; in tree order,
    /// beginning after `from`.
    virtual std::vector<InputTarget> accessKeyOwners(wchar_t character, InputTarget from) = 0;
    /// The object that Enter or Backspace activates from anywhere, when it is enabled and visible; 0 for none.
    virtual InputTarget enterOwner() = 0;
    virtual InputTarget backspaceOwner() = 0;
    /// Whether the focused object keeps Tab for itself.
    virtual bool keepsTab(InputTarget) = 0;
    /// Whether the object acts on keys by itself while it has the focus, as one that takes text does. Space and Enter
    /// press the others.
    virtual bool takesKeys(InputTarget) = 0;
    /// Whether Enter presses the focused object even when another one is pressed by Enter from anywhere.
    virtual bool isPressedByEnter(InputTarget) = 0;

    virtual void deliver(const InputAction&) = 0;
    /// The pointer must (or need no longer) be followed outside the window.
    virtual void setPointerCapture(bool captured) = 0;
};

/// How the platform's user has set up double clicks and drags.
struct InputSettings {
    std::int64_t doubleClickMs = 500;
    int doubleClickSlop = 2; // pixels to each side
    int dragThreshold = 4;
};

/// One per window. State is changed before anything is told, so every delivery may come back in.
///
///   no button      the object under the pointer is hot; crossing a border is Leave for the one, Enter for the other
///   left button    the pressed object keeps the pointer: it alone gets moves, Leave and Enter as the pointer leaves
///   and
///                  re-enters it, and the release when it happens over it; a release elsewhere cancels the press
///   captured       an object that asked for the pointer gets every move and the release, wherever they happen
class InputRouter {
public:
    explicit InputRouter(InputScene& scene, InputSettings settings = {}) noexcept;
    ~InputRouter();
    InputRouter(const InputRouter&) = delete;
    InputRouter& operator=(const InputRouter&) = delete;

    void pointerMoved(const PointerFact&);
    void pointerLeftWindow();
    void buttonDown(PointerButton, const PointerFact&);
    void buttonUp(PointerButton, const PointerFact&);
    /// `delta` in the platform's units, 120 a notch. Goes to the object under the pointer, else to the focused one.
    void wheel(int delta, const PointerFact&);
    /// The platform took the pointer away (another window captured it).
    void captureLost();

    /// `alreadyHandled`: the focused object answered the raw key message itself. True when the router used the key.
    bool keyDown(const KeyFact&, bool alreadyHandled);
    bool keyUp(const KeyFact&);
    /// The character that a key made which nobody used: an access key. With Alt it works from anywhere, alone only
    /// while the focused object takes no keys. True when it was one.
    bool character(const CharacterFact&, bool alreadyHandled);

    void windowFocused(bool focused);
    /// Moves the keyboard focus; 0 takes it from everybody. False when the target cannot have it or lost it again at
    /// once.
    bool setFocus(InputTarget);
    /// The next object in tab order, wrapping round.
    bool shiftFocus(bool forward);

    void captureFor(InputTarget);
    void releaseCapture();

    /// The object left the scene: it is told nothing any more and forgotten everywhere.
    void objectGone(InputTarget) noexcept;
    /// The same for every known target that `isGone(context, target)` answers true for.
    void objectsGone(bool (*isGone)(const void* context, InputTarget), const void* context) noexcept;
    /// Visibility, enabling or positions changed: what is hot or pressed is found again at the last pointer position.
    void sceneChanged();
    /// Nothing is delivered from here on.
    void shutDown() noexcept;
    /// Begins anew after that, with nothing held or focused.
    void restart(InputScene& scene) noexcept;

    InputTarget hot() const noexcept { return m_hot; }
    InputTarget pressed() const noexcept { return m_pressed; }
    InputTarget captured() const noexcept { return m_captured; }
    InputTarget focused() const noexcept { return m_focused; }
    bool isDragging() const noexcept { return m_dragging; }
    bool hasWindowFocus() const noexcept { return m_windowFocused; }

private:
    class Watched;

    struct LastPress {
        InputTarget target = 0;
        morvane::Point point;
        std::int64_t timeMs = 0;
    };

    void deliver(InputKind, InputTarget, morvane::Point = {}, unsigned flags = 0, int wheelDelta = 0);
    void deliverByKey(InputKind, InputTarget);
    InputTarget enabledTargetAt(morvane::Point);
    void makeHot(InputTarget, const PointerFact&);
    void findHotAgain();
    void moveWhilePressed(const PointerFact&);
    void pressLeft(const PointerFact&);
    void releaseLeft(const PointerFact&);
    bool isSecondPress(InputTarget, const PointerFact&) const noexcept;
    bool drag(const PointerFact&);
    void cancelPress();
    void updatePointerCapture();
    bool cancelByEscape();
    bool pressByKey(const KeyFact&);
    bool pressByEnter();
    bool pressByHotKey(const KeyFact&);
    bool moveInGroup(const KeyFact&);
    bool focusNextOwner(wchar_t accessKey, std::size_t count);
    bool activate(InputTarget);
    bool takesText() { return m_focused && m_scene->takesKeys(m_focused); }
    bool isFocusPressedByKeyboard();

    InputScene* m_scene; // after shutDown one that answers nothing
    InputSettings m_settings;
    InputTarget m_hot = 0;
    InputTarget m_pressed = 0;
    InputTarget m_captured = 0;
    InputTarget m_focused = 0;
    InputTarget m_keyPressed = 0; // Space is held on it
    LastPress m_lastPress;
    morvane::Point m_pressPoint;
    PointerFact m_lastPointer;
    bool m_pointerInside = false;
    bool m_dragging = false;
    bool m_windowFocused = true; // until the platform says otherwise: a window that was never shown can have a focus
    bool m_ownsPointer = false;
    std::vector<InputTarget> m_watched; // those of running operations
};

} // namespace ambrel
