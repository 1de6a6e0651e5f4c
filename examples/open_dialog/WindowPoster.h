#pragma once

#include <memory>

#include <windows.h>

#include <velmora/native/RequestQueue.h>

/// Runs what a request queue posts on the thread of a window.
///
/// The window's procedure calls run() when it receives the message. What was posted and has not run by the time the
/// window is destroyed is dropped.
class WindowPoster
{
public:
    WindowPoster(HWND window, UINT message);

    /// The function to make the queue with. It may outlive this object.
    [[nodiscard]] Quorvex::Velmora::TessaportAPI::RequestQueue::Post post() const;

    void run() const;

private:
    struct Inbox;
    std::shared_ptr<Inbox> inbox;
};
