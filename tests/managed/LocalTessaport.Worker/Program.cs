// Usage: LocalTessaport.Worker add <folder of sources> | add-once <folder of sources> | sync | sync-once | sync-only | delete |
// list <path> | find <path> | pending | settle | lock | fail <requests>
// fail-call <call> <error number> <workspace> <server>
// Works on the first drive of the home that TESSAPORT_HOME names; add, sync and sync-only go on until the process is ended.
// lock prints whether the home's lock was "taken" or is "held" by another, and holds it until its input ends.
// fail prints how many requests failed.
if (args[0] == "lock")
    return LockCommand.Run();
if (args[0] == "fail")
    return FailCommand.Run(int.Parse(args[1]));
// fail-call lets calls of the system fail.
Accidents.LackIfAsked();
if (args[0] == "fail-call")
    return FailingCallCommand.Run(args[1], int.Parse(args[2]), args[3], args[4]);
// list and find print what went wrong.
Privileges.DropIfAsked();
Accidents.HappenIfAsked();
var service = new TessaportService();
var root = service.GetDrives().First().Root;
Console.WriteLine("ready");
switch (args[0])
{
    case "add":
        while (true)
            service.AddFiles(root.Id, Directory.GetFiles(args[1]).ToList());
    case "add-once":
        return service.AddFiles(root.Id, Directory.GetFiles(args[1]).ToList()).IsSuccess ? 0 : 1;
    case "sync":
        while (true)
        {
            service.SyncFiles([root.Id]);
            foreach (var item in service.GetFolderContents(root.Id).Where(item => item.IsInWorkspace && !item.IsFolder))
                File.SetLastWriteTimeUtc(item.WorkspacePath.Replace('\\', Path.DirectorySeparatorChar), DateTime.UtcNow);
        }
    case "sync-once":
        return service.SyncFiles([root.Id]).IsSuccess ? 0 : 1;
    case "list":
        return LookCommand.Run(() => service.GetFolderContents(service.GetItemsByRelativePaths(root.DriveId, [args[1]]).Single().Id));
    case "find":
        return LookCommand.Run(() => service.GetItemsByRelativePaths(root.DriveId, [args[1]]));
    case "pending":
        Console.WriteLine(service.GetProperties([root.Id], ["Pending"]).Values.Single().Value);
        return 0;
    case "settle":
        foreach (var item in service.GetFolderContents(root.Id).Where(item => service.GetProperties([item.Id], ["ConflictOf"]).Values.Any()))
            service.ExecuteCommand(new Command { Id = "use-this-version" }, new CommandContext(IntPtr.Zero, item.Id, []));
        return 0;
    case "sync-only":
        while (true)
            service.SyncFiles([root.Id]);
    case "delete":
        foreach (var item in service.GetFolderContents(root.Id))
            service.DeleteItems([item.Id]);
        return 0;
    default:
        return 2;
}
