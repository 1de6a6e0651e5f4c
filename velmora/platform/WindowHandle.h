#pragma once

struct HWND__;

/// The handle of a window of the host. The library only passes it on to the sync application, which may show dialogs
/// above that window.
using HWND = HWND__*;
