// Uses the example open_dialog as its user does, by messages to its windows.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include <windows.h>

#include "tests/support/ChildStartWindows.h"

namespace Quorvex::Velmora::TestSupport
{

/// Waits up to a minute. @throws std::runtime_error that names `what` if the condition stays false.
void waitFor(const std::string& what, const std::function<bool()>& condition);

[[nodiscard]] std::wstring textOf(HWND window);

/// The running program. Ends it if it still runs when this object is destroyed.
class OpenDialogDriver
{
public:
    /// Starts the program and waits for its window.
    explicit OpenDialogDriver(const std::filesystem::path& home);
    ~OpenDialogDriver();
    OpenDialogDriver(const OpenDialogDriver&) = delete;
    OpenDialogDriver& operator=(const OpenDialogDriver&) = delete;

    [[nodiscard]] HWND control(int number) const { return GetDlgItem(window, number); }

    /// Presses a button of the window and waits for the dialog that it opens.
    void openDialog(int button);

    /// A control of the dialog.
    [[nodiscard]] HWND inDialog(int number) const { return GetDlgItem(dialog, number); }
    [[nodiscard]] bool isDialogOpen() const { return IsWindow(dialog) != 0; }
    void awaitClosedDialog() const;

    void awaitRows(int count) const;
    void awaitStatus(const std::wstring& part) const;

    /// Presses a button of the dialog.
    void press(int button) const;
    /// Presses a key in a control of the dialog, which gets the focus first.
    void key(int number, WPARAM key) const;
    /// Replaces the file name, character by character.
    void type(const std::wstring& name) const;
    /// Answers a message box of the program.
    void answerBox(int button) const;
    /// Names the new folder whose name is edited in the list.
    void nameFolder(const std::wstring& name) const;

    /// Closes the window. @return the exit code.
    [[nodiscard]] DWORD close();

private:
    [[nodiscard]] HWND find(const wchar_t* className, HWND other) const;

    Handle process;
    DWORD processId;
    HWND window = nullptr;
    HWND dialog = nullptr;
};

} // namespace Quorvex::Velmora::TestSupport
