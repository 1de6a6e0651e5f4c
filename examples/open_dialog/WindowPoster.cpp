#include "WindowPoster.h"

#include <functional>
#include <mutex>
#include <utility>
#include <vector>

struct WindowPoster::Inbox {
    HWND window = nullptr;
    UINT message = 0;
    std::mutex mutex;
    std::vector<std::function<void()>> calls;
};

WindowPoster::WindowPoster(HWND window, UINT message) : inbox(std::make_shared<Inbox>())
{
    inbox->window = window;
    inbox->message = message;
}

Quorvex::Velmora::TessaportAPI::RequestQueue::Post WindowPoster::post() const
{
    return [inbox = inbox](std::function<void()> call) {
        {
            const std::lock_guard lock(inbox->mutex);
            inbox->calls.push_back(std::move(call));
        }
        // Fails only if the window is gone; the call is dropped with the inbox then.
        PostMessageW(inbox->window, inbox->message, 0, 0);
    };
}

void WindowPoster::run() const
{
    // A call may destroy the window, and this object with it.
    const std::shared_ptr<Inbox> kept = inbox;
    std::vector<std::function<void()>> calls;
    {
        const std::lock_guard lock(kept->mutex);
        calls.swap(kept->calls);
    }
    for (const std::function<void()>& call : calls)
        call();
}
