using System.Text.Json.Nodes;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Counts down the failures that a user set, across processes.</summary>
internal static class FailureCount
{
    /// <summary>Takes one of the failures that are left for a request; null if another request has taken the last.</summary>
    public static RequestFailure? TryTake(HomeFolder home, string request)
    {
        using var held = HomeLock.AcquireServiceFile(home);
        if (ServiceFile.Read(home).Faults.GetValueOrDefault(request)?.Failure is not { } failure)
            return null;
        if (failure.Times is { } times)
            SetTimes(home, request, times - 1);
        return failure;
    }

    private static void SetTimes(HomeFolder home, string request, int times)
    {
        var root = Document(home);
        var faults = root[RequestFaults.Member]!.AsObject();
        var fault = faults[request]!.AsObject();
        if (times > 0)
        {
            fault[RequestFaults.TimesMember] = times;
        }
        else
        {
            fault.Remove(RequestFaults.FailureMember);
            fault.Remove(RequestFaults.KindMember);
            fault.Remove(RequestFaults.TimesMember);
            if (fault.Count == 0)
                faults.Remove(request);
            if (faults.Count == 0)
                root.Remove(RequestFaults.Member);
        }
        Save(home, request, root.ToJsonString() + "\n");
    }

    private static JsonObject Document(HomeFolder home)
    {
        try
        {
            var root = JsonFile.ReadForChange(home.ServiceFile)!.AsObject();
            // Members are read on first use, which finds those that appear twice.
            _ = root[RequestFaults.Member]?.AsObject().Sum(fault => fault.Value!.AsObject().Count);
            return root;
        }
        catch (ArgumentException)
        {
            throw ServiceFile.Unreadable(home, "a member appears twice in it");
        }
    }

    private static void Save(HomeFolder home, string request, string json)
    {
        try
        {
            AtomicFile.ReplaceServiceFile(home, json);
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
            throw new IOException(
                $"The failure that is set for '{request}' cannot be counted in '{home.ServiceFile}': {e.Message} Correct that, or remove "
                + "the failure with 'tessaport service clear'.", e);
        }
    }
}
