#pragma once

#include "platform/Text.h"

#include <functional>

namespace embedded {

/// What is to be done about a file that stands where a copy is to go.
struct ConflictDecision
{
    enum Action { Overwrite, Rename, Cancel };
    Action action = Cancel;
    CString name; ///< for `Rename`: the other name, without extension
};

/// Asks the user; is given the folder and the name, without extension, that is taken there.
using ConflictQuestion = std::function<ConflictDecision(const CString& folder, const CString& name)>;

/// What has come of a copy.
struct TransferOutcome
{
    bool done = false;
    CString name;   ///< under which the copy stands, without extension
    CString backup; ///< file name of the copy of what was overwritten; empty when nothing was
    CString fault;  ///< for the user, without final mark; empty also when the user has cancelled
};

/// Why no rule file of that name (without extension) can be kept, as a sentence without final mark; empty
/// when it can.
CString TemplateNameFault(const CString& name);

/// A name made of `name` by which no rule file stands in `folder`.
CString FreeTemplateName(const CString& folder, const CString& name);

/// Whether a rule file of that name stands in `folder`.
bool HasTemplate(const CString& folder, const CString& name);

/// Copies the rule file `source` into `folder` as `name`. A file that is already there with the same bytes is
/// left alone; one with others is overwritten only when `ask` says so, and then first copied to
/// "NAME.xml.DATE-TIME.bak" beside it. Failing writes leave the former file as it was.
TransferOutcome TransferTemplate(const CString& source, const CString& folder, const CString& name,
                                 const ConflictQuestion& ask);

} // namespace embedded
