#include "tools/tessaport/commands/Commands.h"

namespace Quorvex::Velmora::Tool
{

void addAllCommands(const CommandLine& line)
{
    const CommandLine start = line.under("Getting started");
    addDemoCommand(start);
    addDoctorCommand(start);
    addVersionCommand(start);
    addHelpCommand(start);
    addCompletionCommand(start);

    const CommandLine looking = line.under("Looking around");
    addDrivesCommand(looking);
    addListCommand(looking);
    addTreeCommand(looking);
    addStatusCommand(looking);
    addConflictCommands(looking);
    addStatCommand(looking);
    addWhereCommand(looking);
    addPropertyCommand(looking);

    const CommandLine changing = line.under("Changing files");
    addSyncCommand(changing);
    addAddCommands(changing);
    addMakeFolderCommand(changing);
    addRemoveCommand(changing);
    addItemCommands(changing);
    addClosedCommand(changing);

    const CommandLine identifiers = line.under("Identifiers");
    addIdCommands(identifiers);
    addUrnCommand(identifiers);
    addRootCommand(identifiers);

    addQuestionCommands(line.under("Questions"));

    const CommandLine files = line.under("Logs, checksums, messages");
    addLogCommands(files);
    addChecksumCommand(files);
    addLinkifyCommand(files);

    const CommandLine local = line.under("Local sync service");
    addDriveCommands(local);
    addServiceCommands(local);
}

} // namespace Quorvex::Velmora::Tool
