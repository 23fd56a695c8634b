// The connection point of a control's event interface: sinks may connect, and nothing is ever fired.
#include "tests/frame/control_fixture.h"

#include <array>
#include <set>

namespace morvane {
namespace {

using testing::ControlFixture;

/// A script's sink: it knows IDispatch only. Any call of it is noted in the log.
class Sink final : public testing::DispatchStub<IDispatch> {
public:
    using DispatchStub::DispatchStub;
};

/// Something that cannot be a sink.
class NoSink final : public testing::DispatchStub<IDispatch> {
public:
    using DispatchStub::DispatchStub;

protected:
    bool has(REFIID iid) const override { return iid == IID_IUnknown; }
};

class ConnectionPointTest : public ControlFixture {
protected:
    void SetUp() override
    {
        bringUp();
        container = button.as<IConnectionPointContainer>();
        ASSERT_TRUE(container);
        ASSERT_EQ(container->FindConnectionPoint(iidOf<_ICmdButtonEvents>(), point.put()), S_OK);
    }
    void TearDown() override
    {
        point.reset();
        container.reset();
        ControlFixture::TearDown();
    }

    std::vector<DWORD> connectedCookies()
    {
        ComPtr<IEnumConnections> connections;
        EXPECT_EQ(point->EnumConnections(connections.put()), S_OK);
        std::vector<DWORD> result;
        CONNECTDATA data{};
        while (connections->Next(1, &data, nullptr) == S_OK) {
            result.push_back(data.dwCookie);
            ComPtr<IUnknown>::adopt(data.pUnk);
        }
        return result;
    }

