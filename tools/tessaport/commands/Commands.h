/// @file
/// The commands of the tool; each function declares its own.
#pragma once

#include "tools/tessaport/commandline/CommandLine.h"

namespace Quorvex::Velmora::Tool
{

/// Declares all of them, in the order of the help.
void addAllCommands(const CommandLine& line);

void addDemoCommand(const CommandLine& line);
void addDoctorCommand(const CommandLine& line);
void addServiceCommands(const CommandLine& line);
void addVersionCommand(const CommandLine& line);
void addDriveCommands(const CommandLine& line);
void addDrivesCommand(const CommandLine& line);
void addListCommand(const CommandLine& line);
void addTreeCommand(const CommandLine& line);
void addStatCommand(const CommandLine& line);
void addConflictCommands(const CommandLine& line);
void addStatusCommand(const CommandLine& line);
void addMakeFolderCommand(const CommandLine& line);
void addAddCommands(const CommandLine& line);
void addRemoveCommand(const CommandLine& line);
void addSyncCommand(const CommandLine& line);
void addClosedCommand(const CommandLine& line);
void addPropertyCommand(const CommandLine& line);
void addItemCommands(const CommandLine& line);
void addIdCommands(const CommandLine& line);
void addUrnCommand(const CommandLine& line);
void addWhereCommand(const CommandLine& line);
void addQuestionCommands(const CommandLine& line);
void addRootCommand(const CommandLine& line);
void addLogCommands(const CommandLine& line);
void addChecksumCommand(const CommandLine& line);
void addLinkifyCommand(const CommandLine& line);
void addCompletionCommand(const CommandLine& line);

} // namespace Quorvex::Velmora::Tool
