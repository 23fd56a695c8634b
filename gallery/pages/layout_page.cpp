// Layout: every alignment and space type in both directions and all docks, in a panel whose size the user changes.
#include "gallery/pages/samples.h"

#include <algorithm>
#include <cmath>

namespace gallery {

namespace {

constexpr int kLeft = 24;
constexpr Size kSmallest{380, 230};
constexpr Size kLargest{712, 408};
constexpr Size kUsual{600, 350};
constexpr int kAlignments = 3;
constexpr int kSpaces = 4;

/// One direction of a position, in the contract's numbers; lengths at 100 percent.
struct Half {
    int align;
    int space;
    int nearGap;
    int farGap;
    int size;
};

constexpr Half bothEdges(int nearGap, int farGap)
{
    return {0, PHST_RIGHTWIDTH, nearGap, farGap, 0};
}
constexpr Half percent(int nearGap, int size)
{
    return {0, PHST_PERCENT, nearGap, 0, size};
}

PosBase recordOf(const Scene& scene, const Half& half)
{
    const auto length = [&](int value) { return half.space == PHST_PERCENT ? value : scene.scaled(value); };
    return {static_cast<PosHorzAlignType>(half.align), static_cast<PosHorzSpaceType>(half.space), length(half.nearGap),
            length(half.farGap), length(half.size)};
}

void setPosition(const Scene& scene, IVexControlBase& object, const Half& horizontal, const Half& vertical)
{
    ComPtr<IVexPos> position;
    object.GetPosition(position.put());
    if (!position)
        return;
    position->SetPosStruct({recordOf(scene, horizontal), recordOf(scene, vertical)});
    object.SetPosition(position.get());
    object.ResizeThis();
}

// The children --------------------------------------------------------------------------------------------------------

struct SpaceSample {
    const wchar_t* name;
    OLE_COLOR color; // dark enough for white text on it
    Half halves[kAlignments];
};

/// Along a direction of some 150 to 330 pixels.
constexpr SpaceSample kSamples[kSpaces] = {
    {L"", RGB(0x25, 0x63, 0xD9), {{0, 0, 8, 0, 96}, {1, 0, 0, 0, 96}, {2, 0, 0, 8, 96}}},
    {L" edges", RGB(0x1E, 0x7F, 0x4F), {{0, 1, 8, 56, 0}, {1, 1, 32, 32, 0}, {2, 1, 56, 8, 0}}},
    {L" %", RGB(0x9A, 0x67, 0x00), {{0, 2, 5, 0, 50}, {1, 2, 0, 0, 50}, {2, 2, 0, 5, 50}}},
    {L" fixed", RGB(0x7A, 0x3F, 0xBF), {{0, 3, 8, 0, 120}, {1, 3, 0, 0, 120}, {2, 3, 0, 8, 120}}},
};

/// A coloured piece with its name; the name's place follows the piece.
ComPtr<IUIFormObj> piece(Scene& scene, IVexControlBase& parent, OLE_COLOR color, const std::wstring& name,
                         bool isTurned)
{
    const auto form = scene.form(&parent, {0, 0, 10, 10}, color);
    const auto style = sampleStyle(scene, {L"Tahoma", 8});
    style->put_clrText(RGB(255, 255, 255));
    style->put_bVertDraw(isTurned ? VARIANT_TRUE : VARIANT_FALSE);
    style->put_nStringTrimming(3);
    const auto label = showText(scene, *form, {0, 0, 10, 10}, name, *style);
    setPosition(scene, *label, bothEdges(2, 2), bothEdges(0, 0));
    return form;
}

/// Twelve pieces one below the other, each with another horizontal rule; or side by side with another vertical one.
void addPieces(Scene& scene, IVexControlBase& area, bool isVertical, const wchar_t* const (&alignments)[kAlignments])
{
    int line = 0;
    for (const SpaceSample& sample : kSamples) {
        for (int align = 0; align < kAlignments; ++align) {
            const Half across = percent(2 + line++ * 8, 7);
            const auto object =
                piece(scene, area, sample.color, alignments[align] + std::wstring(sample.name), isVertical);
            if (isVertical)
                setPosition(scene, *object, across, sample.halves[align]);
            else
                setPosition(scene, *object, sample.halves[align], across);
        }
    }
}

void addDocks(Scene& scene, IVexControlBase& area)
{
    for (const VexDockObjType dock :
         {VexDock_LeftTop, VexDock_HCenter_Top, VexDock_RightTop, VexDock_VCenter_Left, VexDock_HCenter_VCenter,
          VexDock_VCenter_Right, VexDock_LeftBottom, VexDock_HCenter_Bottom, VexDock_RightBottom})
        scene.form(&area, Rect::at({}, {14, 14}), kSamples[0].color)->Dock(dock, VARIANT_FALSE);
}

// The panel -----------------------------------------------------------------------------------------------------------

class Panel {
public:
    Panel(Scene& scene, IVexControlBase& page, Point at)
        : m_scene(scene), m_at(at), m_object(scene.form(&page, Rect::at(at, kUsual), scene.theme().surface)),
          m_readout(scene.label(&page, {600, at.y - 40, 736, at.y - 12}, L"",
                                {scene.theme().textSoft, 9, false, TextAlign::Far}))
    {
        static constexpr const wchar_t* kAcross[] = {L"left", L"centre", L"right"};
        static constexpr const wchar_t* kDown[] = {L"top", L"middle", L"bottom"};
        addPieces(scene, *area(percent(1, 46)), false, kAcross);
        addPieces(scene, *area(percent(48, 38)), true, kDown);
        addDocks(scene, *area(percent(87, 12)));
        addGrip();
        resize(kUsual);
    }

