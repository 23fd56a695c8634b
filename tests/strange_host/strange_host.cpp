#include "tests/strange_host/strange_host.h"

#include "frame/com/bstr.h"
#include "host/host_classes.h"
#include "tests/strange_host/text.h"

namespace morvane::testing {

namespace {
constexpr UINT kSetToolTip = 3464;
} // namespace

/// Part of a ServedClass, so its count decides nothing.
class ServedClass::Factory final : public IClassFactory {
public:
    explicit Factory(Maker maker) : m_maker(std::move(maker)) {}
    virtual ~Factory() = default;

    STDMETHODIMP QueryInterface(REFIID iid, void** result) override
    {
        *result = iid == IID_IUnknown || iid == IID_IClassFactory ? this : nullptr;
        return *result ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** result) override
    {
        *result = nullptr;
        if (outer)
            return CLASS_E_NOAGGREGATION;
        const ComPtr<IUnknown> object = m_maker();
        return object ? object->QueryInterface(iid, result) : E_OUTOFMEMORY;
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }

private:
    Maker m_maker;
};

ServedClass::ServedClass(REFCLSID classId, Maker maker) : m_factory(std::make_unique<Factory>(std::move(maker)))
{
    CoRegisterClassObject(classId, m_factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &m_cookie);
}

ServedClass::~ServedClass()
{
    CoRevokeClassObject(m_cookie);
}

StrangeHost::StrangeHost()
    : root(ledger.make<Root>()), res(ledger.make<Res>()), m_bases(kClsidInnerBaseObject, [this] { return makeBase(); }),
      m_draws(kClsidObjectDraw, [this] { return makeObjectDraw(); }),
      m_positions(kClsidPosition, [this] { return ComPtr<IUnknown>(ledger.make<PositionObject>().get()); })
{
    root->window = window.handle();
    window.onMessage = [this](UINT message, WPARAM wParam, LPARAM lParam) { return receive(message, wParam, lParam); };
}

ComPtr<IUnknown> StrangeHost::makeBase()
{
    if (!givesBase || baseToGive)
        return givesBase ? baseToGive : nullptr;
    const auto made = ledger.make<BaseObject>();
    m_newestBase = made.get();
    return ComPtr<IUnknown>(made.get());
}

ComPtr<IUnknown> StrangeHost::makeObjectDraw()
{
    if (!givesObjectDraw)
        return nullptr;
    const auto made = ledger.make<ObjectDraw>();
    m_newestDraw = made.get();
    return ComPtr<IUnknown>(made.get());
}

void StrangeHost::attach()
{
    base().root = ComPtr<IAmbrel>(root.get());
    base().res = ComPtr<IVexRes>(res.get());
}

LRESULT StrangeHost::receive(UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto isControl = [this](std::intptr_t value) {
        return m_newestBase && reinterpret_cast<IVexControlBase*>(value) == m_newestBase->realControl;
    };
    if (message == kSetToolTip) {
        const auto* text = reinterpret_cast<const wchar_t*>(wParam);
        ledger.note("tip \"" + narrow(text ? text : L"") + (isControl(lParam) ? "\" control" : "\" stranger"));
    } else {
        ledger.note("message " + std::to_string(message) +
                    (isControl(static_cast<std::intptr_t>(wParam)) ? " control " : " stranger ") + hex(lParam));
    }
    ledger.calledOut();
    if (onMessage)
        onMessage(message);
    return 0;
}

Log StrangeHost::entriesOf(std::string_view word) const
{
    Log result;
    for (const std::string& entry : ledger.log())
        if (entry.substr(0, entry.find(' ')) == word)
            result.push_back(entry);
    return result;
}

::testing::AssertionResult StrangeHost::isUnreferenced() const
{
    auto result = ::testing::AssertionSuccess();
    for (const std::string& fault : ledger.faults())
        result = ::testing::AssertionFailure() << fault << "; ";
    for (const std::string& object : ledger.alive())
        if (object != root->description() && object != res->description())
            result = ::testing::AssertionFailure() << object << "; ";
    if (root->references() != 1 || res->references() != 1)
        result = ::testing::AssertionFailure() << root->description() << ", " << res->description();
    if (!root->registered.empty())
        result = ::testing::AssertionFailure() << "window messages still registered";
    return result;
}

} // namespace morvane::testing
