#include "editor/docks/details/ItemPart.h"

#include "editor/docks/details/ItemDelegate.h"
#include "editor/docks/details/ViewCommands.h"
#include "editor/session/WorkSession.h"
#include "host/HostWindows.h"
#include "host/NvQdInfo.h"
#include "host/UserMessage.h"
#include "presenter/PickedItems.h"
#include "rules/draft/RuleEdits.h"

#include <QtCore/QEvent>
#include <QtGui/QAction>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace editor {

ItemPart::ItemPart(const ChosenRules& chosen, const StepRunner& run)
    : m_chosen(chosen), m_run(run), m_pickers(*this), m_tree(new ItemTree(chosen))
{
    m_tree->setItemDelegate(new ItemDelegate(*m_tree));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    MakeCommands();
    column->addWidget(MakeReplaceLine());
    column->addWidget(m_tree, 1);
    setFocusProxy(m_tree);
    connect(m_tree, &ItemTree::FormulaWanted, this, [this] { m_run([this] { EditFormula(); }); });
    connect(m_tree, &QTreeWidget::itemSelectionChanged, this, &ItemPart::ShowState);
    connect(m_tree, &QTreeWidget::currentItemChanged, this, &ItemPart::ShowState);
}

void ItemPart::MakeCommands()
{
    auto* commands = new ViewCommands(*m_tree);
    m_addBill = commands->Add(u"套清单…"_s, u"打开选择窗口，选一条清单加到这条规则"_s, Qt::Key_Insert,
                              [this] { ShowPicker(); });
    m_addQuota = commands->Add(u"套定额…"_s, u"打开选择窗口，选一条定额；清单模式下加在选中的清单下面"_s,
                               QKeySequence(Qt::CTRL | Qt::Key_Insert), [this] { ShowPicker(); });
    m_formula = commands->Add(u"计算…"_s, u"打开计算结果编辑"_s, Qt::Key_F4,
                              [this] { m_run([this] { EditFormula(); }); });
    m_replace = commands->Add(u"换成…"_s, u"在选择窗口里选另一条，替换选中的清单或定额"_s,
                              QKeySequence(Qt::CTRL | Qt::Key_Return), [this] { BeginReplace(); });
    m_delete = commands->Add(u"删除"_s, u"删除选中的清单和定额；清单连同它的定额"_s, Qt::Key_Delete,
                             [this] { m_tree->DeleteSelected(); });
    m_up = commands->Add(u"上移"_s, u"与上面的一条交换"_s, QKeySequence(Qt::CTRL | Qt::Key_Up),
                         [this] { m_tree->MoveCurrent(false); });
    m_down = commands->Add(u"下移"_s, u"与下面的一条交换"_s, QKeySequence(Qt::CTRL | Qt::Key_Down),
                           [this] { m_tree->MoveCurrent(true); });
    static_cast<QVBoxLayout*>(layout())->addWidget(commands->MakeButtons(u"清单和定额的命令"_s));
}

QWidget* ItemPart::MakeReplaceLine()
{
    m_replaceLine = new QWidget;
    auto* row = new QHBoxLayout(m_replaceLine);
    row->setContentsMargins({});
    m_replaceText = new QLabel;
    m_replaceText->setTextFormat(Qt::PlainText);
    m_replaceText->setWordWrap(true);
    auto* cancel = new QPushButton(u"不换了"_s);
    cancel->setToolTip(u"以后选的又加到规则里"_s);
    connect(cancel, &QPushButton::clicked, this, &ItemPart::EndReplace);
    row->addWidget(m_replaceText, 1);
    row->addWidget(cancel);
    m_replaceLine->hide();
    return m_replaceLine;
}

void ItemPart::Refresh()
{
    if (m_replaced && m_replaced->rules != m_chosen.Named()) EndReplace();
    m_tree->Refresh();
    if (!m_chosen.Category().isEmpty()) m_pickers.Follow(m_chosen.Category());
    ShowState();
}

