// Stands in for objects of the contract that these tests need a method or two of: every other method answers E_NOTIMPL.
#pragma once

#include "frame/com/com_ptr.h"
#include "host/host.h"

#include <cstddef>
#include <vector>

extern "C" {
extern const std::size_t kSlotCount; // of the largest interface
extern const std::size_t kSlotPropChangedNotify;
extern const std::size_t kSlotImageGetWidth;
extern const std::size_t kPropertySlots; // of IVexPropBase
extern const std::size_t kSlotImageGetHeight;
extern const std::size_t kSlotImageGetRect;
extern const std::size_t kSlotImagePutRect;
extern const std::size_t kSlotImageRenderDraw;
extern const std::size_t kSlotFillGetStart;
extern const std::size_t kSlotFillPutStart;
extern const std::size_t kSlotFillRenderDraw;
extern const std::size_t kSlotDcDrawLine;
extern const std::size_t kSlotDcFillSolidColor;
extern const std::size_t kSlotStyleRenderDrawText;
extern const std::size_t kSlotObjGetName;
extern const std::size_t kSlotResGetObject;
}

namespace ambrel {

/// An object behind `Interface` with a table of its own; lives as long as the test that made it. Methods are put in as
/// functions whose first argument is the double.
template <class Interface>
class TestDouble {
    void** m_table; // must be first: this is what a caller sees

public:
    TestDouble() : m_slots(kSlotCount, reinterpret_cast<void*>(&notImplemented))
    {
        m_table = m_slots.data();
        m_slots[0] = reinterpret_cast<void*>(&queryInterface);
        m_slots[1] = reinterpret_cast<void*>(&addRef);
        m_slots[2] = reinterpret_cast<void*>(&release);
    }
    TestDouble(const TestDouble&) = delete;
    TestDouble& operator=(const TestDouble&) = delete;

    template <class... Arguments>
    void answer(std::size_t slot, HRESULT(STDMETHODCALLTYPE* method)(TestDouble*, Arguments...))
    {
        m_slots[slot] = reinterpret_cast<void*>(method);
    }

    Interface* get() noexcept { return reinterpret_cast<Interface*>(this); }
    long references() const noexcept { return m_references; }

    long called = 0; // for the methods put in to note
    long long noted = 0;
    void* context = nullptr;

private:
    static HRESULT STDMETHODCALLTYPE notImplemented(TestDouble*) { return E_NOTIMPL; }
    static HRESULT STDMETHODCALLTYPE queryInterface(TestDouble* self, const IID* iid, void** result)
    {
        const bool isKnown = *iid == IID_IUnknown || *iid == IID_IDispatch || *iid == morvane::iidOf<Interface>();
        *result = isKnown ? self : nullptr;
        self->m_references += isKnown;
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    static ULONG STDMETHODCALLTYPE addRef(TestDouble* self) { return ++self->m_references; }
    static ULONG STDMETHODCALLTYPE release(TestDouble* self) { return --self->m_references; }

    std::vector<void*> m_slots;
    long m_references = 0;
};

} // namespace ambrel
