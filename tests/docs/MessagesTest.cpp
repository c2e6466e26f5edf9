#include "docs/Documents.h"
#include "docs/SourceTexts.h"
#include "support/PrintText.h"

#include <QtCore/QMultiHash>
#include <QtCore/QSet>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QString AsQuoted(QString quote)
{
    return test::AsSeen(quote.remove(u'`').replace(u"\\|"_s, u"|"_s));
}

/// What the user's manual quotes, by the file in which it does.
QMultiHash<QString, QString> QuotesOfTheManual()
{
    QMultiHash<QString, QString> quotes;
    for (const QString& path : test::DocumentPaths()) {
        if (!path.contains(u"manual.zh-CN")) continue;
        for (const QString& quote : test::Document(path).Quotes())
            quotes.insert(AsQuoted(quote), path);
    }
    return quotes;
}

} // namespace

TEST(Manual, QuotesOnlyWhatTheProgramsShow)
{
    const QSet<QString> shown = test::TextsOfWindows();
    const auto quotes = QuotesOfTheManual();
    EXPECT_GE(quotes.size(), 200);
    for (auto quote = quotes.begin(); quote != quotes.end(); ++quote)
        EXPECT_TRUE(shown.contains(quote.key()))
            << quote.value().toStdString() << ": " << quote.key().toStdString();
}

TEST(Manual, TellsOfEveryMessage)
{
    const auto quotes = QuotesOfTheManual();
    const QSet<QString> messages = test::MessagesOfWindows();
    EXPECT_GE(messages.size(), 60);
    for (const QString& message : messages)
        EXPECT_TRUE(quotes.contains(message)) << message.toStdString();
}
