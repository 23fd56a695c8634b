// Every call out of a control may come back in: whatever the host does inside it, the control survives and lets go of
// everything in the end.
#include "frame/com/bstr.h"
#include "host/host_classes.h"
#include "tests/controls/drawing_doubles.h"
#include "tests/strange_host/strange_host.h"

namespace morvane {
namespace {

using testing::BaseObject;

struct ControlClass {
    const char* name;
    const CLSID& clsid;
};
const ControlClass kClasses[] = {{"CmdButton", iidOf<::CmdButton>()},
                                 {"VexCheckBox", iidOf<::VexCheckBox>()},
                                 {"RadioBox", iidOf<::RadioBox>()},
                                 {"UIFormObj", iidOf<::UIFormObj>()}};

void notify(IVexControlBase& control, VexNotify record)
{
    VARIANT_BOOL handled = VARIANT_FALSE;
    EXPECT_EQ(control.EventNotify(&record, &handled), S_OK) << record.eVexMsgId;
}
void notify(IVexControlBase& control, VexMsgID id, std::int64_t first = 0)
{
    notify(control, {id, 0, first, 50, 40, 0, 0, VARIANT_FALSE});
}

/// Pictures of the application, as far as the class takes any: from a file and from a handle.
void givePictures(IVexControlBase& control, const wchar_t* file, std::int64_t handle)
{
    const ComPtr<IVexControlBase> held(&control);
    const Bstr path(file);
    VARIANT_BOOL done = VARIANT_FALSE;
    if (const auto button = held.as<ICmdButton>()) {
        button->SetGraphicshIcon(handle, 0, 0);
        button->SetGraphicsFilePath(path.get(), 0, 0, 4, VARIANT_TRUE);
    } else if (const auto box = held.as<IVexCheckBox>()) {
        box->SetGraphics(handle, VARIANT_TRUE);
    } else if (const auto radio = held.as<IRadioBox>()) {
        radio->SetChildWndImage(path.get(), 5, 5);
        radio->SetBlinkImage(path.get());
        radio->SetGraphicsFilePath(path.get(), 0, 0, 4, VARIANT_TRUE);
        for (int state = 0; state < 4; ++state)
            radio->SetGraphicsBmp(static_cast<VEX_RADIOBOXSTATE>(state), VARIANT_FALSE, handle, &done);
    } else if (const auto form = held.as<IUIFormObj>()) {
        IVexRenderImage* lent = nullptr;
        form->SetBackBitmap(handle, &lent);
    }
}

/// A host in which every picture, style and image that a control can draw is there.
class World {
public:
    explicit World(const ControlClass& type)
        : m_class(type), m_pictures(kClsidPicture, [this] { return made(host.ledger.make<testing::Picture>()); }),
          m_sections(kClsidImage, [this] { return made(host.ledger.make<testing::ImageSection>()); })
    {
        m_ownObjects = host.ledger.alive().size();
    }

    /// A control in full use.
    void bringUp()
    {
        control = host.create<IVexControlBase>(m_class.clsid);
        BaseObject& base = host.base();
        control->CreateProps();
        attach(base);
        fillIn(base);
        notify(*control, VEXSM_INITOBJECT);
        notify(*control, VEXSM_FINALCREATE);
        givePictures(*control, L"picture.png", 0x1234);
        host.takeLog();
    }

    /// Root and skin are the base object's and the control's only.
    void attach(BaseObject& base)
    {
        const auto root = host.ledger.make<testing::Root>();
        root->window = host.window.handle();
        m_root = root.get();
        base.root = ComPtr<IAmbrel>(m_root);
        base.res = ComPtr<IVexRes>(host.ledger.make<testing::PictureRes>().get());
        base.treeParent = m_form.get();
        base.treeRoot = m_form.get();
        m_form->children = {&base};
    }

    /// The control's last reference from outside goes, with the word it should have had.
    void end()
    {
        if (control)
            notify(*control, VEXSM_DESTROYING);
        control.reset();
        EXPECT_EQ(host.ledger.alive().size(), m_ownObjects) << host.ledger.alive().back();
        for (const std::string& fault : host.ledger.faults())
            ADD_FAILURE() << fault;
        EXPECT_TRUE(!m_root || m_root->registered.empty());
        EXPECT_EQ(host.module.canUnloadNow(), S_OK);
    }