void ItemPart::ForgetPickers()
{
    EndReplace();
    m_pickers.Forget();
}

void ItemPart::ShowState()
{
    const RulesInView view = m_chosen.Look();
    const auto line = m_tree->Current();
    const bool isOwn = line && !line->isForeign;
    m_addBill->setVisible(m_chosen.Facts().isBillMode);
    m_addBill->setEnabled(view.IsSingle());
    m_addQuota->setEnabled(view.IsSingle());
    m_formula->setEnabled(isOwn);
    m_replace->setEnabled(isOwn);
    m_delete->setEnabled(view.IsSingle() && line);
    m_up->setEnabled(m_tree->CanMove(false));
    m_down->setEnabled(m_tree->CanMove(true));
}

void ItemPart::ShowPicker()
{
    EndReplace();
    m_pickers.Show(m_chosen.Facts().isBillMode, m_chosen.Category());
}

void ItemPart::BeginReplace()
{
    const auto line = m_tree->Current();
    if (!line || line->isForeign) return;
    m_replaced = Replaced{line->number, line->place.IsBill(), m_chosen.Named()};
    m_replaceText->setText(
        (line->place.IsBill() ? u"在选择窗口里选一条清单，替换 %1"_s : u"在选择窗口里选一条定额，替换 %1"_s)
            .arg(line->number));
    m_replaceLine->show();
    m_pickers.Show(m_chosen.Facts().isBillMode, m_chosen.Category());
}

void ItemPart::EndReplace()
{
    m_replaced.reset();
    m_replaceLine->hide();
}

bool ItemPart::event(QEvent* event)
{
    if (event->type() != host::UserMessage::EventType()) return QWidget::event(event);
    Take(static_cast<host::UserMessage&>(*event));
    return true;
}

// The answers are those of the module's dialog.
void ItemPart::Take(host::UserMessage& message)
{
    if (message.Code() == host::PresenceMessage) return message.SetResult(1);
    if (message.Record() == nullptr) return message.SetResult(-1);
    m_run([&] {
        m_tree->Commit();
        if (message.Code() == host::QdPickedMessage)
            TakeBill(CString(static_cast<const SPickedQd*>(message.Record())->strNumber));
        if (message.Code() == host::DePickedMessage)
            TakeQuota(*static_cast<const SPickedDe*>(message.Record()));
    });
}

CString ItemPart::FormulaFor(const CString& ruleOfItem)
{
    if (!ruleOfItem.isEmpty()) return ruleOfItem;
    const auto formula = CategoryFormula(m_chosen.Category());
    if (!formula) emit Told(u"计算规则不对应：小类没有计算项目，计算结果空着"_s);
    return formula.value_or(CString());
}

rules::RulePlaces ItemPart::Places() const
{
    return m_chosen.Look().Places();
}

void ItemPart::TellChanged(std::size_t rules, const CString& what)
{
    emit Told(u"已改 %1 条规则：%2"_s.arg(rules).arg(what));
}

void ItemPart::TakeBill(const CString& picked)
{
    const RulesInView view = m_chosen.Look();
    if (m_replaced && !m_replaced->isBill) return emit Told(u"要换的是定额，请选一条定额"_s);
    if (view.IsEmpty() || (!m_replaced && !view.IsSingle()))
        return emit Told(u"没有加上：请只选一条规则；要替换用「换成…」"_s);
    std::vector<const rules::Rule*> rules;
    for (std::size_t i = 0; i < view.Count(); ++i)
        rules.push_back(&view.At(i));
    SQdInfo info;
    if (!NvQdInfo::IBillLib::GetQdInfo(picked, info)) return emit Told(u"清单库里没有 %1"_s.arg(picked));
    const ChosenRules::Name asked = m_chosen.Named();
    const auto number = AskForBillNumber(picked, rules, window());
    if (!number) return;
    if (m_chosen.Named() != asked) return emit Told(u"没有加上：规则已经换了"_s);
    const QdStruct record =
        RecordOf(info, *number, m_chosen.Facts().pricing.billLibrary, FormulaFor(info.strCalRule));
    if (m_replaced) {
        const CString what = u"%1 换成 %2"_s.arg(m_replaced->number, *number);
        TellChanged(m_chosen.Do(rules::ReplaceBill(m_chosen.Session().Draft(), Places(), m_replaced->number,
                                                   record, false)),
                    what);
        return EndReplace();
    }
    ItemPlace place{0, -1};
    m_chosen.Change(u"套清单 %1"_s.arg(*number), [&](rules::Rule& rule) {
        place.bill = static_cast<int>(rule.bills.size());
        rule.bills.push_back({0, record, {}});
    });
    m_tree->Refresh();
    m_tree->Choose(place);
}

