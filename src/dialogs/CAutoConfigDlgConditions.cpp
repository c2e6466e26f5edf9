#include "dialogs/CAutoConfigDlg.h"

#include "dialogs/AutoConfigIds.h"
#include "dialogs/secondary/CExListBox.h"
#include "dialogs/secondary/CTTComboBox.h"
#include "host/APCellData.h"
#include "host/AttributeGroups.h"
#include "host/NvKtDataMng.h"
#include "platform/Numbers.h"
#include "presenter/DerivedAttributes.h"
#include "widgets/ListControls.h"
#include "widgets/TreeControl.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QStyle>
#include <QtWidgets/QTabWidget>

#include <algorithm>
#include <array>
#include <memory>
#include <stdexcept>

// The value panel, in which a condition of the selected rule is built. The panel never reads a condition
// back: a condition is changed by building it again on the same attribute.

using namespace Qt::StringLiterals;
using namespace dialogs::autoconfig;

namespace {

enum Page : int { ValuePage = 0, RangePage = 1 };

/// The type of a value source whose values come from the host's drop list.
constexpr int DropListType = 9;

/// What the upper bound of a range must be above the lower one, at least.
constexpr double LeastRange = 0.01;

struct Operators
{
    CTTComboBox* combo;
    CStringArray entries;
};

struct CellRelease
{
    void operator()(CellData* cell) const { APCellData::CellDataFactory::Release(cell); }
};

} // namespace

void CAutoConfigDlg::InitConditionPanel()
{
    {
        const QSignalBlocker quiet(m_pages);
        m_pages->addTab(new QWidget, u"取值"_s);
        m_pages->addTab(new QWidget, u"范围"_s);
    }
    // The lists are sorted, so the entry selected is the first by collation.
    const std::array<Operators, 3> lists{{{m_equalOperator, {u"＝"_s, u"≠"_s}},
                                          {m_upperOperator, {u"＜"_s, u"≤"_s}},
                                          {m_lowerOperator, {u"＞"_s, u"≥"_s}}}};
    for (const Operators& list : lists) {
        for (const CString& entry : list.entries)
            widgets::AddString(*list.combo, entry);
        widgets::SetCurSel(*list.combo, 0);
    }
    widgets::SetCurSel(*m_pages, ValuePage);
    ShowConditionPage();
    m_pages->setEnabled(true);
}

void CAutoConfigDlg::ShowConditionPage()
{
    const int page = m_pages->currentIndex();
    if (page != ValuePage && page != RangePage) return;
    for (CTTComboBox* combo : {m_equalOperator, m_value})
        combo->setVisible(page == ValuePage);
    for (CTTComboBox* combo : {m_lowerOperator, m_upperOperator, m_lowerBound, m_upperBound})
        combo->setVisible(page == RangePage);
}

void CAutoConfigDlg::EnableConditionControls(bool enable)
{
    for (const int id :
         {int(Attributes), int(Conditions), int(PageTab), int(LowerOperator), int(UpperOperator),
          int(LowerBound), int(UpperBound), int(EqualOperator), int(ValueCombo), int(AddConditionButton),
          int(RemoveConditionButton), int(CopyRuleButton), int(DeleteRuleButton)})
        GetDlgItem(id)->setEnabled(enable);
}

void CAutoConfigDlg::FillAttributeList()
{
    const CString categoryText = GetCategoryText();
    if (categoryText.isEmpty()) return;
    widgets::ResetContent(*m_attributeList);
    m_attributeCodes.clear();
    m_attributeExtras.clear();
    OnAttributeChanged(); // the former category's values must not outlive it where the host raises
    AddHostAttributes(categoryText);
    AddDerivedAttributes(categoryText);
    widgets::AddString(*m_attributeList, u"具体构件"_s); // the one attribute without a code
    widgets::SetCurSel(*m_attributeList, 0);
}

void CAutoConfigDlg::AddHostAttributes(const CString& categoryText)
{
    SNvKtSmallCategoryId id;
    NvKtDataMng::SmallCategoryNameToId(categoryText, id);
    CStringArray texts;
    NvKtDataMng::CSysSmallCategoryMng(id).GetAttributeList(texts);
    for (qsizetype group = 0; group < texts.size(); group += host::AttributeGroupSize) {
        if (texts.size() - group < host::AttributeGroupSize)
            throw std::invalid_argument(u"小类的属性列表不完整"_s.toStdString());
        m_attributeExtras.append(texts[group + host::AttributeExtraPlace]);
        AddAttribute(texts[group + host::AttributeNamePlace], texts[group + host::AttributeCodePlace]);
    }
}

void CAutoConfigDlg::AddDerivedAttributes(const CString& categoryText)
{
    for (const auto& [name, code] : DerivedAttributes(categoryText))
        AddAttribute(name, code);
}

void CAutoConfigDlg::AddAttribute(const CString& name, const CString& code)
{
    widgets::AddString(*m_attributeList, name);
    m_attributeCodes[name] = code;
}

CString CAutoConfigDlg::SelectedAttribute() const
{
    const int line = widgets::GetCurSel(*m_attributeList);
    return line < 0 ? CString() : m_attributeList->item(line)->text();
}

