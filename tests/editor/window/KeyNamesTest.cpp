#include "editor/window/KeyNames.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QKeySequence>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class NamesOfKeys : public ::testing::Test
{
protected:
    NamesOfKeys() { QCoreApplication::installTranslator(&m_names); }
    ~NamesOfKeys() override { QCoreApplication::removeTranslator(&m_names); }

    static QString Named(const QKeySequence& keys) { return keys.toString(QKeySequence::NativeText); }

private:
    editor::KeyNames m_names;
};

} // namespace

TEST_F(NamesOfKeys, AreThoseOfTheManual)
{
    EXPECT_EQ(Named(Qt::Key_Insert), u"Insert"_s);
    EXPECT_EQ(Named(Qt::Key_Delete), u"Delete"_s);
    EXPECT_EQ(Named(Qt::CTRL | Qt::Key_Return), u"Ctrl+Enter"_s);
    EXPECT_EQ(Named(Qt::CTRL | Qt::Key_Up), u"Ctrl+↑"_s);
    EXPECT_EQ(Named(Qt::ALT | Qt::Key_Left), u"Alt+←"_s);
}

TEST_F(NamesOfKeys, StayWhatTheToolkitCallsThemElsewhere)
{
    EXPECT_EQ(Named(Qt::CTRL | Qt::SHIFT | Qt::Key_C), u"Ctrl+Shift+C"_s);
    EXPECT_EQ(QCoreApplication::translate("Elsewhere", "Del"), u"Del"_s);
}

TEST_F(NamesOfKeys, WordsAreReadAsTheSameKeys)
{
    for (const Qt::Key key : {Qt::Key_Insert, Qt::Key_Delete, Qt::Key_PageUp})
        EXPECT_EQ(QKeySequence::fromString(Named(key), QKeySequence::NativeText), QKeySequence(key));
}
