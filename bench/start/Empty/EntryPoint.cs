using System.Runtime.InteropServices;

namespace Velmora.Empty;

public static class EntryPoint
{
    [UnmanagedCallersOnly]
    public static void Nothing()
    {
    }
}
