using System;
using System.Runtime.CompilerServices;
using Quorvex.Tessaport.API;
using Velmora.Bridge.Loading;
using Velmora.Bridge.Replies;

namespace Velmora.Bridge.Boundary;

/// <summary>
/// Turns an exception into the number of the first row that fits it, with its message in the reply. The rows are those
/// of velmora/bridge/ExceptionTranslation.cpp.
/// </summary>
internal static unsafe class Failure
{
    private const int OtherRow = 6;

    /// <summary>Throws nothing, whatever fails in it: its callers are entry points, and what leaves those ends the process.</summary>
    /// <remarks>This class has no static fields for the same reason: a failed static constructor fails every later call.</remarks>
    public static int Report(Exception e, Reply* reply)
    {
        try
        {
            ReplyWriter.WriteMessage(MessageOf(e), reply);
        }
        catch (Exception)
        {
            // Without memory for the message the failure still goes through, without a text.
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
            // Explaining loads further assemblies, which fails for the reason that it should explain.
        }
        return message;
    }

    private static int RowOf(Exception e)
    {
        // Nothing is an exception of an assembly that is not bound, and asking would look for it once more.
        if (ApiAssembly.Bound == null)
            return OtherRow;
        for (int row = 1; row < OtherRow; ++row)
        {
            if (Fits(row, e))
                return row;
        }
        return OtherRow;
    }

    // A row names its type in a method of its own: a type that the sync application lacks then skips only that row.
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
