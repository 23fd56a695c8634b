// What a forwarded operation costs beside the same virtual call on the inner base object itself, and what it costs to
// make and release a control whose host objects cost nothing.
//
//     taskset -c 1 wine forwarding_bench.exe
//
// Pinned, since program and Wine's server wander between cores otherwise. Direct and forwarded calls take turns, so
// that both see the same machine; medians are given, and ratios are what to compare between machines.
#include "host/host_classes.h"
#include "tests/strange_host/host_objects.h"
#include "tests/strange_host/strange_host.h"

#include <algorithm>
#include <cstdio>

namespace morvane::testing {
namespace {

/// An inner base object whose operations only return.
class TrivialBase final : public IVexControlBaseStub<IVexControlBase> {
public:
    using IVexControlBaseStub::IVexControlBaseStub;

    STDMETHODIMP SetRealCtrlPtr(IVexControlBase*) override { return S_OK; }
    STDMETHODIMP OnSize() override { return S_OK; }
    STDMETHODIMP IsEnable(VARIANT_BOOL* result) override
    {
        *result = VARIANT_TRUE;
        return S_OK;
    }
    STDMETHODIMP CallEvent(long, hyper, hyper) override { return S_OK; }
    STDMETHODIMP UpdateAmbrelLayerCache(SkinRect, hyper, SkinRect, VARIANT_BOOL* result) override
    {
        *result = VARIANT_TRUE;
        return S_OK;
    }
};

class Stopwatch {
public:
    Stopwatch() { QueryPerformanceCounter(&m_start); }

    double nanoseconds() const
    {
        LARGE_INTEGER now;
        LARGE_INTEGER frequency;
        QueryPerformanceCounter(&now);
        QueryPerformanceFrequency(&frequency);
        return static_cast<double>(now.QuadPart - m_start.QuadPart) * 1e9 / static_cast<double>(frequency.QuadPart);
    }

private:
    LARGE_INTEGER m_start{};
};

/// Nanoseconds a repetition, one figure per round.
class Samples {
public:
    void add(double value) { m_values.push_back(value); }
    double median() { return at(m_values.size() / 2); }
    double tenth() { return at(m_values.size() / 10); }
    double ninetieth() { return at(m_values.size() * 9 / 10); }

private:
    double at(std::size_t index)
    {
        std::sort(m_values.begin(), m_values.end());
        return m_values[index];
    }

    std::vector<double> m_values;
};

constexpr int kRounds = 201;
constexpr int kCallsPerRound = 200000;
constexpr int kControlsPerRound = 200;

template <class Body>
double timePerRun(int runs, Body&& body)
{
    const Stopwatch stopwatch;
    for (int i = 0; i < runs; ++i)
        body();
    return stopwatch.nanoseconds() / runs;
}

void printRow(const char* what, Samples& base, Samples& measured, double scale, const char* unit)
{
    std::printf("%-34s %9.2f %9.2f %s   [%.2f .. %.2f]   ratio %.2f\n", what, base.median() * scale,
                measured.median() * scale, unit, measured.tenth() * scale, measured.ninetieth() * scale,
                measured.median() / base.median());
}

/// One operation, called on the inner base object and on the control in turns.
template <class Call>
void compareCalls(const char* what, IVexControlBase* base, IVexControlBase* control, Call call)
{
    IVexControlBase* volatile direct = base; // the compiler must not know what it is
    IVexControlBase* volatile forwarded = control;
    Samples directTimes;
    Samples forwardedTimes;
    for (int round = 0; round < kRounds; ++round) {
        IVexControlBase* const first = direct;
        directTimes.add(timePerRun(kCallsPerRound, [&] { call(*first); }));
        IVexControlBase* const second = forwarded;
        forwardedTimes.add(timePerRun(kCallsPerRound, [&] { call(*second); }));
    }
    printRow(what, directTimes, forwardedTimes, 1.0, "ns");
}

/// A control's whole life beside the two CoCreateInstance calls that are part of it.
void compareCreation(IClassFactory& factory)
{
    Samples hostObjects;
    Samples controls;
    for (int round = 0; round < kRounds; ++round) {
        hostObjects.add(timePerRun(kControlsPerRound, [] {
            ComPtr<IVexControlBase> base;
            ComPtr<IVexObjectDraw> draw;
            CoCreateInstance(kClsidInnerBaseObject, nullptr, CLSCTX_INPROC_SERVER, iidOf<IVexControlBase>(),
                             base.putVoid());
            CoCreateInstance(kClsidObjectDraw, nullptr, CLSCTX_INPROC_SERVER, iidOf<IVexObjectDraw>(), draw.putVoid());
        }));
        controls.add(timePerRun(kControlsPerRound, [&] {
            ComPtr<ICmdButton> button;
            factory.CreateInstance(nullptr, iidOf<ICmdButton>(), button.putVoid());
        }));
    }
    printRow("create and release a button", hostObjects, controls, 1e-3, "us");
}

int run()
{
    const LoadedModule module;
    Ledger ledger;
    const auto base = ledger.make<TrivialBase>();
    const auto draw = ledger.make<ObjectDraw>();
    const ServedClass bases(kClsidInnerBaseObject, [&] { return ComPtr<IUnknown>(base.get()); });
    const ServedClass draws(kClsidObjectDraw, [&] { return ComPtr<IUnknown>(draw.get()); });
    const auto factory = module.factory(iidOf<::CmdButton>());
    ComPtr<ICmdButton> button;
    if (!factory || FAILED(factory->CreateInstance(nullptr, iidOf<ICmdButton>(), button.putVoid()))) {
        std::puts("no command button: Morvane.dll must lie beside this program");
        return 1;
    }

    std::printf("%-34s %9s %9s\n", "operation", "direct", "control");
    VARIANT_BOOL flag = VARIANT_FALSE;
    const SkinRect rect{1, 2, 3, 4};
    compareCalls("OnSize(), nothing passed", base.get(), button.get(), [](IVexControlBase& c) { c.OnSize(); });
    compareCalls("IsEnable(result)", base.get(), button.get(), [&](IVexControlBase& c) { c.IsEnable(&flag); });
    compareCalls("CallEvent(3 numbers)", base.get(), button.get(), [](IVexControlBase& c) { c.CallEvent(1, 2, 3); });
    compareCalls("UpdateAmbrelLayerCache(2 records)", base.get(), button.get(),
                 [&](IVexControlBase& c) { c.UpdateAmbrelLayerCache(rect, 5, rect, &flag); });
    std::printf("%-34s %9s %9s\n", "", "host only", "control");
    compareCreation(*factory);
    return 0;
}

} // namespace
} // namespace morvane::testing

int main()
{
    if (FAILED(OleInitialize(nullptr)))
        return 2;
    const int result = morvane::testing::run();
    OleUninitialize();
    return result;
}
