using System;
using System.Diagnostics.CodeAnalysis;
using System.Runtime.CompilerServices;

namespace Quorvex.Tessaport.API.Scripted;

internal static class RuntimeSwitches
{
    // Before anything calls by reflection: the runtime then makes no code of its own for that, which it cannot free
    // again under Wine.
    [ModuleInitializer]
    [SuppressMessage("Usage", "CA2255", Justification = "Nothing of this assembly runs before its service is made.")]
    internal static void Set()
    {
        AppContext.SetSwitch("System.Runtime.CompilerServices.RuntimeFeature.IsDynamicCodeSupported", false);
        AppContext.SetSwitch("Switch.System.Reflection.ForceInterpretedInvoke", true);
    }
}
