namespace Quorvex.Tessaport.API.Tests;

public sealed class PropertyTests : IDisposable
{
    private static readonly string[] Identifiers = ["SourceObjectId", "KeldaProjectId", "KeldaParentId", "KeldaItemId"];

    private readonly TestHome _home = new();

    public void Dispose() => _home.Dispose();

    [Theory]
    [InlineData("Drive", "SourceObjectId")]
    [InlineData("TrelisDocs", "KeldaProjectId KeldaItemId KeldaParentId")]
    [InlineData("TrelisTeam", "KeldaProjectId KeldaItemId KeldaParentId")]
    [InlineData("Morrow", "SourceObjectId")]
    public void EachDriveTypeHasItsIdentifiers(string type, string expected)
    {
        var drive = _home.AddDrive(type);
        drive.PutBoth("folder/file.txt");

        var definitions = _home.Service.GetPropertyDefinitions(drive.Id).Select(definition => definition.Id).ToList();
        var ofFile = Read(drive, "folder/file.txt", Identifiers);
        var ofFolder = Read(drive, "folder", Identifiers);

        Assert.Equal(expected.Split(' ').Order(), definitions.Intersect(Identifiers).Order());
        Assert.Equal(expected.Split(' ').Order(), ofFile.Keys.Order());
        Assert.All(ofFile.Values, value => Assert.NotEqual("", value));
        Assert.Equal(ofFile, Read(drive, "folder/file.txt", Identifiers));
        if (type.StartsWith("Trelis", StringComparison.Ordinal))
        {
            Assert.Equal(ofFolder["KeldaItemId"], ofFile["KeldaParentId"]);
            Assert.Equal(ofFolder["KeldaProjectId"], ofFile["KeldaProjectId"]);
            Assert.NotEqual(ofFolder["KeldaItemId"], ofFile["KeldaItemId"]);
            Assert.DoesNotContain("KeldaParentId", Read(drive, "", Identifiers).Keys);
        }
        else
        {
            Assert.NotEqual(ofFolder["SourceObjectId"], ofFile["SourceObjectId"]);
        }
    }

    [Fact]
    public void ItemsThatAreNotOnTheServerHaveNoIdentifierThere()
    {
        var drive = _home.AddDrive("Morrow");
        drive.PutInWorkspace("new.txt");

        Assert.Empty(Read(drive, "new.txt", Identifiers));
        drive.Sync("new.txt");
        Assert.Single(Read(drive, "new.txt", Identifiers));
    }

    [Fact]
    public void IdentifiersSurviveARename()
    {
        var drive = _home.AddDrive("TrelisTeam");
        drive.PutBoth("a.txt");
        var before = Read(drive, "a.txt", "KeldaItemId");
        System.IO.File.Move(drive.InWorkspace("a.txt"), drive.InWorkspace("b.txt"));
        drive.Sync("");

        Assert.Equal(before, Read(drive, "b.txt", "KeldaItemId"));
    }

    [Fact]
    public void ValuesHaveTheTypesOfTheirDefinitions()
    {
        var drive = _home.AddDrive(locking: true);
        drive.PutBoth("a.txt", "12345");
        var definitions = _home.Service.GetPropertyDefinitions(drive.Id).ToList();

        var values = Values(drive, "a.txt", [.. definitions.Select(definition => definition.Id)]);

        Type[] types = [typeof(string), typeof(long), typeof(UtcTime), typeof(bool)];
        Assert.All(definitions, definition => Assert.NotEmpty(definition.DisplayName));
        Assert.All(values, value =>
            Assert.IsType(types[(int)definitions.Single(d => d.Id == value.PropertyDefinitionId).ValueDataType - 1], value.Value));
        Assert.All(values, value => Assert.Equal((drive.Id, "a.txt"), (value.DriveId, value.RelativePath)));
        var byId = values.ToDictionary(value => value.PropertyDefinitionId, value => value.Value);
        Assert.Equal("a.txt", byId["Name"]);
        Assert.Equal(".txt", byId["Extension"]);
        Assert.Equal(5L, byId["Size"]);
        Assert.Equal("2024-05-01T10:00:00Z", byId["Modified"].ToString());
        Assert.Equal("5994471abb01112afcc18159f6cc74b4f511b99806da59b3caf5a9c173cacfc5", byId["ContentHash"]);
        Assert.Equal(false, byId["IsFolder"]);
        Assert.Equal(false, byId["IsLocked"]);
        Assert.Equal(
            [
                "SyncError", "ConflictOf", "ConflictFrom", "SyncAction", "Offline", "Writable", "IgnorePatterns", "FilesInWorkspace", "FilesOnServer",
                "UpkeepError", "LockedBy",
            ],
            definitions.Select(definition => definition.Id).Except(byId.Keys));
    }

