// Every operation of the base interfaces that a control does not implement itself reaches its inner base object, and
// nothing else does. Which operations there are, where they stand and what they take is read from the type library.
#include "frame/com/bstr.h"
#include "tests/strange_host/operations.h"
#include "tests/strange_host/recording_base.h"
#include "tests/strange_host/strange_host.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <numeric>
#include <set>

namespace morvane {
namespace {

using testing::LibraryClass;
using testing::Operation;
using testing::RecordingBase;
using testing::StrangeHost;

const std::set<std::string> kOwn = {"CreateProps", "EventNotify", "DrawObject", "RenderDrawObject", "GetFilePath"};

/// The arguments of one call: values no two of which are alike, and the records that some of them are the addresses of.
class DistinctArguments {
public:
    explicit DistinctArguments(const Operation& operation) : m_operation(operation)
    {
        for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
            m_records[i].resize(operation.parameters[i].size);
            std::iota(m_records[i].begin(), m_records[i].end(), static_cast<unsigned char>(17 * (operation.slot + i)));
            m_values[i] = operation.parameters[i].byAddress
                              ? reinterpret_cast<std::int64_t>(m_records[i].data())
                              : static_cast<std::int64_t>(0x8182838485868788 + operation.slot * 16 + i);
        }
    }

    const RecordingBase::Arguments& values() const { return m_values; }

    /// Whether the callee got the same: records by their bytes, everything else in its own width.
    bool match(const RecordingBase::Arguments& received) const
    {
        for (std::size_t i = 0; i < m_operation.parameters.size(); ++i) {
            const testing::Parameter& parameter = m_operation.parameters[i];
            const void* const got = parameter.byAddress ? reinterpret_cast<const void*>(received[i]) : &received[i];
            const void* const sent = parameter.byAddress ? static_cast<const void*>(m_records[i].data()) : &m_values[i];
            if (std::memcmp(got, sent, parameter.size) != 0)
                return false;
        }
        return true;
    }

private:
    const Operation& m_operation;
    RecordingBase::Arguments m_values{};
    std::array<std::vector<unsigned char>, RecordingBase::kArguments> m_records;
};

class ForwardingTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        const auto library = testing::typeLibraryOf(host.module.path());
        for (const IID& iid : {iidOf<IVexObj>(), iidOf<ISkinObjResBase>(), iidOf<IVexControlBase>()})
            for (Operation& operation : testing::operationsOf(*library, iid))
                operations.push_back(std::move(operation));
        for (LibraryClass& candidate : testing::classesOf(*library))
            if (candidate.isControl && host.module.factory(candidate.clsid))
                controls.push_back(std::move(candidate));
        host.baseToGive = ComPtr<IUnknown>(recording.object());
        initialReferences = recording.references();
    }

    ComPtr<IVexControlBase> createControl(const LibraryClass& which)
    {
        return host.create<IVexControlBase>(which.clsid);
    }

    std::size_t slotOf(const std::string& name) const
    {
        const auto isNamed = [&](const Operation& operation) { return operation.name == name; };
        return std::find_if(operations.begin(), operations.end(), isNamed)->slot;
    }

    RecordingBase recording; // outlives the host, which holds a reference
    StrangeHost host;
    std::vector<Operation> operations;
    std::vector<LibraryClass> controls;
    long initialReferences = 0;
};

TEST_F(ForwardingTest, TheTypeLibraryDescribesTheWholeTableWithoutGaps)
{
    // Seven slots of IDispatch, then 18 operations of the object, 69 of the skin object, 94 of the control.
    ASSERT_EQ(operations.size(), 181u);
    for (std::size_t i = 0; i < operations.size(); ++i)
        EXPECT_EQ(operations[i].slot, i + 7) << operations[i].name;
    EXPECT_EQ(operations.front().name, "GetName");
    EXPECT_EQ(operations.back().name, "GetDisposeMouse");
    EXPECT_EQ(
        std::count_if(operations.begin(), operations.end(), [](const Operation& o) { return kOwn.count(o.name); }), 5);
    EXPECT_FALSE(controls.empty());
}

