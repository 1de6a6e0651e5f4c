// An editor of one text, which it reads from a drive and writes to a drive.
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>
#include <optional>
#include <string>

#include <windows.h>
#include <shellapi.h>

#include <velmora/api/Interop.h>
#include <velmora/native/RequestQueue.h>
#include "Controls.h"
#include "DriveDialog.h"
#include "WindowPoster.h"

using namespace Quorvex::Velmora::TessaportAPI;

namespace
{

constexpr const wchar_t* ClassName = L"VelmoraOpenDialog";
constexpr UINT PostedMessage = WM_APP;
constexpr int Width = 640;
constexpr int Height = 420;
constexpr int Margin = 8;
constexpr int RowHeight = 26;
constexpr int ButtonWidth = 150;

// Brings the file that was written to the server.
std::wstring syncSaved(QvNativeTessaportAPI& tessaport, const std::filesystem::path& path)
{
    QVBuffer<QVString> paths;
    paths.Append(toQVString(path));
    QVBuffer<Item> items;
    for (const WorkspacePathToItemResult& found : tessaport.getItemsByWorkspacePaths(paths)) {
        if (found.result == Result::Success)
            items.Append(found.item);
    }
    const bool isSynced = items.GetSize() > 0 && tessaport.syncFiles(items).isSuccess;
    return L"'" + path.filename().native() +
           (isSynced ? L"' is saved, here and on the server."
                     : L"' is saved here, but is not on the server yet. It goes there with the next sync.");
}

class MainWindow
{
public:
    int show(HINSTANCE program, int how)
    {
        WNDCLASSEXW windowClass{};
        windowClass.cbSize = sizeof(windowClass);
        windowClass.lpfnWndProc = receive;
        windowClass.hInstance = program;
        windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
        windowClass.lpszClassName = ClassName;
        RegisterClassExW(&windowClass);
        window =
            CreateWindowExW(WS_EX_CONTROLPARENT, ClassName, L"Text on a drive", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                CW_USEDEFAULT, CW_USEDEFAULT, scaled(Width), scaled(Height), nullptr, nullptr, program, this);
        if (window == nullptr)
            return 1;
        ShowWindow(window, how);
        MSG message;
        while (GetMessageW(&message, nullptr, 0, 0) > 0) {
            if (IsDialogMessageW(window, &message))
                continue;
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        return static_cast<int>(message.wParam);
    }

private:
    static LRESULT CALLBACK receive(HWND window, UINT message, WPARAM word, LPARAM parameter)
    {
        if (message == WM_NCCREATE) {
            auto* const created =
                static_cast<MainWindow*>(reinterpret_cast<const CREATESTRUCTW*>(parameter)->lpCreateParams);
            created->window = window;
            SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
        }
        auto* const self = reinterpret_cast<MainWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (self != nullptr && self->handle(message, word))
            return 0;
        return DefWindowProcW(window, message, word, parameter);
    }

    bool handle(UINT message, WPARAM word)
    {
        switch (message) {
        case WM_CREATE:
            start();
            return true;
        case WM_SIZE:
        case WM_DPICHANGED:
            arrange();
            return false;
        case PostedMessage:
            poster->run();
            return true;
        case WM_COMMAND:
            if (LOWORD(word) == IDC_OPEN)
                openText();
            else if (LOWORD(word) == IDC_SAVE)
                saveText();
            return true;
        case WM_DESTROY:
            queue.reset();
            PostQuitMessage(0);
            return true;
        default:
            return false;
        }
    }

    void start()
    {
        poster.emplace(window, PostedMessage);
        queue.emplace(window, poster->post());
        add(L"BUTTON", L"&Open from drive\x2026", BS_PUSHBUTTON | WS_TABSTOP, IDC_OPEN);
        add(L"BUTTON", L"&Save to drive\x2026", BS_PUSHBUTTON | WS_TABSTOP, IDC_SAVE);
        add(L"EDIT", L"", ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | WS_VSCROLL | WS_BORDER | WS_TABSTOP,
            IDC_TEXT);
        add(L"STATIC", L"", SS_NOPREFIX, IDC_MESSAGE);
        arrange();
    }

    void add(const wchar_t* kind, const wchar_t* text, DWORD style, int number)
    {
        CreateWindowExW(0, kind, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, window,
            reinterpret_cast<HMENU>(static_cast<INT_PTR>(number)), nullptr, nullptr);
    }

    void arrange() const
    {
        RECT area{};
        GetClientRect(window, &area);
        const int margin = scaled(Margin);
        const int row = scaled(RowHeight);
        const int button = scaled(ButtonWidth);
        const int width = area.right - 2 * margin;
        MoveWindow(control(IDC_OPEN), margin, margin, button, row, TRUE);
        MoveWindow(control(IDC_SAVE), 2 * margin + button, margin, button, row, TRUE);
        MoveWindow(control(IDC_TEXT), margin, 2 * margin + row, width, area.bottom - 4 * margin - 2 * row, TRUE);
        MoveWindow(control(IDC_MESSAGE), margin, area.bottom - margin - row, width, row, TRUE);
    }

    void openText()
    {
        const auto path = openFromDrive(window);
        if (!path)
            return;
        std::ifstream file(*path, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        if (!file) {
            say(L"'" + path->native() +
                L"' cannot be read. Check whether another program has it open, then try again.");
            return;
        }
        // The text would end there, and saving it would lose the rest.
        if (bytes.find('\0') != std::string::npos) {
            say(L"'" + path->filename().native() + L"' is not a text. Choose another file.");
            return;
        }
        SetWindowTextW(control(IDC_TEXT), toWide(toQVString(bytes)).c_str());
        say(L"'" + path->filename().native() + L"' is open.");
    }

    void saveText()
    {
        const auto path = saveToDrive(window, L"Untitled.txt");
        if (!path)
            return;
        std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(control(IDC_TEXT))) + 1, L'\0');
        text.resize(
            static_cast<std::size_t>(GetWindowTextW(control(IDC_TEXT), text.data(), static_cast<int>(text.size()))));
        std::ofstream file(*path, std::ios::binary);
        file << toUtf8(toQVString(text));
        file.close();
        if (!file) {
            say(L"'" + path->native() +
                L"' cannot be written. Check that it is not write-protected and that the disk is not full.");
            return;
        }
        say(L"Bringing '" + path->filename().native() + L"' to the server\x2026");
        queue->ask([path = *path](QvNativeTessaportAPI& tessaport) { return syncSaved(tessaport, path); },
            [this](std::future<std::wstring> answer) {
                try {
                    say(answer.get());
                } catch (const std::exception& failure) {
                    say(L"It is saved here, but not on the server: " + toWide(toQVString(failure.what())));
                }
            });
    }

    [[nodiscard]] HWND control(int number) const { return GetDlgItem(window, number); }

    void say(const std::wstring& text) const { SetWindowTextW(control(IDC_MESSAGE), text.c_str()); }

    [[nodiscard]] int scaled(int length) const
    {
        const UINT resolution = window == nullptr ? GetDpiForSystem() : GetDpiForWindow(window);
        return MulDiv(length, static_cast<int>(resolution), USER_DEFAULT_SCREEN_DPI);
    }

    HWND window = nullptr;
    std::optional<WindowPoster> poster;
    std::optional<RequestQueue> queue;
};

} // namespace

int WINAPI wWinMain(HINSTANCE program, HINSTANCE, LPWSTR, int how)
{
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    if (arguments != nullptr && count > 1) // The folder that holds the sync application's Quorvex.Tessaport.API.dll.
        setRuntimeOptions({arguments[1], {}});
    LocalFree(static_cast<void*>(arguments));
    return MainWindow().show(program, how);
}
