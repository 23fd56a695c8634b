#include "ambrel/window/input_router.h"

#include <algorithm>
#include <cstdlib>

namespace ambrel {

namespace {

using morvane::Point;

// Virtual keys that the router interprets; the numbers are the platform's.
constexpr int kKeyBackspace = 0x08;
constexpr int kKeyTab = 0x09;
constexpr int kKeyReturn = 0x0D;
constexpr int kKeyEscape = 0x1B;
constexpr int kKeySpace = 0x20;
constexpr int kKeyLeft = 0x25;
constexpr int kKeyRight = 0x27;
constexpr int kKeyDown = 0x28;
constexpr int kKeyF1 = 0x70;
constexpr int kKeyF24 = 0x87;

/// Stands in for a scene that has gone.
class EmptyScene final : public InputScene {
public:
    InputTarget hitTest(Point) override { return 0; }
    bool covers(InputTarget, Point) override { return false; }
    bool isEnabled(InputTarget) override { return false; }
    bool takesFocus(InputTarget) override { return false; }
    bool isDraggable(InputTarget) override { return false; }
    InputTarget nextInTabOrder(InputTarget, bool) override { return 0; }
    InputTarget nextInGroup(InputTarget, bool) override { return 0; }
    InputTarget hotKeyOwner(const KeyFact&) override { return 0; }
    std::vector<InputTarget> accessKeyOwners(wchar_t, InputTarget) override { return {}; }
    InputTarget enterOwner() override { return 0; }
    InputTarget backspaceOwner() override { return 0; }
    bool keepsTab(InputTarget) override { return false; }
    bool takesKeys(InputTarget) override { return false; }
    bool isPressedByEnter(InputTarget) override { return false; }
    void deliver(const InputAction&) override {}
    void setPointerCapture(bool) override {}
};

EmptyScene& emptyScene() noexcept
{
    static EmptyScene scene;
    return scene;
}

bool isWithin(Point a, Point b, int distance) noexcept
{
    return std::abs(a.x - b.x) <= distance && std::abs(a.y - b.y) <= distance;
}

/// Combinations that write nothing: as hot keys they work whatever has the focus.
bool isCommand(const KeyFact& key) noexcept
{
    return key.control || key.alt || key.key == kKeyEscape || (key.key >= kKeyF1 && key.key <= kKeyF24);
}

} // namespace

/// A target that a running operation still needs; emptied when the object goes. They end in reverse order.
class InputRouter::Watched {
public:
    Watched(InputRouter& router, InputTarget target) : m_router(router), m_index(router.m_watched.size())
    {
        m_router.m_watched.push_back(target);
    }
    Watched(const Watched&) = delete;
    Watched& operator=(const Watched&) = delete;
    ~Watched() { m_router.m_watched.pop_back(); }

