namespace Quorvex.Tessaport.API.Local;

/// <summary>Collects what a batch did. An item that fails is left out of the lists and does not prevent the others.</summary>
internal sealed class ChangeReport
{
    private readonly List<ListedItem> _created = [];
    private readonly List<ListedItem> _updated = [];
    private readonly List<ListedItem> _deleted = [];
    private readonly List<(string Path, Exception Reason)> _failed = [];
    private readonly Dictionary<(Guid, string), (List<ListedItem> List, int Index)> _listed = [];

    public int Failures { get; private set; }

    public IReadOnlyList<ListedItem> CreatedItems => _created;

    public IReadOnlyList<ListedItem> UpdatedItems => _updated;

    /// <summary>The items that failed, with the reasons.</summary>
    public IReadOnlyList<(string Path, Exception Reason)> FailedItems => _failed;

    /// <summary>How many items are listed.</summary>
    public int Count => _created.Count + _updated.Count + _deleted.Count;

    /// <summary>Whether an exception concerns one item only, and does not mean that the service is broken.</summary>
    public static bool IsFailure(Exception e) =>
        e is IOException or UnauthorizedAccessException or ArgumentException or NotSupportedException;

    public void Created(ItemView view) => List(_created, ListedItem.Of(view));

    /// <summary>Lists an item that is in sync now.</summary>
    /// <param name="view">The item.</param>
    /// <param name="action">What was done with it, one of <see cref="SyncActions"/>; null for nothing, or if it is known already.</param>
    public void Updated(ItemView view, string? action = null) => List(_updated, ListedItem.Of(view) with { Action = action });

    /// <summary>Lists an item that was seen before it was deleted; it is on neither side now.</summary>
    public void Deleted(ItemView before) => _deleted.Add(ListedItem.Of(before) with { IsInWorkspace = false, IsOnServer = false });

    /// <summary>Runs one step of the batch; false if it failed.</summary>
    public bool Attempt(Action step) => Attempt(step, _ => { });

    /// <summary>Runs one step of the batch and passes on the reason of a failure.</summary>
    public bool Attempt(Action step, Action<Exception> onFailure)
    {
        try
        {
            step();
            return true;
        }
        catch (Exception e) when (IsFailure(e))
        {
            ++Failures;
            onFailure(e);
            return false;
        }
    }

    /// <summary>Counts a failure and keeps its reason, which users read as a property of the item.</summary>
    public void Fail(DriveIndex index, string path, Exception reason)
    {
        ++Failures;
        _failed.Add((path, reason));
        index.Failures.Put(path, reason.Message);
    }

    // Items are created when they are read: a hundred thousand at once would take more memory than everything else.
    public CommandResult ToResult() => new()
    {
        IsSuccess = Failures == 0,
        ItemsCreated = Items(_created),
        ItemsUpdated = Items(_updated),
        ItemsDeleted = Items(_deleted),
    };

    private static IEnumerable<Item> Items(List<ListedItem> list)
    {
        for (var i = 0; i < list.Count; ++i)
        {
            yield return list[i].ToItem();
            // The items that were read before are garbage by now, unless the reader keeps them.
            LargeGarbage.ReleaseDuring(i + 1);
        }
    }

    private void List(List<ListedItem> list, ListedItem item)
    {
        var key = (item.Drive.Id, item.Path);
        if (_listed.TryGetValue(key, out var place))
        {
            place.List[place.Index] = item with { Action = item.Action ?? place.List[place.Index].Action };
            return;
        }
        _listed[key] = (list, list.Count);
        list.Add(item);
    }
}
