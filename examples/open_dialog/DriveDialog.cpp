#include "DriveDialog.h"

#include <future>
#include <memory>
#include <utility>
#include <vector>

#include <windows.h>
#include <commctrl.h>
#include <windowsx.h>

#include <velmora/api/Interop.h>
#include <velmora/native/RequestQueue.h>
#include "Controls.h"
#include "DriveBrowser.h"
#include "WindowPoster.h"

using namespace Quorvex::Velmora::TessaportAPI;

namespace
{

constexpr UINT PostedMessage = WM_APP;
constexpr int NameColumnWidth = 330;
constexpr int KindColumnWidth = 140;

enum class Purpose { Open, Save };

std::wstring textOf(HWND control)
{
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(control)), L'\0');
    if (!text.empty())
        text.resize(static_cast<std::size_t>(GetWindowTextW(control, text.data(), static_cast<int>(text.size()) + 1)));
    return text;
}

class DriveDialog
{
public:
    DriveDialog(Purpose purpose, std::wstring name) : purpose(purpose), proposedName(std::move(name)) {}

    std::optional<std::filesystem::path> show(HWND owner)
    {
        const INITCOMMONCONTROLSEX classes{sizeof(classes), ICC_LISTVIEW_CLASSES};
        InitCommonControlsEx(&classes);
        DialogBoxParamW(
            GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_DRIVE), owner, receive, reinterpret_cast<LPARAM>(this));
        return result;
    }

