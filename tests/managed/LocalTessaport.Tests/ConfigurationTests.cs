using System.Text;

namespace Quorvex.Tessaport.API.Tests;

/// <summary>Files of the home that a user wrote and that cannot be read.</summary>
public sealed class ConfigurationTests : IDisposable
{
    private const string Id = "5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b01";

    private readonly TestHome _home = new();

    public void Dispose() => _home.Dispose();

    private string ServiceFile => Path.Combine(_home.Root, "service.json");

    private string DrivesFile => Path.Combine(_home.Root, "drives.json");

    [Fact]
    public void DrivesThatAreNotUtf8NameTheLineAndTheRemedy()
    {
        File.WriteAllBytes(DrivesFile, Encoding.Latin1.GetBytes(OneDrive("\"name\": \"Entw\u00fcrfe\"")));

        var message = Assert.Throws<InvalidDataException>(() => _home.Service.GetDrives()).Message;

        Assert.Contains(DrivesFile, message);
        Assert.Contains("not UTF-8 text (line 2); save it as UTF-8", message);
        Assert.Contains("Correct the file and try again", message);
    }

    [Fact]
    public void TheVersionIsToldWithoutLookingAtTheDrives()
    {
        File.WriteAllText(DrivesFile, "not JSON");

        Assert.Matches("^[0-9]+\\.[0-9]+\\.[0-9]+$", _home.Service.GetVersion());
        Assert.Throws<InvalidDataException>(() => _home.Service.Discover());
    }

    [Fact]
    public void TheLastOfTwoMembersWithOneNameCounts()
    {
        File.WriteAllText(ServiceFile, """{"state": "not-running", "faults": {}, "state": "running"}""");
        File.WriteAllText(DrivesFile, OneDrive("\"name\": \"First\", \"name\": \"Last\""));

        Assert.Equal("Last", Assert.Single(_home.Service.GetDrives()).Name);
    }

    [Theory]
    [InlineData("")]
    [InlineData("[")]
    [InlineData("[]]")]
    [InlineData("[] []")]
    [InlineData("[{},]")]
    [InlineData("[{\"id\" 1}]")]
    [InlineData("[{\"id\": }]")]
    [InlineData("// none\n[]")]
    public void DrivesThatAreNotJsonNameTheFileAndTheRemedy(string content)
    {
        File.WriteAllText(DrivesFile, content);

        var message = Assert.Throws<InvalidDataException>(() => _home.Service.GetDrives()).Message;

        Assert.StartsWith($"The drives cannot be read from '{DrivesFile}': ", message);
        Assert.EndsWith("Correct the file and try again.", message);
    }

    [Fact]
    public void DrivesThatAreNestedWithoutEndAreRefused()
    {
        File.WriteAllText(DrivesFile, string.Concat(Enumerable.Repeat("[", 100_000)));

        Assert.Contains("depth", Assert.Throws<InvalidDataException>(() => _home.Service.GetDrives()).Message);
    }

    [Theory]
    [InlineData("\"name\": \"\\ud800\"")]
    [InlineData("\"name\": \"a\\udc00b\"")]
    [InlineData("\"name\": \"a\", \"workspace\": \"w\\ud83d\"")]
    [InlineData("\"name\": \"a\", \"server\": \"\\udfffs\"")]
    public void DrivesWithHalfACharacterNameTheFileAndTheRemedy(string members)
    {
        File.WriteAllText(DrivesFile, OneDrive(members));

        var message = Assert.Throws<InvalidDataException>(() => _home.Service.GetDrives()).Message;

        Assert.Contains(DrivesFile, message);
        Assert.Contains("half of a character", message);
        Assert.Contains("Correct the file and try again", message);
    }

    [Theory]
    [InlineData(new byte[] { 0x7b, 0x22, 0x73, 0x74, 0x61, 0x74, 0x65, 0x22, 0x3a, 0x22, 0xe4, 0x22, 0x7d }, "not UTF-8")]
    [InlineData(new byte[] { 0xff, 0xfe, 0x7b, 0x00, 0x7d, 0x00 }, "not UTF-8")]
    [InlineData(new byte[] { 0x7b, 0x22, 0x73, 0x74, 0x61, 0x74, 0x65, 0x22, 0x3a, 0x22, 0x5c, 0x75, 0x64, 0x38, 0x30, 0x30, 0x22, 0x7d }, "half of a character")]
    public void AStateThatIsNotTextNamesTheFileAndTheRemedy(byte[] content, string reason)
    {
        File.WriteAllBytes(ServiceFile, content);

        var message = Assert.Throws<InvalidDataException>(() => _home.Service.Discover()).Message;

        Assert.Contains(ServiceFile, message);
        Assert.Contains(reason, message);
        Assert.Contains("tessaport service start", message);
    }

    [Fact]
    public void BothFilesMayBeginWithAByteOrderMark()
    {
        File.WriteAllText(ServiceFile, File.ReadAllText(ServiceFile), new UTF8Encoding(encoderShouldEmitUTF8Identifier: true));
        File.WriteAllText(DrivesFile, OneDrive("\"name\": \"a\""), new UTF8Encoding(encoderShouldEmitUTF8Identifier: true));

        Assert.Equal("a", _home.Service.GetDrives().Single().Name);
    }

    [Fact]
    public void AFolderInThePlaceOfTheDrivesIsNotTakenForNone()
    {
        Directory.CreateDirectory(DrivesFile);

        var message = Assert.Throws<InvalidDataException>(() => _home.Service.GetDrives()).Message;

        Assert.Contains(DrivesFile, message);
        Assert.Contains("is a folder", message);
    }

    [Fact]
    public void AFolderInThePlaceOfTheStateIsNotTakenForNone()
    {
        File.Delete(ServiceFile);
        Directory.CreateDirectory(ServiceFile);

        var message = Assert.Throws<InvalidDataException>(() => _home.Service.GetDrives()).Message;

        Assert.Contains(ServiceFile, message);
        Assert.Contains("is a folder", message);
    }

    private static string OneDrive(string members) =>
        $$"""
        [{"id": "{{Id}}", "type": "Quorvex.DataSourceType.Drive",
          {{members}}}]
        """;
}
