using System;
using System.Collections.Generic;
using System.IO;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Collects what a batch did. A failing item is left out of the lists and does not keep the others from being done.</summary>
internal sealed class ChangeReport
{
    private readonly List<Item> _created = [];
    private readonly List<Item> _updated = [];
    private readonly List<Item> _deleted = [];
    private readonly HashSet<(Guid, string)> _listed = [];

    public int Failures { get; private set; }

    public void Created(ItemView view) => List(_created, view.ToItem());

    public void Updated(ItemView view) => List(_updated, view.ToItem());

    /// <summary>Lists an item that was seen before it was deleted; it is on neither side now.</summary>
    public void Deleted(ItemView before)
    {
        var item = before.ToItem();
        item.IsInWorkspace = false;
        item.IsOnServer = false;
        _deleted.Add(item);
    }

    /// <summary>Runs one step of the batch; false when it failed.</summary>
    public bool Attempt(Action step)
    {
        try
        {
            step();
            return true;
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException or ArgumentException or NotSupportedException)
        {
            ++Failures;
            return false;
        }
    }

    public CommandResult ToResult() => new()
    {
        IsSuccess = Failures == 0,
        ItemsCreated = _created,
        ItemsUpdated = _updated,
        ItemsDeleted = _deleted,
    };

    private void List(List<Item> list, Item item)
    {
        if (_listed.Add((item.DriveId, item.RelativePath)))
            list.Add(item);
    }
}
