using System.Reflection;
using System.Runtime.Loader;

namespace Velmora.Bridge.Loading;

/// <summary>
/// Binds the sync application's assembly from the folder that the host names, and from nowhere else. All checks that need
/// no loading come first, because a loaded assembly cannot be replaced in this process.
/// </summary>
internal static class ApiAssembly
{
    private const string Name = "Quorvex.Tessaport.API";
    private const string Remedy = "Set RuntimeOptions::apiFolder to the folder of the sync application that holds it.";
    public const string FileName = Name + ".dll";

    // There is no static constructor here, because no start could succeed after it had failed once.
    private static DependencyFolder? _dependencies;

    /// <summary>The assembly in use; null before one is bound.</summary>
    public static Assembly? Bound { get; private set; }

    /// <exception cref="LoadingException">The assembly cannot be used; the message says why and what to do.</exception>
    public static void Bind(string folder)
    {
        string path = Path.Combine(Path.GetFullPath(folder), FileName);
        AssemblyLoadContext context = BridgeContext();
        CheckFile(folder, path);
        CheckNoOther(AssemblyLoadContext.Default, path);
        CheckNoOther(context, path);
        if (_dependencies == null)
        {
            context.Resolving += Resolve;
            context.ResolvingUnmanagedDll += (_, name) => _dependencies!.LoadLibrary(name);
        }
        _dependencies = new DependencyFolder(context, path);
        CheckName(context, path);
        Assembly assembly = BindReference(path);
        if (!SamePath(assembly.Location, path))
        {
            throw new LoadingException(
                $"'{assembly.Location}' was loaded in place of '{path}'. Remove that file, so that the one of the sync application is used, and restart this process.");
        }
        Bound = assembly;
    }

    private static AssemblyLoadContext BridgeContext() =>
        AssemblyLoadContext.GetLoadContext(typeof(ApiAssembly).Assembly) ?? AssemblyLoadContext.Default;

    private static Assembly? Resolve(AssemblyLoadContext context, AssemblyName name) =>
        name.Name == Name ? context.LoadFromAssemblyPath(_dependencies!.AssemblyPath) : _dependencies!.Load(name);

    private static void CheckFile(string folder, string path)
    {
        if (!Directory.Exists(folder))
            throw new LoadingException($"{FileName} was looked for in '{folder}', which is not a folder. {Remedy}");
        if (!File.Exists(path))
            throw new LoadingException($"{FileName} was looked for in '{folder}' and is not there. {Remedy}");
    }

    // In a runtime that this library has started, the assembly is loaded to learn its name: the reference to it then finds it
    // without an event, after which the runtime compares names by the rules of a culture, and loads ICU's for that (6 ms).
    // Another program's runtime may have an assembly that the reference finds first; so there only the name is read.
    private static void CheckName(AssemblyLoadContext context, string path)
    {
        string? found = context == AssemblyLoadContext.Default ? NameOfLoaded(path) : ReadName(path);
        if (found != Name)
            throw Misnamed(path, found);
    }

    private static string? NameOfLoaded(string path)
    {
        try
        {
            return AssemblyLoadContext.Default.LoadFromAssemblyPath(path).GetName().Name;
        }
        catch (Exception e) when (e is IOException or BadImageFormatException or UnauthorizedAccessException)
        {
            string? name = ReadName(path);
            throw name == Name ? DoesNotFit(path, e) : Misnamed(path, name);
        }
    }

    // This needs four more assemblies.
    private static string? ReadName(string path)
    {
        try
        {
            return AssemblyName.GetAssemblyName(path).Name;
        }
        catch (Exception e) when (e is BadImageFormatException or FileLoadException)
        {
            throw new LoadingException($"'{path}' is not a .NET assembly. Reinstall the sync application, or: {Remedy}");
        }
        catch (Exception e) when (e is IOException or UnauthorizedAccessException or System.Security.SecurityException)
        {
            throw new LoadingException($"'{path}' cannot be read: {e.Message} Give this user the right to read it.");
        }
    }

    private static void CheckNoOther(AssemblyLoadContext place, string path)
    {
        foreach (Assembly other in place.Assemblies)
        {
            if (other.GetName().Name == Name && !SamePath(other.Location, path))
            {
                throw new LoadingException(
                    $"'{other.Location}' is already loaded in this process, and '{path}' cannot take its place. Restart this process.");
            }
        }
    }

    private static Assembly BindReference(string path)
    {
        try
        {
            return ReferencedAssembly();
        }
        catch (Exception e) when (e is TypeLoadException or IOException or BadImageFormatException)
        {
            throw DoesNotFit(path, e);
        }
    }

    private static LoadingException DoesNotFit(string path, Exception e) => new(
        $"'{path}' does not fit this library: {e.Message} Install a version of the sync application that this library was built for, and restart this process.");

    private static LoadingException Misnamed(string path, string? name) =>
        new($"'{path}' holds the assembly '{name}', and not {Name}. {Remedy}");

    // A method of its own, because compiling it binds the reference.
    [MethodImpl(MethodImplOptions.NoInlining)]
    private static Assembly ReferencedAssembly() => typeof(TessaportService).Assembly;

    private static bool SamePath(string left, string right) => string.Equals(
        Path.GetFullPath(left), Path.GetFullPath(right),
        OperatingSystem.IsWindows() ? StringComparison.OrdinalIgnoreCase : StringComparison.Ordinal);
}
