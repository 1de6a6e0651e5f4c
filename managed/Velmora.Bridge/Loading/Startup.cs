using System;
using System.Reflection;
using System.Runtime.InteropServices;
using Velmora.Bridge.Boundary;
using Velmora.Bridge.Replies;

namespace Velmora.Bridge.Loading;

/// <summary>The first function that the native side calls, again until it has succeeded.</summary>
public static unsafe class Startup
{
    /// <summary>
    /// Fills the table in and binds the sync application's assembly. Returns 0, with four texts in the reply: the
    /// runtime's name and version, the bridge's version, the path of the bound assembly and its version. Otherwise the
    /// message stands in the reply.
    /// </summary>
    [UnmanagedCallersOnly]
    internal static int Start(TessaportEntryPoints* table, NativeText* apiFolder, Reply* reply)
    {
        try
        {
            CheckTable(table);
            // First, so that the native side can give the reply back, whatever is in it.
            EntryPoints.FillIn(table);
            ApiAssembly.Bind(apiFolder->ToString());
            Describe(reply);
            return 0;
        }
        catch (Exception e)
        {
            return Failure.Report(e, reply);
        }
    }

    private static void CheckTable(TessaportEntryPoints* table)
    {
        if (table->Version != TessaportEntryPoints.CurrentVersion || table->Size != sizeof(TessaportEntryPoints))
        {
            throw new LoadingException(
                $"The native library expects version {table->Version} ({table->Size} bytes) of the bridge, but '{typeof(Startup).Assembly.Location}' offers version {TessaportEntryPoints.CurrentVersion} ({sizeof(TessaportEntryPoints)} bytes). Install the library and its bridge folder from one release.");
        }
    }

    private static void Describe(Reply* reply)
    {
        using var writer = new ReplyWriter();
        writer.WriteText(RuntimeInformation.FrameworkDescription);
        writer.WriteText(VersionOf(typeof(Startup).Assembly));
        writer.WriteText(ApiAssembly.Bound!.Location);
        writer.WriteText(VersionOf(ApiAssembly.Bound));
        writer.MoveTo(reply, 4);
    }

    private static string VersionOf(Assembly assembly) => assembly.GetName().Version?.ToString() ?? "";
}
