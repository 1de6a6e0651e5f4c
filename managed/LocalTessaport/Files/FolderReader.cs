using System;
using System.Collections.Generic;
using System.IO;
using System.IO.Enumeration;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Reads one folder of one side.</summary>
internal static class FolderReader
{
    private static readonly EnumerationOptions Everything = new()
    {
        AttributesToSkip = 0,
        IgnoreInaccessible = false,
        RecurseSubdirectories = false,
        ReturnSpecialDirectories = false,
    };

    /// <summary>The files and folders directly in a folder, by name, in no order; none when there is no such folder.</summary>
    public static List<KeyValuePair<string, FileEntry>> Read(string folder)
    {
        var found = new List<KeyValuePair<string, FileEntry>>();
        try
        {
            if (UnixStatus.IsSupported)
                ReadNamesThenStatus(folder, found);
            else
                ReadEntries(folder, found);
        }
        catch (DirectoryNotFoundException)
        {
            found.Clear();
        }
        catch (IOException) when (!Directory.Exists(folder))
        {
            found.Clear();
        }
        return found;
    }

    private static void ReadNamesThenStatus(string folder, List<KeyValuePair<string, FileEntry>> found)
    {
        var names = new FileSystemEnumerable<string>(folder, (ref FileSystemEntry e) => e.FileName.ToString(), Everything)
        {
            ShouldIncludePredicate = (ref FileSystemEntry e) => NameRules.CanBeListed(e.FileName),
        };
        foreach (var name in names)
        {
            if (UnixStatus.Read(folder + '/' + name, followLinks: false) is { } entry)
                found.Add(new(name, entry));
        }
    }

    private static void ReadEntries(string folder, List<KeyValuePair<string, FileEntry>> found)
    {
        found.AddRange(new FileSystemEnumerable<KeyValuePair<string, FileEntry>>(folder, MakeEntry, Everything)
        {
            ShouldIncludePredicate = (ref FileSystemEntry e) => NameRules.CanBeListed(e.FileName) && !IsLink(ref e),
        });
    }

    private static KeyValuePair<string, FileEntry> MakeEntry(ref FileSystemEntry e) => new(
        e.FileName.ToString(),
        new FileEntry(e.IsDirectory, e.IsDirectory ? 0 : e.Length, e.LastWriteTimeUtc.UtcDateTime, FileIdentity.None));

    // On Windows the attribute also marks files that are kept compressed or fetched on demand; those are ordinary files here.
    private static bool IsLink(ref FileSystemEntry e) =>
        (e.Attributes & FileAttributes.ReparsePoint) != 0 && e.ToFileSystemInfo().LinkTarget is not null;
}
