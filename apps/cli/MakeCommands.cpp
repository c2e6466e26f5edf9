#include "cli/AttrConfigCommand.h"
#include "cli/BatchCommand.h"
#include "cli/CatalogCommand.h"
#include "cli/DemoCommand.h"
#include "cli/ExportCommand.h"
#include "cli/HistoryCommand.h"
#include "cli/ImportCommand.h"
#include "cli/InitCommand.h"
#include "cli/LibraryCommand.h"
#include "cli/LoadCommand.h"
#include "cli/NewCommand.h"
#include "cli/RefreshCommand.h"
#include "cli/SaveAsCommand.h"
#include "cli/ShowCommand.h"
#include "cli/UnwrapCommand.h"
#include "cli/WriteHeadCommand.h"

namespace cli {

std::vector<std::unique_ptr<Command>> MakeCommands()
{
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<DemoCommand>());
    commands.push_back(std::make_unique<InitCommand>());
    commands.push_back(std::make_unique<ShowCommand>());
    commands.push_back(std::make_unique<CatalogCommand>());
    commands.push_back(std::make_unique<BatchCommand>());
    commands.push_back(std::make_unique<NewCommand>());
    commands.push_back(std::make_unique<LoadCommand>());
    commands.push_back(std::make_unique<SaveAsCommand>());
    commands.push_back(std::make_unique<RefreshCommand>());
    commands.push_back(std::make_unique<AttrConfigCommand>());
    commands.push_back(std::make_unique<WriteHeadCommand>());
    commands.push_back(std::make_unique<UnwrapCommand>());
    commands.push_back(std::make_unique<HistoryCommand>());
    commands.push_back(std::make_unique<LibraryCommand>());
    commands.push_back(std::make_unique<ImportCommand>());
    commands.push_back(std::make_unique<ExportCommand>());
    return commands;
}

} // namespace cli
