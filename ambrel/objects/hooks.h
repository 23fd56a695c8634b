// Thread hooks on behalf of controls.
#pragma once

#include "ambrel/objects/object_node.h"
#include "frame/com/module_lock.h"
#include "frame/platform/handles.h"
#include "host/host.h"

#include <map>
#include <vector>

namespace ambrel {

/// Installs a hook of the calling thread while objects are registered for its kind and hooks are started, and tells
/// them:
///     VEXSM_HOOKPROC     lParam1 the kind (VEX_HOOKTYPE), lParam2 code, lParam3 wParam, lParam4 lParam,
///                        lParam5 the address of the answer (LRESULT), used when the notification is handled
///     VEXSM_KBHOOKPROC   for keyboard objects: lParam1 code, lParam2 the virtual key, lParam3 the key data,
///                        lParam4 the address of the answer
/// One per process, since a hook procedure has no parameter of its own; for the user-interface thread.
class Hooks {
public:
    static Hooks& instance() noexcept;

    bool add(VEX_HOOKTYPE kind, ObjectNode& node);
    bool remove(VEX_HOOKTYPE kind, const ObjectNode& node) noexcept;
    bool isRegistered(VEX_HOOKTYPE kind, const ObjectNode& node) const noexcept;

    bool addKeyboard(ObjectNode& node);
    bool removeKeyboard(const ObjectNode& node) noexcept;
    bool isKeyboardRegistered(const ObjectNode& node) const noexcept;

    /// The object ends: hooks that only it needed go at once, and do not stay in the system for code that may be gone.
    void forget(const ObjectNode& node) noexcept;

    /// Hooks of the first list work between these two; they nest. Keyboard objects are always served.
    bool start();
    bool end() noexcept;

    LRESULT callNext(int code, WPARAM wParam, LPARAM lParam) const noexcept;

private:
    using List = std::vector<WeakNode>;
    template <int Id, VEX_HOOKTYPE Kind>
    static LRESULT CALLBACK procedure(int code, WPARAM wParam, LPARAM lParam) noexcept;
    struct Platform {
        VEX_HOOKTYPE kind;
        int id;
        HOOKPROC procedure;
    };
    static const Platform kPlatform[];

    bool serve(VEX_HOOKTYPE kind, int code, WPARAM wParam, LPARAM lParam, LRESULT& answer);
    bool serveKeyboard(int code, WPARAM wParam, LPARAM lParam, LRESULT& answer);
    void update() noexcept;
    bool isNeeded(VEX_HOOKTYPE kind) const noexcept;

    std::map<VEX_HOOKTYPE, List> m_objects;
    List m_keyboard;
    struct Installed {
        morvane::UniqueHook hook;
        morvane::ModuleLock lock; // the system calls into this module
    };
    std::map<VEX_HOOKTYPE, Installed> m_hooks;
    int m_started = 0;
    HHOOK m_running = nullptr;
};

} // namespace ambrel
