using System.Runtime.CompilerServices;
using Quorvex.Tessaport.API;
using Velmora.Bridge.Boundary;
using Velmora.Bridge.Replies;

namespace Velmora.Bridge.Requests;

internal static unsafe class PropertyRequests
{
    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetPropertyDefinitions(long service, byte* driveId, Reply* reply) => Answers.List(
        Arguments.Service(service).GetPropertyDefinitions(Arguments.Guid(driveId)), RecordWriter.Write, reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetProperties(
        long service, long* ids, ulong idCount, NativeText* properties, ulong propertyCount, Reply* reply) => Answers.List(
        Arguments.Service(service)
            .GetProperties(Arguments.Ids(ids, idCount), NativeText.CopyList(properties, propertyCount))
            .Values,
        RecordWriter.Write, reply);
}