    [Theory]
    [InlineData(false)]
    [InlineData(true)]
    public void TheRootCountsTheFilesOfTheSidesThatCanBeReached(bool offline)
    {
        var drive = _home.AddDrive(offline: offline);
        drive.PutBoth("a.txt");
        drive.PutInWorkspace("deep/er/b.txt");
        drive.PutOnServer("deep/c.txt");
        drive.PutOnServer("deep/d.txt");

        var counts = _home.Service.GetProperties([drive.Root.Id], ["FilesInWorkspace", "FilesOnServer"]).Values.Select(value => value.Value);

        Assert.Equal(offline ? [2L] : new object[] { 2L, 3L }, counts);
    }

    [Fact]
    public void SyncActionSaysWhatTheSyncDidWithTheItemsOfItsResult()
    {
        var drive = _home.AddDrive();
        drive.PutBoth("b.txt", "1");
        drive.PutBoth("same.txt", "2");
        drive.Sync("");
        drive.PutInWorkspace("up/new.txt");
        drive.PutOnServer("down.txt");
        System.IO.File.Move(drive.InWorkspace("b.txt"), drive.InWorkspace("a.txt"));

        var listed = drive.Sync("").ItemsUpdated.ToList();

        var actions = _home.Service.GetProperties([.. listed.Select(item => item.Id)], ["SyncAction"]).Values
            .ToDictionary(value => value.RelativePath, value => value.Value);
        Assert.Equal(
            new Dictionary<string, object>
            {
                ["up"] = "uploaded",
                ["up\\new.txt"] = "uploaded",
                ["down.txt"] = "downloaded",
                ["a.txt"] = "renamed",
            },
            actions);
        Assert.Empty(Read(drive, "down.txt", "SyncAction"));
    }

    [Fact]
    public void SyncActionIsKnownWithoutALookAtTheItemAndTheSameBesideOtherProperties()
    {
        var drive = _home.AddDrive();
        drive.PutInWorkspace("a.txt");
        var listed = drive.Sync("").ItemsUpdated.Single(item => item.Name == "a.txt").Id;
        var both = _home.Service.GetProperties([listed], ["Name", "SyncAction"]).Values;
        System.IO.File.Delete(drive.InWorkspace("a.txt"));
        System.IO.File.Delete(drive.OnServer("a.txt"));

        var alone = Assert.Single(_home.Service.GetProperties([listed], ["SyncAction"]).Values);

        Assert.Equal(["a.txt", "uploaded"], both.Select(value => value.Value));
        Assert.Equal(("uploaded", "a.txt", drive.Id, "SyncAction"),
            ((string)alone.Value, alone.RelativePath, alone.DriveId, alone.PropertyDefinitionId));
    }

    [Fact]
    public void OnlyExistingItemsHaveValues()
    {
        var drive = _home.AddDrive();
        drive.PutBoth("folder/x.txt");
        var gone = drive.Item("folder/x.txt");
        _home.Service.DeleteItems([gone.Id]);

        Assert.DoesNotContain("Size", Read(drive, "folder", "Name", "Size", "Nonsense", "KeldaItemId").Keys);
        Assert.Empty(_home.Service.GetProperties([gone.Id], ["Name"]).Values);
        Assert.Empty(_home.Service.GetProperties([], ["Name"]).Values);
        Assert.Empty(_home.Service.GetProperties([drive.Root.Id], []).Values);
        Assert.Throws<ArgumentException>(() => _home.Service.GetPropertyDefinitions(Guid.NewGuid()));
        var root = drive.Root.Id;
        _home.Configure(drive, "offline", true);
        Assert.Empty(_home.Service.GetProperties([root], ["Name"]).Values);
    }

    private Dictionary<string, object> Read(TestDrive drive, string path, params string[] ids) =>
        Values(drive, path, ids).ToDictionary(value => value.PropertyDefinitionId, value => value.Value);

    private List<PropertyValue> Values(TestDrive drive, string path, string[] ids) =>
        _home.Service.GetProperties([drive.Item(path).Id], [.. ids]).Values.ToList();
}
