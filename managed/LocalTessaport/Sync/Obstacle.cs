namespace Quorvex.Tessaport.API.Local;

/// <summary>The error for a link or a device in the way.</summary>
internal static class Obstacle
{
    public static IOException At(DriveSide side, string path) => new(
        $"'{side.PathOf(path)}' is a link or a device, which is left alone; remove or rename it so that the item can be put there.");
}
