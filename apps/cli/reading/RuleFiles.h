#pragma once

#include "cli/reading/Arguments.h"
#include "embedded/data/history/History.h"
#include "embedded/data/history/RuleFileLock.h"
#include "platform/Text.h"

#include <optional>

/// Rule files as the command line names them.
namespace cli {

/// The path text of a rule file that a person names: a text with a separator or ending in ".xml" is a native
/// path; any other is a configuration of the project's rule folder, unless only a file of that native path
/// exists. Raises `Refusal` for a path that has no path text.
CString ResolveRuleFile(const QString& text);

/// The same for a project that need not be open, whose rule folder is given.
CString ResolveRuleFile(const QString& text, const CString& ruleFolder);

/// The same for a command that works with or without a project: configurations are those of the project that
/// `--project` or the environment names; where there is none, every text is a native path.
CString NamedRuleFile(const Arguments& arguments, const QString& text);

/// The path text of a native path. Raises `Refusal` when it has none (a name that holds a backslash).
CString ResolvePath(const QString& nativePath);

/// The path text of the configuration of that name. Raises `Refusal` for a name that cannot be one: it
/// becomes a file name, and the project's ini must give it back unchanged.
CString ConfigurationPath(const CString& name);

/// The option by which a command that writes a configuration is allowed to overwrite one.
Option OverwriteOption();

/// The path text of the configuration that the first argument names. Raises `Refusal` for a name that cannot
/// be one, and for a configuration that exists unless the option allows to overwrite it.
CString TargetConfiguration(const Arguments& arguments);

/// Raises `Refusal`, saying what is wrong and where, unless the file exists and can be read as a rule file.
/// To be asked before a store is built on a file: the store itself is silent about a file that it cannot
/// read, and its next save replaces it.
void CheckRuleFile(const CString& path);

/// The same, but a file that does not exist is fine, too.
void CheckRuleFileIfThere(const CString& path);

/// The same for a command that only reads: of a specialty that stands twice in the file standard error is
/// told, and the command goes on.
void CheckForReading(const CString& path);

/// Raises `Refusal`, which tells how to get at the rules, for a wrapped rule file alone, as the checks above
/// do.
void RefuseWrapped(const CString& path);

/// Says once on standard error for whom a rule file is waited for, unless it is for a moment only.
embedded::RuleFileLock::GoOn TellWhoHolds();

/// Keeps other programs away from rule files, by path text: to be held from the moment a file is looked at
/// until what comes of it has been written. Says on standard error whom it waits for. Raises
/// `embedded::Error` as `embedded::RuleFileLock` does.
embedded::RuleFileLock LockRuleFiles(const embedded::History& history, const CStringArray& paths);

/// To be called before a command writes something else than its rules over a file, and held until that is
/// written: a rule file (any that can be read as one, and what ends in ".xml") is locked and, if it is there,
/// kept in the history of the project that `--project` or the environment names, else of the one in which it
/// lies; where there is neither it is locked alone. Nothing for other files. Raises `embedded::Error`.
std::optional<embedded::RuleFileLock> KeepBeforeReplacing(const Arguments& arguments, const CString& path);

/// Makes the project's rule folder when `path` lies in it: a project without rules has none yet, and files
/// are written into folders that are there. Raises `embedded::Error`.
void EnsureRuleFolderOf(const CString& path);

/// Raises `Refusal` when something stands at the path that is no rule file, wrapped or not: a rule file must
/// not take the place of notes, settings or databases.
void CheckReplaceable(const CString& path);

/// Why a file cannot be copied to another place, in the words of the system: the module says only that it
/// could not. Tries it and leaves what was there. Empty when it could be copied now.
CString WhyNotCopied(const CString& from, const CString& to);

/// To be called before a store is built on a file that it may write: the history gets a copy of what the file
/// holds, and then `CheckRuleFileIfThere` is asked. A refusal also names the newest copy that can be read.
void KeepAndCheck(const CString& path, embedded::History& history);

/// The rule file of the project's current configuration. Not looked at. Raises `embedded::Error` when the
/// project's ini names one that cannot be, by which the module would leave the rule folder.
CString CurrentFile();

/// To be asked after the module was to make `path` the project's current configuration: raises `Refusal` when
/// the project remembers another one. Gives a line to be told when it remembers the name, but not the place:
/// the next opening then takes the configuration of that name in the rule folder.
CString NoteOnCurrent(const CString& path);

/// What `--config` names, or `CurrentFile()` when `text` is empty. Not looked at.
CString ChooseRuleFile(const QString& text);

} // namespace cli
