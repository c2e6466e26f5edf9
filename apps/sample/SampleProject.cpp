#include "sample/SampleProject.h"

#include "embedded/data/EmbeddedHost.h"
#include "host/Installation.h"
#include "platform/Files.h"
#include "presenter/CQdDeConfigPresenter.h"
#include "store/RuleFile.h"

#include <QtCore/QFile>

using namespace Qt::StringLiterals;

// Outside any namespace: the macro declares a function there. A static library's resources need this call.
static void InitResources()
{
    Q_INIT_RESOURCE(ktqdde_sample);
}

namespace sample {

namespace {

QByteArray SampleRules()
{
    InitResources();
    QFile file(u":/samples/SampleRules.xml"_s);
    if (!file.open(QIODevice::ReadOnly)) throw embedded::Error(u"程序里没有示例规则"_s);
    return file.readAll();
}

} // namespace

void CreateSampleProject(const QString& nativeFolder)
{
    embedded::ProjectOptions options;
    options.spec = u"给排水"_s;
    embedded::CreateProject(nativeFolder, options);
    embedded::EmbeddedHost host(nativeFolder);
    const host::Installation installed = host::Install(host.Roles());
    platform::Files().CreateFolder(store::RuleFolder());
    const CString path = store::RuleFolder() + u'\\' + store::DefaultConfigName() + u".xml"_s;
    platform::Files().WriteInPlace(path, SampleRules());
    if (!CQdDeConfigPresenter({}).Save()) throw embedded::Error(u"示例规则保存不了"_s);
}

} // namespace sample
