namespace Quorvex.Tessaport.API.Local;

/// <summary>Names one of the two sides of a drive, for code that does the same on both.</summary>
internal enum SideName
{
    Workspace,
    Server,
}

internal static class SideNames
{
    public static readonly SideName[] Both = [SideName.Workspace, SideName.Server];

    public static SideName Opposite(this SideName side) => side == SideName.Workspace ? SideName.Server : SideName.Workspace;

    public static DriveSide Side(this LocalDrive drive, SideName side) => side == SideName.Workspace ? drive.Workspace : drive.Server;

    public static FileEntry? On(this ItemView view, SideName side) => side == SideName.Workspace ? view.Workspace : view.Server;
}