    ComPtr<IConnectionPointContainer> container;
    ComPtr<IConnectionPoint> point;
};

TEST_F(ConnectionPointTest, ThereIsOnePointForTheEventInterface)
{
    IID iid{};
    EXPECT_EQ(point->GetConnectionInterface(&iid), S_OK);
    EXPECT_EQ(iid, iidOf<_ICmdButtonEvents>());
    ComPtr<IConnectionPointContainer> back;
    EXPECT_EQ(point->GetConnectionPointContainer(back.put()), S_OK);
    EXPECT_EQ(back, container);

    ComPtr<IEnumConnectionPoints> points;
    ASSERT_EQ(container->EnumConnectionPoints(points.put()), S_OK);
    ComPtr<IConnectionPoint> first;
    ULONG fetched = 9;
    EXPECT_EQ(points->Next(1, first.put(), &fetched), S_OK);
    EXPECT_EQ(fetched, 1u);
    EXPECT_EQ(first, point);
    ComPtr<IConnectionPoint> second;
    EXPECT_EQ(points->Next(1, second.put(), &fetched), S_FALSE);
    EXPECT_EQ(fetched, 0u);
    EXPECT_FALSE(second);

    for (const IID* other : {&iidOf<_IVexCheckBoxEvents>(), &IID_IDispatch, &IID_NULL}) {
        ComPtr<IConnectionPoint> none;
        EXPECT_EQ(container->FindConnectionPoint(*other, none.put()), CONNECT_E_NOCONNECTION);
        EXPECT_FALSE(none);
    }
}

TEST_F(ConnectionPointTest, SinksComeAndGoInAnyOrder)
{
    std::vector<ComPtr<Sink>> sinks;
    std::vector<DWORD> cookies;
    for (int i = 0; i < 5; ++i) {
        sinks.push_back(host.ledger.make<Sink>());
        cookies.emplace_back();
        ASSERT_EQ(point->Advise(sinks.back().get(), &cookies.back()), S_OK);
        EXPECT_NE(cookies.back(), 0u);
        EXPECT_EQ(sinks.back()->references(), 2u);
    }
    EXPECT_EQ(std::set<DWORD>(cookies.begin(), cookies.end()).size(), 5u);
    EXPECT_EQ(point->Unadvise(cookies[2]), S_OK);
    EXPECT_EQ(point->Unadvise(cookies[2]), CONNECT_E_NOCONNECTION) << "twice";
    EXPECT_EQ(point->Unadvise(0), CONNECT_E_NOCONNECTION);
    EXPECT_EQ(sinks[2]->references(), 1u);
    EXPECT_EQ(connectedCookies(), (std::vector<DWORD>{cookies[0], cookies[1], cookies[3], cookies[4]}));
    EXPECT_EQ(point->Unadvise(cookies[0]), S_OK);
    EXPECT_EQ(point->Unadvise(cookies[4]), S_OK);
    // Two remain connected: the control gives them back at its end.
}

TEST_F(ConnectionPointTest, OneSinkMayConnectTwice)
{
    const auto sink = host.ledger.make<Sink>();
    DWORD first = 0;
    DWORD second = 0;
    EXPECT_EQ(point->Advise(sink.get(), &first), S_OK);
    EXPECT_EQ(point->Advise(sink.get(), &second), S_OK);
    EXPECT_NE(first, second);
    EXPECT_EQ(point->Unadvise(first), S_OK);
    EXPECT_EQ(connectedCookies(), std::vector<DWORD>{second});
}

TEST_F(ConnectionPointTest, WhatCannotBeASinkIsRefused)
{
    DWORD cookie = 7;
    EXPECT_EQ(point->Advise(nullptr, &cookie), E_POINTER);
    const auto sink = host.ledger.make<Sink>();
    EXPECT_EQ(point->Advise(sink.get(), nullptr), E_POINTER);
    const auto stranger = host.ledger.make<NoSink>();
    EXPECT_EQ(point->Advise(stranger.get(), &cookie), CONNECT_E_CANNOTCONNECT);
    EXPECT_EQ(cookie, 0u);
    EXPECT_EQ(point->EnumConnections(nullptr), E_POINTER);
    EXPECT_EQ(point->GetConnectionInterface(nullptr), E_POINTER);
    EXPECT_EQ(point->GetConnectionPointContainer(nullptr), E_POINTER);
    EXPECT_EQ(container->EnumConnectionPoints(nullptr), E_POINTER);
    EXPECT_EQ(container->FindConnectionPoint(iidOf<_ICmdButtonEvents>(), nullptr), E_POINTER);
}

TEST_F(ConnectionPointTest, EnumeratorsAreSnapshotsThatSkipResetAndClone)
{
    const auto sink = host.ledger.make<Sink>();
    std::array<DWORD, 3> cookies{};
    for (DWORD& cookie : cookies)
        point->Advise(sink.get(), &cookie);
    ComPtr<IEnumConnections> connections;
    ASSERT_EQ(point->EnumConnections(connections.put()), S_OK);
    point->Unadvise(cookies[0]);

    EXPECT_EQ(connections->Skip(2), S_OK);
    ComPtr<IEnumConnections> clone;
    ASSERT_EQ(connections->Clone(clone.put()), S_OK);
    std::array<CONNECTDATA, 3> data{};
    ULONG fetched = 0;
    EXPECT_EQ(clone->Next(3, data.data(), &fetched), S_FALSE);
    ASSERT_EQ(fetched, 1u);
    EXPECT_EQ(data[0].dwCookie, cookies[2]);
    ComPtr<IUnknown>::adopt(data[0].pUnk);
    EXPECT_EQ(connections->Skip(2), S_FALSE) << "only one was left";

    EXPECT_EQ(connections->Reset(), S_OK);
    EXPECT_EQ(connections->Next(3, data.data(), nullptr), E_POINTER) << "several need a place for their number";
    EXPECT_EQ(connections->Next(3, data.data(), &fetched), S_OK);
    EXPECT_EQ(data[0].dwCookie, cookies[0]) << "connected when the enumerator was made";
    for (const CONNECTDATA& each : data)
        ComPtr<IUnknown>::adopt(each.pUnk);
}

TEST_F(ConnectionPointTest, NothingIsEverFired)
{
    const auto sink = host.ledger.make<Sink>();
    DWORD cookie = 0;
    ASSERT_EQ(point->Advise(sink.get(), &cookie), S_OK);
    host.takeLog();
    for (long id = 1020; id < 3500; ++id)
        notify(static_cast<VexMsgID>(id));
    EXPECT_EQ(sink->references(), 2u);
    EXPECT_EQ(host.entriesOf("?"), testing::Log()) << "calls of the sink would be noted like this";
}

TEST_F(ConnectionPointTest, ThePointKeepsItsControlAlive)
{
    container.reset();
    button.reset();
    EXPECT_NE(host.base().references(), 0u);
    const auto sink = host.ledger.make<Sink>();
    DWORD cookie = 0;
    EXPECT_EQ(point->Advise(sink.get(), &cookie), S_OK);
    point.reset();
    EXPECT_EQ(host.base().references(), 0u);
    EXPECT_EQ(sink->references(), 1u);
}

} // namespace
} // namespace morvane
