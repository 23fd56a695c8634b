// One program, one table: what the controls cost, beside the platform's own.
//     morvane_bench [--quick] [--alone] [--case PART_OF_A_NAME] [--list]
#include "bench/cases.h"
#include "bench/table.h"

#include <cstdio>
#include <cstring>
#include <new>

namespace bench {

namespace {

struct Part {
    const char* title;
    const char* other; // the column beside ours
    std::span<const Case> (*cases)();
};

constexpr Part kParts[] = {
    {"Memory of one control", "native BUTTON", &memoryCases}, // first: later ones use again what was freed
    {"Life", "native BUTTON", &lifeCases},
    {"Painting", "native BUTTON", &paintingCases},
    {"Pixels, one each", "the machine", &pixelCases},
    {"Texts", "the platform", &textCases},
    {"The contract", "beside it", &contractCases},
    {"Skins", "", &skinCases},
    {nullptr, "", &growthCases}, // heads its own table
};

/// Answers how many cases failed.
int runPart(Bench& bench, const Part& part)
{
    int failed = 0;
    bool isHeaded = part.title == nullptr;
    for (const Case& each : part.cases()) {
        if (!bench.wants(each.name))
            continue;
        if (!isHeaded)
            section(part.title, part.other);
        isHeaded = true;
        try {
            each.run(bench);
        } catch (const std::exception& problem) {
            remark(each.name, (std::string("FAILED: ") + problem.what()).c_str());
            ++failed;
        }
    }
    return failed;
}

int list()
{
    for (const Part& part : kParts)
        for (const Case& each : part.cases())
            std::puts(each.name);
    return 0;
}

int usage()
{
    std::fputs("usage: morvane_bench [--quick] [--alone] [--case PART_OF_A_NAME] [--list]\n", stderr);
    return 2;
}

} // namespace

int benchMain(int count, char** arguments)
{
    Options options;
    for (int i = 1; i < count; ++i) {
        if (!std::strcmp(arguments[i], "--quick"))
            options.isQuick = true;
        else if (!std::strcmp(arguments[i], "--alone"))
            options.isAlone = true;
        else if (!std::strcmp(arguments[i], "--list"))
            return list();
        else if (!std::strcmp(arguments[i], "--case") && i + 1 < count)
            options.caseName = arguments[++i];
        else
            return usage();
    }
    Bench bench(options);
    int failed = 0;
    for (const Part& part : kParts)
        failed += runPart(bench, part);
    std::printf("\n%d aim(s) missed, %d case(s) failed\n", missedAims(), failed);
    return failed == 0 ? 0 : 1;
}

} // namespace bench

int main(int count, char** arguments)
{
    return bench::benchMain(count, arguments);
}
