#include "ambrel/objects/hooks.h"

#include "ambrel/objects/skin_object_core.h"

#include <algorithm>
#include <iterator>
#include <new>

namespace ambrel {

namespace {

auto findIn(std::vector<WeakNode>& list, const ObjectNode& node) noexcept
{
    return std::find_if(list.begin(), list.end(), [&](const WeakNode& each) { return each.get() == &node; });
}

bool contains(const std::vector<WeakNode>& list, const ObjectNode& node) noexcept
{
    return std::any_of(list.begin(), list.end(), [&](const WeakNode& each) { return each.get() == &node; });
}

bool anyLives(const std::vector<WeakNode>& list) noexcept
{
    return std::any_of(list.begin(), list.end(), [](const WeakNode& each) { return static_cast<bool>(each); });
}

bool addTo(std::vector<WeakNode>& list, ObjectNode& node)
{
    std::erase_if(list, [](const WeakNode& each) { return !each; });
    if (contains(list, node))
        return false;
    list.emplace_back(&node);
    node.set(NodeFlag::Hooks, true);
    return true;
}

/// Tells every object of a copy of the list, the last registered first, until one handles it.
bool tell(std::vector<WeakNode> list, VexNotify& notice)
{
    for (auto each = list.rbegin(); each != list.rend(); ++each) {
        if (!*each)
            continue;
        SkinObjectCore& core = coreOf(*each->get());
        const ComPtr<ISkinObjResBase> hold(core.face());
        if (core.notify(notice))
            return true;
    }
    return false;
}

} // namespace

Hooks& Hooks::instance() noexcept
{
    static Hooks hooks;
    return hooks;
}

template <int Id, VEX_HOOKTYPE Kind>
LRESULT CALLBACK Hooks::procedure(int code, WPARAM wParam, LPARAM lParam) noexcept
{
    Hooks& self = instance();
    const auto installed = self.m_hooks.find(Kind);
    const HHOOK own = installed == self.m_hooks.end() ? nullptr : installed->second.hook.get();
    const HHOOK outer = std::exchange(self.m_running, own);
    LRESULT answer = 0;
    bool handled = false;
    if (code >= 0) {
        try {
            if constexpr (Kind == VEX_HM_KEYBOARD)
                handled = self.serveKeyboard(code, wParam, lParam, answer);
            handled = handled || (self.m_started && self.serve(Kind, code, wParam, lParam, answer));
        } catch (const std::bad_alloc&) {
            handled = false;
        }
    }
    if (!handled)
        answer = CallNextHookEx(own, code, wParam, lParam);
    self.m_running = outer;
    return answer;
}

const Hooks::Platform Hooks::kPlatform[] = {
    {VEX_HM_CALLWNDPROC, WH_CALLWNDPROC, &procedure<WH_CALLWNDPROC, VEX_HM_CALLWNDPROC>},
    {VEX_HM_CALLWNDPROCRET, WH_CALLWNDPROCRET, &procedure<WH_CALLWNDPROCRET, VEX_HM_CALLWNDPROCRET>},
    {VEX_HM_CBT, WH_CBT, &procedure<WH_CBT, VEX_HM_CBT>},
    {VEX_HM_FOREGROUNDIDLE, WH_FOREGROUNDIDLE, &procedure<WH_FOREGROUNDIDLE, VEX_HM_FOREGROUNDIDLE>},
    {VEX_HM_GETMESSAGE, WH_GETMESSAGE, &procedure<WH_GETMESSAGE, VEX_HM_GETMESSAGE>},
    {VEX_HM_KEYBOARD, WH_KEYBOARD, &procedure<WH_KEYBOARD, VEX_HM_KEYBOARD>},
    {VEX_HM_MOUSE, WH_MOUSE, &procedure<WH_MOUSE, VEX_HM_MOUSE>},
    {VEX_HM_MSGFILTER, WH_MSGFILTER, &procedure<WH_MSGFILTER, VEX_HM_MSGFILTER>},
    {VEX_HM_SHELL, WH_SHELL, &procedure<WH_SHELL, VEX_HM_SHELL>},
};

bool Hooks::serve(VEX_HOOKTYPE kind, int code, WPARAM wParam, LPARAM lParam, LRESULT& answer)
{
    const auto list = m_objects.find(kind);
    if (list == m_objects.end())
        return false;
    VexNotify notice{};
    notice.eVexMsgId = VEXSM_HOOKPROC;
    notice.lParam1 = kind;
    notice.lParam2 = code;
    notice.lParam3 = static_cast<hyper>(wParam);
    notice.lParam4 = static_cast<hyper>(lParam);
    notice.lParam5 = reinterpret_cast<hyper>(&answer);
    return tell(list->second, notice);
}

bool Hooks::serveKeyboard(int code, WPARAM wParam, LPARAM lParam, LRESULT& answer)
{
    VexNotify notice{};
    notice.eVexMsgId = VEXSM_KBHOOKPROC;
    notice.lParam1 = code;
    notice.lParam2 = static_cast<hyper>(wParam);
    notice.lParam3 = static_cast<hyper>(lParam);
    notice.lParam4 = reinterpret_cast<hyper>(&answer);
    return tell(m_keyboard, notice) && answer != 0;
}

bool Hooks::isNeeded(VEX_HOOKTYPE kind) const noexcept
{
    if (kind == VEX_HM_KEYBOARD && anyLives(m_keyboard))
        return true;
    const auto list = m_objects.find(kind);
    return m_started && list != m_objects.end() && anyLives(list->second);
}

void Hooks::update() noexcept
{
    for (const Platform& each : kPlatform) {
        if (!isNeeded(each.kind))
            m_hooks.erase(each.kind);
        else if (auto& installed = m_hooks[each.kind]; !installed.hook)
            installed.hook.reset(SetWindowsHookExW(each.id, each.procedure, nullptr, GetCurrentThreadId()));
    }
}

bool Hooks::add(VEX_HOOKTYPE kind, ObjectNode& node)
{
    const bool known = std::any_of(std::begin(kPlatform), std::end(kPlatform),
                                   [&](const Platform& each) { return each.kind == kind; });
    const bool added = known && addTo(m_objects[kind], node);
    update();
    return added;
}

bool Hooks::remove(VEX_HOOKTYPE kind, const ObjectNode& node) noexcept
{
    const auto list = m_objects.find(kind);
    if (list == m_objects.end())
        return false;
    const auto found = findIn(list->second, node);
    if (found == list->second.end())
        return false;
    list->second.erase(found);
    update();
    return true;
}

bool Hooks::isRegistered(VEX_HOOKTYPE kind, const ObjectNode& node) const noexcept
{
    const auto list = m_objects.find(kind);
    return list != m_objects.end() && contains(list->second, node);
}

bool Hooks::addKeyboard(ObjectNode& node)
{
    const bool added = addTo(m_keyboard, node);
    update();
    return added;
}

bool Hooks::removeKeyboard(const ObjectNode& node) noexcept
{
    const auto found = findIn(m_keyboard, node);
    if (found == m_keyboard.end())
        return false;
    m_keyboard.erase(found);
    update();
    return true;
}

bool Hooks::isKeyboardRegistered(const ObjectNode& node) const noexcept
{
    return contains(m_keyboard, node);
}

void Hooks::forget(const ObjectNode& node) noexcept
{
    const auto isGone = [&](const WeakNode& each) { return !each || each.get() == &node; };
    std::erase_if(m_keyboard, isGone);
    for (auto& [kind, list] : m_objects)
        std::erase_if(list, isGone);
    update();
}

bool Hooks::start()
{
    ++m_started;
    update();
    return true;
}

bool Hooks::end() noexcept
{
    if (m_started == 0)
        return false;
    --m_started;
    update();
    return true;
}

LRESULT Hooks::callNext(int code, WPARAM wParam, LPARAM lParam) const noexcept
{
    return CallNextHookEx(m_running, code, wParam, lParam);
}

} // namespace ambrel
