namespace Velmora.Bridge.Requests;

internal static unsafe class ServiceRequests
{
    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void CreateService(Reply* reply) => Answers.Handle(new TessaportService(), reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void CreateServiceForWindow(RequestArguments* arguments, Reply* reply) =>
        Answers.Handle(new TessaportService(arguments->Window), reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void Discover(long service) => Arguments.Service(service).Discover();

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetVersion(long service, Reply* reply) => Answers.One(
        Arguments.Service(service).GetVersion(), static (writer, version) => writer.WriteRequiredString(version), reply);

    [MethodImpl(MethodImplOptions.NoInlining)]
    public static void GetDrives(long service, Reply* reply) =>
        Answers.List(Arguments.Service(service).GetDrives(), ItemWriter.WriteDrive, reply);
}
