#include "sample/SampleProject.h"

#include "embedded/data/engine/Error.h"
#include "host/Installation.h"
#include "platform/Files.h"
#include "presenter/CAutoQdDeConfigFacade.h"
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

/// A rule file that travels inside the program, and its name in the project.
struct Sample
{
    QString resource;
    CString name;
};

QByteArray ShippedBytes(const QString& resource)
{
    QFile file(u":/samples/"_s + resource);
    if (!file.open(QIODevice::ReadOnly)) throw embedded::Error(u"程序里没有示例规则"_s);
    return file.readAll();
}

void WriteSample(const Sample& sample)
{
    platform::Files().WriteInPlace(store::RuleFolder() + u'\\' + sample.name + u".xml"_s,
                                   ShippedBytes(sample.resource));
}

} // namespace

void CreateSampleProject(const QString& nativeFolder)
{
    embedded::CreateProject(nativeFolder, SampleOptions());
    AddSampleRules(nativeFolder);
}

embedded::ProjectOptions SampleOptions()
{
    embedded::ProjectOptions options;
    options.spec = u"给排水"_s;
    return options;
}

void AddSampleRules(const QString& nativeProject)
{
    embedded::EmbeddedHost host(nativeProject);
    const host::Installation installed = host::Install(host.Roles());
    InitResources();
    platform::Files().CreateFolder(store::RuleFolder());
    for (const Sample& sample :
         {Sample{u"SampleRules.xml"_s, store::DefaultConfigName()},
          Sample{u"PlumbingRules.xml"_s, TakeoffConfiguration()},
          Sample{u"ElectricalRules.xml"_s, u"电气示例"_s}, Sample{u"HvacRules.xml"_s, u"暖通示例"_s}})
        WriteSample(sample);
    CAutoQdDeConfigFacade::AttrConfig();
    if (!CQdDeConfigPresenter({}).Save()) throw embedded::Error(u"示例规则保存不了"_s);
}

CString TakeoffConfiguration()
{
    return u"给排水示例"_s;
}

void WriteSampleTakeoff(const CString& path)
{
    InitResources();
    platform::Files().WriteInPlace(path, ShippedBytes(u"PlumbingTakeoff.csv"_s));
}

} // namespace sample
