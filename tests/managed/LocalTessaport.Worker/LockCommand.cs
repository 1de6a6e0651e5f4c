/// <summary>Tries to take the lock of the home.</summary>
internal static class LockCommand
{
    public static int Run()
    {
        using var held = HomeLock.TryAcquire(HomeFolder.Locate());
        Console.WriteLine(held is null ? "held" : "taken");
        Console.In.ReadToEnd();
        return 0;
    }
}
