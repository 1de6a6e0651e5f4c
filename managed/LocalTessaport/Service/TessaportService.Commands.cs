namespace Quorvex.Tessaport.API;

public partial class TessaportService
{
    public IEnumerable<Command> GetCommands(CommandContext context)
    {
        ArgumentNullException.ThrowIfNull(context);
        var target = CommandTarget.Of(RequestScope.Begin(), context);
        return CommandCatalog.For(target).Select(command => command.Describe(target)).ToList();
    }

    public CommandResult ExecuteCommand(Command command, CommandContext context)
    {
        ArgumentNullException.ThrowIfNull(command);
        ArgumentNullException.ThrowIfNull(context);
        var target = CommandTarget.Of(RequestScope.Begin(), context);
        var found = CommandCatalog.Find(command.Id)
            ?? throw new ArgumentException($"There is no command '{command.Id}'; list the commands of the item.");
        var isPossible = target.Views.Count > 0 && found.IsOffered(target) && found.IsEnabled(target);
        return isPossible ? found.Run(target) : new CommandResult { IsSuccess = false };
    }
}