    testing::StrangeHost host;
    ComPtr<IVexControlBase> control;

private:
    template <class Object>
    static ComPtr<IUnknown> made(const ComPtr<Object>& object)
    {
        return ComPtr<IUnknown>(object.get());
    }

    void fillIn(BaseObject& base)
    {
        base.mouseOver = VARIANT_TRUE;
        base.position.horzPos.nSpaceType = PHST_FASTNESS;
        for (const testing::MadeProperty& property : base.properties) {
            if (auto* image = dynamic_cast<testing::ImageSectionObject*>(property.object.get())) {
                const auto section = host.ledger.make<testing::ImageSection>();
                section->picture = ComPtr<IVexPicture>(host.ledger.make<testing::Picture>().get());
                image->section = ComPtr<IVexImageBase>(section.get());
                image->sectionRect = {0, 0, 16, 16};
            } else if (auto* text = dynamic_cast<testing::TextStyleObject*>(property.object.get())) {
                text->style = ComPtr<IVexTextStyle>(host.ledger.make<testing::TextStyle>().get());
            }
        }
        if (auto* fits = base.find<testing::BoolObject>(L"AutoResize", L"IsEnableAutoSize"))
            fits->value = VARIANT_TRUE;
    }

    const ControlClass& m_class;
    testing::Root* m_root = nullptr; // stays in memory with the ledger
    ComPtr<BaseObject> m_form = host.ledger.make<BaseObject>();
    testing::ServedClass m_pictures;
    testing::ServedClass m_sections;
    std::size_t m_ownObjects = 0;
};

void renderIt(World& world, IVexControlBase& control)
{
    const auto dc = world.host.ledger.make<testing::RenderDc>();
    VARIANT_BOOL drawn = VARIANT_FALSE;
    EXPECT_EQ(control.RenderDrawObject(dc.get(), SkinRect{}, &drawn), S_OK);
}

void drawIt(World& world, IVexControlBase& control)
{
    const auto draw = world.host.ledger.make<testing::ObjectDraw>();
    VARIANT_BOOL drawn = VARIANT_FALSE;
    EXPECT_GE(control.DrawObject(draw.get(), SkinRect{}, &drawn), S_OK);
}

using Step = std::function<void(World&, IVexControlBase&)>;
struct NamedStep {
    std::string name;
    Step run;
};

Step notification(VexMsgID id, std::int64_t first = 0)
{
    return [=](World&, IVexControlBase& control) { notify(control, id, first); };
}

/// What an application does with a control, holding it meanwhile.
void useMethods(World&, IVexControlBase& control)
{
    const ComPtr<IVexControlBase> held(&control);
    const Bstr text(L"text");
    VARIANT_BOOL flag = VARIANT_FALSE;
    givePictures(control, L"another.png", 0x9ABC);
    if (const auto button = held.as<ICmdButton>()) {
        short length = 0;
        button->SetText(text.get());
        button->GetTextLength(&length);
        button->SetGraphicOffset(3, 4);
        button->SetBackImageFile(VEX_BTN_HOT, text.get(), &flag);
        button->SetBackhBitmap(VEX_BTN_HOT, reinterpret_cast<std::int64_t>(CreateBitmap(1, 1, 1, 1, nullptr)), &flag);
        button->SetMinWidth(5);
    } else if (const auto box = held.as<IVexCheckBox>()) {
        box->SetText(text.get());
        box->SetValue(VEXCHECKBOX_CHECKED);
    } else if (const auto radio = held.as<IRadioBox>()) {
        radio->SetText(text.get(), VARIANT_TRUE);
        radio->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE);
        radio->SetGroupID(7, &flag);
        radio->StartBlink(1, 100);
        radio->StopBlink();
    } else if (const auto form = held.as<IUIFormObj>()) {
        form->SetBackBitmapPath(text.get(), VARIANT_TRUE, &flag);
        form->DeleteBackBitmap();
    }
}

/// What the framework does to a control.
std::vector<NamedStep> stimuli()
{
    std::vector<NamedStep> all = {
        {"render", renderIt},
        {"draw", drawIt},
        {"configured", notification(VEXSM_ACCESSCONFIGED, 1)},
        {"disabled", notification(VEXSM_ENABLEOBJECT, 0)},
        {"used", useMethods},
        {"created anew",
         [](World&, IVexControlBase& control) {
             const ComPtr<IVexControlBase> held(&control);
             notify(control, VEXSM_DESTROYING);
             notify(control, VEXSM_FINALCREATE);
         }},
        {"right click", [](World&, IVexControlBase& control) {
             notify(control, {VexMsgID{}, WM_RBUTTONUP, 0, MAKELPARAM(50, 40), 0, 0, 0, VARIANT_FALSE});
         }}};
    for (const VexMsgID id : {VEXSM_LBUTTONDOWN, VEXSM_LBUTTONUP, VEXSM_LBUTTONDBCLICK, VEXSM_MOUSEMOVE,
                              VEXSM_MOUSEENTER, VEXSM_MOUSELEAVE, VEXSM_ONSETFOCUS, VEXSM_ONKILLFOCUS, VEXSM_SIZE,
                              VEXSM_DRAWPREVIEW, VEXSM_INITOBJECT, VEXSM_FINALCREATE, VEXSM_DESTROYING})
        all.push_back({"notification " + std::to_string(id), notification(id)});
    return all;
}

/// What the host does inside a call of the control.
const NamedStep kInside[] = {
    {"released", [](World& world, IVexControlBase&) { world.control.reset(); }},
    {"clicked", notification(VEXSM_LBUTTONUP)},
    {"painted", renderIt},
    {"created again", notification(VEXSM_FINALCREATE)},
    {"given other pictures", [](World&, IVexControlBase& control) { givePictures(control, L"other.png", 0x5678); }},
    {"deprived of its pictures", [](World&, IVexControlBase& control) { givePictures(control, L"missing.png", 0); }},
    {"taken out of its window",
     [](World& world, IVexControlBase& control) {
         notify(control, VEXSM_DESTROYING);
         world.host.base().root.reset();
         world.host.base().res.reset();
         notify(control, VEXSM_ACCESSCONFIGED, 1);
     }},
};

/// Runs `stimulus` once for every call out that it makes, with `inside` done in that call; gives how many there were.
int runInsideEveryCall(World& world, const Step& stimulus, const Step& inside)
{
    for (int call = 1;; ++call) {
        SCOPED_TRACE("call out " + std::to_string(call));
        world.bringUp();
        IVexControlBase& control = *world.control;
        int calls = 0;
        world.host.ledger.onCallOut = [&] {
            if (++calls == call)
                inside(world, control);
        };
        stimulus(world, control);
        world.host.ledger.onCallOut = nullptr;
        world.end();
        if (calls < call || ::testing::Test::HasFailure())
            return call - 1;
    }
}

TEST(ReentrancyTest, AnythingMayHappenInsideEveryCallOut)
{
    int calls = 0;
    for (const ControlClass& type : kClasses)
        for (const NamedStep& stimulus : stimuli())
            for (const NamedStep& inside : kInside) {
                SCOPED_TRACE(std::string(type.name) + ", " + stimulus.name + ", " + inside.name);
                World world(type);
                calls += runInsideEveryCall(world, stimulus.run, inside.run);
                if (HasFailure())
                    return;
            }
    EXPECT_GT(calls, 1000) << "the hosts are asked for too little";
}

TEST(ReentrancyTest, AnythingMayHappenInsideTheLastRelease)
{
    int interrupted = 0;
    for (const ControlClass& type : kClasses)
        for (const NamedStep& inside : kInside) {
            SCOPED_TRACE(std::string(type.name) + ", " + inside.name);
            World world(type);
            const Step happens = [&](World&, IVexControlBase&) {
                // As the framework knows a control: by a borrowed pointer, for as long as the control leaves it there.
                IVexControlBase* const borrowed = world.host.base().realControl;
                interrupted += borrowed != nullptr;
                if (borrowed)
                    inside.run(world, *borrowed);
            };
            runInsideEveryCall(
                world, [](World& dying, IVexControlBase&) { dying.control.reset(); }, happens);
            if (HasFailure())
                return;
        }
    EXPECT_GT(interrupted, 10);
}

TEST(ReentrancyTest, EverythingMayComeEarlyLateTwiceAndFromABrokenHost)
{
    for (const ControlClass& type : kClasses) {
        SCOPED_TRACE(type.name);
        World world(type);
        const auto doEverything = [&] {
            for (const NamedStep& stimulus : stimuli())
                for (int time = 0; time < 2; ++time)
                    stimulus.run(world, *world.control);
        };
        world.control = world.host.create<IVexControlBase>(type.clsid);
        doEverything(); // nobody has attached it, it has no properties
        world.end();

        world.bringUp();
        doEverything();
        notify(*world.control, VEXSM_DESTROYING);
        doEverything();
        world.host.base().isBroken = true;
        doEverything();
        world.end();
    }
}

/// Asks for what a control keeps with its host, and sets it, as far as the class has it.
void askForWhatIsNotThere(IVexControlBase& control)
{
    const ComPtr<IVexControlBase> held(&control);
    const Bstr text(L"text");
    Bstr textBack;
    ComPtr<IVexImageBase> image;
    ComPtr<IVexTextStyle> style;
    VARIANT_BOOL flag = VARIANT_FALSE;
    if (const auto button = held.as<ICmdButton>()) {
        short length = 0;
        button->SetText(text.get());
        button->GetText(textBack.put());
        button->GetTextLength(&length);
        button->GetBackImageSec(VEX_BTN_HOT, image.put());
        button->GetBackTextStyle(VEX_BTN_HOT, style.put());
        button->SetBackImageFile(VEX_BTN_HOT, text.get(), &flag);
        button->SetMinWidth(5);
    } else if (const auto box = held.as<IVexCheckBox>()) {
        box->SetText(text.get());
        box->GetText(textBack.put());
        box->GetImage(VEX_CHECKBOX_HOT, VEXCHECKBOX_CHECKED, image.put());
        box->SetValue(VEXCHECKBOX_HALFCHECKED);
    } else if (const auto radio = held.as<IRadioBox>()) {
        radio->SetText(text.get(), VARIANT_TRUE);
        radio->GetBoxImage(VEX_RADIOBOX_HOT, VARIANT_TRUE, image.put());
        radio->GetTextStyle(VEX_RADIOBOX_HOT, VARIANT_TRUE, style.put());
        radio->StartBlink(1, 100);
        radio->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE);
        radio->SetGroupID(7, &flag);
        radio->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE);
    } else if (const auto form = held.as<IUIFormObj>()) {
        ComPtr<IFillColor> fill;
        form->GetBackImageSec(image.put());
        form->GetBackColor(fill.put());
        form->SetBackBitmapPath(text.get(), VARIANT_TRUE, &flag);
    }
    EXPECT_EQ(image, nullptr);
    EXPECT_EQ(style, nullptr);
    EXPECT_TRUE(textBack.empty());
}

TEST(ReentrancyTest, AHostWithNothingToGiveIsSurvived)
{
    for (const ControlClass& type : kClasses) {
        SCOPED_TRACE(type.name);
        World world(type);
        for (const bool hadSomething : {true, false}) {
            if (hadSomething)
                world.bringUp();
            else
                world.control = world.host.create<IVexControlBase>(type.clsid);
            world.host.base().isEmptyHanded = true;
            EXPECT_EQ(world.control->CreateProps(), S_OK);
            for (int time = 0; time < 2; ++time) {
                for (const NamedStep& stimulus : stimuli())
                    stimulus.run(world, *world.control);
                givePictures(*world.control, L"picture.png", 0x1234);
            }
            askForWhatIsNotThere(*world.control);
            world.end();
        }
    }
}

} // namespace
} // namespace morvane
