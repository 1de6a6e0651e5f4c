using System.Runtime.CompilerServices;
using Quorvex.Tessaport.API;
using Velmora.Bridge.Boundary;
using Velmora.Bridge.Replies;

namespace Velmora.Bridge.Requests;

internal static unsafe class FolderRequests
{
    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetChildFolders(long service, long folder, Reply* reply) =>
        Answers.Items(Arguments.Service(service).GetChildFolders(Arguments.Id(folder)), reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetFolderContents(long service, long folder, Reply* reply) =>
        Answers.Items(Arguments.Service(service).GetFolderContents(Arguments.Id(folder)), reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetOrCreateFolder(long service, long parent, NativeText* name, Reply* reply) => Answers.One(
        Arguments.Service(service).GetOrCreateFolder(Arguments.Id(parent), name->ToString()), ItemWriter.WriteItem, reply);
}
