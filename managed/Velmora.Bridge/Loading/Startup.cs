using System.Reflection;

namespace Velmora.Bridge.Loading;

/// <summary>What the native side calls first, again until it has succeeded.</summary>
public static unsafe class Startup
{
    /// <summary>
    /// Fills in the table and binds the sync application's assembly.
    /// </summary>
    /// <returns>
    /// 0, with four strings in the reply: the runtime's name and version, the bridge's version, the path of the bound
    /// assembly and its version. Otherwise the row of the failure, with its message in the reply.
    /// </returns>
    [UnmanagedCallersOnly]
    internal static int Start(TessaportEntryPoints* table, NativeString* apiFolder, Reply* reply)
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
        if (!table->FitsThisBridge)
        {
            throw new LoadingException(
                $"The native library expects version {table->Version} of the bridge ({table->RequestCount} requests, {table->Size} and {table->ArgumentsSize} bytes), but '{typeof(Startup).Assembly.Location}' offers version {TessaportEntryPoints.CurrentVersion} ({(uint)RequestNumber.Count} requests, {sizeof(TessaportEntryPoints)} and {sizeof(RequestArguments)} bytes). Install the library and its bridge folder from one release.");
        }
    }

    private static void Describe(Reply* reply)
    {
        using var writer = new ReplyWriter();
        writer.WriteString(RuntimeInformation.FrameworkDescription);
        writer.WriteString(VersionOf(typeof(Startup).Assembly));
        writer.WriteString(ApiAssembly.Bound!.Location);
        writer.WriteString(VersionOf(ApiAssembly.Bound));
        writer.MoveTo(reply, 4);
    }

    private static string VersionOf(Assembly assembly) => assembly.GetName().Version?.ToString() ?? "";
}
