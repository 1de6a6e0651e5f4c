using System.Diagnostics;

namespace Quorvex.Tessaport.API.Tests;

/// <summary>The syntax of the patterns: that of <c>.gitignore</c>.</summary>
public sealed class PathPatternTests
{
    [Theory]
    [InlineData("*.tmp", "a.tmp", "p/a.tmp", "p.tmp/a.txt", ".tmp")]
    [InlineData("/a.txt", "a.txt", "a.txt/b")]
    [InlineData("/*.c", "a.c", "a.c/b")]
    [InlineData("build/", "build/", "p/build/", "build/a.txt")]
    [InlineData("p/*.o", "p/a.o", "p/a.o/x")]
    [InlineData("**/p/a", "p/a", "x/y/p/a")]
    [InlineData("p/**/a", "p/a", "p/x/a", "p/x/y/a/b")]
    [InlineData("p/**", "p/a", "p/x/y/")]
    [InlineData("a**b", "ab", "axxb")]
    [InlineData("?.txt", "é.txt", "𝒳.txt")]
    [InlineData("[a-c!]x", "ax", "!x")]
    [InlineData("[!a-c]x", "dx", "éx")]
    [InlineData("[]-]x", "]x", "-x")]
    [InlineData("[[:digit:]_]", "7", "_")]
    [InlineData(@"\#a", "#a")]
    [InlineData(@"\!a", "!a")]
    [InlineData(@"a\*", "a*")]
    [InlineData("a b  ", "a b")]
    [InlineData(@"a\ ", "a ")]
    [InlineData("wow!.txt", "wow!.txt")]
    [InlineData("a^b$(c)+", "a^b$(c)+")]
    public void APatternMatches(string pattern, params string[] paths) =>
        Assert.All(paths, path => Assert.Equal(pattern, PatternFor(path, pattern)));

    [Theory]
    [InlineData("*.tmp", "a.tmpx", "tmp")]
    [InlineData("/a.txt", "p/a.txt", "xa.txt")]
    [InlineData("/*.c", "p/a.c")]
    [InlineData("build/", "build", "p/build", "builds/")]
    [InlineData("p/*.o", "p/x/a.o", "x/p/a.o")]
    [InlineData("p/**", "p/", "x/p/a")]
    [InlineData("a**b", "a/b")]
    [InlineData("?.txt", "ab.txt", ".txt")]
    [InlineData("[!a-c]x", "ax", "x")]
    [InlineData(@"a\*", "ab", "a")]
    public void APatternDoesNotMatch(string pattern, params string[] paths) =>
        Assert.All(paths, path => Assert.Null(PatternFor(path, pattern)));

    [Fact]
    public void ALaterPatternTakesBackAnEarlierOneButNotForWhatIsInAFolderThatIsLeftOut()
    {
        Assert.Null(PatternFor("keep.log", "*.log", "!keep.log"));
        Assert.Equal("keep.log", PatternFor("keep.log", "*.log", "!keep.log", "keep.log"));
        Assert.Equal("p/", PatternFor("p/keep.log", "p/", "!keep.log"));
    }

    [Fact]
    public void CaseCountsAsInPathsOfTheSystem()
    {
        Assert.Equal(OperatingSystem.IsLinux(), PatternFor("A.TMP", "*.tmp") is null);
        Assert.Equal(OperatingSystem.IsLinux(), PatternFor("É", "[é]") is null);
    }

