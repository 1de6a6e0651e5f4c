using System.Collections.Generic;
using System.Runtime.CompilerServices;
using Quorvex.Tessaport.API;
using Velmora.Bridge.Boundary;
using Velmora.Bridge.Replies;

namespace Velmora.Bridge.Requests;

internal static unsafe class FileRequests
{
    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void AddFiles(long service, long folder, NativeText* paths, ulong count, Reply* reply) => Answers.One(
        Arguments.Service(service).AddFiles(Arguments.Id(folder), NativeText.CopyList(paths, count)),
        RecordWriter.Write, reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void CanAddFiles(long service, long folder, NativeText* paths, ulong count, Reply* reply) => Answers.Flag(
        Arguments.Service(service).CanAddFiles(Arguments.Id(folder), NativeText.CopyList(paths, count)), reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void IsFileInWorkspace(long service, NativeText* path, Reply* reply)
    {
        string key = path->ToString();
        Dictionary<string, bool> answers = Arguments.Service(service).AreFilesInWorkspace(new List<string> { key });
        Answers.Flag(answers.TryGetValue(key, out bool known) && known, reply);
    }

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void SyncFiles(long service, long* ids, ulong count, Reply* reply) => Answers.One(
        Arguments.Service(service).SyncFiles(Arguments.Ids(ids, count)), RecordWriter.Write, reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void DeleteItems(long service, long* ids, ulong count, Reply* reply) => Answers.One(
        Arguments.Service(service).DeleteItems(Arguments.Ids(ids, count)), RecordWriter.Write, reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void FileClosedWithinRunningProcess(long service, int processId, NativeText* path, Reply* reply) =>
        Arguments.Service(service).FileClosedWithinRunningProcess(processId, path->ToString());
}
