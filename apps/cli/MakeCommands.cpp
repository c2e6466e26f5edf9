#include "cli/MakeCommands.h"

#include "cli/commands/AttrConfigCommand.h"
#include "cli/commands/BatchCommand.h"
#include "cli/commands/CatalogueCommand.h"
#include "cli/commands/DemoCommand.h"
#include "cli/commands/ExportCommand.h"
#include "cli/commands/HistoryCommand.h"
#include "cli/commands/ImportCommand.h"
#include "cli/commands/InitCommand.h"
#include "cli/commands/KeepFirstCommand.h"
#include "cli/commands/LibraryCommand.h"
#include "cli/commands/LoadCommand.h"
#include "cli/commands/NewCommand.h"
#include "cli/commands/RefreshCommand.h"
#include "cli/commands/SaveAsCommand.h"
#include "cli/commands/ShowCommand.h"
#include "cli/commands/UnwrapCommand.h"
#include "cli/commands/WriteHeadCommand.h"
#include "cli/commands/office/CloudCommand.h"
#include "cli/commands/office/OfficeCommand.h"
#include "cli/commands/rules/ApplyCommand.h"
#include "cli/commands/rules/CheckCommand.h"
#include "cli/commands/rules/CompareCommand.h"
#include "cli/commands/rules/CoverageCommand.h"
#include "cli/commands/rules/MergeCommand.h"
#include "cli/commands/rules/TryCommand.h"
#include "cli/commands/rules/WhereCommand.h"

namespace cli {

std::vector<std::unique_ptr<Command>> MakeCommands()
{
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<DemoCommand>());
    commands.push_back(std::make_unique<InitCommand>());
    commands.push_back(std::make_unique<ShowCommand>());
    commands.push_back(std::make_unique<TryCommand>());
    commands.push_back(std::make_unique<ApplyCommand>());
    commands.push_back(std::make_unique<CoverageCommand>());
    commands.push_back(std::make_unique<CompareCommand>());
    commands.push_back(std::make_unique<MergeCommand>());
    commands.push_back(std::make_unique<CheckCommand>());
    commands.push_back(std::make_unique<WhereCommand>());
    commands.push_back(std::make_unique<CatalogueCommand>());
    commands.push_back(std::make_unique<BatchCommand>());
    commands.push_back(std::make_unique<NewCommand>());
    commands.push_back(std::make_unique<LoadCommand>());
    commands.push_back(std::make_unique<SaveAsCommand>());
    commands.push_back(std::make_unique<RefreshCommand>());
    commands.push_back(std::make_unique<AttrConfigCommand>());
    commands.push_back(std::make_unique<KeepFirstCommand>());
    commands.push_back(std::make_unique<WriteHeadCommand>());
    commands.push_back(std::make_unique<UnwrapCommand>());
    commands.push_back(std::make_unique<HistoryCommand>());
    commands.push_back(std::make_unique<LibraryCommand>());
    commands.push_back(std::make_unique<ImportCommand>());
    commands.push_back(std::make_unique<ExportCommand>());
    commands.push_back(std::make_unique<OfficeCommand>());
    commands.push_back(std::make_unique<CloudCommand>());
    return commands;
}

} // namespace cli
