#include "bench/table.h"

#include <cstdio>

namespace bench {

namespace {

int g_missed = 0; // of the one table that this program prints

const char* verdict(bool isReached)
{
    if (!isReached)
        ++g_missed;
    return isReached ? "reached" : "MISSED";
}

std::string formatted(const char* format, double value)
{
    char text[48];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string figureText(const Figure& figure)
{
    return timeText(figure.median) + formatted(" +-%2.0f%%", figure.spread * 100);
}

void line(const char* name, const std::string& ours, const std::string& other, const std::string& ratio,
          const std::string& aim)
{
    std::printf("  %-44s %18s %18s %9s  %s\n", name, ours.c_str(), other.c_str(), ratio.c_str(), aim.c_str());
    std::fflush(stdout);
}

} // namespace

std::string timeText(double seconds)
{
    const double ns = seconds * 1e9;
    if (ns < 10)
        return formatted("%.2f ns", ns);
    if (ns < 1000)
        return formatted("%.0f ns", ns);
    if (ns < 1e6)
        return formatted("%.2f us", ns / 1e3);
    return formatted("%.2f ms", ns / 1e6);
}

std::string bytesText(double bytes)
{
    return formatted("%.0f bytes", bytes);
}

void section(const char* title, const char* other)
{
    std::printf("\n%s\n", title);
    line("", "ours", other, *other ? "ratio" : "", "");
}

void row(const char* name, const Comparison& result, double aim)
{
    if (result.ratio == 0)
        return row(name, result.ours);
    std::string wanted;
    if (aim > 0)
        wanted = formatted("aim %.3g: ", aim) + verdict(result.ratio >= aim);
    line(name, figureText(result.ours), figureText(result.other), formatted("%.3g", result.ratio), wanted);
}

void row(const char* name, const Figure& figure)
{
    line(name, figureText(figure), "", "", "");
}

void row(const char* name, const Figure& figure, double aimSeconds)
{
    line(name, figureText(figure), "", "", "aim " + timeText(aimSeconds) + ": " + verdict(figure.median <= aimSeconds));
}

void bytesRow(const char* name, double ours, double aimBytes)
{
    line(name, bytesText(ours), "", "",
         aimBytes > 0 ? "aim " + bytesText(aimBytes) + ": " + verdict(ours <= aimBytes) : "");
}

void bytesRow(const char* name, double ours, double other, double aimBytes)
{
    line(name, bytesText(ours), bytesText(other), "",
         aimBytes > 0 ? "aim " + bytesText(aimBytes) + ": " + verdict(ours <= aimBytes) : "");
}

void remark(const char* name, const char* text)
{
    std::printf("  %-44s %s\n", name, text);
    std::fflush(stdout);
}

void growthSection(std::span<const int> counts)
{
    std::printf("\nCost of growth: one operation beside so many other buttons in the window\n  %-32s", "");
    for (const int count : counts)
        std::printf(" %18d", count);
    std::printf("  %s\n", "growth");
}

void growthRow(const char* name, std::span<const Figure> figures, double aim)
{
    std::printf("  %-32s", name);
    for (const Figure& figure : figures)
        std::printf(" %18s", figureText(figure).c_str());
    const double growth = figures.back().median / figures.front().median;
    std::printf("  %6.2f  %s\n", growth, (formatted("aim at most %.3g: ", aim) + verdict(growth <= aim)).c_str());
    std::fflush(stdout);
}

int missedAims() noexcept
{
    return g_missed;
}

} // namespace bench
