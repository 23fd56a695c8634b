#include "gallery/shell.h"

#include "ambrel/ambrel.h"
#include "gallery/list_row.h"

#include <algorithm>
#include <cwctype>
#include <stdexcept>

namespace gallery {

namespace {

constexpr int kListWidth = 196;
constexpr int kContentWidth = kListWidth + 1 + kPageSize.width;
constexpr int kContentHeight = kPageSize.height;
constexpr wchar_t kTitle[] = L"Morvane gallery";
constexpr long kListGroup = 5000;
constexpr long kScaleGroup = 5002;
constexpr std::array kScales = {100, 150, 200};
constexpr UINT kLookMessage = WM_APP + 0x4C;

bool isSame(IUnknown* one, IUnknown* other)
{
    return ComPtr<IUnknown>(one).as<IUnknown>().get() == ComPtr<IUnknown>(other).as<IUnknown>().get();
}

} // namespace

Shell::Shell(const Options& options, HINSTANCE controls)
    : m_options(options), m_controls(controls), m_isInspectorShown(options.isInspectorShown),
      m_top(options.shotFolder ? 0 : TitleBar::kHeight)
{
    if (FAILED(AmbrelCreateRes(m_res.put())))
        throw std::runtime_error("the runtime gives no resource object");
    ComPtr<IDispatch> root;
    m_res->CreateAmbrel(Bstr(L"Gallery").get(), 0, root.put());
    m_root = root.as<IAmbrel>();
    if (!m_root)
        throw std::runtime_error("the runtime gives no window");
    m_scene = std::make_unique<Scene>(m_res, m_root, skinSourceOf(options, controls), options.scale);
    const Size first = size();
    VARIANT_BOOL created = VARIANT_FALSE;
    m_root->SetResizable(VARIANT_TRUE);
    m_root->Create(0, {100, 60, 100 + first.width, 60 + first.height}, &created);
    if (created == VARIANT_FALSE)
        throw std::runtime_error("the window could not be made");
    AmbrelSetScale(m_root.get(), options.scale);
    SetWindowTextW(window(), kTitle);
    limitSize();
    m_scene->onWindowMessage(kLookMessage, [this](WPARAM) { rebuild(); });
    buildWindow();
    followSkinFolder();
}

Shell::~Shell()
{
    clearWindow();
    m_background.reset();
    if (const HWND handle = window())
        DestroyWindow(handle);
    m_scene.reset();
}

Size Shell::inside() const
{
    return {kContentWidth + (m_isInspectorShown ? Inspector::kWidth : 0), m_top + kContentHeight};
}

Size Shell::size() const
{
    return {m_scene->scaled(inside().width), m_scene->scaled(inside().height)};
}

void Shell::limitSize()
{
    SkinSize least{size().width, size().height};
    m_root->SetMinSize(&least);
}

void Shell::widenBy(int width)
{
    RECT now{};
    if (IsZoomed(window()) || !GetWindowRect(window(), &now))
        return;
    SetWindowPos(window(), nullptr, 0, 0, static_cast<int>(now.right - now.left) + m_scene->scaled(width),
                 static_cast<int>(now.bottom - now.top), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

HWND Shell::window() const
{
    std::int64_t handle = 0;
    m_root->GetWindowHandle(&handle);
    return reinterpret_cast<HWND>(handle);
}

void Shell::clearWindow()
{
    m_inspector.reset();
    m_entries.clear();
    m_scales.clear();
    m_dark.reset();
    m_problems.reset();
    m_page.reset();
    m_title.reset();
}

void Shell::followSkinFolder()
{
    if (const auto& folder = m_scene->skinFolder())
        folder->watch(*m_res, [this](SkinFolder::Change change) { skinChanged(change); });
}

void Shell::buildWindow()
{
    const Rect all = Rect::at({}, inside());
    m_background = m_scene->form(nullptr, all, m_scene->theme().window);
    m_scene->placeIn(*m_background, all, inside(), Hold::Both, Hold::Both);
    if (m_top > 0)
        m_title.emplace(*m_scene, *m_background, inside().width, kTitle);
    buildList();
    if (m_isInspectorShown)
        openInspector();
}

void Shell::buildList()
{
    const Theme& theme = m_scene->theme();
    const Rect place{0, m_top, kListWidth, inside().height};
    const auto list = m_scene->form(m_background.get(), place, theme.surface);
    m_scene->placeIn(*list, place, inside(), Hold::Near, Hold::Both);
    const Rect edge{kListWidth, m_top, kListWidth + 1, inside().height};
    m_scene->placeIn(*m_scene->form(m_background.get(), edge, theme.line), edge, inside(), Hold::Near, Hold::Both);
    m_scene->label(list.get(), {20, 18, kListWidth, 46}, L"Morvane", {theme.text, 14, true});
    constexpr int kPitch = 32; // leaves room for the mark of the focus between the entries
    int top = 68;
    std::size_t index = 0;
    for (const PageInfo& page : allPages()) {
        const auto entry = m_scene->radioBox(list.get(), {8, top, kListWidth - 8, top + 28}, page.title, kListGroup);
        styleListRow(*m_scene, *entry, {theme.text, 9, false, TextAlign::Near, 12});
        m_scene->onMessage(*entry, VEXSM_LBUTTONUP, [this, index] { selectPage(index); });
        m_entries.push_back(entry);
        top += kPitch;
        ++index;
    }
    buildLooks(*list, place.size());
    const Rect foot{20, kContentHeight - 48, kListWidth - 20, kContentHeight - 20};
    const auto inspect = m_scene->button(list.get(), foot, L"Inspector");
    m_scene->placeIn(*inspect, foot, place.size(), Hold::Near, Hold::Far);
    inspect->SetTooltip(Bstr(L"Objects, properties and events of the page (F12)").get());
    m_scene->onClick(*inspect, [this] { toggleInspector(); });
}

void Shell::buildLooks(IVexControlBase& list, Size size)
{
    const auto atFoot = [&](IVexControlBase& control, const Rect& place) {
        m_scene->placeIn(control, place, size, Hold::Near, Hold::Far);
    };
    const Rect heading{20, kContentHeight - 148, kListWidth - 20, kContentHeight - 130};
    atFoot(*m_scene->label(&list, heading, L"Size in percent", {m_scene->theme().textSoft, 8}), heading);
    Rect place = Rect::at({20, heading.bottom + 2}, {46, 24});
    for (const int scale : kScales) {
        const auto box = m_scene->radioBox(&list, place, std::to_wstring(scale), kScaleGroup);
        atFoot(*box, place);
        if (scale == m_options.scale)
            box->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE);
        m_scene->onClick(*box, [this, scale] { changeLook(m_options.isDark, scale); });
        m_scales.push_back(box);
        place = place.shifted(54, 0);
    }
    const Rect dark = Rect::at({20, place.bottom + 6}, {kListWidth - 40, 24});
    m_dark = m_scene->checkBox(&list, dark, L"Dark");
    atFoot(*m_dark, dark);
    m_dark->SetValue(m_options.isDark ? VEXCHECKBOX_CHECKED : VEXCHECKBOX_UNCHECKED);
    m_scene->onClick(*m_dark, [this] { changeLook(!m_options.isDark, m_options.scale); });
}

void Shell::changeLook(bool isDark, int scale)
{
    m_options.isDark = isDark;
    m_options.scale = scale;
    PostMessageW(window(), kLookMessage, 0, 0);
}

void Shell::rebuild()
{
    if (m_scene->isDark() == m_options.isDark && m_scene->scale() == m_options.scale)
        return;
    const bool isPaletteNew = m_scene->isDark() != m_options.isDark;
    clearWindow();
    m_scene->remove(*m_background);
    m_scene->setLook(skinSourceOf(m_options, m_controls), m_options.scale);
    AmbrelSetScale(m_root.get(), m_options.scale);
    limitSize();
    if (!IsZoomed(window()))
        SetWindowPos(window(), nullptr, 0, 0, size().width, size().height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    buildWindow();
    followSkinFolder();
    openPage(m_pageIndex);
    // The switch is a new one; who works it by keyboard goes on from there.
    const auto chosen = std::find(kScales.begin(), kScales.end(), m_options.scale);
    VARIANT_BOOL done = VARIANT_FALSE;
    if (isPaletteNew)
        m_dark->SetFocus(&done);
    else if (chosen != kScales.end())
        m_scales[static_cast<std::size_t>(chosen - kScales.begin())]->SetFocus(&done);
}

void Shell::openInspector()
{
    m_inspector =
        std::make_unique<Inspector>(*m_scene, Rect{kContentWidth, m_top, inside().width, inside().height}, inside());
    if (m_page)
        m_inspector->pageOpened(*m_page);
}

void Shell::toggleInspector()
{
    m_isInspectorShown = !m_isInspectorShown;
    limitSize();
    widenBy(m_isInspectorShown ? Inspector::kWidth : -Inspector::kWidth);
    if (m_page)
        placePage();
    if (m_inspector)
        m_inspector->setShown(m_isInspectorShown);
    else
        openInspector();
}

bool Shell::preview(const MSG& message)
{
    if (message.message == WM_KEYDOWN && message.wParam == VK_F12) {
        toggleInspector();
        return true;
    }
    return listKey(message) || (m_isInspectorShown && m_inspector && m_inspector->preview(message));
}

bool Shell::listKey(const MSG& message)
{
    if ((message.message != WM_KEYDOWN && message.message != WM_CHAR) || message.hwnd != window())
        return false;
    ComPtr<ISkinObjResBase> focused;
    m_root->GetCurrentFocusObject(focused.put());
    const auto isFocused = [&](const ComPtr<IRadioBox>& entry) { return isSame(entry.get(), focused.get()); };
    if (!focused || std::none_of(m_entries.begin(), m_entries.end(), isFocused))
        return false;
    const auto pages = allPages();
    if (message.message == WM_KEYDOWN && (message.wParam == VK_HOME || message.wParam == VK_END)) {
        goToPage(message.wParam == VK_HOME ? 0 : pages.size() - 1);
        return true;
    }
    if (message.message != WM_CHAR || message.wParam <= L' ')
        return false;
    // A letter: the next page whose title begins with it.
    for (std::size_t step = 1; step <= pages.size(); ++step) {
        const std::size_t index = (m_pageIndex + step) % pages.size();
        if (towupper(pages[index].title[0]) == towupper(static_cast<wint_t>(message.wParam))) {
            goToPage(index);
            break;
        }
    }
    return true;
}

void Shell::goToPage(std::size_t index)
{
    // As if an arrow came there from its neighbour: the entry is pressed, and the mark of the focus shows.
    const std::size_t neighbour = index > 0 ? index - 1 : 1;
    VARIANT_BOOL done = VARIANT_FALSE;
    m_entries[neighbour]->SetFocus(&done);
    SendMessageW(window(), WM_KEYDOWN, index > 0 ? VK_DOWN : VK_UP, 0);
}

void Shell::selectPage(std::size_t index)
{
    if (index < allPages().size() && !(m_page && index == m_pageIndex))
        openPage(index);
}

void Shell::openPage(std::size_t index)
{
    if (m_inspector)
        m_inspector->pageClosing();
    if (m_page)
        m_scene->remove(*m_page);
    m_pageIndex = index;
    const PageInfo& page = allPages()[index];
    m_page = m_scene->form(m_background.get(), Rect::at({kListWidth + 1, m_top}, kPageSize), m_scene->theme().window);
    placePage();
    page.build(*m_scene, *m_page);
    VEXRADIOBOX_VALUE value = VEXRADIOBOX_UNCHECKED;
    m_entries[index]->GetValue(&value);
    if (value != VEXRADIOBOX_CHECKED)
        m_entries[index]->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE);
    showProblems();
    m_background->DirectRedraw(nullptr);
    if (m_inspector)
        m_inspector->pageOpened(*m_page);
}

void Shell::placePage()
{
    m_scene->placeIn(*m_page, Rect::at({kListWidth + 1, m_top}, kPageSize), inside(), Hold::Both, Hold::Both);
}

void Shell::skinChanged(SkinFolder::Change change)
{
    m_scene->skinChanged();
    if (change == SkinFolder::Change::InPlace) {
        showProblems();
        m_background->DirectRedraw(nullptr);
        return;
    }
    clearWindow();
    m_scene->remove(*m_background);
    buildWindow();
    openPage(m_pageIndex);
}

void Shell::showProblems()
{
    if (m_problems)
        m_scene->remove(*m_problems);
    m_problems.reset();
    const auto& folder = m_scene->skinFolder();
    if (!folder || folder->problems().empty())
        return;
    const Theme& theme = m_scene->theme();
    const int bottom = m_top + kContentHeight - 16;
    const Rect place{kListWidth + 17, bottom - 56, kContentWidth - 16, bottom};
    const Size within{place.width() - 2, place.height() - 2};
    m_problems = m_scene->form(m_background.get(), place, theme.danger);
    m_scene->placeIn(*m_problems, place, inside(), Hold::Near, Hold::Far);
    const auto ground = m_scene->form(m_problems.get(), Rect::at({1, 1}, within), theme.surface);
    const auto& [path, text] = *folder->problems().begin();
    const std::size_t others = folder->problems().size() - 1;
    const std::wstring title = L"A skin cannot be used; the look stays as it was" +
                               (others ? L" (and " + std::to_wstring(others) + L" more)" : std::wstring());
    m_scene->label(ground.get(), Rect::at({16, 6}, {within.width - 32, 20}), title, {theme.danger, 9, true});
    m_scene->label(ground.get(), Rect::at({16, 28}, {within.width - 32, 20}), folder->shortName(path) + L'\\' + text,
                   {theme.text, 9, false, TextAlign::Near, 0, true});
}

void Shell::show()
{
    ShowWindow(window(), SW_SHOW);
    UpdateWindow(window());
}

} // namespace gallery
