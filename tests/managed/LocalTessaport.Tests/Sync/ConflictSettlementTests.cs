namespace Quorvex.Tessaport.API.Tests;

/// <summary>The commands that settle a conflict. The item holds "theirs" and its copy "mine".</summary>
public sealed class ConflictSettlementTests : IDisposable
{
    private const string Item = "plans/a.txt";
    private const string Copy = "plans/a (conflict 2024-05-01 100300).txt";
    private const string Edited = "edited by the user";

    private readonly TestHome _home = new();
    private readonly TestDrive _drive;

    public ConflictSettlementTests()
    {
        _drive = _home.AddDrive(locking: true);
        _drive.PutBoth(Item, "old");
        _home.Service.Discover();
        _drive.PutInWorkspace(Item, "mine", 3);
        _drive.PutOnServer(Item, "theirs", 4);
        Assert.True(_drive.Sync("").IsSuccess);
    }

    public void Dispose() => _home.Dispose();

    [Fact]
    public void ACopyThatIsUsedTakesThePlaceOfTheItem()
    {
        var id = _drive.PermanentId(Item);

        var result = Run("use-this-version");

        Assert.True(result.IsSuccess);
        Assert.Equal(Item.Replace('/', '\\'), Assert.Single(result.ItemsUpdated).RelativePath);
        Assert.Equal(Copy.Replace('/', '\\'), Assert.Single(result.ItemsDeleted).RelativePath);
        RequireOnBothSides((Item, "mine"));
        Assert.Equal(Item.Replace('/', '\\'), _drive.PathOf(id));
        RequireInSync();
    }

    [Fact]
    public void ACopyThatIsDiscardedIsDeleted()
    {
        Assert.True(Run("discard-this-version").IsSuccess);

        RequireOnBothSides((Item, "theirs"));
        RequireInSync();
    }

    [Fact]
    public void VersionsThatAreBothKeptAreOrdinaryFiles()
    {
        Assert.True(Run("keep-both-versions").IsSuccess);

        RequireOnBothSides((Copy, "mine"), (Item, "theirs"));
        Assert.Equal("[]", _home.Service.GetProperties([_drive.Root.Id], ["Pending"]).Values.Single().Value);
        RequireInSync();
        Assert.Equal("[]", _home.Service.GetProperties([_drive.Root.Id], ["Pending"]).Values.Single().Value);
    }

    [Fact]
    public void TheCommandsAreOfferedForCopiesOnly()
    {
        string[] commands = ["use-this-version", "discard-this-version", "keep-both-versions"];
        _drive.PutBoth("plans/a (conflict of interest).txt");

        Assert.Equal(commands, Commands(Copy).Intersect(commands));
        Assert.Empty(Commands(Item).Intersect(commands));
        Assert.Empty(Commands("plans/a (conflict of interest).txt").Intersect(commands));
        Assert.Equal(["PNG", "PNG", "PNG"], _home.Service.GetCommands(Context(Copy)).Where(command => commands.Contains(command.Id))
            .Select(command => System.Text.Encoding.ASCII.GetString(command.Image[1..4])));
        foreach (var command in commands)
            Assert.False(_home.Service.ExecuteCommand(new Command { Id = command }, Context("plans/a (conflict of interest).txt")).IsSuccess);
    }

    [Theory]
    [InlineData(Item, true)]
    [InlineData(Item, false)]
    [InlineData(Copy, true)]
    [InlineData(Copy, false)]
    public void AVersionThatWasChangedSinceTheLastSyncIsNeitherReplacedNorDeleted(string path, bool isHere)
    {
        Edit(path, isHere);

        Assert.False(Run("use-this-version").IsSuccess);
        Assert.Contains("has changed since the last sync", ErrorOfCopy());
        Assert.False(Run("discard-this-version").IsSuccess);

        Assert.Equal(2, _drive.FilesInWorkspace().Count);
        Assert.Equal(2, _drive.FilesOnServer().Count);
        Assert.Equal(Edited, Read(path, isHere));
        Assert.True(_drive.Sync("").IsSuccess);
        Assert.Null(ErrorOfCopy());
        Assert.True(Run("use-this-version").IsSuccess);
    }

