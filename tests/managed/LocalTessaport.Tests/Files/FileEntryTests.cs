namespace Quorvex.Tessaport.API.Tests;

public sealed class FileEntryTests
{
    private static readonly FileEntry Entry = new()
    {
        Kind = EntryKind.File,
        Size = 1,
        ModifiedTime = new FileTime(2, 3),
        ChangeTime = new FileTime(4, 5),
        Identity = new FileIdentity(6, 7),
        Device = 8,
        Mode = 9,
    };

    [Fact]
    public void EqualsAnEntryWithTheSameProperties()
    {
        var same = Entry with { Size = Entry.Size };

        Assert.True(Entry == same);
        Assert.Equal(Entry.GetHashCode(), same.GetHashCode());
    }

    [Fact]
    public void DiffersFromAnEntryWithOneOtherProperty()
    {
        var others = new[]
        {
            Entry with { Kind = EntryKind.Folder },
            Entry with { Size = 10 },
            Entry with { ModifiedTime = new FileTime(2, 10) },
            Entry with { ChangeTime = new FileTime(10, 5) },
            Entry with { Identity = new FileIdentity(6, 10) },
            Entry with { Device = 10 },
            Entry with { Mode = 10 },
        };

        // The type has no other property that a comparison could leave out.
        Assert.Equal(others.Length, typeof(FileEntry).GetProperties().Count(property => property.CanWrite));
        Assert.All(others, other => Assert.True(Entry != other));
    }
}