TEST_F(ForwardingTest, EveryOperationReachesItsOwnSlotOnceWithTheSameArgumentsAndStatus)
{
    for (const LibraryClass& which : controls) {
        const auto control = createControl(which);
        ASSERT_TRUE(control) << which.name;
        for (const Operation& operation : operations) {
            if (kOwn.count(operation.name))
                continue;
            const DistinctArguments arguments(operation);
            std::vector<std::size_t> reached;
            bool sameArguments = false;
            recording.onCall = [&](std::size_t slot, const RecordingBase::Arguments& received) {
                reached.push_back(slot);
                sameArguments = arguments.match(received);
            };
            const HRESULT status = testing::callSlot(control.get(), operation.slot, arguments.values());
            EXPECT_THAT(reached, ::testing::ElementsAre(operation.slot)) << which.name << "::" << operation.name;
            EXPECT_TRUE(sameArguments) << which.name << "::" << operation.name;
            EXPECT_EQ(status, RecordingBase::statusOf(operation.slot)) << which.name << "::" << operation.name;
        }
        recording.onCall = nullptr;
    }
}

TEST_F(ForwardingTest, WithoutAnInnerBaseObjectEveryOperationIsRefused)
{
    host.givesBase = false;
    for (const LibraryClass& which : controls) {
        const auto control = createControl(which);
        ASSERT_TRUE(control) << which.name;
        for (const Operation& operation : operations) {
            if (kOwn.count(operation.name))
                continue;
            const DistinctArguments arguments(operation);
            EXPECT_EQ(testing::callSlot(control.get(), operation.slot, arguments.values()), E_UNEXPECTED)
                << which.name << "::" << operation.name;
        }
    }
}

TEST_F(ForwardingTest, TheFiveOperationsOfTheControlAndItsAutomationNeverReachTheSameSlot)
{
    std::set<std::size_t> forbidden = {3, 4, 5, 6}; // IDispatch
    for (const Operation& operation : operations)
        if (kOwn.count(operation.name))
            forbidden.insert(operation.slot);
    const auto dc = host.ledger.make<testing::RenderDc>();
    const auto objectDraw = host.ledger.make<testing::ObjectDraw>();
    for (const LibraryClass& which : controls) {
        const auto control = createControl(which);
        recording.onCall = [&](std::size_t slot, const RecordingBase::Arguments&) {
            EXPECT_EQ(forbidden.count(slot), 0u) << which.name << " slot " << slot;
        };
        VARIANT_BOOL result = VARIANT_FALSE;
        VexNotify notify{};
        Bstr path;
        UINT count = 0;
        EXPECT_EQ(control->CreateProps(), S_OK) << "under a host whose properties cannot be created: " << which.name;
        EXPECT_EQ(control->EventNotify(&notify, &result), S_OK);
        EXPECT_GE(control->DrawObject(objectDraw.get(), SkinRect{}, &result), 0);
        EXPECT_GE(control->RenderDrawObject(dc.get(), SkinRect{}, &result), 0);
        EXPECT_EQ(control->GetFilePath(path.put()), S_OK);
        EXPECT_EQ(control->GetTypeInfoCount(&count), S_OK);
        recording.onCall = nullptr;

        wchar_t program[MAX_PATH] = L"";
        GetModuleFileNameW(nullptr, program, MAX_PATH);
        EXPECT_EQ(path.view(), program) << "the host's program, not the module";
    }
}

TEST_F(ForwardingTest, TheInnerBaseObjectLearnsOfItsControlAndIsGivenBack)
{
    const std::size_t setRealControl = slotOf("SetRealCtrlPtr");
    for (const LibraryClass& which : controls) {
        std::vector<std::int64_t> realControls;
        recording.onCall = [&](std::size_t slot, const RecordingBase::Arguments& received) {
            if (slot == setRealControl)
                realControls.push_back(received[0]);
        };
        auto control = createControl(which);
        const auto own = reinterpret_cast<std::int64_t>(control.get());
        EXPECT_GT(recording.references(), initialReferences);
        control.reset();
        EXPECT_THAT(realControls, ::testing::ElementsAre(own, 0)) << which.name;
        EXPECT_EQ(recording.references(), initialReferences) << which.name;
        recording.onCall = nullptr;
    }
}

} // namespace
} // namespace morvane
