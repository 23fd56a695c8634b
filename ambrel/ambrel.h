// What an application, a test or the gallery asks of the runtime besides the contract's interfaces. Exported by
// Ambrel.dll.
#pragma once

#include "host/host.h"

#include <cstdint>

extern "C" {

/// Registers the runtime's five host classes for this process, so that controls find them without any registry entry.
/// Counted: each call is paired with AmbrelUnregisterClasses on the same thread. COM must be initialised.
HRESULT STDMETHODCALLTYPE AmbrelRegisterClasses();
HRESULT STDMETHODCALLTYPE AmbrelUnregisterClasses();

/// A resource object with no skin: the place where shared resources, windows and skins of an application live.
/// `*result` is referenced.
HRESULT STDMETHODCALLTYPE AmbrelCreateRes(IVexRes** result);

/// Draws a window's objects as they would be painted now, without a display: `pixels` receives width * height values
/// 0xAARRGGBB (premultiplied), top row first. The window need not be visible.
HRESULT STDMETHODCALLTYPE AmbrelRenderWindow(IAmbrel* root, long width, long height, std::uint32_t* pixels);

/// What IAmbrel::SetEventRecieve takes the address of: the application's ear for a window. Borrowed; lives until
/// another one (or 0) is set. Each member may be null; none may throw. Called synchronously; the window may be ended
/// inside.
struct AmbrelEventReceiver {
    /// IAmbrel::VexMessage.
    void(STDMETHODCALLTYPE* frameworkMessage)(AmbrelEventReceiver* self, hyper window, long message, hyper wParam,
                                              hyper lParam);
    /// CallEvent of any object of the window.
    void(STDMETHODCALLTYPE* objectEvent)(AmbrelEventReceiver* self, ISkinObjResBase* object, long message, hyper wParam,
                                         hyper lParam);
};

/// Gives an existing control the look and settings that a packaged skin has for the first object of the control's
/// class. `module` holds the package as a resource of type "UIFILES". On failure the control is unchanged and the
/// thread's error info (IErrorInfo) says "file:line:column: ...".
HRESULT STDMETHODCALLTYPE AmbrelApplySkin(IVexRes* resources, IVexControlBase* control, HINSTANCE module,
                                          long resourceId);

/// The same with a package in a zip file or a folder.
HRESULT STDMETHODCALLTYPE AmbrelApplySkinFile(IVexRes* resources, IVexControlBase* control, const wchar_t* path);

/// What became of a package after its file changed: S_OK it is in use, S_FALSE it says what it said before, or why it
/// cannot be used (the thread's error info says "file:line:column: ..."). `path` is as it was given to
/// AmbrelApplySkinFile. After all packages comes a call with null for it. The watch may be ended inside.
using AmbrelSkinFileChanged = void(STDMETHODCALLTYPE*)(void* context, const wchar_t* path, HRESULT status);

/// Watches a folder with packages from now on. When something in it changes, the packages that AmbrelApplySkinFile was
/// asked for since are read again: controls that were given one change in place, only in what the package says
/// differently; one that cannot be read changes nothing. Needs the message loop of the calling thread. One folder at a
/// time; a null folder ends the watch. `told` may be null.
HRESULT STDMETHODCALLTYPE AmbrelWatchSkinFiles(IVexRes* resources, const wchar_t* folder, AmbrelSkinFileChanged told,
                                               void* context);

/// The scale in percent (100 to 300) at which a window draws what skins give in pixels of their own: borders and
/// natural sizes of pictures, text sizes. A window starts with its monitor's; positions of objects are the
/// application's and stay.
HRESULT STDMETHODCALLTYPE AmbrelSetScale(IAmbrel* root, long percent);

/// Live objects of the runtime, for leak checks.
long STDMETHODCALLTYPE AmbrelLiveObjects();

/// The runtime's clock, in milliseconds. Frozen, it moves only by AmbrelAdvanceClock, which lets everything fall due
/// that waits for it (tool tips, fades, double clicks).
std::int64_t STDMETHODCALLTYPE AmbrelClockNow();
void STDMETHODCALLTYPE AmbrelFreezeClock();
void STDMETHODCALLTYPE AmbrelAdvanceClock(std::int64_t milliseconds);
void STDMETHODCALLTYPE AmbrelRunClock();

/// What passes the runtime's one trace point.
enum AmbrelTraceKind {
    AMBREL_TRACE_NOTIFICATION,   // id VexMsgID or window message; a, b: lParam2, lParam3 as given
    AMBREL_TRACE_PROPERTY,       // text: group path and name; after the change
    AMBREL_TRACE_REDRAW,         // rect: the requested rectangle in window coordinates
    AMBREL_TRACE_CALLBACK,       // id message; a wParam, b lParam; before the callbacks run
    AMBREL_TRACE_EVENT,          // CallEvent: as above
    AMBREL_TRACE_FRAMEWORK,      // IAmbrel::VexMessage: as above
    AMBREL_TRACE_WINDOW_MESSAGE, // a message that reached the host window: as above
    AMBREL_TRACE_PAINT,          // rect: what is painted
    AMBREL_TRACE_DRAW,           // one drawing call of an object; text: what
    AMBREL_TRACE_SKIN_ERROR,     // text: file:line:column: message; id: code
};

struct AmbrelTraceEntry {
    AmbrelTraceKind kind;
    IUnknown* object; // the real control (or the window's root) it concerns, borrowed; may be null
    long id;
    std::int64_t a;
    std::int64_t b;
    SkinRect rect;
    const wchar_t* text; // may be null; valid during the call
};

/// Called synchronously for each entry; must not throw. Installing one returns the former one; null removes it.
using AmbrelTraceSink = void(STDMETHODCALLTYPE*)(void* context, const AmbrelTraceEntry* entry);
void STDMETHODCALLTYPE AmbrelSetTraceSink(AmbrelTraceSink sink, void* context);

} // extern "C"
