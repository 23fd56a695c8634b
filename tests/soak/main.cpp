// The soak: a window full of controls of every class that Morvane.dll has, and seeded random input, notifications,
// calls and ends. After each round everything must be as before. See --help.
#include "tests/soak/balance.h"
#include "tests/soak/control_library.h"
#include "tests/soak/random_call.h"
#include "tests/soak/step_log.h"
#include "tests/soak/steps.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace morvane::soak {

namespace {

constexpr const char* kUsage =
    "soak.exe [--seed N] [--steps N | --seconds N] [--verbose] [--list]\n"
    "Without a seed the clock gives one. A fault prints the seed and the number of steps that repeat it.\n"
    "--list shows the methods that are called, and why some are not.\n";
constexpr std::uint64_t kStepsOfRound = 1000;
constexpr std::uint64_t kWarmUpRounds = 3;
constexpr int kMostFaults = 5;

struct Options {
    std::uint64_t seed = GetTickCount64();
    std::uint64_t steps = 20'000;
    std::uint64_t seconds = 0;
    bool isVerbose = false;
    bool isListAsked = false;
    bool isWrong = false;
};

Options parse(int count, char** arguments)
{
    Options options;
    for (int i = 1; i < count; ++i) {
        const std::string name = arguments[i];
        const bool hasValue = i + 1 < count;
        if (name == "--verbose")
            options.isVerbose = true;
        else if (name == "--list")
            options.isListAsked = true;
        else if (name == "--seed" && hasValue)
            options.seed = std::strtoull(arguments[++i], nullptr, 10);
        else if (name == "--steps" && hasValue)
            options.steps = std::strtoull(arguments[++i], nullptr, 10);
        else if (name == "--seconds" && hasValue)
            options.seconds = std::strtoull(arguments[++i], nullptr, 10);
        else
            options.isWrong = true;
    }
    return options;
}

/// A window of the application's own, which the controls' windows belong to.
class OwnerWindow {
public:
    OwnerWindow()
        : m_window(CreateWindowW(L"STATIC", L"Owner", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr))
    {
    }
    OwnerWindow(const OwnerWindow&) = delete;
    OwnerWindow& operator=(const OwnerWindow&) = delete;
    ~OwnerWindow() { DestroyWindow(m_window); }
    HWND handle() const { return m_window; }

private:
    HWND m_window;
};

/// The steps of one seed; windows that end on the way are replaced.
void runRound(const ControlLibrary& library, std::uint64_t seed, std::uint64_t steps)
{
    logRound(seed);
    const OwnerWindow owner;
    Random random(seed);
    std::unique_ptr<World> world;
    const auto renew = [&] {
        logDetail("a new window");
        world.reset();
        world = std::make_unique<World>(library, random, owner.handle());
        world->setInterruption([&] { interruptStep(*world); });
    };
    for (std::uint64_t step = 0; step < steps; ++step) {
        if (!world || !world->hasWindow())
            renew();
        anyStep(*world, step);
    }
    logStep(steps, "the end");
}

/// A control's drag cursor stays loaded, once somebody asked for it, as long as the module.
void loadCursors(const ControlLibrary& library)
{
    for (const ControlClass& each : library.classes()) {
        ComPtr<IVexControlBase> control;
        if (!each.isControl || FAILED(CoCreateInstance(each.id, nullptr, CLSCTX_INPROC_SERVER, iidOf<IVexControlBase>(),
                                                       control.putVoid())))
            continue;
        HCURSOR cursor = nullptr;
        VexNotify notify{};
        VARIANT_BOOL handled = VARIANT_FALSE;
        notify.eVexMsgId = VEXSM_GETDRAGCURSOR;
        notify.lParam1 = reinterpret_cast<hyper>(&cursor);
        control->EventNotify(&notify, &handled);
    }
}

void listMethods(const ControlClass& each)
{
    std::printf("%s: %zu methods\n", each.name.c_str(), each.methods.size());
    for (const Method& method : each.methods) {
        if (const char* reason = reasonToSkip(method))
            std::printf("  not called: %s, which %s\n", method.name.c_str(), reason);
    }
}

bool complainAbout(const std::string& excess, std::uint64_t seed, std::uint64_t steps)
{
    if (excess.empty())
        return false;
    std::printf("left over after the round with seed %llu: %s\nagain: soak.exe --seed %llu --steps %llu\n",
                static_cast<unsigned long long>(seed), excess.c_str(), static_cast<unsigned long long>(seed),
                static_cast<unsigned long long>(steps));
    std::fflush(stdout);
    return true;
}

/// 0 when nothing went wrong.
int soak(const Options& options, ControlLibrary& library)
{
    const OwnerWindow witness;
    loadCursors(library);
    fillSystemCaches();
    for (std::uint64_t seed = 0; seed < kWarmUpRounds; ++seed) // fills the caches that live as long as the process
        runRound(library, seed, kStepsOfRound);
    const Balance before = Balance::now(witness.handle());
    const std::uint64_t began = GetTickCount64();
    std::uint64_t done = 0;
    int faults = 0;
    for (std::uint64_t seed = options.seed;; ++seed) {
        if (options.seconds ? GetTickCount64() - began >= options.seconds * 1000 : done >= options.steps)
            break;
        if (faults == kMostFaults)
            break; // what is left over once is left over in every later round, too
        const std::uint64_t steps = options.seconds ? kStepsOfRound : std::min(kStepsOfRound, options.steps - done);
        runRound(library, seed, steps);
        faults += complainAbout(Balance::now(witness.handle()).excessOver(before), seed, steps);
        done += steps;
        if (done % 50'000 == 0 || options.isVerbose) {
            std::printf("%llu steps\n", static_cast<unsigned long long>(done));
            std::fflush(stdout);
        }
    }
    library.withdrawClasses();
    if (!library.canUnload()) {
        std::printf("Morvane.dll still counts objects\n");
        ++faults;
    }
    std::printf("%llu steps from seed %llu over %zu classes in %.1f s, %d faults\n",
                static_cast<unsigned long long>(done), static_cast<unsigned long long>(options.seed),
                library.classes().size(), static_cast<double>(GetTickCount64() - began) / 1000, faults);
    return faults ? 1 : 0;
}

int run(const Options& options)
{
    if (FAILED(OleInitialize(nullptr)) || FAILED(AmbrelRegisterClasses()))
        throw std::runtime_error("the runtime could not be started");
    AmbrelFreezeClock();
    int result = 0;
    {
        ControlLibrary library;
        if (!options.isListAsked) {
            result = soak(options, library);
        } else {
            for (const ControlClass& each : library.classes())
                listMethods(each);
            for (const ControlClass* each :
                 {&library.root(), &library.resources(), &library.property(), &library.group()})
                listMethods(*each);
        }
    }
    AmbrelUnregisterClasses();
    OleUninitialize();
    return result;
}

} // namespace

int soakMain(int count, char** arguments)
{
    const Options options = parse(count, arguments);
    if (options.isWrong) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    watchForCrashes();
    if (options.isVerbose)
        logEverything();
    std::printf("seed %llu\n", static_cast<unsigned long long>(options.seed));
    std::fflush(stdout);
    try {
        return run(options);
    } catch (const std::exception& problem) {
        std::printf("soak: %s\n", problem.what());
        return 2;
    }
}

} // namespace morvane::soak

int main(int count, char** arguments)
{
    return morvane::soak::soakMain(count, arguments);
}
