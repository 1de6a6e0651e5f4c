using System.IO;
using System.Runtime.InteropServices;
using System.Text;

/// <summary>
/// Lets each call of one name fail once during a sync, as a preloaded library does it, and checks after each that no version is
/// lost and that the next sync brings both sides together. Prints what was wrong, and how many calls failed.
/// </summary>
internal static unsafe class FailingCallCommand
{
    private const int MostCalls = 400;
    private const int EveryCall = -1;
    private const string Flush = "fsync";
    private const string FlushAll = "syncfs";

    // The service flushes the file system instead of each file from so many files on.
    private const int FilesInGroup = 32;

    private static readonly delegate* unmanaged<byte*, byte*, nint, int, nint> FailCall =
        (delegate* unmanaged<byte*, byte*, nint, int, nint>)NativeLibrary.GetExport(NativeLibrary.GetMainProgramHandle(), "failCall");

    public static int Run(string call, int error, string workspace, string server)
    {
        var service = new TessaportService();
        var sides = new[] { workspace, server };
        if (call == Flush)
            RequireReported(service, workspace, server, error);
        for (var number = 1; number <= MostCalls; ++number)
        {
            var expected = Prepare(service, workspace, server, number);
            if (call == FlushAll)
                expected.AddRange(PrepareGroup(workspace, number));
            Arm(call, Path.GetDirectoryName(workspace)!, number, error);
            var result = Sync(service);
            if (Arm("", "", 0, 0) > 0)
            {
                Console.WriteLine($"{number - 1} calls failed");
                return 0;
            }
            var lost = expected.Except(ContentsOf(sides)).ToList();
            if (lost.Count > 0)
                Console.WriteLine($"{call} {number}: lost {string.Join(", ", lost)} ({result})");
            var healed = Sync(service);
            if (healed != "True")
                Console.WriteLine($"{call} {number}: the next sync fails: {healed}");
            if (!FilesOf(workspace).SequenceEqual(FilesOf(server)))
                Console.WriteLine($"{call} {number}: the sides differ ({result})");
            lost = expected.Except(ContentsOf(sides)).ToList();
            if (lost.Count > 0)
                Console.WriteLine($"{call} {number}: lost by the next sync {string.Join(", ", lost)}");
        }
        Console.WriteLine($"more than {MostCalls} calls");
        return 1;
    }

    // A single failure is made up for by the next pass of the same sync.
    private static void RequireReported(TessaportService service, string workspace, string server, int error)
    {
        Prepare(service, workspace, server, 0);
        Arm(Flush, Path.GetDirectoryName(workspace)!, EveryCall, error);
        if (Sync(service) == "True")
            Console.WriteLine("a sync succeeds although nothing can be flushed");
        Arm("", "", 0, 0);
        if (FilesOf(server).Any(file => file.Name == Path.Combine("new", "file")))
            Console.WriteLine("a file that is not flushed takes its place");
    }

    /// <summary>Makes a change of every kind, and returns the contents that must not be lost.</summary>
    private static List<string> Prepare(TessaportService service, string workspace, string server, int round)
    {
        foreach (var side in new[] { workspace, server })
        {
            foreach (var entry in Directory.GetFileSystemEntries(side).Where(path => !path.EndsWith(".tessaport", StringComparison.Ordinal)))
            {
                if (Directory.Exists(entry))
                    Directory.Delete(entry, recursive: true);
                else
                    File.Delete(entry);
            }
        }
        foreach (var name in new[] { "here", "there", "both", "moved", "folder/inner" })
            Write(workspace, name, $"{name} {round}");
        if (Sync(service) != "True")
            throw new InvalidOperationException("The sides cannot be prepared.");
        Write(workspace, "here", $"changed here {round}");
        Write(server, "there", $"changed there, {round}");
        Write(workspace, "both", $"on this side {round}");
        Write(server, "both", $"on the other side {round}");
        Write(workspace, "new/file", $"new here {round}");
        Write(server, "new there", $"new there {round}");
        File.Move(Path.Combine(workspace, "moved"), Path.Combine(workspace, "moved to"));
        return
        [
            $"changed here {round}", $"changed there, {round}", $"on this side {round}", $"on the other side {round}",
            $"new here {round}", $"new there {round}", $"moved {round}", $"folder/inner {round}",
        ];
    }

    private static List<string> PrepareGroup(string workspace, int round)
    {
        var contents = Enumerable.Range(0, FilesInGroup).Select(number => $"{number} of group {round}").ToList();
        contents.ForEach(content => Write(workspace, "group/" + content, content));
        return contents;
    }

    private static void Write(string side, string name, string content)
    {
        var path = Path.Combine(side, name);
        Directory.CreateDirectory(Path.GetDirectoryName(path)!);
        File.WriteAllText(path, content);
    }

    private static string Sync(TessaportService service)
    {
        try
        {
            return service.SyncFiles([service.GetDrives().First().Root.Id]).IsSuccess.ToString();
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException)
        {
            return e.Message;
        }
    }

    private static nint Arm(string call, string folder, int number, int error)
    {
        fixed (byte* name = Encoding.UTF8.GetBytes(call + "\0"), place = Encoding.UTF8.GetBytes(folder + "\0"))
            return FailCall(name, place, number, error);
    }

    private static IEnumerable<string> ContentsOf(string[] sides) => sides.SelectMany(side => FilesOf(side)).Select(file => file.Content);

    private static List<(string Name, string Content)> FilesOf(string side) => Directory
        .EnumerateFiles(side, "*", SearchOption.AllDirectories)
        .Select(path => (Path.GetRelativePath(side, path), File.ReadAllText(path)))
        .Order()
        .ToList();
}
