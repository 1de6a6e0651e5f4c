using System;
using System.IO;
using Microsoft.Win32.SafeHandles;

namespace Quorvex.Tessaport.API.Local;

/// <summary>One file in preparation in the staging folder of a side; deleted unless it is committed.</summary>
internal sealed class StagedFile : IDisposable
{
    private readonly FolderLease _staging;
    private readonly string _name = Staging.NewName();
    private readonly string _path;
    private FileEntry _entry;
    private bool _isFlushed;

    public StagedFile(DriveSide side)
    {
        _staging = side.OpenStaging();
        _path = Path.Join(_staging.Folder.Path, _name);
        try
        {
            Handle = _staging.Folder.CreateFile(_name);
        }
        catch
        {
            _staging.Dispose();
            throw;
        }
    }

    public SafeFileHandle Handle { get; }

    /// <summary>Gives the copy the time and permissions of its source.</summary>
    public void Finish(FileEntry source)
    {
        FileHandle.Finish(Handle, _path, source);
        _entry = FileHandle.EntryOf(Handle, _path);
    }

    public void Flush()
    {
        FileHandle.Flush(Handle);
        _isFlushed = true;
        Handle.Dispose();
    }

    public FileEntry Commit(OpenFolder folder, string name, FileEntry? expected)
    {
        if (!_isFlushed)
            throw new InvalidOperationException("A staged copy must be flushed before it takes its place.");
        return new Placement(_staging.Folder, _name, _entry, folder, name).Put(expected);
    }

    public void Dispose()
    {
        Handle.Dispose();
        _staging.Folder.TryDelete(_name);
        _staging.Dispose();
    }
}
