#include "editor/workbench/WorkbenchFixture.h"

#include "support/WindowWaits.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtTest/QTest>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QTableView>

using namespace Qt::StringLiterals;

namespace test {

WorkbenchOnSample::WorkbenchOnSample()
    : m_window(*m_session, {.run = [](const auto& step) { step(); },
                            .openFile = [this](const editor::RuleRow& found) { m_wanted = found.file; },
                            .readOthers = [this] { return m_others; },
                            .save = [this] { ++m_saves; },
                            .tell = {}})
{
    OpenAt(Pipes);
    m_window.resize(1000, 700);
    m_window.show();
    m_window.activateWindow();
    WaitUntilActive(m_window);
    m_window.FocusRules();
}

WorkbenchOnSample::~WorkbenchOnSample()
{
    QGuiApplication::clipboard()->clear();
}

QAbstractItemModel& WorkbenchOnSample::Model() const
{
    return *static_cast<QTableView&>(Rules()).model();
}

int WorkbenchOnSample::Lines() const
{
    return Model().rowCount();
}

CString WorkbenchOnSample::Cell(int line, int column) const
{
    return Model().index(line, column).data().toString();
}

QLineEdit& WorkbenchOnSample::Search() const
{
    return *m_window.findChild<QLineEdit*>(u"find"_s);
}

editor::CategoryPanel& WorkbenchOnSample::Categories() const
{
    return dynamic_cast<editor::CategoryPanel&>(
        *dynamic_cast<QScrollArea&>(*m_window.FindDock(u"categories"_s)->widget()).widget());
}

void WorkbenchOnSample::Press(Qt::Key key, Qt::KeyboardModifiers modifiers) const
{
    QTest::keyClick(&Rules(), key, modifiers);
}

std::vector<CString> WorkbenchOnSample::Conditions() const
{
    std::vector<CString> texts;
    for (const rules::Rule& rule : m_session->Category()->rules)
        texts.push_back(rule.Text());
    return texts;
}

} // namespace test
