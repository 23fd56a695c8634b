#include "tests/strange_host/test_object.h"

namespace morvane::testing {

Ledger::Ledger() = default;
Ledger::~Ledger() = default;

void Ledger::own(TestObject* object)
{
    m_objects.emplace_back(object);
}

std::vector<std::string> Ledger::alive() const
{
    std::vector<std::string> result;
    for (const auto& object : m_objects)
        if (object->references() != 0)
            result.push_back(object->description());
    return result;
}

std::string TestObject::description() const
{
    return std::string(typeid(*this).name()) + " with " + std::to_string(m_references) + " references";
}

HRESULT TestObject::unexpected(const char* operation)
{
    m_ledger.note("? " + std::string(operation));
    if (m_isDead)
        m_ledger.fault(std::string(operation) + " after the last release");
    return E_NOTIMPL;
}

void TestObject::called()
{
    if (m_isDead)
        m_ledger.fault("called after the last release: " + description());
    const bool wasDead = m_isDead;
    m_ledger.calledOut();
    if (m_isDead && !wasDead)
        m_ledger.fault("the last reference went inside a call of it: " + description());
}

ULONG TestObject::addReference()
{
    if (m_isDead)
        m_ledger.fault("reference taken after the last release: " + description());
    return ++m_references;
}

ULONG TestObject::releaseReference()
{
    if (m_references == 0) {
        m_ledger.fault("released too often: " + description());
        return 0;
    }
    const ULONG left = --m_references;
    if (left == 0) {
        m_isDead = true;
        lastRelease();
    }
    return left;
}

} // namespace morvane::testing
