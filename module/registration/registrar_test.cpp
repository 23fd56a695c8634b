#include "module/registration/registrar.h"

#include "module/registration/memory_key_store.h"

#include <gtest/gtest.h>

namespace morvane::registration {
namespace {

constexpr std::u16string_view kClassScript = uR"(HKCR
{
    Word.Thing = s 'Thing Class'
    {
        CurVer = s 'Word.Thing.1'
    }
    NoRemove CLSID
    {
        ForceRemove {1111} = s 'Thing Class'
        {
            ForceRemove 'Programmable'
            val Count = d 258
        }
    }
})";

StoredValue text(std::u16string_view value)
{
    return encode(std::u16string(value));
}

/// A registry in which a stranger's class and an older registration of ours already stand.
void fill(MemoryKeyStore& store)
{
    store.make(u"HKCR\\CLSID\\{2222}").values[u""] = text(u"Stranger");
    store.make(u"HKCR\\CLSID\\{1111}\\Old\\Older").values[u"x"] = {7, {1, 2, 3}};
    store.make(u"HKCR\\Word.Thing").values[u""] = text(u"Older Class");
    store.make(u"HKCR\\Word.Thing").values[u"Kept"] = text(u"yes");
}

TEST(Registrar, StoresStringsAndNumbersAsTheRegistryKeepsThem)
{
    EXPECT_EQ(text(u"\u7C7B"), (StoredValue{1, {0x7B, 0x7C, 0, 0}}));
    EXPECT_EQ(encode(258U), (StoredValue{4, {2, 1, 0, 0}}));
    EXPECT_EQ(encode(Bytes{9}), (StoredValue{3, {9}}));
}

TEST(Registrar, RegistrationAddsAndForceRemoveStartsAfresh)
{
    MemoryKeyStore store;
    fill(store);
    run(parseScript(kClassScript, {}), Mode::Register, store);

    StoredKey& classes = store.make(u"HKCR");
    EXPECT_EQ(classes.keys[u"Word.Thing"].values[u""], text(u"Thing Class"));
    EXPECT_EQ(classes.keys[u"Word.Thing"].values[u"Kept"], text(u"yes"));
    EXPECT_EQ(classes.keys[u"Word.Thing"].keys[u"CurVer"].values[u""], text(u"Word.Thing.1"));
    StoredKey& ours = classes.keys[u"CLSID"].keys[u"{1111}"];
    EXPECT_EQ(ours.keys.size(), 1u); // "Programmable" without the older key
    EXPECT_EQ(ours.values[u"Count"], encode(258U));
    EXPECT_EQ(classes.keys[u"CLSID"].keys[u"{2222}"].values[u""], text(u"Stranger"));
}

TEST(Registrar, UnregistrationTakesItsOwnKeysWholeAndKeepsNoRemoveKeys)
{
    MemoryKeyStore store;
    fill(store);
    const Script script = parseScript(kClassScript, {});
    run(script, Mode::Register, store);
    store.make(u"HKCR\\CLSID\\{1111}\\Foreign");
    run(script, Mode::Unregister, store);
    run(script, Mode::Unregister, store); // nothing there: nothing to do

    StoredKey expected;
    expected.keys[u"HKCR"].keys[u"CLSID"].keys[u"{2222}"].values[u""] = text(u"Stranger");
    EXPECT_EQ(store.content, expected);
}

TEST(Registrar, UnregistrationOfANoRemoveKeyRemovesItsListedValues)
{
    MemoryKeyStore store;
    store.make(u"HKCU\\Shared").values = {{u"ours", text(u"a")}, {u"theirs", text(u"b")}};
    run(parseScript(u"HKCU { NoRemove Shared { val ours = s 'a' val absent = d 1 } }", {}), Mode::Unregister, store);
    EXPECT_EQ(store.make(u"HKCU\\Shared").values, (std::map<std::u16string, StoredValue>{{u"theirs", text(u"b")}}));
}

TEST(Registrar, ARefusalAtAnyStepLeavesTheStoreAsItWas)
{
    const Script script = parseScript(kClassScript, {});
    for (const Mode mode : {Mode::Register, Mode::Unregister}) {
        MemoryKeyStore complete;
        fill(complete);
        run(script, mode, complete);
        ASSERT_GE(complete.changes, 2);
        for (int step = 0; step < complete.changes; ++step) {
            MemoryKeyStore store;
            fill(store);
            const StoredKey before = store.content;
            store.refuseAt = step;
            EXPECT_THROW(run(script, mode, store), StoreError);
            EXPECT_EQ(store.content, before) << "refused at step " << step;
        }
    }
}

} // namespace
} // namespace morvane::registration
