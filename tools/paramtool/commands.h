// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "command_line.h"

namespace Paramtool {

// Each declares what its command takes and gives what runs it; see commands/ for a file each.
Action DeclareShow(CommandLine& line);
Action DeclareQuery(CommandLine& line);
Action DeclareCheck(CommandLine& line);
Action DeclareSet(CommandLine& line);
Action DeclareProfile(CommandLine& line);
Action DeclareItem(CommandLine& line);
Action DeclareDiff(CommandLine& line);
Action DeclareConvert(CommandLine& line);
Action DeclareNew(CommandLine& line);
Action DeclareExtract(CommandLine& line);
Action DeclareExport(CommandLine& line);
Action DeclareImport(CommandLine& line);
Action DeclareMigrate(CommandLine& line);
Action DeclareLayoutLint(CommandLine& line);
Action DeclareLayoutDiff(CommandLine& line);
Action DeclareLayoutSchema(CommandLine& line);
Action DeclareLayoutPage(CommandLine& line);
Action DeclareTicketShow(CommandLine& line);
Action DeclareTicketDiff(CommandLine& line);
Action DeclareTicketEffective(CommandLine& line);
Action DeclareCompletion(CommandLine& line);
Action DeclareManual(CommandLine& line);

} // namespace Paramtool
