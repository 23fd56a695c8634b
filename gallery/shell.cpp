#include "gallery/shell.h"

#include "ambrel/ambrel.h"
#include "gallery/list_row.h"

#include <stdexcept>

namespace gallery {

namespace {

constexpr int kListWidth = 196;
constexpr int kWindowWidth = kListWidth + 1 + kPageSize.width;
constexpr int kWindowHeight = kPageSize.height;
constexpr long kListGroup = 5000;

} // namespace

Shell::Shell(const Options& options, HINSTANCE controls)
    : m_options(options), m_isInspectorShown(options.isInspectorShown)
{
    if (FAILED(AmbrelCreateRes(m_res.put())))
        throw std::runtime_error("the runtime gives no resource object");
    ComPtr<IDispatch> root;
    m_res->CreateAmbrel(Bstr(L"Gallery").get(), 0, root.put());
    m_root = root.as<IAmbrel>();
    if (!m_root)
        throw std::runtime_error("the runtime gives no window");
    m_scene = std::make_unique<Scene>(m_res, m_root, skinSourceOf(options, controls), options.scale);
    const Size inside = size();
    VARIANT_BOOL created = VARIANT_FALSE;
    m_root->Create(0, {100, 60, 100 + inside.width, 60 + inside.height}, &created);
    if (created == VARIANT_FALSE)
        throw std::runtime_error("the window could not be made");
    AmbrelSetScale(m_root.get(), options.scale);
    SetWindowTextW(window(), L"Morvane gallery");

    buildWindow();
    if (const auto& folder = m_scene->skinFolder())
        folder->watch(*m_res, [this](SkinFolder::Change change) { skinChanged(change); });
}

Shell::~Shell()
{
    m_inspector.reset();
    m_entries.clear();
    m_problems.reset();
    m_page.reset();
    m_background.reset();
    if (const HWND handle = window())
        DestroyWindow(handle);
    m_scene.reset();
}

Size Shell::size() const
{
    return {m_scene->scaled(kWindowWidth + (m_isInspectorShown ? Inspector::kWidth : 0)),
            m_scene->scaled(kWindowHeight)};
}

HWND Shell::window() const
{
    std::int64_t handle = 0;
    m_root->GetWindowHandle(&handle);
    return reinterpret_cast<HWND>(handle);
}

void Shell::buildWindow()
{
    m_background = m_scene->form(nullptr, {0, 0, kWindowWidth, kWindowHeight}, m_scene->theme().window);
    buildList();
    if (m_isInspectorShown)
        openInspector();
}

void Shell::buildList()
{
    const Theme& theme = m_scene->theme();
    const auto list = m_scene->form(m_background.get(), {0, 0, kListWidth, kWindowHeight}, theme.surface);
    m_scene->form(m_background.get(), {kListWidth, 0, kListWidth + 1, kWindowHeight}, theme.line);
    m_scene->label(list.get(), {20, 18, kListWidth, 46}, L"Morvane", {theme.text, 14, true});
    int top = 66;
    std::size_t index = 0;
    for (const PageInfo& page : allPages()) {
        const auto entry = m_scene->radioBox(list.get(), {0, top, kListWidth, top + 32}, page.title, kListGroup);
        styleListRow(*m_scene, *entry, {theme.text, 9, false, TextAlign::Near, 20});
        m_scene->onMessage(*entry, VEXSM_LBUTTONUP, [this, index] { selectPage(index); });
        m_entries.push_back(entry);
        top += 32;
        ++index;
    }
    const auto inspect =
        m_scene->button(list.get(), {20, kWindowHeight - 48, kListWidth - 20, kWindowHeight - 20}, L"Inspector");
    inspect->SetTooltip(Bstr(L"Objects, properties and events of the page (F12)").get());
    m_scene->onClick(*inspect, [this] { toggleInspector(); });
}

void Shell::openInspector()
{
    m_inspector = std::make_unique<Inspector>(*m_scene, kWindowWidth, kWindowHeight);
    if (m_page)
        m_inspector->pageOpened(*m_page);
}

void Shell::toggleInspector()
{
    m_isInspectorShown = !m_isInspectorShown;
    const Size inside = size();
    SetWindowPos(window(), nullptr, 0, 0, inside.width, inside.height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
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
    return m_isInspectorShown && m_inspector && m_inspector->preview(message);
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
    m_page = m_scene->form(m_background.get(), Rect::at({kListWidth + 1, 0}, kPageSize), m_scene->theme().window);
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

void Shell::skinChanged(SkinFolder::Change change)
{
    m_scene->skinChanged();
    if (change == SkinFolder::Change::InPlace) {
        showProblems();
        m_background->DirectRedraw(nullptr);
        return;
    }
    m_inspector.reset();
    m_entries.clear();
    m_problems.reset();
    m_page.reset();
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
    constexpr Rect kPlace{kListWidth + 17, kWindowHeight - 72, kWindowWidth - 16, kWindowHeight - 16};
    constexpr Size kInside{kPlace.width() - 2, kPlace.height() - 2};
    m_problems = m_scene->form(m_background.get(), kPlace, theme.danger);
    const auto inside = m_scene->form(m_problems.get(), Rect::at({1, 1}, kInside), theme.surface);
    const auto& [path, text] = *folder->problems().begin();
    const std::size_t others = folder->problems().size() - 1;
    const std::wstring title = L"A skin cannot be used; the look stays as it was" +
                               (others ? L" (and " + std::to_wstring(others) + L" more)" : std::wstring());
    m_scene->label(inside.get(), Rect::at({16, 6}, {kInside.width - 32, 20}), title, {theme.danger, 9, true});
    m_scene->label(inside.get(), Rect::at({16, 28}, {kInside.width - 32, 20}), folder->shortName(path) + L'\\' + text,
                   {theme.text, 9, false, TextAlign::Near, 0, true});
}

void Shell::show()
{
    ShowWindow(window(), SW_SHOW);
    UpdateWindow(window());
}

} // namespace gallery
