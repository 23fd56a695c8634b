#include "tests/controls/controls_fixture.h"

namespace morvane::testing {

namespace {
constexpr UINT kSetToolTip = 3464;
} // namespace

ControlsFixture::ControlsFixture()
    : m_pictures(kClsidPicture, [this] { return ComPtr<IUnknown>(host.ledger.make<Picture>().get()); }),
      m_sections(kClsidImage, [this] { return ComPtr<IUnknown>(host.ledger.make<ImageSection>("strip").get()); })
{
    host.window.onMessage = [this](UINT message, WPARAM wParam, LPARAM lParam) {
        return receive(message, wParam, lParam);
    };
}

void ControlsFixture::TearDown()
{
    res.reset();
    form.reset();
    root.reset();
    EXPECT_TRUE(host.isUnreferenced());
    EXPECT_EQ(host.module.canUnloadNow(), S_OK);
}

Answer ControlsFixture::deliver(IVexControlBase& control, VexNotify record)
{
    Answer answer{E_FAIL, 0x55};
    answer.status = control.EventNotify(&record, &answer.handled);
    return answer;
}

void ControlsFixture::place(BaseObject& base, const wchar_t* name, BaseObject* parent)
{
    host.attach();
    base.res = ComPtr<IVexRes>(res.get());
    base.objectName = name;
    base.treeParent = parent ? parent : form.get();
    base.treeRoot = base.treeParent->treeRoot ? base.treeParent->treeRoot : root.get();
    base.treeParent->children.push_back(&base);
    m_bases.push_back(&base);
}

Log ControlsFixture::renderLog(IVexControlBase& control)
{
    log();
    const auto dc = host.ledger.make<RenderDc>();
    VARIANT_BOOL drawn = 0x55;
    EXPECT_EQ(control.RenderDrawObject(dc.get(), SkinRect{}, &drawn), S_OK);
    EXPECT_EQ(drawn, VARIANT_TRUE);
    return log();
}

Log ControlsFixture::drawLog(IVexControlBase& control)
{
    log();
    const auto draw = host.ledger.make<ObjectDraw>();
    VARIANT_BOOL drawn = 0x55;
    const HRESULT status = control.DrawObject(draw.get(), SkinRect{}, &drawn);
    EXPECT_EQ(drawn, status == S_OK ? VARIANT_TRUE : VARIANT_FALSE);
    Log result = log();
    if (status != S_OK)
        result.push_back("status " + std::to_string(status));
    return result;
}

std::string ControlsFixture::who(std::int64_t pointer) const
{
    for (const BaseObject* base : m_bases)
        if (base->realControl && reinterpret_cast<std::int64_t>(base->realControl) == pointer)
            return narrow(base->objectName);
    return hex(pointer);
}

LRESULT ControlsFixture::receive(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == kSetToolTip) {
        const auto* text = reinterpret_cast<const wchar_t*>(wParam);
        host.ledger.note("tip \"" + narrow(text ? text : L"") + "\" " + who(lParam));
    } else {
        host.ledger.note("message " + std::to_string(message) + " " + who(static_cast<std::int64_t>(wParam)) + " " +
                         who(lParam));
    }
    if (onMessage)
        onMessage(message);
    return 0;
}

} // namespace morvane::testing
