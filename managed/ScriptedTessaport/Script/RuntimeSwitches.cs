using System.Diagnostics.CodeAnalysis;
using System.Runtime.CompilerServices;

namespace Quorvex.Tessaport.API.Scripted;

internal static class RuntimeSwitches
{
    // Set before the first call by reflection, so that the runtime generates no code for it, which it cannot free under
    // Wine.
    [ModuleInitializer]
    [SuppressMessage("Usage", "CA2255", Justification = "Nothing of this assembly runs before its service is made.")]
    internal static void Set()
    {
        AppContext.SetSwitch("System.Runtime.CompilerServices.RuntimeFeature.IsDynamicCodeSupported", false);
        AppContext.SetSwitch("Switch.System.Reflection.ForceInterpretedInvoke", true);
    }
}
