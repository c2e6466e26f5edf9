#include "embedded/windows/TemplateFile.h"

#include "host/RuleFilePlaces.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "widgets/Collation.h"
#include "xml/Dom.h"

#include <QtCore/QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace embedded {

TemplateFile DescribeTemplate(const CString& path)
{
    TemplateFile file;
    file.name = platform::BeforeLastStop(platform::FileNameOf(path));
    file.path = path;
    file.modified = QFileInfo(platform::ToNative(path)).lastModified();
    const xml::Document document = xml::Document::Create();
    if (!document || !document.Load(path)) return file;
    const xml::Element root = document.FirstChild().ToElement();
    file.isRuleFile = root.Name() == host::RuleFileRoot();
    root.GetAttribute(u"Version"_s, file.version);
    return file;
}

std::vector<TemplateFile> FindTemplates(const CString& folder)
{
    std::vector<TemplateFile> files;
    for (const CString& name : platform::Files().FindFiles(folder, u".xml"_s))
        files.push_back(DescribeTemplate(folder + u'\\' + name));
    std::sort(files.begin(), files.end(), [](const TemplateFile& left, const TemplateFile& right) {
        return widgets::Collate(left.name, right.name) < 0;
    });
    return files;
}

} // namespace embedded
