// The gallery: every control, live and skinned; or, with --shot, as pictures.
#include "ambrel/ambrel.h"
#include "gallery/component_library.h"
#include "gallery/picture_file.h"
#include "gallery/shell.h"
#include "gallery/state_sheet.h"

#include <shellapi.h>

#include <cstdio>
#include <stdexcept>

namespace gallery {

namespace {

/// COM, the runtime's classes and the control library for the length of the program.
class Session {
public:
    Session()
    {
        if (FAILED(OleInitialize(nullptr)) || FAILED(AmbrelRegisterClasses()))
            throw std::runtime_error("the runtime could not be started");
        m_library = std::make_unique<ComponentLibrary>(std::vector<CLSID>{__uuidof(CmdButton), __uuidof(VexCheckBox),
                                                                          __uuidof(RadioBox), __uuidof(VexRadioGroup),
                                                                          __uuidof(UIFormObj)});
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session()
    {
        m_library.reset();
        AmbrelUnregisterClasses();
        OleUninitialize();
    }
    HINSTANCE controls() const { return m_library->module(); }

private:
    std::unique_ptr<ComponentLibrary> m_library;
};

std::size_t pageIndex(const std::wstring& name)
{
    const auto pages = allPages();
    for (std::size_t i = 0; i < pages.size(); ++i)
        if (name == pages[i].name)
            return i;
    if (!name.empty())
        throw std::runtime_error("no page of that name");
    return 0;
}

Picture pictureOf(Shell& shell)
{
    Picture picture{shell.size(), {}};
    picture.pixels.resize(static_cast<std::size_t>(picture.size.width) * static_cast<std::size_t>(picture.size.height));
    if (FAILED(AmbrelRenderWindow(&shell.root(), picture.size.width, picture.size.height, picture.pixels.data())))
        throw std::runtime_error("a page could not be drawn");
    return picture;
}

/// Answers what the program ends with: 1 when a skin was bad, which was told on stderr.
int shootPages(const Options& options, const Session& session)
{
    CreateDirectoryW(options.shotFolder->c_str(), nullptr);
    Shell shell(options, session.controls());
    const std::size_t first = pageIndex(options.page);
    const std::size_t last = options.page.empty() ? allPages().size() - 1 : first;
    for (std::size_t i = first; i <= last; ++i) {
        shell.selectPage(i);
        const std::wstring path = *options.shotFolder + L"\\" + allPages()[i].name + L"-" +
                                  std::to_wstring(options.scale) + (options.isDark ? L"-dark.png" : L".png");
        if (!writePng(pictureOf(shell), path))
            throw std::runtime_error("a picture could not be written");
        std::printf("%ls\n", path.c_str());
    }
    const auto& skins = shell.scene().skinFolder();
    return skins && !skins->problems().empty() ? 1 : 0;
}

int showWindow(const Options& options, const Session& session)
{
    Shell shell(options, session.controls());
    shell.selectPage(pageIndex(options.page));
    shell.show();
    MSG message;
    while (IsWindow(shell.window()) && GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (shell.preview(message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}

int run(const Options& options)
{
    const Session session;
    if (options.sheet)
        return shootStateSheet(options, session.controls());
    return options.shotFolder ? shootPages(options, session) : showWindow(options, session);
}

} // namespace

int galleryMain(int count, wchar_t** arguments)
{
    const ParsedOptions parsed = parseOptions(count, arguments);
    if (!parsed.error.empty() || parsed.options.isHelpAsked) {
        std::fprintf(stderr, "%ls%s%ls", parsed.error.c_str(), parsed.error.empty() ? "" : "\n", kUsage);
        return parsed.error.empty() ? 0 : 2;
    }
    try {
        return run(parsed.options);
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "gallery: %s\n", problem.what());
        return 1;
    }
}

} // namespace gallery

int main()
{
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    const int result = gallery::galleryMain(count, arguments);
    LocalFree(arguments);
    return result;
}