    [Theory]
    [InlineData("", "it is empty")]
    [InlineData("  ", "it is empty")]
    [InlineData("#a", "it is a comment")]
    [InlineData("a\nb", "more than one line")]
    [InlineData("!", "it names nothing")]
    [InlineData("/", "it names nothing")]
    [InlineData("a//b", "two slashes")]
    [InlineData("[ab", @"write \[")]
    [InlineData("[[:digit]", @"write \[")]
    [InlineData("[[:digits:]]", "is no class")]
    [InlineData(@"a\", "back-slash")]
    [InlineData(@"p\a.txt", "write / between folders")]
    public void WhatIsNoPatternIsRefusedWithTheReason(string pattern, string reason)
    {
        var message = Assert.Throws<InvalidDataException>(() => new IgnoreRules("Plans", [pattern])).Message;

        Assert.Contains($"'{pattern}' of the drive 'Plans'", message);
        Assert.Contains(reason, message);
    }

    [Fact]
    public void AnUnluckyPatternTakesNoLongerThanAnother()
    {
        var name = new string('a', 255);
        Assert.Null(PatternFor(string.Join('/', Enumerable.Repeat(name, 50)), string.Concat(Enumerable.Repeat("a*", 120)) + "b"));
        Assert.Null(PatternFor(string.Join('/', Enumerable.Repeat("a", 2000)), string.Concat(Enumerable.Repeat("a/**/", 200)) + "b"));
    }

    /// <summary>Compares the answers with those of git itself.</summary>
    [UnixFact]
    public void TheAnswersAreThoseOfGit()
    {
        var folder = Directory.CreateTempSubdirectory("tessaport-git-").FullName;
        try
        {
            Git(folder, "", "init", "-q", ".");
            var random = new Random(20261122);
            for (var i = 0; i < 60; ++i)
                RequireSameAnswers(folder, random);
        }
        finally
        {
            Directory.Delete(folder, recursive: true);
        }
    }

    private static void RequireSameAnswers(string folder, Random random)
    {
        string[] words = ["a", "b", "*", "?", "[ab]", "[!a]", "[a-c]", "foo", "*.txt", ".*", @"c\[1\]", @"\#a", @"\!a", "a*b", "x~", "*~", "[[:alpha:]]", "**", "**", "a!b"];
        string[] names = ["a", "b", "ab", "a.txt", "foo", "foo.txt", ".x", "a b", "#a", "!a", "c[1]", "x~", "a.b.c", "a!b"];
        var patterns = Enumerable.Range(0, random.Next(1, 4)).Select(_ => Decorate(Join(words, random), random)).ToList();
        var paths = Enumerable.Range(0, 40).Select(_ => Join(names, random)).Distinct().ToList();
        File.WriteAllLines(Path.Combine(folder, ".gitignore"), patterns);

        // Of each path it says which pattern was the last to match; a path without a slash at its end is a file.
        var answers = Git(folder, string.Concat(paths.Select(path => path + "\0")), "check-ignore", "--no-index", "--stdin", "-z", "-v", "-n").Split('\0');

        for (var i = 0; i < paths.Count; ++i)
        {
            var expected = answers[(4 * i) + 2] is { Length: > 0 } pattern && pattern[0] != '!';
            Assert.True(
                expected == PatternFor(paths[i], [.. patterns]) is not null,
                $"{string.Join(" | ", patterns)} for {paths[i]}: git says {expected}");
        }
    }

    private static string Join(string[] parts, Random random) =>
        string.Join('/', Enumerable.Range(0, random.Next(1, 5)).Select(_ => parts[random.Next(parts.Length)]));

    private static string Decorate(string pattern, Random random) =>
        (random.Next(5) == 0 ? "!" : "") + (random.Next(4) == 0 ? "/" : "") + pattern + (random.Next(4) == 0 ? "/" : "");

    private static string Git(string folder, string input, params string[] arguments)
    {
        using var process = Process.Start(new ProcessStartInfo("git", arguments)
        {
            WorkingDirectory = folder,
            RedirectStandardInput = true,
            RedirectStandardOutput = true,
            Environment = { ["GIT_CONFIG_GLOBAL"] = "/dev/null", ["GIT_CONFIG_NOSYSTEM"] = "1" },
        })!;
        var written = Task.Run(() =>
        {
            process.StandardInput.Write(input);
            process.StandardInput.Close();
        });
        var output = process.StandardOutput.ReadToEnd();
        written.Wait();
        process.WaitForExit();
        return output;
    }

    private static string? PatternFor(string path, params string[] patterns) =>
        new IgnoreRules("Plans", patterns).PatternFor(path.Replace('/', '\\'), path.EndsWith('/'));
}