void CAutoConfigDlg::OnAttributeChanged()
{
    const CString name = SelectedAttribute();
    const auto found = m_attributeCodes.find(name);
    // Before the host is asked: where it raises, the former attribute's values must be gone.
    widgets::ResetContent(*m_value);
    if (found == m_attributeCodes.end()) {
        m_pages->setEnabled(true);
        return;
    }
    ChoosePageFor(name);
    const CStringArray entries = ValuesOf(found->second);
    for (const CString& entry : entries)
        widgets::AddString(*m_value, entry);
    WidenValueDropList(*m_value);
}

void CAutoConfigDlg::ChoosePageFor(const CString& attributeName)
{
    AttrConfig config;
    const bool equalityOnly =
        m_presenter->GetAttConfig(GetCategoryText(), attributeName, config) && config.compar == 0;
    if (equalityOnly) {
        widgets::SetCurSel(*m_pages, ValuePage);
        ShowConditionPage();
    }
    m_pages->setEnabled(!equalityOnly);
}

// An attribute without a value source offers no values.
CStringArray CAutoConfigDlg::ValuesOf(const CString& attributeCode)
{
    const std::unique_ptr<CellData, CellRelease> cell(APCellData::CellDataFactory::Create(attributeCode));
    if (cell == nullptr) return {};
    CStringArray values = cell->GetValues();
    if (cell->GetType() != DropListType) return values;
    values.clear();
    NvKtDataMng::CAtt().GetDropList(attributeCode, values, m_attributeExtras);
    return values;
}

void CAutoConfigDlg::WidenValueDropList(CTTComboBox& combo)
{
    const QFontMetrics metrics(combo.font());
    int width = 0;
    for (int entry = 0; entry < combo.count(); ++entry)
        width =
            std::max(width, metrics.horizontalAdvance(combo.itemText(entry)) + metrics.averageCharWidth());
    width += combo.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    width += 2 * combo.style()->pixelMetric(QStyle::PM_DefaultFrameWidth);
    if (combo.GetDroppedWidth() < width) combo.SetDroppedWidth(width);
}

void CAutoConfigDlg::FillConditionList()
{
    QListWidget& list = *m_conditionList;
    widgets::ResetContent(list);
    const QTreeWidgetItem* row = SelectedRule();
    if (row == nullptr) return;
    const int id = widgets::DataOf(row);
    const auto rule = std::find_if(m_rules.begin(), m_rules.end(),
                                   [id](const ConfigNode* node) { return node->GetId() == id; });
    if (rule == m_rules.end()) return;
    for (const ConditionNode* condition : (*rule)->GetCondition()) {
        const int line = widgets::AddString(list, condition->GetConditionString());
        widgets::SetItemData(list, line, condition->GetId());
    }
    if (list.count() > 0) widgets::SetCurSel(list, 0);
}

bool CAutoConfigDlg::BuildConditionArray(CStringArray& array) const
{
    array.append(SelectedAttribute());
    const bool valuePage = m_pages->currentIndex() == ValuePage;
    array.append(valuePage ? u"1"_s : u"0"_s);
    return valuePage ? AppendValue(array) : AppendRange(array);
}

bool CAutoConfigDlg::AppendValue(CStringArray& array) const
{
    const CString value = m_value->currentText();
    if (value.isEmpty()) return false;
    array << m_equalOperator->currentText() << CString() << CString() << value << CString() << CString();
    return true;
}

// The bounds are compared as they were typed, whether the operators are strict or not.
bool CAutoConfigDlg::AppendRange(CStringArray& array) const
{
    const CString lower = m_lowerBound->currentText();
    const CString upper = m_upperBound->currentText();
    if (lower.isEmpty() && upper.isEmpty()) return false;
    const bool both = !lower.isEmpty() && !upper.isEmpty();
    if (both && platform::_wtof(upper) - platform::_wtof(lower) < LeastRange) return false;
    array << CString() << m_lowerOperator->currentText() << m_upperOperator->currentText() << CString()
          << lower << upper;
    return true;
}

// A plain search in the shown lines: it also finds another attribute whose name contains this one, or a value
// that does.
bool CAutoConfigDlg::FindChosenCondition(int& id) const
{
    const CString name = SelectedAttribute();
    const QListWidget& list = *m_conditionList;
    for (int line = 0; line < list.count(); ++line) {
        if (!list.item(line)->text().contains(name)) continue;
        id = widgets::GetItemData(list, line);
        return true;
    }
    return false;
}

void CAutoConfigDlg::OnAddCondition()
{
    CPath path{};
    CStringArray array;
    if (!GetRulePath(path) || !BuildConditionArray(array)) return;
    const bool done = FindChosenCondition(path.conditionId) ? m_presenter->ResetCondition(path, array)
                                                            : m_presenter->AddCondition(path, array);
    if (!done) return;
    FillRuleList(); // the nodes have changed in place
    SelectRuleById(m_currentRuleId);
}

void CAutoConfigDlg::OnRemoveCondition()
{
    CPath path{};
    if (widgets::GetCurSel(*m_conditionList) < 0 || !GetConditionPath(path)) return;
    m_rules.clear();
    if (!m_presenter->DelCondition(path, m_rules)) return;
    FillRuleList();
    SelectRuleById(m_currentRuleId);
}