    public static TheoryData<string, string, string, bool> Edits
    {
        get
        {
            var data = new TheoryData<string, string, string, bool>();
            foreach (var isHere in new[] { true, false })
            {
                foreach (var path in new[] { Item, Copy })
                {
                    data.Add("use-this-version", "Settle.Checked", path, isHere);
                    data.Add("discard-this-version", "Settle.Checked", path, isHere);
                }
                data.Add("use-this-version", "Settle.Placed", Copy, isHere);
            }
            data.Add("use-this-version", "Copy.Opened", Copy, true);
            data.Add("use-this-version", "Copy.Read", Copy, true);
            data.Add("use-this-version", "Copy.Read", Item, true);
            data.Add("use-this-version", "Copy.Read", Item, false);
            data.Add("use-this-version", "Put.BetweenSides", Item, false);
            data.Add("discard-this-version", "Remove.Checked", Copy, true);
            return data;
        }
    }

    [Theory]
    [MemberData(nameof(Edits))]
    public void AnEditWhileAConflictIsSettledIsKeptAndReported(string command, string step, string path, bool isHere)
    {
        using (var edit = StepAction.At(step, "", _ => Edit(path, isHere)))
        {
            Assert.False(Run(command).IsSuccess);
            Assert.True(edit.WasReached);
        }
        Assert.True(_drive.Sync("").IsSuccess);

        var contents = _drive.FilesInWorkspace().Select(name => File.ReadAllText(_drive.InWorkspace(name))).ToList();
        Assert.Contains(Edited, contents);
        Assert.True(contents.Contains("mine") || path == Copy);
        RequireInSync();
    }

    [Theory]
    [InlineData(Item, "use-this-version", false)]
    [InlineData(Copy, "use-this-version", false)]
    [InlineData(Item, "discard-this-version", true)]
    [InlineData(Copy, "discard-this-version", false)]
    public void ALockedVersionIsNeitherReplacedNorDeleted(string locked, string command, bool isAllowed)
    {
        Assert.True(_home.Service.ExecuteCommand(new Command { Id = "lock" }, Context(locked)).IsSuccess);

        Assert.Equal(isAllowed, Run(command).IsSuccess);

        if (!isAllowed)
        {
            Assert.Contains("unlock it first", ErrorOfCopy());
            RequireOnBothSides((Copy, "mine"), (Item, "theirs"));
        }
    }

    [Theory]
    [InlineData("writable", false, true)]
    [InlineData("offline", true, false)]
    public void ADriveThatTakesNoChangesOnlyForgetsAConflict(string member, bool value, bool forgets)
    {
        var context = Context(Copy);
        _home.Configure(_drive, member, value);

        foreach (var command in new[] { "use-this-version", "discard-this-version" })
            Assert.False(_home.Service.ExecuteCommand(new Command { Id = command }, context).IsSuccess);
        Assert.Equal(forgets, _home.Service.ExecuteCommand(new Command { Id = "keep-both-versions" }, context).IsSuccess);

        RequireOnBothSides((Copy, "mine"), (Item, "theirs"));
    }

    private CommandContext Context(string path) => new(IntPtr.Zero, _drive.Item(path).Id, []);

    private CommandResult Run(string command) => _home.Service.ExecuteCommand(new Command { Id = command }, Context(Copy));

    private List<string> Commands(string path) => _home.Service.GetCommands(Context(path)).Select(command => command.Id).ToList();

    private string? ErrorOfCopy() => (string?)_home.Service.GetProperties([_drive.Item(Copy).Id], ["SyncError"]).Values.SingleOrDefault()?.Value;

    private string PathOf(string path, bool isHere) => isHere ? _drive.InWorkspace(path) : _drive.OnServer(path);

    private string Read(string path, bool isHere) => File.ReadAllText(PathOf(path, isHere));

    // Edits in place, which is possible on every system while another program reads the file.
    private void Edit(string path, bool isHere)
    {
        using var file = new FileStream(PathOf(path, isHere), FileMode.Open, FileAccess.Write, FileShare.ReadWrite | FileShare.Delete);
        file.Write(System.Text.Encoding.ASCII.GetBytes(Edited));
    }

    private void RequireOnBothSides(params (string Path, string Content)[] files)
    {
        foreach (var (isHere, found) in new[] { (true, _drive.FilesInWorkspace()), (false, _drive.FilesOnServer()) })
            Assert.Equal(files, found.Select(path => (path, Read(path, isHere))));
        Assert.False(Directory.Exists(_drive.InWorkspace(".tessaport")) || Directory.Exists(_drive.OnServer(".tessaport")));
    }

    private void RequireInSync()
    {
        var result = _drive.Sync("");
        Assert.True(result.IsSuccess);
        Assert.Empty(result.ItemsCreated);
        Assert.Equal(_drive.FilesInWorkspace(), _drive.FilesOnServer());
        Assert.All(_drive.FilesInWorkspace(), path => Assert.Equal(Read(path, true), Read(path, false)));
    }
}
