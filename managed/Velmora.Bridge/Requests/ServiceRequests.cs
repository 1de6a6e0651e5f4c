using System.Runtime.CompilerServices;
using Quorvex.Tessaport.API;
using Velmora.Bridge.Boundary;
using Velmora.Bridge.Replies;

namespace Velmora.Bridge.Requests;

internal static unsafe class ServiceRequests
{
    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void CreateService(long* service, Reply* reply) => *service = HandleTable.Add(new TessaportService());

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void CreateServiceForWindow(nint window, long* service, Reply* reply) =>
        *service = HandleTable.Add(new TessaportService(window));

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void Discover(long service, Reply* reply) => Arguments.Service(service).Discover();

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetVersion(long service, Reply* reply) => Answers.One(
        Arguments.Service(service).GetVersion(), static (writer, version) => writer.WriteRequiredText(version), reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetDrives(long service, Reply* reply) =>
        Answers.List(Arguments.Service(service).GetDrives(), ItemWriter.WriteDrive, reply);
}
