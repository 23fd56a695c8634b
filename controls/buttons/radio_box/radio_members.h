// Who belongs to a radio group and which member is checked.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

namespace morvane {

/// Members, and at most one of them current. Members are borrowed.
template <class Member>
class RadioMembers {
public:
    /// The caller has seen to it that it is no member yet.
    void add(Member* member) { m_members.push_back(member); }

    bool has(const Member* member) const
    {
        return std::find(m_members.begin(), m_members.end(), member) != m_members.end();
    }

    /// The first that the predicate is true for, or null. While it is asked members may come and go: one that has left
    /// is neither asked nor found.
    template <class Predicate>
    Member* find(Predicate isIt) const
    {
        const std::vector<Member*> candidates = m_members;
        const auto found = std::find_if(candidates.begin(), candidates.end(),
                                        [&](Member* member) { return has(member) && isIt(member) && has(member); });
        return found == candidates.end() ? nullptr : *found;
    }

    /// One that was current leaves the group without any.
    void remove(const Member* member)
    {
        if (std::erase(m_members, member) != 0 && m_current == member)
            m_current = nullptr;
    }

    /// Makes a member current and gives the one that was, which may be the same.
    Member* makeCurrent(Member* member) { return std::exchange(m_current, member); }
    Member* current() const { return m_current; }

    const std::vector<Member*>& all() const { return m_members; }

private:
    std::vector<Member*> m_members;
    Member* m_current = nullptr;
};

} // namespace morvane
