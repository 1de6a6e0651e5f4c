using System.Collections.Generic;
using System.Linq;

namespace Quorvex.Tessaport.API.Local;

/// <summary>The items that commands are asked for or run on.</summary>
internal sealed class CommandTarget
{
    private CommandTarget(Session session, List<ItemView> views)
    {
        Session = session;
        Views = views;
    }

    public Session Session { get; }

    /// <summary>The items of the context that exist, each once.</summary>
    public List<ItemView> Views { get; }

    public static CommandTarget Of(Session session, CommandContext context)
    {
        var ids = new List<ItemId>(context.Items ?? []);
        if (context.Item is not null)
            ids.Insert(0, context.Item);
        var views = ids.Select(session.TryPlaceOf).OfType<DrivePlace>().Distinct()
            .Select(place => ItemView.At(place.Drive, place.Path))
            .Where(view => view.Exists || view.IsRoot);
        return new CommandTarget(session, views.ToList());
    }

    public bool AreLocked() => LocksOf().All(isLocked => isLocked);

    public bool AreAnyLocked() => LocksOf().Any(isLocked => isLocked);

    private IEnumerable<bool> LocksOf()
    {
        var trackers = new TrackerSet(Session);
        return Views.Select(view => view.Drive.Locking && trackers.Of(view.Drive).RecordOf(view)?.LockedBy is not null);
    }
}
