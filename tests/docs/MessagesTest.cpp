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

/// The messages with which the points of a section begin.
QStringList FirstQuotes(const QString& section)
{
    QStringList quotes;
    for (const QString& line : section.split(u'\n')) {
        if (line.startsWith(u"- 「")) quotes.append(line.mid(3, line.indexOf(u'」') - 3));
    }
    return quotes;
}

} // namespace

TEST(Manual, TellsOfEachMessageOnceInASection)
{
    const QString text = test::Document(u"docs/manual.zh-CN/messages.md"_s).Text();
    const QStringList sections = text.split(u"\n## "_s);
    EXPECT_GE(sections.size(), 8);
    for (const QString& section : sections) {
        QSet<QString> told;
        for (const QString& quote : FirstQuotes(section)) {
            EXPECT_FALSE(told.contains(quote)) << quote.toStdString();
            told.insert(quote);
        }
    }
}

TEST(Manual, QuotesOnlyWhatTheProgramsShow)
{
    const QSet<QString> shown = test::TextsOfWindows();
    const auto quotes = QuotesOfTheManual();
    EXPECT_GE(quotes.size(), 200);
    for (auto quote = quotes.begin(); quote != quotes.end(); ++quote)
        EXPECT_TRUE(shown.contains(quote.key()))
            << quote.value().toStdString() << ": " << quote.key().toStdString();
}

TEST(Manual, QuotesAnExclamationMarkOnlyBehindWarnings)
{
    const QSet<QString> warnings = test::WarningsOfWindows();
    int marked = 0;
    for (const QString& path : test::DocumentPaths()) {
        if (!path.contains(u"manual.zh-CN")) continue;
        for (const QString& quote : test::Document(path).Quotes()) {
            if (!quote.trimmed().endsWith(u'!')) continue;
            ++marked;
            EXPECT_TRUE(warnings.contains(AsQuoted(quote)))
                << path.toStdString() << ": " << quote.toStdString();
        }
    }
    EXPECT_GE(marked, 15);
}

TEST(Manual, TellsOfEveryMessage)
{
    const auto quotes = QuotesOfTheManual();
    const QSet<QString> messages = test::MessagesOfWindows();
    EXPECT_GE(messages.size(), 60);
    for (const QString& message : messages)
        EXPECT_TRUE(quotes.contains(message)) << message.toStdString();
}
