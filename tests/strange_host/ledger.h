// What happened under the strange host, in order, and which of its objects are still referenced.
#pragma once

#include "frame/com/com_ptr.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace morvane::testing {

class TestObject;

/// The log of everything a control asked of its host, and the owner of all objects the host ever made. Objects without
/// references stay in memory until the ledger goes, so that a call too many is noticed instead of crashing.
class Ledger {
public:
    Ledger();
    Ledger(const Ledger&) = delete;
    Ledger& operator=(const Ledger&) = delete;
    ~Ledger();

    /// A new object with one reference, which the caller owns.
    template <class Object, class... Arguments>
    ComPtr<Object> make(Arguments&&... arguments)
    {
        auto* object = new Object(*this, std::forward<Arguments>(arguments)...);
        own(object);
        return ComPtr<Object>(object);
    }

    void note(std::string entry) { m_log.push_back(std::move(entry)); }
    /// A control has called one of the host's objects or its window, whether or not that is worth a note.
    void calledOut()
    {
        if (onCallOut)
            onCallOut();
    }
    /// A misuse of an object: a reference given back twice, a call after the last release.
    void fault(std::string what) { m_faults.push_back(std::move(what)); }

    const std::vector<std::string>& log() const { return m_log; }
    /// The log so far; the next entries start a new one.
    std::vector<std::string> takeLog() { return std::exchange(m_log, {}); }
    const std::vector<std::string>& faults() const { return m_faults; }

    /// Objects that somebody still refers to.
    std::vector<std::string> alive() const;

    std::function<void()> onCallOut; // what the host does inside every call of a control

private:
    void own(TestObject* object);

    std::vector<std::string> m_log;
    std::vector<std::string> m_faults;
    std::vector<std::unique_ptr<TestObject>> m_objects;
};

} // namespace morvane::testing
