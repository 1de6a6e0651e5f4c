using System.Reflection;
using System.Runtime.Loader;

namespace Velmora.Bridge.Loading;

/// <summary>Finds what the sync application's assembly needs, by its .deps.json or by file name beside it.</summary>
internal sealed class DependencyFolder
{
    private readonly AssemblyLoadContext _context;
    private readonly Lazy<AssemblyDependencyResolver?> _resolver;

    public DependencyFolder(AssemblyLoadContext context, string assemblyPath)
    {
        _context = context;
        AssemblyPath = assemblyPath;
        // Made when the first dependency is wanted: most applications need nothing beyond .NET.
        _resolver = new(MakeResolver);
    }

    public string AssemblyPath { get; }

    public Assembly? Load(AssemblyName name)
    {
        string? path = _resolver.Value?.ResolveAssemblyToPath(name) ?? Beside(name.Name + ".dll");
        return path == null ? null : _context.LoadFromAssemblyPath(path);
    }

    public IntPtr LoadLibrary(string name)
    {
        string? path = _resolver.Value?.ResolveUnmanagedDllToPath(name) ?? Beside(name);
        return path == null ? IntPtr.Zero : NativeLibrary.Load(path);
    }

    private AssemblyDependencyResolver? MakeResolver()
    {
        try
        {
            return new AssemblyDependencyResolver(AssemblyPath);
        }
        catch (InvalidOperationException)
        {
            // The .deps.json cannot be read, but the files beside the assembly can be found without it.
            return null;
        }
    }

    private string? Beside(string fileName)
    {
        string path = Path.Combine(Path.GetDirectoryName(AssemblyPath)!, Path.GetFileName(fileName));
        return File.Exists(path) ? path : null;
    }
}
