// A command button under the strange host: the reference control of the frame.
#pragma once

#include "frame/com/bstr.h"
#include "tests/strange_host/strange_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace morvane::testing {

/// The answer to a notification.
struct Answer {
    HRESULT status;
    VARIANT_BOOL handled;

    friend bool operator==(const Answer&, const Answer&) = default;
};
inline constexpr Answer kHandled{S_OK, VARIANT_TRUE};
inline constexpr Answer kLeftToFramework{S_OK, VARIANT_FALSE};

inline void PrintTo(const Answer& answer, std::ostream* out)
{
    *out << "status " << answer.status << (answer.handled ? ", handled" : ", not handled");
}

class ControlFixture : public ::testing::Test {
protected:
    /// Nothing may be referenced once the control is gone.
    void TearDown() override
    {
        button.reset();
        EXPECT_TRUE(host.isUnreferenced());
        EXPECT_EQ(host.module.canUnloadNow(), S_OK);
    }

    void createButton()
    {
        button = host.create<ICmdButton>(iidOf<::CmdButton>());
        ASSERT_TRUE(button);
    }

    /// As the framework brings a control to life: properties, attachment, final creation. The log starts afterwards.
    void bringUp()
    {
        createButton();
        ASSERT_EQ(button->CreateProps(), S_OK);
        host.attach();
        notify(VEXSM_INITOBJECT);
        notify(VEXSM_FINALCREATE);
        host.takeLog();
    }

    Answer notify(VexNotify record)
    {
        Answer answer{E_FAIL, 0x55};
        answer.status = button->EventNotify(&record, &answer.handled);
        return answer;
    }
    Answer notify(VexMsgID id, std::int64_t first = 0, std::int64_t second = 0, std::int64_t third = 0)
    {
        return notify(VexNotify{id, 0, first, second, third, 0, 0, VARIANT_FALSE});
    }
    /// A pointer notification at a point of the window.
    Answer point(VexMsgID id, int x, int y) { return notify(id, 0, x, y); }
    /// A registered window message.
    Answer windowMessage(UINT message, WPARAM wParam, LPARAM lParam)
    {
        return notify(VexNotify{VexMsgID{}, static_cast<long>(message), static_cast<std::int64_t>(wParam), lParam, 0, 0,
                                0, VARIANT_FALSE});
    }

    std::vector<std::string> log() { return host.takeLog(); }

    StrangeHost host;
    ComPtr<ICmdButton> button;
};

template <class T>
std::int64_t addressOf(T& place)
{
    return reinterpret_cast<std::int64_t>(&place);
}

} // namespace morvane::testing
