namespace Quorvex.Tessaport.API.Tests;

public sealed class CommandTests : IDisposable
{
    private readonly TestHome _home = new();
    private readonly TestDrive _drive;

    public CommandTests() => _drive = _home.AddDrive(locking: true);

    public void Dispose() => _home.Dispose();

    [Fact]
    public void AMenuHasImagesGroupsAndADefault()
    {
        _drive.PutBoth("a.txt");

        var commands = Commands(Context("a.txt"));

        Assert.Equal(["Sync", "Copy link", "Lock", "Unlock"], commands.Select(command => command.Name));
        Assert.Equal([true, false, false, false], commands.Select(command => command.IsDefaultCommand));
        Assert.Equal([false, true, true, false], commands.Select(command => command.IsBeginningOfGroup));
        Assert.Equal([true, true, true, false], commands.Select(command => command.IsEnabled));
        Assert.All(commands, command => Assert.Equal("PNG"u8.ToArray(), command.Image[1..4]));
    }

    [Fact]
    public void LocksAreOnlyOfferedForFilesOnDrivesThatLock()
    {
        var other = _home.AddDrive();
        _drive.PutBoth("sub/a.txt");
        other.PutBoth("a.txt");

        Assert.Equal(["sync", "copy-link"], Commands(Context("sub")).Select(command => command.Id));
        Assert.Equal(
            ["sync", "copy-link"],
            Commands(new CommandContext(IntPtr.Zero, _drive.Item("sub/a.txt").Id, [other.Item("a.txt").Id])).Select(command => command.Id));
        Assert.Empty(Commands(new CommandContext(IntPtr.Zero, null!, [])));
    }

    [Fact]
    public void ALockedFileIsMarkedAndIsNotDeleted()
    {
        _drive.PutBoth("sub/a.txt");
        _drive.PutBoth("b.txt");

        var result = Run("lock", Context("sub/a.txt"));

        Assert.True(result.IsSuccess);
        Assert.Equal("a.txt", Assert.Single(result.ItemsUpdated).Name);
        var commands = Commands(Context("sub/a.txt")).ToDictionary(command => command.Id);
        Assert.True(commands["lock"] is { IsChecked: true, IsEnabled: false });
        Assert.True(commands["unlock"].IsEnabled);
        Assert.False(Run("lock", Context("sub/a.txt")).IsSuccess);
        Assert.Equal("b.txt", Assert.Single(_home.Service.DeleteItems(
            [_drive.Item("sub/a.txt").Id, _drive.Item("sub").Id, _drive.Item("b.txt").Id]).ItemsDeleted).Name);
        var properties = _home.Service.GetProperties([_drive.Item("sub/a.txt").Id], ["IsLocked", "LockedBy"]).Values;
        Assert.Equal([true, Environment.UserName], properties.Select(property => property.Value));

        Assert.True(Run("unlock", Context("sub/a.txt")).IsSuccess);
        Assert.True(_home.Service.DeleteItems([_drive.Item("sub").Id]).IsSuccess);
    }

    [Fact]
    public void ALockGoesWithAFileThatIsRenamed()
    {
        _drive.PutBoth("a.txt");
        Run("lock", Context("a.txt"));
        File.Move(_drive.InWorkspace("a.txt"), _drive.InWorkspace("b.txt"));
        _drive.Sync("");

        Assert.True(Commands(Context("b.txt")).Single(command => command.Id == "lock").IsChecked);
    }

    [Fact]
    public void SyncSyncsEveryItemOfTheContext()
    {
        _drive.PutInWorkspace("a.txt");
        _drive.PutOnServer("b.txt");

        var result = Run("sync", new CommandContext(IntPtr.Zero, _drive.Item("a.txt").Id, [_drive.Item("b.txt").Id, _drive.Item("a.txt").Id]));

        Assert.True(result.IsSuccess);
        Assert.Equal(_drive.FilesInWorkspace(), _drive.FilesOnServer());
    }

    [Fact]
    public void CopyLinkWritesALinkForEachItem()
    {
        _drive.PutBoth("a.txt");
        _drive.PutBoth("b.txt");

        Assert.True(Run("copy-link", new CommandContext(IntPtr.Zero, _drive.Item("a.txt").Id, [_drive.Item("b.txt").Id])).IsSuccess);

        Assert.Equal(
            ["tessaport://" + _drive.PermanentId("a.txt"), "tessaport://" + _drive.PermanentId("b.txt")],
            File.ReadAllLines(Path.Combine(_home.Root, "clipboard.txt")));
    }

    [Fact]
    public void AnUnknownCommandIsRefusedWithAMessage()
    {
        _drive.PutBoth("a.txt");

        Assert.Contains("'fly'", Assert.Throws<ArgumentException>(() => Run("fly", Context("a.txt"))).Message);
        Assert.False(Run("unlock", Context("a.txt")).IsSuccess);
        Assert.False(Run("sync", new CommandContext(IntPtr.Zero, null!, [])).IsSuccess);
    }

    private CommandContext Context(string path) => new(IntPtr.Zero, _drive.Item(path).Id, []);

    private List<Command> Commands(CommandContext context) => _home.Service.GetCommands(context).ToList();

    private CommandResult Run(string id, CommandContext context) => _home.Service.ExecuteCommand(new Command { Id = id }, context);
}
