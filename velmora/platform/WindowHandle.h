/// The handle of the host's window. It is only passed through to the sync application, which may show dialogs above it.
#pragma once

struct HWND__;
using HWND = HWND__*;
