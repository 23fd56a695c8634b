// An inner base object that knows nothing but which operation was called and with what.
#pragma once

#include "host/host.h"

#include <array>
#include <cstdint>
#include <functional>

namespace morvane::testing {

/// Stands behind a control as its inner base object. Every slot of its table of functions notes slot and raw arguments
/// and answers a status of its own, so that a test can tell whether a control passes operations on unchanged. It does
/// nothing else: what a call asks for is never filled in.
class RecordingBase {
public:
    static constexpr std::size_t kSlots = 256;   // more than any base interface has
    static constexpr std::size_t kArguments = 9; // more than any operation has, without the object itself
    static constexpr std::size_t kFirstOfDispatch = 3;
    using Arguments = std::array<std::int64_t, kArguments>;

    RecordingBase();
    RecordingBase(const RecordingBase&) = delete;
    RecordingBase& operator=(const RecordingBase&) = delete;

    IUnknown* object() { return reinterpret_cast<IUnknown*>(&m_object); }

    /// What the operation of a slot answers: success codes for odd slots, failures for even ones, each its own.
    static HRESULT statusOf(std::size_t slot)
    {
        return MAKE_HRESULT(slot % 2 == 0, FACILITY_ITF, static_cast<unsigned>(0x1000 + slot));
    }

    /// Told of every call while it happens: records passed by address are still there to be read.
    std::function<void(std::size_t slot, const Arguments& arguments)> onCall;
    long references() const { return m_references; }

private:
    struct Object {
        const void* table; // first, as in every component object
        RecordingBase* owner;
    };
    template <std::size_t Slot>
    static HRESULT STDMETHODCALLTYPE thunk(Object* self, std::int64_t a, std::int64_t b, std::int64_t c, std::int64_t d,
                                           std::int64_t e, std::int64_t f, std::int64_t g, std::int64_t h,
                                           std::int64_t i);
    template <std::size_t... Slot>
    static std::array<void*, kSlots> makeTable(std::index_sequence<Slot...>);
    static const std::array<void*, kSlots>& table();

    static HRESULT STDMETHODCALLTYPE queryInterface(Object* self, const IID* iid, void** result);
    static ULONG STDMETHODCALLTYPE addRef(Object* self);
    static ULONG STDMETHODCALLTYPE release(Object* self);

    Object m_object;
    long m_references = 0;
};

/// Calls a slot of any object with arguments in the platform's integer registers and stack.
HRESULT callSlot(IUnknown* object, std::size_t slot, const RecordingBase::Arguments& arguments);

} // namespace morvane::testing
