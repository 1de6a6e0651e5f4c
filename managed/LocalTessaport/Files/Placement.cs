namespace Quorvex.Tessaport.API.Local;

/// <summary>
/// Renames a prepared file to its place and never replaces anything that was not expected there. Anything else that is
/// there stays, or is kept beside it if several programs put something there at once.
/// </summary>
internal sealed class Placement
{
    private const int Attempts = 10;
    private const int MostKept = 1000;

    private readonly OpenFolder _staging;
    private readonly FileEntry _preparedEntry;
    private readonly OpenFolder _folder;
    private readonly string _name;
    private readonly string _relativePath;
    private readonly string _place;
    private string _prepared;

    /// <param name="staging">The folder in which the file was prepared.</param>
    /// <param name="prepared">Its name there.</param>
    /// <param name="preparedEntry">Its properties.</param>
    /// <param name="folder">The folder that it is moved to.</param>
    /// <param name="relativePath">Its new path below the root of the side.</param>
    public Placement(OpenFolder staging, string prepared, FileEntry preparedEntry, OpenFolder folder, string relativePath)
    {
        _staging = staging;
        _prepared = prepared;
        _preparedEntry = preparedEntry;
        _folder = folder;
        _relativePath = relativePath;
        _name = RelativePath.NameOf(relativePath);
        _place = Path.Join(folder.Path, _name);
    }

    /// <summary>The name in the staging folder of the file, or of what was in its place.</summary>
    public string Prepared => _prepared;

    /// <summary>Puts the file in the place of the expected version, or where nothing is, and returns the entry there.</summary>
    /// <exception cref="ChangedException">Something else is there. Nothing was changed.</exception>
    public FileEntry Put(FileEntry? expected)
    {
        if (expected is { } earlier)
            Replace(earlier);
        else
            Move();
        Step.Reached("Commit.Placed", _place);
        // If another program wrote to the file in this moment, it is another version.
        return _folder.Find(_name) is { } placed && placed.IsSameVersion(_preparedEntry)
            ? placed
            : _preparedEntry with { ChangeTime = default };
    }

    /// <summary>Moves the prepared file to its place, or beside it if something is there.</summary>
    public void PutBackOrBeside()
    {
        if (!TryMoveBack(_prepared))
            KeepBeside(_prepared);
    }

    private void Move()
    {
        Step.Reached("Commit.Checked", _place);
        _staging.Move(_prepared, _folder, _name);
    }

    private void Replace(FileEntry expected)
    {
        if (_folder.Find(_name) is not { } found || !found.IsUnchangedSince(expected))
            throw new ChangedException(_place);
        Step.Reached("Commit.Checked", _place);
        using var guard = _folder.Guard(_name, expected);
        var staged = UncheckedName.For(expected, _preparedEntry.Identity);
        _staging.Places.Add(staged, _relativePath);
        Step.Reached("Commit.Guarded", _place);
        try
        {
            if (TryExchange(staged))
                RequireExpectedCameOut(expected, guard);
            else
                ReplaceThroughGap(expected, guard, staged.Text + Recovery.AsideSuffix);
        }
        catch (ChangedException)
        {
            _staging.Places.Settle();
            throw;
        }
        _staging.Places.Settle();
    }

    // What comes out of the place has the name from the first moment.
    private bool TryExchange(UncheckedName staged)
    {
        if (_staging.CannotExchange)
            return false;
        var prepared = _prepared;
        Rename(staged.Text);
        if (_staging.TryExchange(_prepared, _folder, _name))
            return true;
        _staging.CannotExchange = true;
        Rename(prepared);
        return false;
    }

    private void Rename(string name)
    {
        _staging.Move(_prepared, _staging, name);
        _prepared = name;
    }

    private void RequireExpectedCameOut(FileEntry expected, WriteGuard guard)
    {
        Step.Reached("Commit.Exchanged", _place);
        if (_staging.Find(_prepared) is { } cameOut && cameOut.IsSameVersion(expected) && guard.Holds)
            return;
        PutBack();
        throw new ChangedException(_place);
    }

    private void PutBack()
    {
        for (var attempt = 1; attempt <= Attempts; ++attempt)
        {
            if (TryPutBack())
                return;
        }
        KeepBeside(_prepared);
    }

    // What was taken out of the place goes back there; anything that was put there meanwhile is kept beside it.
    private bool TryPutBack()
    {
        try
        {
            _staging.TryExchange(_prepared, _folder, _name);
            if (_staging.Find(_prepared) is { } cameOut && !cameOut.IsSameVersion(_preparedEntry))
                KeepBeside(_prepared);
            return true;
        }
        catch (ChangedException)
        {
            // The prepared file was removed from the place, which is free now.
            return TryMoveBack(_prepared);
        }
    }

    // For file systems that cannot exchange: the place is empty for a moment.
    private void ReplaceThroughGap(FileEntry expected, WriteGuard guard, string aside)
    {
        _folder.Move(_name, _staging, aside);
        Step.Reached("Commit.SetAside", _place);
        try
        {
            if (_staging.Find(aside) is not { } cameOut || !cameOut.IsSameVersion(expected) || !guard.Holds)
                throw new ChangedException(_place);
            _staging.Move(_prepared, _folder, _name);
        }
        catch
        {
            if (!TryMoveBack(aside))
                KeepBeside(aside);
            throw;
        }
        _staging.TryDelete(aside);
    }

    private bool TryMoveBack(string staged)
    {
        try
        {
            _staging.Move(staged, _folder, _name);
            return true;
        }
        catch (ChangedException)
        {
            return false;
        }
    }

    private void KeepBeside(string staged)
    {
        for (var number = 1; ; ++number)
        {
            try
            {
                _staging.Move(staged, _folder, NameRules.WithNote(_name, $" (kept {number})"));
                return;
            }
            catch (ChangedException) when (number < MostKept)
            {
            }
        }
    }
}
