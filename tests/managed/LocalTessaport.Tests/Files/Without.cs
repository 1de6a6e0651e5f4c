namespace Quorvex.Tessaport.API.Tests;

/// <summary>Makes the service work without a feature that older kernels and some file systems lack.</summary>
internal sealed class Without : IDisposable
{
    public Without(string features) => UnixPath.Missing = Enum.Parse<UnixFeatures>(features);

    /// <summary>The features that a rename may lack; Windows lacks all of them.</summary>
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