private:
    static INT_PTR CALLBACK receive(HWND dialog, UINT message, WPARAM word, LPARAM parameter)
    {
        if (message == WM_INITDIALOG) {
            SetWindowLongPtrW(dialog, DWLP_USER, parameter);
            reinterpret_cast<DriveDialog*>(parameter)->start(dialog);
            return TRUE;
        }
        auto* const self = reinterpret_cast<DriveDialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
        return self != nullptr && self->handle(message, word, parameter) ? TRUE : FALSE;
    }

    void start(HWND dialog)
    {
        window = dialog;
        poster.emplace(window, PostedMessage);
        queue.emplace(window, poster->post());
        const bool saves = purpose == Purpose::Save;
        SetWindowTextW(window, saves ? L"Save to drive" : L"Open from drive");
        SetWindowTextW(control(IDOK), saves ? L"&Save" : L"&Open");
        SetWindowTextW(control(IDC_NAME), proposedName.c_str());
        ShowWindow(control(IDC_NEW_FOLDER), saves ? SW_SHOW : SW_HIDE);
        ListView_SetExtendedListViewStyle(control(IDC_LIST), LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
        addColumn(0, L"Name", NameColumnWidth);
        addColumn(1, L"Kind", KindColumnWidth);
        open({});
    }

    bool handle(UINT message, WPARAM word, LPARAM parameter)
    {
        switch (message) {
        case PostedMessage:
            poster->run();
            return true;
        case WM_COMMAND:
            return handleCommand(LOWORD(word));
        case WM_NOTIFY:
            return handleNotification(*reinterpret_cast<const NMHDR*>(parameter), parameter);
        case WM_DESTROY:
            // What still runs is not waited for, and nothing is called any more.
            queue.reset();
            return false;
        default:
            return false;
        }
    }

    bool handleCommand(WORD command)
    {
        switch (command) {
        case IDOK:
            if (GetFocus() == control(IDC_LIST) && selected() != nullptr)
                activate(*selected());
            else
                acceptName();
            return true;
        case IDCANCEL:
            EndDialog(window, IDCANCEL);
            return true;
        case IDC_UP:
            goUp();
            return true;
        case IDC_RETRY:
            open(wanted);
            return true;
        case IDC_NEW_FOLDER:
            startNewFolder();
            return true;
        default:
            return false;
        }
    }

    bool handleNotification(const NMHDR& header, LPARAM parameter)
    {
        if (header.idFrom != IDC_LIST)
            return false;
        switch (header.code) {
        case LVN_ITEMACTIVATE:
            if (selected() != nullptr)
                activate(*selected());
            return true;
        case LVN_ITEMCHANGED:
            showSelectedName();
            return true;
        case LVN_KEYDOWN:
            if (reinterpret_cast<const NMLVKEYDOWN*>(parameter)->wVKey == VK_BACK)
                goUp();
            return true;
        case LVN_BEGINLABELEDIT:
            // Only the name of the new folder can be edited.
            SetWindowLongPtrW(window, DWLP_MSGRESULT, namesFolder ? FALSE : TRUE);
            return true;
        case LVN_ENDLABELEDIT:
            finishNewFolder(reinterpret_cast<const NMLVDISPINFOW*>(parameter)->item.pszText);
            return true;
        default:
            return false;
        }
    }

    /// @name Places
    /// @{

    void open(std::vector<Entry> trail)
    {
        wanted = trail;
        say(L"Reading\x2026");
        queue->dropWaiting();
        queue->ask([trail](QvNativeTessaportAPI& tessaport) { return openPlace(tessaport, trail); },
            [this](std::future<Place> answer) {
                receiveAnswer(std::move(answer), [this](Place&& read) { show(std::move(read)); });
            });
    }

    void show(Place&& read)
    {
        place = std::move(read);
        SetWindowTextW(control(IDC_LOCATION), place.location().c_str());
        EnableWindow(control(IDC_UP), !place.trail.empty());
        EnableWindow(control(IDC_NEW_FOLDER), !place.trail.empty());
        fillList();
        say(place.entries.empty() ? L"Nothing is here." : L"");
    }

    void goUp()
    {
        std::vector<Entry> trail = place.trail;
        if (trail.empty())
            return;
        trail.pop_back();
        open(std::move(trail));
    }

    void activate(const Entry& entry)
    {
        if (entry.item.isFolder) {
            std::vector<Entry> trail = place.trail;
            trail.push_back(entry);
            // The name of a folder that was typed has been used.
            if (textOf(control(IDC_NAME)) == entry.name)
                SetWindowTextW(control(IDC_NAME), proposedName.c_str());
            open(std::move(trail));
        } else {
            accept(entry.name, &entry);
        }
    }

    /// @}
    /// @name The answer of the dialog
    /// @{

    void acceptName()
    {
        const std::wstring name = textOf(control(IDC_NAME));
        const Entry* const entry = place.find(name);
        if (name.empty())
            say(L"Type the name of a file, or select one.");
        else if (entry != nullptr)
            activate(*entry);
        else if (purpose == Purpose::Open)
            say(L"There is no '" + name + L"' here. Check the name, or select a file.");
        else if (place.trail.empty())
            say(L"Files cannot be saved beside the drives. Open a drive first.");
        else if (name.find_first_of(L"\\/:*?\"<>|") != std::wstring::npos)
            say(L"A file name has none of the characters \\ / : * ? \" < > |. Choose another name.");
        else
            accept(name, nullptr);
    }

    // Without an entry there is no file of that name yet.
    void accept(const std::wstring& name, const Entry* existing)
    {
        if (purpose == Purpose::Open) {
            say(L"Opening\x2026");
            queue->ask(
                [file = existing->item](QvNativeTessaportAPI& tessaport) {
                    bringHere(tessaport, file);
                    return localPath(file);
                },
                [this](std::future<std::filesystem::path> answer) { finishWith(std::move(answer)); });
            return;
        }
        const std::wstring question = L"'" + name + L"' exists already. Do you want to replace it?";
        if (existing != nullptr &&
            MessageBoxW(window, question.c_str(), L"Save to drive", MB_YESNO | MB_ICONWARNING) != IDYES)
            return;
        queue->ask(
            [path = localPath(place.trail.back().item) / name](QvNativeTessaportAPI&) {
                // The workspace does not have the folder if it is only on the server.
                std::filesystem::create_directories(path.parent_path());
                return path;
            },
            [this](std::future<std::filesystem::path> answer) { finishWith(std::move(answer)); });
    }

    void finishWith(std::future<std::filesystem::path>&& answer)
    {
        receiveAnswer(std::move(answer), [this](std::filesystem::path&& path) {
            result = std::move(path);
            EndDialog(window, IDOK);
        });
    }

    // Shows why a request has failed, and offers to try it again.
    template <class Answer, class Use>
    void receiveAnswer(std::future<Answer>&& answer, Use use)
    {
        try {
            use(answer.get());
            ShowWindow(control(IDC_RETRY), SW_HIDE);
        } catch (const RequestDropped&) {
            // Something else was asked for meanwhile.
        } catch (const ApiException& failure) {
            fail(failure.getErrorMessage() == nullptr ? L"" : failure.getErrorMessage());
        } catch (const std::exception& failure) {
            fail(toWide(toQVString(failure.what())));
        }
    }

    void fail(const std::wstring& message)
    {
        say(message.empty() ? L"The request failed, and no reason was given. Try it again." : message);
        ShowWindow(control(IDC_RETRY), SW_SHOW);
    }

    /// @}
    /// @name New folders
    /// @{

    void startNewFolder()
    {
        if (place.trail.empty())
            return;
        const HWND list = control(IDC_LIST);
        const int row = insertRow(ListView_GetItemCount(list), L"New folder", L"Folder");
        SetFocus(list);
        namesFolder = true;
        if (ListView_EditLabel(list, row) == nullptr)
            finishNewFolder(nullptr);
    }

    // Without a name the user has cancelled.
    void finishNewFolder(const wchar_t* name)
    {
        namesFolder = false;
        if (name == nullptr || *name == L'\0') {
            fillList();
            return;
        }
        say(L"Creating the folder\x2026");
        const std::vector<Entry> trail = place.trail;
        queue->ask(
            [trail, name = toQVString(name)](QvNativeTessaportAPI& tessaport) {
                std::vector<Entry> longer = trail;
                const Item made = tessaport.getOrCreateFolder(trail.back().item, name);
                longer.push_back({made, toWide(made.name)});
                return openPlace(tessaport, longer);
            },
            [this](std::future<Place> answer) {
                fillList();
                receiveAnswer(std::move(answer), [this](Place&& made) { show(std::move(made)); });
            });
    }

    /// @}
    /// @name Controls
    /// @{

    [[nodiscard]] HWND control(int number) const { return GetDlgItem(window, number); }

    void say(const std::wstring& text) { SetWindowTextW(control(IDC_STATUS), text.c_str()); }

    void addColumn(int number, const wchar_t* title, int width)
    {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.pszText = const_cast<wchar_t*>(title);
        column.cx = MulDiv(width, static_cast<int>(GetDpiForWindow(window)), USER_DEFAULT_SCREEN_DPI);
        ListView_InsertColumn(control(IDC_LIST), number, &column);
    }

    int insertRow(int row, const std::wstring& name, const wchar_t* kind)
    {
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        item.pszText = const_cast<wchar_t*>(name.c_str());
        const int inserted = ListView_InsertItem(control(IDC_LIST), &item);
        ListView_SetItemText(control(IDC_LIST), inserted, 1, const_cast<wchar_t*>(kind));
        return inserted;
    }

    void fillList()
    {
        const HWND list = control(IDC_LIST);
        SetWindowRedraw(list, FALSE);
        ListView_DeleteAllItems(list);
        int row = 0;
        for (const Entry& entry : place.entries) {
            const wchar_t* const kind = place.trail.empty()        ? L"Drive"
                                        : entry.item.isFolder      ? L"Folder"
                                        : entry.item.isInWorkspace ? L"File"
                                                                   : L"File on the server";
            insertRow(row++, entry.name, kind);
        }
        SetWindowRedraw(list, TRUE);
    }

    [[nodiscard]] const Entry* selected() const
    {
        const int row = ListView_GetNextItem(control(IDC_LIST), -1, LVNI_SELECTED);
        return row >= 0 && static_cast<std::size_t>(row) < place.entries.size() ? &place.entries[row] : nullptr;
    }

    void showSelectedName()
    {
        const Entry* const entry = selected();
        if (entry != nullptr && !entry->item.isFolder)
            SetWindowTextW(control(IDC_NAME), entry->name.c_str());
    }

    /// @}

    const Purpose purpose;
    const std::wstring proposedName;
    HWND window = nullptr;
    std::optional<WindowPoster> poster;
    /// Made with the dialog as its window: the sync application's own dialogs appear above it.
    std::optional<RequestQueue> queue;
    /// What the list shows.
    Place place;
    /// What was asked for last.
    std::vector<Entry> wanted;
    bool namesFolder = false;
    std::optional<std::filesystem::path> result;
};

} // namespace

std::optional<std::filesystem::path> openFromDrive(HWND owner) { return DriveDialog(Purpose::Open, {}).show(owner); }

std::optional<std::filesystem::path> saveToDrive(HWND owner, const std::wstring& name)
{
    return DriveDialog(Purpose::Save, name).show(owner);
}
