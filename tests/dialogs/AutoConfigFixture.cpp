#include "dialogs/AutoConfigFixture.h"

#include "dialogs/ProjectMode.h"
#include "dialogs/grid/GridEditors.h"
#include "dialogs/secondary/CTTComboBox.h"
#include "dialogs/secondary/DlgSaveAs.h"

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTabWidget>

namespace test::autoconfig {

namespace {

void ClickItem(QTreeWidget& tree, QTreeWidgetItem* item)
{
    tree.scrollToItem(item);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualItemRect(item).center());
}

/// Lets queued work run: the toolkit ends an edit and frees its field that way.
void Settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

CStringArray DescribedRules(CQdDeConfigPresenter& presenter, const CPath& category)
{
    std::vector<ConfigNode*> rules;
    presenter.GetConfig(category, rules);
    CStringArray texts;
    for (const ConfigNode* rule : rules)
        texts.append(Described(*rule));
    return texts;
}

} // namespace

AutoConfigTest::AutoConfigTest()
{
    m_guard.Host().SetWindows(&m_windows);
    m_guard.Reinstall();
}

void AutoConfigTest::Prepare(const std::function<void(CQdDeConfigPresenter&)>& step)
{
    CQdDeConfigPresenter presenter{CString()};
    step(presenter);
    presenter.Save();
}

int AutoConfigTest::PrepareRule(const CStringArray& values, const CPath& category)
{
    CPath path = category;
    Prepare([&](CQdDeConfigPresenter& presenter) {
        presenter.AddConfig(path, path.configId);
        for (const CString& value : values)
            presenter.AddCondition(path, ValueCondition(u"管径"_s, value));
    });
    return path.configId;
}

int AutoConfigTest::PrepareBill(int ruleId, const CString& number, const CStringArray& quotas)
{
    CPath path = WaterPipes;
    path.configId = ruleId;
    Prepare([&](CQdDeConfigPresenter& presenter) {
        std::vector<ConfigNode*> rules;
        presenter.AddQd(Bill(number), path, rules);
        path.qdId = presenter.GetConfig(path)->GetQd().back()->GetId();
        for (const CString& quota : quotas)
            presenter.AddDe2QdNode(Quota(quota), path, rules);
    });
    return path.qdId;
}

void AutoConfigTest::PrepareQuota(int ruleId, const CString& number)
{
    CPath path = WaterPipes;
    path.configId = ruleId;
    Prepare([&](CQdDeConfigPresenter& presenter) {
        std::vector<ConfigNode*> rules;
        presenter.AddDe2ConfigNode(Quota(number, SQdDeInfo::QuotaMode), path, rules);
    });
}

void AutoConfigTest::MakeEqualityOnly(const CString& name, const CString& code)
{
    const CString text = u"<属性类型配置信息><给排水 id='1' name='给排水'><管道 id='11' name='管道'>"
                         "<给水管 id='111' name='给水管'><%2 name='%1' namecode='%2' vartype='1' "
                         "compar='0' specrelation='1'/></给水管></管道></给排水></属性类型配置信息>"_s;
    m_guard.Folder().WriteFile(u"app\\AttrConfig.xml"_s, text.arg(name, code).toUtf8());
}

void AutoConfigTest::Open(const CString& configFile)
{
    m_dialog = std::make_unique<OpenAutoConfigDlg>(configFile);
    test::Open(*m_dialog);
}

QTreeWidgetItem* AutoConfigTest::Category(const CString& name) const
{
    const auto found = Tree().findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
    if (found.isEmpty()) throw std::invalid_argument("no category " + name.toStdString());
    return found.first();
}

void AutoConfigTest::SelectCategory(const CString& name)
{
    ClickItem(Tree(), Category(name));
}

void AutoConfigTest::SelectRule(int row)
{
    ClickItem(Rules(), Rules().topLevelItem(row));
}

void AutoConfigTest::SelectAttribute(const CString& name)
{
    const auto line = static_cast<int>(AttributeNames().indexOf(name));
    auto& list = m_dialog->Item<QListWidget>(Attributes);
    list.scrollToItem(list.item(line));
    test::ClickLine(*m_dialog, Attributes, line);
}

void AutoConfigTest::SelectPage(int page)
{
    auto* bar = m_dialog->Item<QTabWidget>(PageTab).tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(page).center());
}

void AutoConfigTest::TypeInto(ControlId combo, const CString& text)
{
    QLineEdit* edit = m_dialog->Item<CTTComboBox>(combo).lineEdit();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, edit, Qt::Key_unknown, QString(character), Qt::NoModifier);
}

void AutoConfigTest::Choose(ControlId combo, const CString& entry)
{
    auto& box = m_dialog->Item<CTTComboBox>(combo);
    const int wanted = box.findText(entry);
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Home);
    while (box.currentIndex() < wanted)
        QTest::keyClick(&box, Qt::Key_Down);
}

void AutoConfigTest::AddValue(const CString& attribute, const CString& value)
{
    SelectAttribute(attribute);
    SelectPage(0);
    TypeInto(ValueCombo, value);
    Press(AddConditionButton);
}

void AutoConfigTest::AddRange(const CString& attribute, const CString& lower, const CString& upper)
{
    SelectAttribute(attribute);
    SelectPage(1);
    TypeInto(LowerBound, lower);
    TypeInto(UpperBound, upper);
    Press(AddConditionButton);
}

void AutoConfigTest::Key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QWidget* focused = m_dialog->focusWidget();
    QTest::keyClick(focused == nullptr ? m_dialog.get() : focused, key, modifiers);
    Settle();
}

QPoint AutoConfigTest::CellPoint(int row, int column) const
{
    const QModelIndex index = Grid().model()->index(row - 1, column - 1);
    Grid().scrollTo(index);
    return Grid().visualRect(index).topLeft() + QPoint(5, 5);
}

