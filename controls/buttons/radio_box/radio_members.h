// Who belongs to a radio group and which member is checked.
#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <utility>

namespace morvane {

/// Members under the names they came with, in the order of the names, and at most one of them current. Members are borrowed.
template <class Member>
class RadioMembers {
public:
    /// False when a member of that name is there already.
    bool add(std::wstring name, Member* member) { return m_members.emplace(std::move(name), member).second; }

    Member* find(const std::wstring& name) const
    {
        const auto found = m_members.find(name);
        return found == m_members.end() ? nullptr : found->second;
    }

    bool has(const Member* member) const { return place(member) != m_members.end(); }

    /// One that was current leaves the group without any.
    void remove(const Member* member)
    {
        const auto found = place(member);
        if (found == m_members.end())
            return;
        m_members.erase(found);
        if (m_current == member)
            m_current = nullptr;
    }

    /// Makes a member current and gives the one that was, which may be the same.
    Member* makeCurrent(Member* member) { return std::exchange(m_current, member); }
    Member* current() const { return m_current; }
    bool isEmpty() const { return m_members.empty(); }

    template <class Visitor>
    void forEach(Visitor visit) const
    {
        for (const auto& [name, member] : m_members)
            visit(member);
    }

private:
    auto place(const Member* member) const
    {
        return std::find_if(m_members.begin(), m_members.end(), [&](const auto& entry) { return entry.second == member; });
    }

    std::map<std::wstring, Member*> m_members;
    Member* m_current = nullptr;
};

} // namespace morvane
