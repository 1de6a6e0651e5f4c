namespace Quorvex.Tessaport.API.Local;

/// <summary>A drive as configured.</summary>
internal sealed class LocalDrive : IDisposable
{
    public required Guid Id { get; init; }
    public required string Name { get; init; }
    public required string Type { get; init; }
    public required DriveSide Workspace { get; init; }
    public required DriveSide Server { get; init; }
    public bool Locking { get; init; }
    public bool Writable { get; init; } = true;
    public bool Offline { get; init; }

    /// <summary>What is left out; null for nothing.</summary>
    public IgnoreRules? Ignored { get; init; }

    public bool AcceptsChanges => Writable && !Offline;

    public string WorkspaceLocation => _workspaceLocation ??= PathForm.ToBackslashes(Workspace.Root);

    private string? _workspaceLocation;
    private string? _workspacePrefix;

    public string WorkspacePathOf(string relative) =>
        relative.Length == 0
            ? WorkspaceLocation
            : (_workspacePrefix ??= PathForm.ToBackslashes(Workspace.Prefix)) + relative;

    public void RequireOnline()
    {
        if (Offline)
            throw new IOException($"The drive '{Name}' is offline; try again when its server can be reached.");
    }

    public void RequireWritable()
    {
        RequireOnline();
        if (!Writable)
            throw new UnauthorizedAccessException($"The drive '{Name}' is read-only.");
    }

    /// <summary>
    /// The same drive, with the roots of both sides kept open until it is disposed, for requests with many accesses.
    /// </summary>
    public LocalDrive Opened() => new()
    {
        Id = Id,
        Name = Name,
        Type = Type,
        Workspace = Workspace.Opened(),
        Server = Server.Opened(),
        Locking = Locking,
        Writable = Writable,
        Offline = Offline,
        Ignored = Ignored,
    };

    public void Dispose()
    {
        Workspace.Dispose();
        Server.Dispose();
    }

    public void MakeFolders()
    {
        Directory.CreateDirectory(Workspace.Root);
        Directory.CreateDirectory(Server.Root);
    }

    /// <summary>
    /// Makes sure that a drive that was used before still has its folders. A disk that is not mounted must not be taken for an
    /// empty one: what would be put in its place is out of sight once it is back.
    /// </summary>
    /// <exception cref="IOException">One of them is missing.</exception>
    public void RequireFolders()
    {
        var missing = !Workspace.Exists() ? Workspace : !Offline && !Server.Exists() ? Server : null;
        if (missing is not null)
            throw new DirectoryNotFoundException(
                $"'{missing.Root}', a folder of the drive '{Name}', is missing. Mount or restore it; create it only to begin with an empty one.");
    }
}
