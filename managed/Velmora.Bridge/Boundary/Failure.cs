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

    private delegate bool Row(Exception e);

    // A row names its type in a method of its own: a type that the sync application lacks then skips only that row.
    private static readonly Row[] rows = {
        IsApiRequiresUpdate, IsForcedUpdate, IsNotRunning, IsNotInstalled, IsRequiresUpdate,
    };

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
        return RowOf(e);
    }

    private static string MessageOf(Exception e)
    {
        try
        {
            return MissingMember.Explain(e) ?? e.Message ?? "";
        }
        catch (Exception)
        {
            return "";
        }
    }

    private static int RowOf(Exception e)
    {
        // Nothing is an exception of an assembly that is not bound, and asking would look for it once more.
        if (ApiAssembly.Bound == null)
            return OtherRow;
        for (int i = 0; i < rows.Length; ++i)
        {
            if (Fits(rows[i], e))
                return i + 1;
        }
        return OtherRow;
    }

    private static bool Fits(Row row, Exception e)
    {
        try
        {
            return row(e);
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
