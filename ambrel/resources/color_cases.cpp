#include "ambrel/resources/color_cases.h"

#include "frame/com/bstr.h"

#include <algorithm>

namespace ambrel {

const ColorCases::Case* ColorCases::find(std::wstring_view name) const noexcept
{
    const auto found =
        std::find_if(m_cases.begin(), m_cases.end(), [&](const Case& each) { return each.name == name; });
    return found == m_cases.end() ? nullptr : &*found;
}

void ColorCases::add(std::wstring_view name, const VEX_COLORCASE& record)
{
    Case added{std::wstring(name), std::wstring(morvane::viewOf(record.strText)),
               std::wstring(morvane::viewOf(record.strFile)), record};
    added.numbers.strName = added.numbers.strText = added.numbers.strFile = nullptr;
    if (const Case* old = find(name))
        m_cases[static_cast<std::size_t>(old - m_cases.data())] = std::move(added);
    else
        m_cases.push_back(std::move(added));
}

bool ColorCases::remove(std::wstring_view name)
{
    const Case* const found = find(name);
    if (!found)
        return false;
    const auto index = static_cast<std::size_t>(found - m_cases.data());
    if (index < m_position)
        --m_position;
    if (m_current == name)
        m_current.clear();
    m_cases.erase(m_cases.begin() + static_cast<std::ptrdiff_t>(index));
    return true;
}

bool ColorCases::choose(std::wstring_view name)
{
    if (m_current == name || !(name.empty() || find(name)))
        return false;
    m_current = name;
    return true;
}

const ColorCases::Case* ColorCases::first() noexcept
{
    m_position = 0;
    return next();
}

const ColorCases::Case* ColorCases::next() noexcept
{
    return m_position < m_cases.size() ? &m_cases[m_position++] : nullptr;
}

std::optional<Colourise> ColorCases::tintOf(const Case& from) noexcept
{
    const VEX_COLORCASE& numbers = from.numbers;
    const float blend = numbers.fBlend > 0 ? std::min(numbers.fBlend, 1.0f) : 0.0f; // not a number: none
    if (numbers.bEnabled == VARIANT_FALSE || blend == 0)
        return std::nullopt;
    return Colourise{numbers.nHue * 360 / 256, numbers.nSat, static_cast<int>(blend * 255 + 0.5f)};
}

VEX_COLORCASE ColorCases::toRecord(const Case& from)
{
    VEX_COLORCASE record = from.numbers;
    morvane::Bstr name(from.name);
    morvane::Bstr text(from.text);
    morvane::Bstr file(from.file);
    record.strName = name.detach();
    record.strText = text.detach();
    record.strFile = file.detach();
    return record;
}

} // namespace ambrel