void AutoConfigTest::ClickCell(int row, int column, Qt::KeyboardModifiers modifiers)
{
    QTest::mouseClick(Grid().viewport(), Qt::LeftButton, modifiers, CellPoint(row, column));
    // Two clicks shortly after each other would make a double click.
    QTest::lastMouseTimestamp += QApplication::doubleClickInterval() + 1;
}

void AutoConfigTest::EditCell(int row, int column, const CString& text)
{
    Settle();
    ClickCell(row, column);
    QTest::keyClick(&Grid(), Qt::Key_F2);
    auto* line = Grid().viewport()->findChild<QLineEdit*>();
    ASSERT_NE(line, nullptr);
    line->selectAll();
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, line, Qt::Key_unknown, QString(character), Qt::NoModifier);
}

void AutoConfigTest::ChooseInCell(int row, int column, int entry)
{
    ClickCell(row, column);
    QTest::keyClick(&Grid(), Qt::Key_F2);
    Settle();
    auto* editor = Grid().viewport()->findChild<GridChoiceEditor*>();
    ASSERT_NE(editor, nullptr);
    editor->view()->setCurrentIndex(editor->model()->index(entry, 0));
    QTest::keyClick(editor->view(), Qt::Key_Return);
    Settle();
}

void AutoConfigTest::InNextDialog(std::function<void(dialogs::TemplateDialog&)> step)
{
    QTimer::singleShot(0, qApp, [step = std::move(step)] {
        auto* dialog = dynamic_cast<dialogs::TemplateDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr) << "no dialog came up";
        step(*dialog);
        if (!dialog->isVisible()) return;
        ADD_FAILURE() << "the dialog stays open";
        static_cast<QDialog*>(dialog)->reject();
    });
}

int AutoConfigTest::PickBill(const CString& number)
{
    InNextDialog([](dialogs::TemplateDialog& dialog) { test::Click(dialog, dialogs::IdOk); });
    const SPickedQd picked{0, 0, 0, number};
    return m_windows.Bill().PickBill(&picked);
}

int AutoConfigTest::PickQuota(const CString& number, const CString& rule)
{
    const SPickedDe picked{5, 1, number, u"定额"_s + number, u"m"_s, rule};
    const bool quotaMode = dialogs::ProjectMode() == SQdDeInfo::QuotaMode;
    return (quotaMode ? m_windows.Quota() : m_windows.Bill()).PickQuota(&picked);
}

void AutoConfigTest::NameFile(ControlId button, const CString& name)
{
    InNextDialog([name](dialogs::TemplateDialog& dialog) {
        auto& edit = dialog.Item<QLineEdit>(1069);
        const auto line = static_cast<int>(test::Lines(dialog, 1000).indexOf(name));
        if (edit.isEnabled())
            test::Type(dialog, 1069, name);
        else
            test::ClickLine(dialog, 1000, line);
        test::Click(dialog, dialogs::IdOk);
    });
    Press(button);
}

CString AutoConfigTest::SelectedCategory() const
{
    const auto selected = Tree().selectedItems();
    return selected.isEmpty() ? CString() : selected.first()->text(0);
}

CStringArray AutoConfigTest::RuleColumn(int column) const
{
    CStringArray texts;
    for (int row = 0; row < Rules().topLevelItemCount(); ++row)
        texts.append(Rules().topLevelItem(row)->text(column));
    return texts;
}

std::vector<int> AutoConfigTest::RuleIds() const
{
    std::vector<int> ids;
    for (int row = 0; row < Rules().topLevelItemCount(); ++row)
        ids.push_back(Rules().topLevelItem(row)->data(0, Qt::UserRole).toInt());
    return ids;
}

int AutoConfigTest::SelectedRuleRow() const
{
    const auto selected = Rules().selectedItems();
    return selected.isEmpty() ? -1 : Rules().indexOfTopLevelItem(selected.first());
}

CString AutoConfigTest::SelectedAttribute() const
{
    const auto selected = m_dialog->Item<QListWidget>(Attributes).selectedItems();
    return selected.isEmpty() ? CString() : selected.first()->text();
}

CString AutoConfigTest::TextOf(ControlId combo) const
{
    return m_dialog->Item<CTTComboBox>(combo).currentText();
}

CStringArray AutoConfigTest::GridColumn(int column) const
{
    CStringArray texts;
    for (int row = 1; row < Grid().GetRowCount(); ++row)
        texts.append(Grid().GetItemText(row, column));
    return texts;
}

int AutoConfigTest::Page() const
{
    return m_dialog->Item<QTabWidget>(PageTab).currentIndex();
}

CStringArray AutoConfigTest::Stored(const CPath& category) const
{
    return DescribedRules(m_dialog->Presenter(), category);
}

CStringArray AutoConfigTest::Saved(const CPath& category, const CString& name)
{
    CQdDeConfigPresenter presenter(FilePath(name));
    return DescribedRules(presenter, category);
}

ConfigNode& AutoConfigTest::Rule(int id, const CPath& category) const
{
    CPath path = category;
    path.configId = id;
    ConfigNode* rule = m_dialog->Presenter().GetConfig(path);
    if (rule == nullptr) throw std::invalid_argument("no rule " + std::to_string(id));
    return *rule;
}

CString AutoConfigTest::FilePath(const CString& name) const
{
    return m_guard.AppFolder() + u"\\自动套配置\\"_s + name + u".xml"_s;
}

void AutoConfigInBothModes::PrepareItem(int ruleId, const CString& number)
{
    if (GetParam() == SQdDeInfo::BillMode)
        PrepareBill(ruleId, number);
    else
        PrepareQuota(ruleId, number);
}

} // namespace test::autoconfig
