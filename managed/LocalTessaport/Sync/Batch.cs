using System;
using System.Collections.Generic;

namespace Quorvex.Tessaport.API.Local;

/// <summary>Does one step for each of many things; a failing one does not keep the others from being done.</summary>
internal static class Batch
{
    public static CommandResult Run<T>(Session session, List<T> things, Action<ChangeScope, ChangeReport, T> step)
    {
        var report = new ChangeReport();
        using (var scope = new ChangeScope(session.Home))
        {
            foreach (var thing in things)
                report.Attempt(() => step(scope, report, thing));
            report.Attempt(scope.Save);
        }
        return report.ToResult();
    }
}
