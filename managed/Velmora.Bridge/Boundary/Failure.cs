using Velmora.Bridge.Loading;

namespace Velmora.Bridge.Boundary;

/// <summary>
/// Turns an exception into the number of the first row that fits it, with its message in the reply. The rows are those
/// of velmora/bridge/ExceptionTranslation.cpp.
/// </summary>
internal static unsafe class Failure
{
    private const int OtherRow = 6;

    /// <summary>Reports an exception. Throws nothing: an exception that leaves an entry point ends the process.</summary>
    /// <remarks>This class has no static fields, because a static constructor that fails once fails every later call.</remarks>
    public static int Report(Exception e, Reply* reply)
    {
        try
        {
            ReplyWriter.WriteMessage(MessageOf(e), reply);
        }
        catch (Exception)
        {
            // Without memory for the message the failure is still reported, with an empty one.
        }
        try
        {
            return RowOf(e);
        }
        catch (Exception)
        {
            return OtherRow;
        }
    }

    private static string MessageOf(Exception e)
    {
        string message = "";
        try
        {
            message = e.Message ?? "";
            message = MissingMember.Explain(e) ?? FileLimit.Explain(e) ?? message;
        }
        catch (Exception)
        {
            // An explanation may need more assemblies, and loading them fails for the reason to be explained.
        }
        return message;
    }

    private static int RowOf(Exception e)
    {
        // Before an assembly is bound no exception is one of its own, and asking would only look for it once more.
        if (ApiAssembly.Bound == null)
            return OtherRow;
        for (int row = 1; row < OtherRow; ++row)
        {
            if (Fits(row, e))
                return row;
        }
        return OtherRow;
    }

    // A type that the sync application lacks skips only its own row, because each is named in a method of its own.
    private static bool Fits(int row, Exception e)
    {
        try
        {
            return row switch
            {
                1 => IsApiRequiresUpdate(e),
                2 => IsForcedUpdate(e),
                3 => IsNotRunning(e),
                4 => IsNotInstalled(e),
                _ => IsRequiresUpdate(e),
            };
        }
        catch (Exception)
        {
            return false;
        }
    }

    [MethodImpl(MethodImplOptions.NoInlining)]
    private static bool IsApiRequiresUpdate(Exception e) => e is TessaportApiRequiresUpdateException;

    [MethodImpl(MethodImplOptions.NoInlining)]
    private static bool IsForcedUpdate(Exception e) => e is TessaportForcedUpdateException;

    [MethodImpl(MethodImplOptions.NoInlining)]
    private static bool IsNotRunning(Exception e) => e is TessaportNotRunningException;

    [MethodImpl(MethodImplOptions.NoInlining)]
    private static bool IsNotInstalled(Exception e) => e is TessaportNotInstalledException;

    [MethodImpl(MethodImplOptions.NoInlining)]
    private static bool IsRequiresUpdate(Exception e) => e is TessaportRequiresUpdateException;
}
