#include "docs/Documents.h"
#include "support/Patience.h"
#include "support/PrintText.h"
#include "support/UnprivilegedFolder.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString OfficeDocument = u"docs/office.md"_s;
const QString Chapter = u"docs/manual.zh-CN/office.md"_s;

/// A section of a document, by its heading.
QString SectionOf(const QString& text, const QString& heading)
{
    return text.section(u"\n## "_s + heading + u'\n', 1).section(u"\n## "_s, 0, 0);
}

/// The lines of the code blocks that are for the shell.
QStringList ShellLines(const QString& text)
{
    QStringList lines;
    bool isInside = false;
    for (const QString& line : text.split(u'\n')) {
        if (line.startsWith(u"```"))
            isInside = line == u"```bash";
        else if (isInside)
            lines.append(line);
    }
    return lines;
}

bool IsExport(const QString& line)
{
    return line.startsWith(u"export ");
}

/// Somebody with a home in a temporary folder who sets an office up there, and is no administrator of the
/// machine. The server ends with this.
class Administrator
{
public:
    Administrator()
    {
        // The program of this build may lie where that user may not look.
        QFile::copy(QStringLiteral(KTQDDE_PROGRAM), m_home.Native(u"ktqdde"_s));
        QFile::setPermissions(m_home.Native(u"ktqdde"_s), Everybody | QFile::ExeOwner | QFile::ExeOther);
    }
    ~Administrator() { Run(u"pg_ctl stop --mode=immediate --wait --pgdata=$HOME/office/data"_s); }

    void Write(const test::ShownFile& shown) const
    {
        QFile file(m_home.Native(shown.name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(shown.content);
        file.setPermissions(Everybody);
    }

    /// Does what a line says, in the home folder. Empty when it succeeded, else what went wrong.
    QString Run(const QString& line)
    {
        if (IsExport(line)) {
            m_exports += line + u'\n';
            return {};
        }
        QProcess process;
        const QString script = u"set -e; cd; "_s + m_exports + line;
        m_home.SetUp(process, u"bash"_s, {u"-c"_s, script});
        process.setProcessEnvironment(Environment());
        process.start();
        process.closeWriteChannel();
        test::WaitForEnd(process);
        const bool isDone = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
        m_said = QString::fromUtf8(process.readAll());
        return isDone ? QString() : u"status %1: %2"_s.arg(process.exitCode()).arg(m_said);
    }
    /// What the last line has printed.
    const QString& Said() const { return m_said; }
    bool Has(const QString& file) const { return QFileInfo::exists(m_home.Native(file)); }

private:
    static constexpr QFile::Permissions Everybody =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther;

    QProcessEnvironment Environment() const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString& name : environment.keys())
            if (name.startsWith(u"PG")) environment.remove(name);
        environment.remove(u"KTQDDE_PROJECT"_s);
        environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s); // a locale may be named that nobody has made
        environment.insert(u"PGCTLTIMEOUT"_s, QString::number(test::Patience() / 1s));
        environment.insert(u"HOME"_s, m_home.Native({}));
        environment.insert(u"PATH"_s, m_home.Native({}) + u':' + environment.value(u"PATH"_s));
        return environment;
    }

    test::UnprivilegedFolder m_home;
    QString m_exports;
    QString m_said;
};

} // namespace

TEST(OfficeDocument, SetsAnOfficeUpInTenCommands)
{
    const QStringList lines = ShellLines(SectionOf(test::Document(OfficeDocument).Text(), u"Ten commands"_s));
    const QStringList before = lines.mid(0, lines.indexOf(u"ktqdde office status office"_s));
    EXPECT_EQ(
        std::count_if(before.begin(), before.end(), [](const QString& line) { return !IsExport(line); }), 10);
    EXPECT_TRUE(before.last().contains(u"PGUSER=li"_s));
}

TEST(OfficeDocument, EveryCommandDoesWhatItSays)
{
    const test::Document document(OfficeDocument);
    Administrator user;
    for (const test::ShownFile& file : document.Files())
        user.Write(file);
    for (const QString& line : ShellLines(document.Text())) {
        ASSERT_EQ(user.Run(line), u""_s) << line.toStdString();
        if (line == u"ktqdde --project 王工程 cloud list") {
            EXPECT_TRUE(user.Said().contains(u"相同"_s)) << user.Said().toStdString();
        }
    }
    EXPECT_TRUE(user.Has(u"李工程/app/自动套配置/安装规则.xml"_s));
    EXPECT_TRUE(user.Has(u"office.dump"_s));
    // The chapter of the manual, for whoever joins that office.
    for (const test::ShownCommand& command : test::Document(Chapter).Commands())
        ASSERT_EQ(user.Run(u"PGUSER=li "_s + command.words.join(u' ')), u""_s) << command.line;
}
