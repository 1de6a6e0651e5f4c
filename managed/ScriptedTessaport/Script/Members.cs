namespace Quorvex.Tessaport.API.Scripted;

/// <summary>All members, with their answers before a script sets others: one drive, with nothing in it.</summary>
internal static class Members
{
    public static readonly Member<bool> Construct = new("TessaportService", _ => true, () => true);
    public static readonly Member<bool> Discover = new("Discover", _ => true, () => true);
    public static readonly Member<string?> GetVersion = new("GetVersion", Strings.Read, () => "3.1.4");
    public static readonly Member<IEnumerable<Drive?>?> GetDrives =
        new("GetDrives", ListOf(RecordReader.Drive, Generated.Drive), () => new List<Drive> { FirstDrive() });
    public static readonly Member<IEnumerable<Item?>?> GetChildFolders = Items("GetChildFolders");
    public static readonly Member<IEnumerable<Item?>?> GetFolderContents = Items("GetFolderContents");
    public static readonly Member<CommandResult?> AddFiles = Outcome("AddFiles");
    public static readonly Member<Item?> GetOrCreateFolder =
        new("GetOrCreateFolder", RecordReader.Item, () => Generated.Item(1));
    public static readonly Member<bool> CanAddFiles = new("CanAddFiles", RecordReader.Bool, () => true);
    public static readonly Member<Func<List<string>, Dictionary<string, bool>?>> AreFilesInWorkspace =
        new("AreFilesInWorkspace", FlagsOfPaths, () => _ => new Dictionary<string, bool>());
    public static readonly Member<CommandResult?> SyncFiles = Outcome("SyncFiles");
    public static readonly Member<CommandResult?> DeleteItems = Outcome("DeleteItems");
    public static readonly Member<IEnumerable<WorkspacePathToItemResult?>?> GetItemsByWorkspacePaths = List(
        "GetItemsByWorkspacePaths", RecordReader.WorkspacePathToItemResult, Generated.WorkspacePathToItemResult);
    public static readonly Member<IEnumerable<Item?>?> GetItemsByRelativePaths = Items("GetItemsByRelativePaths");
    public static readonly Member<bool> FileClosedWithinRunningProcess =
        new("FileClosedWithinRunningProcess", _ => true, () => true);
    public static readonly Member<IEnumerable<PropertyDefinition?>?> GetPropertyDefinitions =
        List("GetPropertyDefinitions", RecordReader.PropertyDefinition, Generated.PropertyDefinition);
    public static readonly Member<PropertyValues?> GetProperties = new(
        "GetProperties", RecordReader.PropertyValues, () => new PropertyValues { Values = new List<PropertyValue>() });
    public static readonly Member<IEnumerable<Command?>?> GetCommands =
        List("GetCommands", RecordReader.Command, Generated.Command);
    public static readonly Member<CommandResult?> ExecuteCommand = Outcome("ExecuteCommand");
    public static readonly Member<IEnumerable<ItemIdToPermanentIdResult?>?> GetPermanentIds =
        List("GetPermanentIds", RecordReader.ItemIdToPermanentIdResult, Generated.ItemIdToPermanentIdResult);
    public static readonly Member<IEnumerable<PermanentIdToItemResult?>?> GetItemsByPermanentIds =
        List("GetItemsByPermanentIds", RecordReader.PermanentIdToItemResult, Generated.PermanentIdToItemResult);

    private static Func<JsonElement, IEnumerable<T?>?> ListOf<T>(Func<JsonElement, T?> read, Func<int, T> generate) where T : class =>
        json => ListReader.Read(json, read, generate);

    private static Member<IEnumerable<T?>?> List<T>(string name, Func<JsonElement, T?> read, Func<int, T> generate) where T : class =>
        new(name, ListOf(read, generate), () => new List<T?>());

    private static Member<IEnumerable<Item?>?> Items(string name) => List(name, RecordReader.Item, Generated.Item);

    private static Member<CommandResult?> Outcome(string name) =>
        new(name, RecordReader.CommandResult, () => new CommandResult { IsSuccess = true });

    private static Drive FirstDrive()
    {
        Drive drive = Generated.Drive(1);
        drive.Root.Id = ItemId.Named(drive.WorkspaceLocation);
        return drive;
    }

    // A flag for all paths that are asked for, or flags by path.
    private static Func<List<string>, Dictionary<string, bool>?> FlagsOfPaths(JsonElement json)
    {
        if (json.ValueKind is JsonValueKind.True or JsonValueKind.False)
        {
            bool flag = json.GetBoolean();
            return paths => paths.ToDictionary(path => path, _ => flag);
        }
        Dictionary<string, bool>? flags = FlagsByPath(json);
        return _ => flags;
    }

    // {"flags": [[path, flag], …], "ignoreCase": true}
    private static Dictionary<string, bool>? FlagsByPath(JsonElement json)
    {
        if (json.ValueKind == JsonValueKind.Null)
            return null;
        bool ignoreCase = json.TryGetProperty("ignoreCase", out JsonElement flag) && flag.GetBoolean();
        return json.GetProperty("flags").EnumerateArray().ToDictionary(
            pair => Strings.Required(pair[0]), pair => pair[1].GetBoolean(),
            ignoreCase ? StringComparer.OrdinalIgnoreCase : StringComparer.Ordinal);
    }
}
