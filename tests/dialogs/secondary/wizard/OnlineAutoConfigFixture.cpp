#include "dialogs/secondary/wizard/OnlineAutoConfigFixture.h"

#include <QtTest/QTest>
#include <QtWidgets/QLineEdit>

namespace test::autoconfig {

void OnlineAutoConfigTest::OpenWizard(const WizardArguments& arguments)
{
    m_wizard =
        std::make_unique<COnlineAutoConfigDlg>(arguments.configFile, arguments.billFile, arguments.quotaFile,
                                               arguments.note, arguments.allowBack, nullptr);
    test::Open(*m_wizard);
}

void OnlineAutoConfigTest::OpenOnABill()
{
    m_ruleId = PrepareRule({u"DN15"_s});
    PrepareBill(m_ruleId, u"031001001001"_s);
    OpenWizard();
}

void OnlineAutoConfigTest::EditName(const CString& name)
{
    MyGridCtrl& grid = WizardGrid();
    const QModelIndex cell = grid.model()->index(0, 1);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(cell).topLeft() + QPoint(5, 5));
    QTest::keyClick(&grid, Qt::Key_F2);
    auto* line = grid.viewport()->findChild<QLineEdit*>();
    ASSERT_NE(line, nullptr);
    line->selectAll();
    for (const QChar character : name)
        QTest::sendKeyEvent(QTest::Click, line, Qt::Key_unknown, QString(character), Qt::NoModifier);
}

void OnlineAutoConfigTest::Strike(Qt::Key key)
{
    test::Press(*m_wizard, key);
    QCoreApplication::processEvents();
}

CString OnlineAutoConfigTest::ShownName() const
{
    return WizardGrid().GetItemText(1, 2);
}

CString OnlineAutoConfigTest::SavedName() const
{
    CQdDeConfigPresenter presenter(FilePath(u"DefaultConfig"_s));
    CPath path = WaterPipes;
    path.configId = m_ruleId;
    return presenter.GetConfig(path)->GetQd(1)->GetRecord().strName;
}

} // namespace test::autoconfig
