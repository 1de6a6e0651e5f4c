namespace Quorvex.Tessaport.API.Local;

/// <summary>Says of a copy that was kept in a conflict which file beside it is the other version.</summary>
/// <param name="Name">The name of that file. Only the name, so that the mark still holds after the folder was moved.</param>
/// <param name="From">The side from which the copy is; null if it is not known.</param>
internal sealed record ConflictMark(string Name, SideName? From)
{
    /// <summary>The path of the other version of the copy at a path.</summary>
    public string OtherOf(string copy) => RelativePath.Join(RelativePath.FolderOf(copy), Name);
}
