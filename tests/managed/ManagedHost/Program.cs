using System.Runtime.InteropServices;
using System.Runtime.Loader;

namespace Velmora.ManagedHost;

/// <summary>
/// ManagedHost PLUGIN API_FOLDER [ASSEMBLY]: loads the assembly into the default context, as programs do with what they
/// refer to, then connects through the plugin, which writes what came of it.
/// </summary>
internal static unsafe class Program
{
    private static int Main(string[] arguments)
    {
        if (arguments.Length == 3)
            AssemblyLoadContext.Default.LoadFromAssemblyPath(arguments[2]);
        nint plugin = NativeLibrary.Load(arguments[0]);
        var reportConnection = (delegate* unmanaged<nint, int>)NativeLibrary.GetExport(plugin, "reportConnection");
        return reportConnection(Marshal.StringToCoTaskMemUTF8(arguments[1]));
    }
}
