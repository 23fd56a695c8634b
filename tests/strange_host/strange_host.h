// A host of controls that is not the runtime we ship: the smallest one that keeps the contract. It serves the host
// classes inside the process, notes in order what controls ask of it, and knows which references they still hold.
//
//     StrangeHost host;
//     auto button = host.create<ICmdButton>(__uuidof(CmdButton));
//     host.attach();                          // gives the newest control a root and a skin
//     button->EventNotify(...);
//     EXPECT_EQ(host.takeLog(), Log({"redraw", "callback 1027 control a0005"}));
#pragma once

#include "module/loaded_module.h"
#include "tests/strange_host/base_object.h"
#include "tests/strange_host/host_window.h"

#include <gtest/gtest.h>

namespace morvane::testing {

using Log = std::vector<std::string>;

/// Serves one class to CoCreateInstance for as long as it lives.
class ServedClass {
public:
    using Maker = std::function<ComPtr<IUnknown>()>; // a null object means the class refuses

    ServedClass(REFCLSID classId, Maker maker);
    ServedClass(const ServedClass&) = delete;
    ServedClass& operator=(const ServedClass&) = delete;
    ~ServedClass();

private:
    class Factory;
    std::unique_ptr<Factory> m_factory;
    DWORD m_cookie = 0;
};

class StrangeHost {
public:
    StrangeHost();
    StrangeHost(const StrangeHost&) = delete;
    StrangeHost& operator=(const StrangeHost&) = delete;

    /// A control of the real Morvane.dll.
    template <class Interface>
    ComPtr<Interface> create(REFCLSID classId, IUnknown* outer = nullptr)
    {
        ComPtr<Interface> result;
        if (const auto factory = module.factory(classId))
            factory->CreateInstance(outer, iidOf<Interface>(), result.putVoid());
        return result;
    }

    /// The inner base object of the control created last; to be read even when that is gone.
    BaseObject& base() { return *m_newestBase; }
    ObjectDraw& objectDraw() { return *m_newestDraw; }

    /// Gives the newest inner base object the root and the skin.
    void attach();

    std::vector<std::string> takeLog() { return ledger.takeLog(); }
    /// Log entries of one kind, by their first word.
    Log entriesOf(std::string_view word) const;

    /// True when nobody but the host holds its own objects, and nothing was misused. The message says what is wrong.
    ::testing::AssertionResult isUnreferenced() const;

    LoadedModule module; // first: objects of the host may not outlive it
    Ledger ledger;
    bool givesBase = true; // whether the host classes can be created
    bool givesObjectDraw = true;
    ComPtr<IUnknown> baseToGive; // another inner base object than BaseObject, for every control
    ComPtr<Root> root;
    ComPtr<Res> res;
    HostWindow window;
    std::function<void(UINT message)> onMessage; // what the application's window does

private:
    LRESULT receive(UINT message, WPARAM wParam, LPARAM lParam);
    ComPtr<IUnknown> makeBase();
    ComPtr<IUnknown> makeObjectDraw();

    BaseObject* m_newestBase = nullptr; // stays in memory with the ledger
    ObjectDraw* m_newestDraw = nullptr;
    ServedClass m_bases;
    ServedClass m_draws;
    ServedClass m_positions;
};

} // namespace morvane::testing
