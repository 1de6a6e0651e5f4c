#pragma once

#include <chrono>
#include <vector>

#include <velmora/api/Item.h>
#include <velmora/testkit/Call.h>
#include <velmora/testkit/Failure.h>

namespace Quorvex::Velmora::TestKit
{

/// What one request of the scripted service does. A member of ScriptedService; see there.
///
/// Until a test sets something else, the request succeeds: it returns what ScriptedService says.
///
/// All members may be called on any thread, and several at the same time, also while a request waits.
class RequestScript
{
public:
    RequestScript(const RequestScript&) = delete;
    RequestScript& operator=(const RequestScript&) = delete;

    /// Lets the request fail from now on, until it gets another answer.
    void fail(const Failure& failure);

    /// Lets the next requests fail, whatever was set for the later ones.
    ///
    /// Adds to what was set by earlier calls, and by answerNext(), in order.
    void failNext(const Failure& failure, unsigned times = 1);

    /// Lets every request from now on take this long before it answers or fails. Zero means no delay.
    void delay(std::chrono::milliseconds time);

    /// Holds every request from now on until release() is called, or reset(), or the service is destroyed.
    void hold();

    /// Lets the held requests continue. Later ones are not held.
    void release();

    /// Waits until a request is held.
    ///
    /// @return false if no call is held when `limit` has passed.
    [[nodiscard]] bool waitUntilHeld(std::chrono::milliseconds limit = std::chrono::seconds(10));

    /// Removes the calls of this request from those that takeCalls() of the service returns, and returns them in order.
    [[nodiscard]] std::vector<Call> takeCalls();

    /// Forgets everything that was set. Requests that wait continue at once.
    void reset();

protected:
    /// For ScriptedService only.
    ///
    /// @param member  the name that the sync application gives the request; a literal.
    explicit RequestScript(const char* member) noexcept : member(member) {}
    ~RequestScript() = default;

    /// The name that the sync application gives the request.
    const char* const member;

private:
    friend class ScriptedService;
};

/// What a request that returns an `Answer` does.
template <class Answer>
class AnsweringScript : public RequestScript
{
public:
    /// Sets what the request returns from now on.
    ///
    /// @throws std::logic_error if a record cannot be sent, for example because its drive id is invalid. Nothing is set
    ///         then.
    void answer(const Answer& answer);

    /// Sets what the next requests return, whatever was set for the later ones. Adds to earlier calls, as failNext()
    /// does.
    void answerNext(const Answer& answer, unsigned times = 1);

protected:
    /// See RequestScript().
    explicit AnsweringScript(const char* member) noexcept : RequestScript(member) {}
    ~AnsweringScript() = default;

private:
    friend class ScriptedService;
};

/// What a request that returns a list of records does.
template <class Record>
class ListScript : public AnsweringScript<std::vector<Record>>
{
public:
    /// Lets the request fail from now on while its list is read: after these records.
    void failAfter(const std::vector<Record>& records, const Failure& failure);

protected:
    /// See RequestScript().
    explicit ListScript(const char* member) noexcept : AnsweringScript<std::vector<Record>>(member) {}
    ~ListScript() = default;

private:
    friend class ScriptedService;
};

/// What a request for the items in a folder does.
class FolderScript : public ListScript<TessaportAPI::Item>
{
public:
    /// Sets what the request returns for one folder from now on. Other folders keep what answer() or fail() set.
    ///
    /// @param folder  is recognised by its workspace path.
    /// @param items   may be empty.
    void answerFor(const TessaportAPI::Item& folder, const std::vector<TessaportAPI::Item>& items);

    /// Lets the request fail for one folder from now on.
    void failFor(const TessaportAPI::Item& folder, const Failure& failure);

private:
    friend class ScriptedService;
    explicit FolderScript(const char* member) noexcept : ListScript(member) {}
};

} // namespace Quorvex::Velmora::TestKit
