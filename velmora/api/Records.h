/// @file
/// Brings in every record and enumeration that requests take and return.
#pragma once

#include <velmora/api/Command.h>
#include <velmora/api/CommandContext.h>
#include <velmora/api/CommandResult.h>
#include <velmora/api/Drive.h>
#include <velmora/api/Item.h>
#include <velmora/api/ItemId.h>
#include <velmora/api/ItemIdToPermanentIdResult.h>
#include <velmora/api/PermanentIdToItemResult.h>
#include <velmora/api/PropertyDefinition.h>
#include <velmora/api/QVBuffer.h>
#include <velmora/api/QVCode.h>
#include <velmora/api/QVString.h>
#include <velmora/api/QVUUID.h>
#include <velmora/api/Result.h>
#include <velmora/api/StringPropertyValue.h>
#include <velmora/api/WorkspacePathToItemResult.h>
