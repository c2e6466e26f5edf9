#pragma once

#include "platform/Text.h"

#include <QtCore/QDateTime>

#include <vector>

namespace embedded {

/// A rule file in a folder.
struct TemplateFile
{
    CString name; ///< without folder and extension
    CString path;
    bool isRuleFile = false; ///< whether it can be read and has the document element of a rule file
    CString version;         ///< attribute "Version" of the document element; may be empty
    QDateTime modified;
};

/// What is known of the file at `path`.
TemplateFile DescribeTemplate(const CString& path);

/// The files of `folder` that end in ".xml", in the order of sorted lists by name; empty when the folder
/// cannot be read.
std::vector<TemplateFile> FindTemplates(const CString& folder);

} // namespace embedded
