#pragma once

#include "rules/model/Configuration.h"
#include "rules/model/Structure.h"

#include <QtCore/QByteArray>

class Spec;

namespace xml {
class Document;
}

/// How snapshots are taken.
namespace rules {

/// The rules of one specialty as they stand in a tree, saved or not. The tree may change or go afterwards.
KTQDDE_RULES_EXPORT ConfigurationPtr TakeSnapshot(const Spec& spec);

/// All specialties of a rule file, in the order of the file, by the path text. Nothing is written and no host
/// is asked: the categories are those that the file names, of equal names beside each other the first. A
/// small category without a default rule gets one at its end, as it does in the editor. Null, with the reason
/// in words, when the file cannot be read, is no XML or no rule file. `structure`, if not null, takes what is
/// odd about the build of the file.
KTQDDE_RULES_EXPORT ConfigurationPtr ReadRuleFile(const CString& path, CString& reason,
                                                  FileStructure* structure = nullptr);

/// The same of the bytes of a rule file.
KTQDDE_RULES_EXPORT ConfigurationPtr ReadRules(const QByteArray& bytes, CString& reason,
                                               FileStructure* structure = nullptr);

/// The rules of one small category of a rule file that has been loaded, for whoever needs them before the
/// others: of these no rules come, but the names of the specialties, and of the big categories beside that
/// one, in the order of the file. Completes the document where the category has no default rule. Null, with
/// the reason in words, when the document holds no rule file.
KTQDDE_RULES_EXPORT ConfigurationPtr ReadCategory(const xml::Document& document, const CString& categoryText,
                                                  CString& reason);

} // namespace rules
