#include "support/Surroundings.h"

#include "host/Installation.h"
#include "platform/Files.h"
#include "platform/Messages.h"
#include "xml/Dom.h"

#include <QtCore/QDir>
#include <QtCore/QLocale>
#include <QtCore/QProcessEnvironment>

#include <gtest/gtest.h>

#include <clocale>
#include <string>
#include <utility>

namespace test {

namespace {

const void* InstalledHost()
{
    try {
        return &host::Categories();
    } catch (const host::NoHostError&) {
        return nullptr;
    }
}

bool HasMessageHandler()
{
    platform::MessageHandler handler = platform::InstallMessageHandler({});
    const bool found = static_cast<bool>(handler);
    platform::InstallMessageHandler(std::move(handler));
    return found;
}

/// What a test finds and has to leave.
struct State
{
    QStringList environment = QProcessEnvironment::systemEnvironment().toStringList();
    QString folder = QDir::currentPath();
    QLocale locale;
    std::string librarysLocale = std::setlocale(LC_ALL, nullptr);
    const void* host = InstalledHost();
    const void* files = &platform::Files();
    bool hasMessageHandler = HasMessageHandler();
    bool hasXmlEngine = !xml::Document::Create().IsNull();
};

class CleanEnds : public ::testing::EmptyTestEventListener
{
public:
    void OnTestStart(const ::testing::TestInfo& /*test*/) override { m_before = State(); }

    void OnTestEnd(const ::testing::TestInfo& /*test*/) override
    {
        const State after;
        EXPECT_EQ(after.environment.join(u'\n').toStdString(),
                  m_before.environment.join(u'\n').toStdString());
        EXPECT_EQ(after.folder.toStdString(), m_before.folder.toStdString()) << "the working folder";
        EXPECT_EQ(after.locale.name().toStdString(), m_before.locale.name().toStdString());
        EXPECT_EQ(after.librarysLocale, m_before.librarysLocale);
        EXPECT_EQ(after.host, m_before.host) << "a host is still installed";
        EXPECT_EQ(after.files, m_before.files) << "a file system is still installed";
        EXPECT_EQ(after.hasMessageHandler, m_before.hasMessageHandler);
        EXPECT_EQ(after.hasXmlEngine, m_before.hasXmlEngine);
        QDir::setCurrent(m_before.folder);
    }

private:
    State m_before;
};

} // namespace

void RequireCleanEnds()
{
    ::testing::UnitTest::GetInstance()->listeners().Append(new CleanEnds);
}

} // namespace test
