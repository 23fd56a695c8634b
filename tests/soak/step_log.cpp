#include "tests/soak/step_log.h"

#include "host/windows_headers.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstdio>

namespace morvane::soak {

namespace {

constexpr std::size_t kKept = 50;
constexpr DWORD kLongestStepMs = 30'000;
constexpr UINT kCrashStatus = 3;

struct Log {
    std::array<std::string, kKept> steps;
    std::uint64_t seed = 0;
    std::uint64_t next = 0;
    bool isLoud = false;
    std::atomic<std::uint64_t> progress = 0;
};

/// One per process, as crash handlers are.
Log& theLog()
{
    static Log log;
    return log;
}

/// The module that an address lies in, and the offset a disassembly is read at.
void printPlace(const void* address)
{
    HMODULE module = nullptr;
    wchar_t path[MAX_PATH] = L"?";
    if (GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           static_cast<const wchar_t*>(address), &module))
        GetModuleFileNameW(module, path, MAX_PATH);
    const std::wstring name(path);
    std::printf(
        "  %ls+0x%llx\n", name.substr(name.rfind(L'\\') + 1).c_str(),
        static_cast<unsigned long long>(static_cast<const char*>(address) - reinterpret_cast<const char*>(module)));
}

void printStack(const CONTEXT& context)
{
    CONTEXT frame = context;
    for (int depth = 0; depth < 40 && frame.Rip; ++depth) {
        printPlace(reinterpret_cast<void*>(frame.Rip));
        DWORD64 base = 0;
        auto* const function = RtlLookupFunctionEntry(frame.Rip, &base, nullptr);
        if (!function) {
            if (frame.Rip > 0x10000)
                break;
            frame.Rip = *reinterpret_cast<DWORD64*>(frame.Rsp); // a call through null
            frame.Rsp += 8;
            continue;
        }
        void* handlerData = nullptr;
        DWORD64 establisher = 0;
        RtlVirtualUnwind(UNW_FLAG_NHANDLER, base, frame.Rip, function, &frame, &handlerData, &establisher, nullptr);
    }
}

LONG CALLBACK onException(EXCEPTION_POINTERS* exception)
{
    const DWORD code = exception->ExceptionRecord->ExceptionCode;
    if (code != EXCEPTION_ACCESS_VIOLATION && code != EXCEPTION_ILLEGAL_INSTRUCTION &&
        code != EXCEPTION_INT_DIVIDE_BY_ZERO && code != EXCEPTION_STACK_OVERFLOW &&
        code != 0xC0000374 /* a broken heap */)
        return EXCEPTION_CONTINUE_SEARCH;
    std::printf("crash 0x%08lx at\n", code);
    if (code != EXCEPTION_STACK_OVERFLOW)
        printStack(*exception->ContextRecord);
    else
        printPlace(exception->ExceptionRecord->ExceptionAddress);
    printLastSteps();
    TerminateProcess(GetCurrentProcess(), kCrashStatus);
    return EXCEPTION_CONTINUE_SEARCH;
}

void onAbort(int)
{
    CONTEXT context;
    RtlCaptureContext(&context);
    std::printf("aborted in\n");
    printStack(context);
    printLastSteps();
    TerminateProcess(GetCurrentProcess(), kCrashStatus);
}

DWORD WINAPI watchProgress(void* soakThread)
{
    for (std::uint64_t seen = ~std::uint64_t{};;) {
        const std::uint64_t now = theLog().progress;
        if (now == seen) {
            CONTEXT context{};
            context.ContextFlags = CONTEXT_FULL;
            SuspendThread(soakThread);
            std::printf("no step ends any more\n");
            if (GetThreadContext(soakThread, &context))
                printStack(context);
            printLastSteps();
            TerminateProcess(GetCurrentProcess(), kCrashStatus);
        }
        seen = now;
        Sleep(kLongestStepMs);
    }
}

} // namespace

void watchForCrashes()
{
    AddVectoredExceptionHandler(1, &onException);
    std::signal(SIGABRT, &onAbort);
    ULONG reserve = 64 * 1024; // for the report of an overflow
    SetThreadStackGuarantee(&reserve);
    HANDLE thread = nullptr;
    DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &thread, 0, FALSE,
                    DUPLICATE_SAME_ACCESS);
    if (const HANDLE watcher = CreateThread(nullptr, 0, &watchProgress, thread, 0, nullptr))
        CloseHandle(watcher);
}

void logRound(std::uint64_t seed)
{
    theLog().seed = seed;
    theLog().next = 0;
}

void logStep(std::uint64_t number, std::string what)
{
    Log& log = theLog();
    ++log.progress;
    if (log.isLoud) {
        std::printf("%llu %s\n", static_cast<unsigned long long>(number), what.c_str());
        std::fflush(stdout);
    }
    log.steps[log.next++ % kKept] = std::to_string(number) + " " + std::move(what);
}

void logDetail(const std::string& what)
{
    Log& log = theLog();
    if (log.isLoud) {
        std::printf("    %s\n", what.c_str());
        std::fflush(stdout);
    }
    if (log.next && log.steps[(log.next - 1) % kKept].size() < 1000)
        log.steps[(log.next - 1) % kKept] += "; " + what;
}

void logEverything()
{
    theLog().isLoud = true;
}

void printLastSteps()
{
    const Log& log = theLog();
    std::printf("the last steps of the round with seed %llu:\n", static_cast<unsigned long long>(log.seed));
    for (std::uint64_t i = log.next > kKept ? log.next - kKept : 0; i < log.next; ++i)
        std::printf("  %s\n", log.steps[i % kKept].c_str());
    std::printf("again: soak.exe --seed %llu --steps %llu\n", static_cast<unsigned long long>(log.seed),
                static_cast<unsigned long long>(log.next));
    std::fflush(stdout);
}

} // namespace morvane::soak
