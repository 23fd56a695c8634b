// The one point that everything worth watching passes: the gallery's inspector, tests and recordings attach here.
#pragma once

#include "ambrel/ambrel.h"

namespace ambrel {

class Trace {
public:
    static Trace& instance() noexcept;

    /// Cheap enough to ask before every entry.
    bool isWatched() const noexcept { return m_sink != nullptr; }
    void setSink(AmbrelTraceSink sink, void* context) noexcept;
    void emit(const AmbrelTraceEntry& entry) const noexcept;

private:
    AmbrelTraceSink m_sink = nullptr;
    void* m_context = nullptr;
};

/// Emits an entry when somebody watches.
inline void trace(AmbrelTraceKind kind, IUnknown* object, long id, std::int64_t a = 0, std::int64_t b = 0) noexcept
{
    const Trace& point = Trace::instance();
    if (point.isWatched())
        point.emit({kind, object, id, a, b, {}, nullptr});
}

inline void traceRect(AmbrelTraceKind kind, IUnknown* object, const SkinRect& rect) noexcept
{
    const Trace& point = Trace::instance();
    if (point.isWatched())
        point.emit({kind, object, 0, 0, 0, rect, nullptr});
}

inline void traceText(AmbrelTraceKind kind, IUnknown* object, long id, const wchar_t* text) noexcept
{
    const Trace& point = Trace::instance();
    if (point.isWatched())
        point.emit({kind, object, id, 0, 0, {}, text});
}

} // namespace ambrel