    IUIFormObj& object() { return *m_object; }
    Size size() const { return m_size; }

    void resize(Size wanted)
    {
        m_size = {std::clamp(wanted.width, kSmallest.width, kLargest.width),
                  std::clamp(wanted.height, kSmallest.height, kLargest.height)};
        m_scene.place(*m_object, Rect::at(m_at, m_size));
        const std::wstring text = std::to_wstring(m_size.width) + L" \u00D7 " + std::to_wstring(m_size.height);
        m_readout->SetText(Bstr(text).get());
    }

    void toggleAnimation() { m_isAnimated = !m_isAnimated; }

    /// Breathes between its least and its largest size, in about four seconds.
    void tick()
    {
        constexpr double kStep = 0.05;
        if (!m_isAnimated)
            return;
        m_phase += kStep;
        const double share = (1 - std::cos(m_phase)) / 2;
        const auto between = [share](int least, int most) { return least + static_cast<int>(share * (most - least)); };
        resize({between(kSmallest.width, kLargest.width), between(kSmallest.height, kLargest.height)});
    }

private:
    ComPtr<IUIFormObj> area(const Half& horizontal)
    {
        const auto form = m_scene.form(m_object.get(), {0, 0, 10, 10}, m_scene.theme().window);
        setPosition(m_scene, *form, horizontal, bothEdges(6, 18));
        return form;
    }

    /// Drawn as three dots in the corner; it follows the corner that it moves.
    void addGrip()
    {
        const auto grip = m_scene.form(m_object.get(), {0, 0, 16, 16}, m_scene.theme().surface);
        grip->Dock(VexDock_RightBottom, VARIANT_FALSE);
        for (const Point& dot : {Point{10, 10}, Point{5, 10}, Point{10, 5}})
            m_scene.form(grip.get(), Rect::at(dot, {3, 3}), m_scene.theme().textSoft);
        const auto surface = m_scene.label(grip.get(), {0, 0, 16, 16}, L"", {m_scene.theme().text});
        m_scene.onMessage(*surface, VEXSM_LBUTTONDOWN, [this, surface] { beginDrag(*surface); });
        m_scene.onMessage(*surface, VEXSM_MOUSEMOVE, [this] { drag(); });
        m_scene.onMessage(*surface, VEXSM_LBUTTONUP, [this] { endDrag(); });
    }

    void beginDrag(IVexControlBase& grip)
    {
        m_isDragged = true;
        m_isAnimated = false;
        GetCursorPos(&m_dragFrom);
        m_sizeBefore = m_size;
        m_scene.root().SetCaptureCtrl(&grip);
    }

    void drag()
    {
        POINT cursor{};
        if (!m_isDragged || !GetCursorPos(&cursor))
            return;
        if (GetKeyState(VK_LBUTTON) >= 0) // given up by Escape, or elsewhere
            return endDrag();
        const auto moved = [&](LONG from, LONG to) { return static_cast<int>(to - from) * 100 / m_scene.scale(); };
        resize(
            {m_sizeBefore.width + moved(m_dragFrom.x, cursor.x), m_sizeBefore.height + moved(m_dragFrom.y, cursor.y)});
    }

    void endDrag()
    {
        if (std::exchange(m_isDragged, false))
            m_scene.root().ReleaseCaptureCtrl();
    }

    Scene& m_scene;
    Point m_at;
    ComPtr<IUIFormObj> m_object;
    ComPtr<ICmdButton> m_readout;
    Size m_size;
    bool m_isAnimated = false;
    double m_phase = 0;
    bool m_isDragged = false;
    POINT m_dragFrom{};
    Size m_sizeBefore;
};

void addCommands(Scene& scene, IVexControlBase& page, const std::shared_ptr<Panel>& panel, int top)
{
    struct Command {
        const wchar_t* text;
        Size change;
    };
    Row row({kLeft, top}, {84, 28}, 8);
    for (const Command& command : {Command{L"Narrower", {-40, 0}}, Command{L"Wider", {40, 0}},
                                   Command{L"Lower", {0, -30}}, Command{L"Higher", {0, 30}}}) {
        const auto button = scene.button(&page, row.next(), command.text);
        scene.onClick(*button, [panel, change = command.change] {
            panel->resize({panel->size().width + change.width, panel->size().height + change.height});
        });
    }
    const auto animate = scene.button(&page, row.next(), L"Animate");
    scene.onClick(*animate, [panel] { panel->toggleAnimation(); });
    const auto mirrored = scene.checkBox(&page, Rect::at({row.next().left + 4, top + 2}, {100, 24}), L"Mirrored");
    scene.onClick(*mirrored, [panel, mirrored] {
        VEXCHECKBOX_VALUE value = VEXCHECKBOX_UNCHECKED;
        mirrored->GetValue(&value);
        panel->object().MirrorObject(value == VEXCHECKBOX_CHECKED ? VARIANT_TRUE : VARIANT_FALSE);
        panel->resize(panel->size());
        panel->object().DirectRedraw(nullptr);
    });
}

} // namespace

void buildLayoutPage(Scene& scene, IVexControlBase& page)
{
    constexpr int kPeriodMs = 30;
    const int top = pageHeading(scene, page, L"Layout",
                                L"Every alignment and space type, and docked places. Drag the corner, or let it move.");
    const auto panel = std::make_shared<Panel>(scene, page, Point{kLeft, top + 40});
    addCommands(scene, page, panel, top);
    scene.every(kPeriodMs, page, [panel] { panel->tick(); });
}

} // namespace gallery
