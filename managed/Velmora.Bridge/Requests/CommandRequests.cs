using System.Runtime.CompilerServices;
using Quorvex.Tessaport.API;
using Velmora.Bridge.Boundary;
using Velmora.Bridge.Replies;

namespace Velmora.Bridge.Requests;

internal static unsafe class CommandRequests
{
    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetCommands(long service, NativeContext* context, Reply* reply) => Answers.List(
        Arguments.Service(service).GetCommands(Arguments.Context(context)), RecordWriter.Write, reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void ExecuteCommand(long service, long command, NativeContext* context, Reply* reply) => Answers.One(
        Arguments.Service(service).ExecuteCommand((Command)HandleTable.Get(command)!, Arguments.Context(context)),
        RecordWriter.Write, reply);
}
