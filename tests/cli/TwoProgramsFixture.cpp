#include "cli/TwoProgramsFixture.h"

#include <QtCore/QDir>
#include <QtCore/QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace test {

namespace {

constexpr int UsualRounds = 6;

} // namespace

const MetSpecialty Water{u"给排水"_s, R"(给排水\\管道\\给水管)"};
const MetSpecialty Power{u"电气"_s, R"(电气\\电缆桥架\\桥架)"};
const QByteArray Save = "{\"op\":\"Save\"}\n";

QByteArray AddRule(const MetSpecialty& specialty)
{
    return "{\"op\":\"AddConfig\",\"path\":{\"category\":\"" + specialty.category + "\"}}\n";
}

int RulesOf(const QByteArray& file, const MetSpecialty& specialty)
{
    constexpr int specialtyDepth = 2;
    QXmlStreamReader xml(file);
    int depth = 0;
    int count = -1;
    bool inside = false;
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        if (token == QXmlStreamReader::EndElement) --depth;
        if (token != QXmlStreamReader::StartElement) continue;
        ++depth;
        if (depth == specialtyDepth) inside = xml.attributes().value(u"name"_s) == specialty.name;
        if (!inside) continue;
        if (count < 0) count = 0;
        if (xml.attributes().value(u"bDefault"_s) == u"0") ++count;
    }
    return count;
}

int SavesOf(const QByteArray& output)
{
    return static_cast<int>(output.count("\"op\":\"Save\",\"ok\":true"));
}

int Rounds()
{
    const int asked = qEnvironmentVariableIntValue("KTQDDE_ROUNDS");
    return asked > 0 ? asked : UsualRounds;
}

TwoProgramsFixture::TwoProgramsFixture() : m_cli(u"bill"_s)
{
    EXPECT_EQ(m_cli.Batch(AddRule(Water) + Save).status, 0);
    EXPECT_EQ(m_cli.Batch(AddRule(Power) + Save, {u"--spec"_s, Power.name}).status, 0);
    m_first = Content();
    WriteScript(Water);
    WriteScript(Power);
}

void TwoProgramsFixture::WriteScript(const MetSpecialty& specialty) const
{
    QByteArray script;
    for (int edit = 0; edit < Edits; ++edit)
        script += AddRule(specialty) + Save;
    m_cli.Folder().WriteFile(specialty.name + u".jsonl"_s, script);
}

TwoProgramsFixture::Process TwoProgramsFixture::Start(const QString& program,
                                                      const QStringList& arguments) const
{
    auto process = std::make_unique<QProcess>();
    process->setWorkingDirectory(m_cli.Folder().Native({}));
    process->setProcessEnvironment(PatientEnvironment());
    process->start(program, arguments);
    EXPECT_TRUE(process->waitForStarted(static_cast<int>(Patience().count())));
    return process;
}

TwoProgramsFixture::Process TwoProgramsFixture::StartBatch(const MetSpecialty& specialty) const
{
    return Start(QStringLiteral(KTQDDE_PROGRAM), {u"--project"_s, u"project"_s, u"batch"_s,
                                                  specialty.name + u".jsonl"_s, u"--spec"_s, specialty.name});
}

TwoProgramsFixture::Process TwoProgramsFixture::StartDialog() const
{
    return Start(QStringLiteral(KTQDDE_DIALOG_SAVER),
                 {m_cli.Folder().Native(u"project"_s), QString::number(Edits)});
}

TwoProgramsFixture::Process TwoProgramsFixture::StartWorkbench(const MetSpecialty& specialty) const
{
    const QString category = QString::fromUtf8(specialty.category).replace(u"\\\\"_s, u"\\"_s);
    return Start(QStringLiteral(KTQDDE_DIALOG_SAVER),
                 {m_cli.Folder().Native(u"project"_s), QString::number(Edits), category});
}

QString TwoProgramsFixture::MarkFolder() const
{
    return m_cli.Folder().Native(u"project\\history\\locks"_s);
}

QStringList TwoProgramsFixture::Marks() const
{
    return QDir(MarkFolder()).entryList({u"*.lock"_s}, QDir::Files | QDir::Hidden);
}

} // namespace test
