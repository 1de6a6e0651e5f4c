namespace Quorvex.Tessaport.API.Tests;

/// <summary>What is known of a version without reading it. A file that is unsure is read, which costs time.</summary>
public sealed class VersionCheckTests
{
    private static readonly FileEntry Entry = new()
    {
        Kind = EntryKind.File,
        Size = 1,
        ModifiedTime = new FileTime(2, 3),
        ChangeTime = new FileTime(4, 5),
        Identity = new FileIdentity(6, 7),
    };

    private static readonly FileEntry Other = Entry with { ChangeTime = new FileTime(8, 9), Identity = new FileIdentity(10, 11) };

    [Fact]
    public void VersionThatWasSyncedIsSynced()
    {
        var record = Record(isSettled: true);

        Assert.Equal(VersionState.Synced, VersionCheck.Compare(Entry, record, SideName.Workspace));
        Assert.Equal(VersionState.Synced, VersionCheck.Compare(Other, record, SideName.Server));
    }

    [Fact]
    public void VersionIsUnsureIfSomethingWasDoneToTheFile()
    {
        Assert.Equal(VersionState.Unsure, OfWorkspace(Entry with { ChangeTime = new FileTime(4, 6) }));
        Assert.Equal(VersionState.Unsure, OfWorkspace(Entry with { Identity = new FileIdentity(6, 8) }));
        Assert.Equal(VersionState.Unsure, OfWorkspace(Other));
    }

    [Fact]
    public void VersionIsUnsureIfItWasSeenInTheMomentInWhichItWasWritten() =>
        Assert.Equal(VersionState.Unsure, VersionCheck.Compare(Entry, Record(isSettled: false), SideName.Workspace));

    [Fact]
    public void VersionIsChangedIfItsSizeTimeOrKindIsAnotherOrItWasNeverSynced()
    {
        Assert.Equal(VersionState.Changed, OfWorkspace(Entry with { Size = 2 }));
        Assert.Equal(VersionState.Changed, OfWorkspace(Entry with { ModifiedTime = new FileTime(2, 4) }));
        Assert.Equal(VersionState.Changed, OfWorkspace(Entry with { Kind = EntryKind.Folder }));
        Assert.Equal(VersionState.Changed, VersionCheck.Compare(Entry, null, SideName.Workspace));
    }

    private static VersionState OfWorkspace(FileEntry entry) => VersionCheck.Compare(entry, Record(isSettled: true), SideName.Workspace);

    private static SyncedRecord Record(bool isSettled) =>
        SyncedRecord.ForFile("a.txt", new SeenVersion(Entry, isSettled), new SeenVersion(Other, isSettled), ContentHash.Unknown);
}
