#include "gallery/inspector/inspector.h"

#include <algorithm>

namespace gallery {

namespace {

constexpr UINT_PTR kTimer = 0x1A5E;
constexpr UINT kPeriodMs = 100;
constexpr int kMargin = 12;
constexpr int kTreeTop = 10;
constexpr int kTreeHeight = 24 + 6 * 20;
constexpr int kPropertiesTop = kTreeTop + kTreeHeight + 13;
constexpr int kPropertiesHeight = 24 + 7 * 24;
constexpr int kLogTop = kPropertiesTop + kPropertiesHeight + 13;

/// The inspector's own objects: never logged, and not in the order of the page's tab key.
void gather(IVexControlBase& object, std::vector<const IUnknown*>& identities)
{
    identities.push_back(identityOf(&object));
    object.SetTabStop(VARIANT_FALSE);
    short count = 0;
    object.GetChildCount(&count);
    for (short index = 0; index < count; ++index) {
        ComPtr<ISkinObjResBase> child;
        object.GetSubObject(index, child.put());
        if (const auto control = child.as<IVexControlBase>())
            gather(*control, identities);
    }
}

/// The first object that one would look at: one with a text that can be operated.
std::size_t firstOfInterest(const std::vector<ObjectRow>& rows)
{
    const auto found = std::find_if(rows.begin(), rows.end(), [](const ObjectRow& row) {
        VARIANT_BOOL isStop = VARIANT_FALSE;
        row.object->IsTabStop(&isStop);
        return isStop != VARIANT_FALSE && !row.text.empty();
    });
    return found == rows.end() ? 0 : static_cast<std::size_t>(found - rows.begin());
}

} // namespace

Inspector::Inspector(Scene& scene, const Rect& place, Size window) : m_scene(scene)
{
    build(place, window);
    std::vector<const IUnknown*> own;
    gather(*m_form, own);
    for (const auto& edge : m_frame->edges())
        gather(*edge, own);
    m_log.ignore(std::move(own));
    m_log.open();
    startTimer();
}

Inspector::~Inspector()
{
    stopTimer();
    m_log.close();
    pageClosing();
    for (const auto& edge : m_frame->edges())
        m_scene.remove(*edge);
    m_scene.remove(*m_form);
}

void Inspector::build(const Rect& place, Size window)
{
    const Theme& theme = m_scene.theme();
    const int height = place.height();
    m_form = m_scene.form(nullptr, place, theme.surface);
    m_scene.placeIn(*m_form, place, window, Hold::Far, Hold::Both);
    const Rect side{0, 0, 1, height};
    m_scene.placeIn(*m_scene.form(m_form.get(), side, theme.line), side, place.size(), Hold::Near, Hold::Both);
    const int right = kWidth - kMargin;
    const auto part = [&](int top, int bottom) { return Rect{kMargin + 1, top, right, bottom}; };
    m_tree.emplace(m_scene, *m_form, part(kTreeTop, kTreeTop + kTreeHeight), [this] { selectionChanged(); });
    m_scene.form(m_form.get(), {1, kPropertiesTop - 7, kWidth, kPropertiesTop - 6}, theme.line);
    m_properties.emplace(m_scene, *m_form, part(kPropertiesTop, kPropertiesTop + kPropertiesHeight));
    m_scene.form(m_form.get(), {1, kLogTop - 7, kWidth, kLogTop - 6}, theme.line);
    m_events.emplace(m_scene, *m_form, part(kLogTop, height - 6), m_log);
    m_frame.emplace(m_scene);
}

HWND Inspector::window() const
{
    std::int64_t handle = 0;
    m_scene.root().GetWindowHandle(&handle);
    return reinterpret_cast<HWND>(handle);
}

void Inspector::startTimer()
{
    SetTimer(window(), kTimer, kPeriodMs, nullptr);
}
void Inspector::stopTimer()
{
    KillTimer(window(), kTimer);
}

void Inspector::pageClosing()
{
    const EventLog::Quiet quiet(m_log);
    m_log.collect(m_tree->rows()); // while the objects are known
    m_properties->showObject(nullptr);
    m_frame->surround(nullptr);
    m_tree->clear();
    m_page.reset();
}

void Inspector::pageOpened(IVexControlBase& page)
{
    m_page = ComPtr<IVexControlBase>(&page);
    const EventLog::Quiet quiet(m_log);
    auto rows = listObjects(*m_page);
    const std::size_t first = firstOfInterest(rows);
    m_tree->setRows(std::move(rows), first);
    m_log.takeTreeChange();
    selectionChanged();
    refresh();
}

void Inspector::readTree()
{
    const ObjectRow* const chosen = m_tree->selected();
    const IUnknown* const identity = chosen ? chosen->identity : nullptr;
    auto rows = listObjects(*m_page);
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&](const ObjectRow& row) { return row.identity == identity; });
    const auto selected = found == rows.end() ? std::size_t{0} : static_cast<std::size_t>(found - rows.begin());
    m_tree->setRows(std::move(rows), selected);
    m_properties->showObject(m_tree->selected());
}

void Inspector::selectionChanged()
{
    const EventLog::Quiet quiet(m_log);
    const ObjectRow* const chosen = m_tree->selected();
    m_properties->showObject(chosen);
    m_frame->surround(chosen ? chosen->object.get() : nullptr);
}

void Inspector::refresh()
{
    if (!m_page)
        return;
    const EventLog::Quiet quiet(m_log);
    if (m_log.takeTreeChange())
        readTree();
    m_log.collect(m_tree->rows());
    m_properties->refresh();
    m_events->refresh();
    m_frame->surround(m_tree->selected() ? m_tree->selected()->object.get() : nullptr);
}

void Inspector::setShown(bool isShown)
{
    m_properties->stopEditing();
    m_form->SetVisible(isShown ? VARIANT_TRUE : VARIANT_FALSE, VARIANT_TRUE, VARIANT_FALSE);
    if (isShown) {
        m_log.open();
        startTimer();
        if (m_page) {
            const EventLog::Quiet quiet(m_log);
            readTree();
        }
        refresh();
    } else {
        stopTimer();
        m_log.close();
        m_frame->surround(nullptr);
    }
}

bool Inspector::preview(const MSG& message)
{
    if ((message.message == WM_LBUTTONDOWN || message.message == WM_RBUTTONDOWN) && message.hwnd == window())
        m_properties->finishEditing();
    if (message.message == WM_MOUSEWHEEL)
        return wheel(message);
    if (message.message != WM_TIMER || message.wParam != kTimer || message.hwnd != window())
        return false;
    if (m_log.takeActivity())
        refresh();
    return true;
}

bool Inspector::wheel(const MSG& message)
{
    constexpr int kRowsANotch = 3;
    POINT point = message.pt;
    ScreenToClient(window(), &point);
    ComPtr<IVexRect> rect;
    SkinRect place{};
    m_form->GetRect(rect.put());
    if (!rect || FAILED(rect->GetRectStruct(&place)) || point.x < place.left)
        return false;
    const int y = (point.y - static_cast<int>(place.top)) * 100 / m_scene.scale();
    RowPager& pager = y < kPropertiesTop ? m_tree->pager() : y < kLogTop ? m_properties->pager() : m_events->pager();
    const EventLog::Quiet quiet(m_log);
    pager.scroll(-GET_WHEEL_DELTA_WPARAM(message.wParam) * kRowsANotch / WHEEL_DELTA);
    return true;
}

} // namespace gallery