void ItemPart::TakeQuota(const SPickedDe& picked)
{
    const RulesInView view = m_chosen.Look();
    if (m_replaced && m_replaced->isBill) return emit Told(u"要换的是清单，请选一条清单"_s);
    if (view.IsEmpty() || (!m_replaced && !view.IsSingle()))
        return emit Told(u"没有加上：请只选一条规则；要替换用「换成…」"_s);
    if (!m_replaced && m_chosen.Facts().isBillMode && !BillForQuotas(view))
        return emit Told(u"没有加上：先选中一条清单，定额加在它下面"_s);
    const DeStruct record =
        RecordOf(picked, m_chosen.Facts().pricing.quotaLibrary, FormulaFor(picked.strCalRule));
    if (!m_replaced) return AddQuota(record);
    const CString what = u"%1 换成 %2"_s.arg(m_replaced->number, record.strDeId);
    TellChanged(m_chosen.Do(rules::ReplaceQuota(m_chosen.Session().Draft(), Places(), m_replaced->number,
                                                record, false)),
                what);
    EndReplace();
}

// A bill item that is not shown by the module gets no quota item that it would not show either.
std::optional<int> ItemPart::BillForQuotas(const RulesInView& view) const
{
    const auto line = m_tree->Current();
    if (line && m_tree->Selected().size() <= 1)
        return line->isForeign && line->place.IsBill() ? std::nullopt : std::optional(line->place.bill);
    return view.At(0).bills.size() == 1 ? std::optional(0) : std::nullopt;
}

void ItemPart::AddQuota(const DeStruct& record)
{
    ItemPlace place{-1, 0};
    if (m_chosen.Facts().isBillMode) place.bill = *BillForQuotas(m_chosen.Look());
    m_chosen.Change(u"套定额 %1"_s.arg(record.strDeId), [&](rules::Rule& rule) {
        std::vector<rules::QuotaItem>* const quotas = QuotasAt(rule, place);
        if (quotas == nullptr) return;
        place.quota = static_cast<int>(quotas->size());
        quotas->push_back({0, record});
    });
    m_tree->Refresh();
    m_tree->Choose(place);
}

void ItemPart::EditFormula()
{
    m_tree->Commit();
    const auto line = m_tree->Current();
    if (!line || line->isForeign) return;
    const ChosenRules::Name asked = m_chosen.Named();
    const CString text = line->formulasDiffer ? CString() : line->formula;
    CString result;
    const int answer =
        KtGlobalDlg::CFaceGlobalDlg().ShowCalculatorDlg(m_chosen.Category(), text, result, window());
    if (answer != 1 || (result == text && !line->formulasDiffer)) return;
    if (m_chosen.Named() != asked) return emit Told(u"没有改：规则已经换了"_s);
    if (m_chosen.Look().IsSingle()) return m_tree->SetCell(*line, ItemTree::FormulaColumn, result);
    TellChanged(m_chosen.Do(rules::SetFormula(m_chosen.Session().Draft(), Places(), line->number, result)),
                u"%1 的计算结果编辑"_s.arg(line->number));
}

} // namespace editor
