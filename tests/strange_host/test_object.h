// The base of every object of the strange host: counted, listed in a ledger, and without a single operation of its own.
#pragma once

#include "host/host.h"
#include "tests/strange_host/ledger.h"

#include <typeinfo>

namespace morvane::testing {

class TestObject {
public:
    TestObject(const TestObject&) = delete;
    TestObject& operator=(const TestObject&) = delete;
    virtual ~TestObject() = default;

    ULONG references() const { return m_references; }
    std::string description() const;

    /// What an operation that is not overridden does: it is noted with a question mark and answers E_NOTIMPL.
    HRESULT unexpected(const char* operation);

protected:
    /// Every operation that controls rely on begins with one of these.
    void called();
    void note(std::string entry)
    {
        m_ledger.note(std::move(entry));
        called();
    }

    explicit TestObject(Ledger& ledger) : m_ledger(ledger) {}

    ULONG addReference();
    ULONG releaseReference();
    /// Lets go of what the object holds; runs once.
    virtual void lastRelease() {}

    Ledger& ledger() { return m_ledger; }

private:
    Ledger& m_ledger;
    ULONG m_references = 0;
    bool m_isDead = false;
};

/// Identity and IDispatch of an object that has the interface `I` and those it derives from.
template <class I>
class DispatchStub : public I, public TestObject {
public:
    explicit DispatchStub(Ledger& ledger) : TestObject(ledger) {}

    STDMETHODIMP QueryInterface(REFIID iid, void** result) override
    {
        *result = has(iid) ? static_cast<I*>(this) : nullptr;
        if (*result)
            AddRef();
        return *result ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return addReference(); }
    STDMETHODIMP_(ULONG) Release() override { return releaseReference(); }

    STDMETHODIMP GetTypeInfoCount(UINT*) override { return unexpected("IDispatch::GetTypeInfoCount"); }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return unexpected("IDispatch::GetTypeInfo"); }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override
    {
        return unexpected("IDispatch::GetIDsOfNames");
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override
    {
        return unexpected("IDispatch::Invoke");
    }

protected:
    virtual bool has(REFIID iid) const { return iid == IID_IUnknown || iid == IID_IDispatch; }
};

} // namespace morvane::testing
