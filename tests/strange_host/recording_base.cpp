#include "tests/strange_host/recording_base.h"

#include <utility>

namespace morvane::testing {

RecordingBase::RecordingBase() : m_object{table().data(), this} {}

template <std::size_t Slot>
HRESULT STDMETHODCALLTYPE RecordingBase::thunk(Object* self, std::int64_t a, std::int64_t b, std::int64_t c,
                                               std::int64_t d, std::int64_t e, std::int64_t f, std::int64_t g,
                                               std::int64_t h, std::int64_t i)
{
    // Arguments beyond the operation's own hold whatever the stack has there; they are not looked at.
    if (self->owner->onCall)
        self->owner->onCall(Slot, {a, b, c, d, e, f, g, h, i});
    return statusOf(Slot);
}

template <std::size_t... Slot>
std::array<void*, RecordingBase::kSlots> RecordingBase::makeTable(std::index_sequence<Slot...>)
{
    std::array<void*, kSlots> result = {reinterpret_cast<void*>(&thunk<Slot>)...};
    result[0] = reinterpret_cast<void*>(&queryInterface);
    result[1] = reinterpret_cast<void*>(&addRef);
    result[2] = reinterpret_cast<void*>(&release);
    return result;
}

const std::array<void*, RecordingBase::kSlots>& RecordingBase::table()
{
    static const std::array<void*, kSlots> instance = makeTable(std::make_index_sequence<kSlots>());
    return instance;
}

HRESULT STDMETHODCALLTYPE RecordingBase::queryInterface(Object* self, const IID*, void** result)
{
    addRef(self);
    *result = self;
    return S_OK;
}

ULONG STDMETHODCALLTYPE RecordingBase::addRef(Object* self)
{
    return static_cast<ULONG>(++self->owner->m_references);
}
ULONG STDMETHODCALLTYPE RecordingBase::release(Object* self)
{
    return static_cast<ULONG>(--self->owner->m_references);
}

HRESULT callSlot(IUnknown* object, std::size_t slot, const RecordingBase::Arguments& a)
{
    using Function = HRESULT(STDMETHODCALLTYPE*)(IUnknown*, std::int64_t, std::int64_t, std::int64_t, std::int64_t,
                                                 std::int64_t, std::int64_t, std::int64_t, std::int64_t, std::int64_t);
    void* const* const table = *reinterpret_cast<void***>(object);
    return reinterpret_cast<Function>(table[slot])(object, a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7], a[8]);
}

} // namespace morvane::testing