    /// 0 once the object has gone.
    InputTarget get() const noexcept { return m_router.m_watched[m_index]; }

private:
    InputRouter& m_router;
    std::size_t m_index;
};

InputRouter::InputRouter(InputScene& scene, InputSettings settings) noexcept : m_scene(&scene), m_settings(settings) {}
InputRouter::~InputRouter() = default;

void InputRouter::deliver(InputKind kind, InputTarget target, Point point, unsigned flags, int wheelDelta)
{
    if (target)
        m_scene->deliver({.kind = kind,
                          .target = target,
                          .point = point,
                          .flags = flags,
                          .wheelDelta = wheelDelta,
                          .isPressed = target == m_pressed});
}

void InputRouter::deliverByKey(InputKind kind, InputTarget target)
{
    if (target)
        m_scene->deliver({.kind = kind, .target = target, .point = {}, .byKeyboard = true});
}

InputTarget InputRouter::enabledTargetAt(Point point)
{
    const InputTarget target = m_scene->hitTest(point);
    return target && m_scene->isEnabled(target) ? target : 0;
}

void InputRouter::makeHot(InputTarget target, const PointerFact& fact)
{
    if (m_hot == target)
        return;
    const Watched entered(*this, target);
    const InputTarget left = m_hot;
    m_hot = 0;
    deliver(InputKind::Leave, left, fact.point, fact.flags);
    // The one that was left may have moved the pointer's story on by itself.
    if (m_hot != 0 || !entered.get())
        return;
    m_hot = entered.get();
    deliver(InputKind::Enter, m_hot, fact.point, fact.flags);
}

void InputRouter::pointerMoved(const PointerFact& fact)
{
    m_lastPointer = fact;
    m_pointerInside = true;
    if (m_captured) {
        deliver(InputKind::Move, m_captured, fact.point, fact.flags);
    } else if (m_pressed) {
        moveWhilePressed(fact);
    } else {
        makeHot(enabledTargetAt(fact.point), fact);
        deliver(InputKind::Move, m_hot, fact.point, fact.flags);
    }
}

void InputRouter::moveWhilePressed(const PointerFact& fact)
{
    if (drag(fact))
        return;
    const Watched pressed(*this, m_pressed);
    makeHot(m_scene->covers(m_pressed, fact.point) ? m_pressed : 0, fact);
    if (pressed.get() && m_hot == pressed.get())
        deliver(InputKind::Move, m_hot, fact.point, fact.flags);
}

bool InputRouter::drag(const PointerFact& fact)
{
    if (!m_dragging) {
        if (isWithin(fact.point, m_pressPoint, m_settings.dragThreshold) || !m_scene->isDraggable(m_pressed))
            return false;
        m_dragging = true;
        const Watched dragged(*this, m_pressed);
        deliver(InputKind::PressCancelled, m_pressed, m_pressPoint, fact.flags);
        if (m_dragging)
            deliver(InputKind::DragStart, dragged.get(), m_pressPoint, fact.flags);
    }
    if (m_dragging)
        deliver(InputKind::DragMove, m_pressed, fact.point, fact.flags);
    return true;
}

void InputRouter::pointerLeftWindow()
{
    m_pointerInside = false;
    if (!m_pressed && !m_captured)
        makeHot(0, m_lastPointer);
}

void InputRouter::buttonDown(PointerButton button, const PointerFact& fact)
{
    m_lastPointer = fact;
    m_pointerInside = true;
    if (button == PointerButton::Left)
        pressLeft(fact);
    else if (button == PointerButton::Right)
        deliver(InputKind::RightDown, m_captured ? m_captured : enabledTargetAt(fact.point), fact.point, fact.flags);
}

bool InputRouter::isSecondPress(InputTarget target, const PointerFact& fact) const noexcept
{
    return target && target == m_lastPress.target && fact.timeMs - m_lastPress.timeMs <= m_settings.doubleClickMs &&
           isWithin(fact.point, m_lastPress.point, m_settings.doubleClickSlop);
}

void InputRouter::pressLeft(const PointerFact& fact)
{
    cancelPress(); // a press whose release never arrived
    const Watched target(*this, m_captured ? m_captured : enabledTargetAt(fact.point));
    const bool second = isSecondPress(target.get(), fact);
    m_lastPress = second ? LastPress{} : LastPress{target.get(), fact.point, fact.timeMs};
    if (!m_captured)
        makeHot(target.get(), fact);
    if (target.get() && m_scene->takesFocus(target.get()))
        setFocus(target.get());
    if (!target.get() || !m_scene->isEnabled(target.get()))
        return;
    m_pressed = target.get();
    m_pressPoint = fact.point;
    updatePointerCapture();
    deliver(second ? InputKind::LeftDoubleClick : InputKind::LeftDown, m_pressed, fact.point, fact.flags);
}

void InputRouter::buttonUp(PointerButton button, const PointerFact& fact)
{
    m_lastPointer = fact;
    if (button == PointerButton::Left)
        releaseLeft(fact);
    else if (button == PointerButton::Right)
        deliver(InputKind::RightUp, m_captured ? m_captured : enabledTargetAt(fact.point), fact.point, fact.flags);
}

void InputRouter::releaseLeft(const PointerFact& fact)
{
    const InputTarget pressed = m_pressed;
    const bool wasDragging = m_dragging;
    m_pressed = 0;
    m_dragging = false;
    const bool isClick = pressed && !wasDragging && (m_captured || m_scene->covers(pressed, fact.point));
    if (!isClick)
        m_lastPress = {}; // only two clicks make a double click
    if (m_captured)
        deliver(InputKind::LeftUp, m_captured, fact.point, fact.flags);
    else if (wasDragging)
        deliver(InputKind::DragEnd, pressed, fact.point, fact.flags);
    else
        deliver(isClick ? InputKind::LeftUp : InputKind::PressCancelled, pressed, fact.point, fact.flags);
    updatePointerCapture();
    findHotAgain();
}

void InputRouter::findHotAgain()
{
    if (m_pressed || m_captured)
        return;
    makeHot(m_pointerInside ? enabledTargetAt(m_lastPointer.point) : 0, m_lastPointer);
}

void InputRouter::cancelPress()
{
    const InputTarget pressed = m_pressed;
    const bool wasDragging = m_dragging;
    m_pressed = 0;
    m_dragging = false;
    deliver(wasDragging ? InputKind::DragCancel : InputKind::PressCancelled, pressed, m_lastPointer.point,
            m_lastPointer.flags);
    updatePointerCapture();
}

void InputRouter::wheel(int delta, const PointerFact& fact)
{
    InputTarget target = m_captured ? m_captured : enabledTargetAt(fact.point);
    if (!target)
        target = m_focused;
    deliver(InputKind::Wheel, target, fact.point, fact.flags, delta);
}

void InputRouter::captureLost()
{
    m_ownsPointer = false;
    m_captured = 0;
    cancelPress();
    findHotAgain();
}

void InputRouter::captureFor(InputTarget target)
{
    if (!target)
        return releaseCapture();
    m_captured = target;
    updatePointerCapture();
}

void InputRouter::releaseCapture()
{
    m_captured = 0;
    updatePointerCapture();
    findHotAgain();
}

void InputRouter::updatePointerCapture()
{
    const bool needed = m_pressed || m_captured;
    if (needed == m_ownsPointer)
        return;
    m_ownsPointer = needed;
    m_scene->setPointerCapture(needed);
}

bool InputRouter::cancelByEscape()
{
    if (const InputTarget held = m_keyPressed) {
        m_keyPressed = 0;
        deliverByKey(InputKind::PressCancelled, held);
        return true;
    }
    if (!m_pressed)
        return false;
    cancelPress();
    findHotAgain();
    return true;
}

bool InputRouter::keyDown(const KeyFact& key, bool alreadyHandled)
{
    if (key.key == kKeyEscape && cancelByEscape())
        return true;
    if (alreadyHandled)
        return false;
    const bool writes = takesText() && (!isCommand(key) || key.makesText);
    if (isCommand(key) && !writes && pressByHotKey(key))
        return true;
    if (key.control || key.alt)
        return false;
    if (key.key == kKeyTab && !(m_focused && m_scene->keepsTab(m_focused)))
        return shiftFocus(!key.shift);
    if (key.key >= kKeyLeft && key.key <= kKeyDown && !writes && moveInGroup(key))
        return true;
    return pressByKey(key) || (!isCommand(key) && !writes && pressByHotKey(key));
}

bool InputRouter::isFocusPressedByKeyboard()
{
    return m_focused && m_scene->isEnabled(m_focused) && !m_scene->takesKeys(m_focused);
}

bool InputRouter::pressByKey(const KeyFact& key)
{
    if (key.key == kKeySpace && isFocusPressedByKeyboard()) {
        // Held like a button: pressed now, released with the key.
        if (m_keyPressed != m_focused) {
            m_keyPressed = m_focused;
            deliverByKey(InputKind::LeftDown, m_focused);
        }
        return true;
    }
    if (key.repeated)
        return false; // held down, it would activate again and again
    if (key.key == kKeyReturn)
        return pressByEnter();
    return key.key == kKeyBackspace && !takesText() && activate(m_scene->backspaceOwner());
}

bool InputRouter::pressByEnter()
{
    const InputTarget focused = isFocusPressedByKeyboard() ? m_focused : 0;
    if (focused && m_scene->isPressedByEnter(focused))
        return activate(focused);
    const InputTarget owner = m_scene->enterOwner();
    return activate(owner ? owner : focused);
}

bool InputRouter::pressByHotKey(const KeyFact& key)
{
    const InputTarget owner = m_scene->hotKeyOwner(key);
    if (owner && !key.repeated)
        m_scene->deliver({.kind = InputKind::HotKey, .target = owner, .point = {}, .byKeyboard = true, .key = key});
    return owner != 0;
}

bool InputRouter::moveInGroup(const KeyFact& key)
{
    const bool forward = key.key == kKeyDown || key.key == kKeyRight;
    const Watched next(*this, m_focused ? m_scene->nextInGroup(m_focused, forward) : 0);
    if (!next.get())
        return false;
    // It is chosen when it has got the focus, not when that went elsewhere.
    if (setFocus(next.get()) && m_scene->isEnabled(next.get()))
        activate(next.get());
    return true;
}

bool InputRouter::character(const CharacterFact& fact, bool alreadyHandled)
{
    constexpr wchar_t kLastControlCharacter = 0x20; // the space among them: it cannot be marked
    if (alreadyHandled || fact.character <= kLastControlCharacter || (!fact.alt && takesText()))
        return false;
    const std::vector<InputTarget> owners = m_scene->accessKeyOwners(fact.character, m_focused);
    if (owners.empty() || fact.repeated)
        return !owners.empty();
    if (owners.size() > 1)
        return focusNextOwner(fact.character, owners.size());
    const Watched owner(*this, owners.front());
    if (m_scene->takesFocus(owner.get()))
        setFocus(owner.get());
    if (owner.get() && m_scene->isEnabled(owner.get()) && !m_scene->takesKeys(owner.get()))
        activate(owner.get());
    return true;
}

/// It is not clear which of several owners of an access key is meant: the focus goes round, and Space decides.
bool InputRouter::focusNextOwner(wchar_t accessKey, std::size_t count)
{
    InputTarget from = m_focused;
    for (; count > 0; --count) {
        const std::vector<InputTarget> owners = m_scene->accessKeyOwners(accessKey, from);
        const Watched next(*this, owners.empty() ? 0 : owners.front());
        if (next.get() && m_scene->takesFocus(next.get())) {
            setFocus(next.get());
            break;
        }
        from = next.get();
    }
    return true;
}

bool InputRouter::keyUp(const KeyFact& key)
{
    if (key.key != kKeySpace || !m_keyPressed)
        return false;
    const InputTarget held = m_keyPressed;
    m_keyPressed = 0;
    deliverByKey(m_scene->isEnabled(held) ? InputKind::LeftUp : InputKind::PressCancelled, held);
    return true;
}

bool InputRouter::activate(InputTarget target)
{
    deliverByKey(InputKind::Activate, target);
    return target != 0;
}

void InputRouter::windowFocused(bool focused)
{
    if (m_windowFocused == focused)
        return;
    m_windowFocused = focused;
    if (focused) {
        deliver(InputKind::FocusGained, m_focused);
        return;
    }
    const Watched loser(*this, m_focused);
    cancelByEscape();
    deliver(InputKind::FocusLost, loser.get());
}

bool InputRouter::setFocus(InputTarget target)
{
    if (m_focused == target)
        return true;
    const Watched gaining(*this, target);
    const InputTarget loser = m_focused;
    m_focused = 0;
    if (const InputTarget held = m_keyPressed) {
        m_keyPressed = 0;
        deliverByKey(InputKind::PressCancelled, held);
    }
    if (m_windowFocused)
        deliver(InputKind::FocusLost, loser);
    if (m_focused != 0 || !gaining.get())
        return target == 0 && m_focused == 0;
    m_focused = gaining.get();
    if (m_windowFocused)
        deliver(InputKind::FocusGained, m_focused);
    return gaining.get() && m_focused == gaining.get();
}

bool InputRouter::shiftFocus(bool forward)
{
    const InputTarget next = m_scene->nextInTabOrder(m_focused, forward);
    return next && setFocus(next);
}

void InputRouter::objectGone(InputTarget target) noexcept
{
    if (!target)
        return;
    std::replace(m_watched.begin(), m_watched.end(), target, InputTarget{0});
    for (InputTarget* place : {&m_hot, &m_captured, &m_focused, &m_keyPressed, &m_lastPress.target})
        if (*place == target)
            *place = 0;
    if (m_pressed == target) {
        m_pressed = 0;
        m_dragging = false;
    }
    updatePointerCapture();
}

void InputRouter::objectsGone(bool (*isGone)(const void* context, InputTarget), const void* context) noexcept
{
    const auto forgetIfGone = [&](InputTarget target) {
        if (target && isGone(context, target))
            objectGone(target);
    };
    for (const InputTarget each : {m_hot, m_pressed, m_captured, m_focused, m_keyPressed, m_lastPress.target})
        forgetIfGone(each);
    for (std::size_t i = 0; i < m_watched.size(); ++i)
        forgetIfGone(m_watched[i]);
}

void InputRouter::sceneChanged()
{
    if (m_captured && !m_scene->isEnabled(m_captured))
        releaseCapture();
    if (m_pressed && !m_scene->isEnabled(m_pressed))
        cancelPress();
    if (m_focused && !m_scene->isEnabled(m_focused))
        setFocus(0);
    findHotAgain();
}

void InputRouter::restart(InputScene& scene) noexcept
{
    shutDown();
    m_scene = &scene;
    m_pointerInside = false;
    m_windowFocused = true;
}

void InputRouter::shutDown() noexcept
{
    m_scene = &emptyScene();
    for (InputTarget* place : {&m_hot, &m_pressed, &m_captured, &m_focused, &m_keyPressed, &m_lastPress.target})
        *place = 0;
    m_dragging = false;
    m_ownsPointer = false;
}

} // namespace ambrel
