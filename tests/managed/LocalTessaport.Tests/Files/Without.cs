namespace Quorvex.Tessaport.API.Tests;

/// <summary>Has the service do without something that older kernels and some file systems lack.</summary>
internal sealed class Without : IDisposable
{
    public Without(string features) => UnixPath.Missing = Enum.Parse<UnixFeatures>(features);

    /// <summary>What a rename may have to do without; everything on Windows is one of them.</summary>
    public static TheoryData<string> RenamingFeatures() => OperatingSystem.IsWindows()
        ? ["None"]
        :
        [
            "None",
            "Leases",
            "Exchanging",
            "RenamingWithoutReplacing",
            "RenamingWithoutReplacing, Exchanging",
            "RenamingWithoutReplacing, Exchanging, HardLinks",
            "RestrictedOpening",
        ];

    public static TheoryData<string> OpeningFeatures() => ["None", "RestrictedOpening"];

    public void Dispose() => UnixPath.Missing = UnixFeatures.None;
}
