#pragma once

#include "embedded/data/office/PublishedConfigurations.h"
#include "office/OfficeSetting.h"
#include "support/server/PostgresServer.h"

#include <gtest/gtest.h>

#include <functional>

namespace test {

/// States of the rule file of all tests.
inline const QByteArray Base = PipeFile(PipeElement(2, "钢管"));
inline const QByteArray WithCopper = PipeFile(PipeElement(2, "钢管") + PipeElement(3, "铜管"));
inline const QByteArray WithPlastic = PipeFile(PipeElement(2, "钢管") + PipeElement(3, "PE管"));
inline const QByteArray ByCount = PipeFile(PipeElement(2, "钢管", "个数"));
inline const QByteArray ByLength = PipeFile(PipeElement(2, "钢管", "长度"));

/// The server is down while one lives.
class ServerDown
{
public:
    ServerDown() { SharedServer().Stop(); }
    ~ServerDown() { SharedServer().StartAgain(); }
    ServerDown(const ServerDown&) = delete;
    ServerDown& operator=(const ServerDown&) = delete;
};

inline bool Holds(const QByteArray& file, const QByteArray& text)
{
    return file.contains(text);
}

inline CString ErrorOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const embedded::Error& error) {
        return error.Message();
    }
    return QStringLiteral("no error");
}

/// Wang's and Li's projects, both with the first version.
class TwoProjects : public testing::Test
{
protected:
    TwoProjects()
    {
        m_wang.Write(Base);
        m_wang.Publish(QStringLiteral("第一版"));
        m_li.Fetch();
    }

    /// What the project has sent is published, though the project did not hear of it.
    static void PublishUnheard(OfficeProject& project, const QByteArray& content)
    {
        embedded::OfficeMemory& memory = project.Host().Office()->Memory();
        const embedded::VersionMark base = memory.Base(Configuration);
        memory.RememberSent(Configuration, embedded::DigestOf(content));
        const auto outcome = embedded::PublishedConfigurations(*project.Host().Office()->Reached())
                                 .Publish({Configuration, base, content});
        ASSERT_EQ(outcome.end, embedded::PublishOutcome::Published);
    }
    /// What Li has made waits, Wang publishes something else meanwhile, and the office is there again.
    void LetPlasticWaitWhileCopperIsPublished()
    {
        m_li.Write(WithPlastic);
        {
            const ServerDown down;
            m_li.Publish();
        }
        ASSERT_TRUE(m_li.Host().Office()->Reach());
        m_wang.Write(WithCopper);
        m_wang.Publish();
    }

    OfficeSetting m_setting;
    OfficeProject m_wang{m_setting, QStringLiteral("王工程"), QStringLiteral("wang")};
    OfficeProject m_li{m_setting, QStringLiteral("李工程"), QStringLiteral("li")};
};

} // namespace test
