using System.Text;
using Quorvex.Tessaport.API.Local;

namespace Quorvex.Tessaport.API.Model;

/// <summary>A state that a power failure left, as folders on the disk, and what the service makes of it.</summary>
internal sealed class Recovery
{
    private readonly ToolScenario _scenario;
    private readonly List<CrashedItem> _image;
    private readonly string _home;

    public Recovery(ToolScenario scenario, List<CrashedItem> image, string home)
    {
        _scenario = scenario;
        _image = image;
        _home = home;
    }

    public string Describe() => string.Join('\n', _image.Where(item => !item.Node.IsFolder).Select(
        item => $"  {item.Path} {(item.IsComplete ? "" : "(not complete) ")}= {Shown(item.Content)}"));

    /// <param name="owed">The versions that must be there in the end.</param>
    /// <param name="isDone">Whether the command had said that it is done.</param>
    public void Require(IReadOnlySet<int> owed, bool isDone)
    {
        var ofUsers = _image.Where(item => !item.Node.IsFolder && Aftermath.IsOfUsers(item.Path)).ToList();
        var halfWritten = ofUsers.FirstOrDefault(item => !item.IsComplete && !item.Node.IsUnflushedByUser);
        if (halfWritten is not null)
            throw new BrokenPromiseException($"'{halfWritten.Path}' is not complete.");
        var present = ofUsers.Select(item => Aftermath.VersionIn(item.Content)).OfType<int>().ToHashSet();
        // What a user did not flush is lost with the power, unless the service had copied it already.
        var unflushed = _image.Where(item => item.Node.IsUnflushedByUser).Select(item => Aftermath.VersionIn(item.Node.Content)).OfType<int>().ToHashSet();
        if (!isDone)
            owed = owed.Where(version => !unflushed.Contains(version) || present.Contains(version)).ToHashSet();
        Write();
        // The service puts back what it has not expected in its folders, also if that is what a failure left of a user's file.
        var remains = _image.Where(item => item.Node.IsUnflushedByUser && !item.IsComplete).Select(item => Convert.ToBase64String(item.Content)).ToHashSet();
        Aftermath.Require(_home, owed, remains);
        Directory.Delete(_home, recursive: true);
    }

    private static string Shown(byte[] content)
    {
        var text = Encoding.UTF8.GetString(content).Replace('\0', '0');
        return $"{content.Length} bytes, {(text.Length > 60 ? text[..60] + "..." : text)}";
    }

    private void Write()
    {
        Directory.CreateDirectory(_home);
        foreach (var item in _image)
        {
            var path = Path.Combine(_home, item.Path);
            if (item.Node.IsFolder)
                MakeFolder(path);
            else
                WriteFile(path, item);
        }
    }

    // The service recognizes its own folders by their permissions, with which it makes them.
    private static void MakeFolder(string path)
    {
        if (Path.GetFileName(path) != Staging.FolderName)
        {
            Directory.CreateDirectory(path);
            return;
        }
        using var side = OpenFolder.TryOpenRoot(Path.GetDirectoryName(path)!)!;
        Staging.Open(side).Dispose();
    }

    // Files keep their numbers, by which the service knows them.
    private void WriteFile(string path, CrashedItem item)
    {
        var text = Encoding.UTF8.GetString(item.Content);
        if (text.Contains(_scenario.Home, StringComparison.Ordinal))
            File.WriteAllText(path, text.Replace(_scenario.Home, _home));
        else if (KeptFile(item) is { } kept)
            NativeCalls.HardLink(kept, path);
        else
            WriteNew(path, item);
    }

    private string? KeptFile(CrashedItem item) =>
        _scenario.Kept.TryGetValue(item.Node.Number, out var kept) && File.ReadAllBytes(kept).AsSpan().SequenceEqual(item.Content) ? kept : null;

    private static void WriteNew(string path, CrashedItem item)
    {
        File.WriteAllBytes(path, item.Content);
        if (item.Node.Time is { } time)
            File.SetLastWriteTimeUtc(path, DateTime.UnixEpoch.AddSeconds(time.Seconds).AddTicks(time.Nanoseconds / 100));
    }
}
