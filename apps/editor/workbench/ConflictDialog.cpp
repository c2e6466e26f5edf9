#include "editor/workbench/ConflictDialog.h"

#include "editor/dialogs/DialogParts.h"
#include "widgets/SelectedRow.h"

#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

enum ConflictColumn { CategoryColumn, RuleColumn, AnswerColumn };
constexpr QSize UsualSize(760, 520);

/// The rule as whoever still has it shows it.
CString RuleText(const rules::Conflict& conflict)
{
    for (const auto& rule : {conflict.base, conflict.mine, conflict.theirs})
        if (rule) return rule->Text();
    return {};
}

} // namespace

ConflictDialog::ConflictDialog(const std::vector<rules::Conflict>& conflicts, ConflictWords words,
                               QWidget* parent)
    : QDialog(parent), m_conflicts(conflicts), m_words(std::move(words)), m_answers(conflicts.size()),
      m_list(new QTreeWidget), m_text(new QLabel), m_accept(new QPushButton(u"合并并保存(&S)"_s))
{
    setWindowTitle(u"合并"_s);
    Build();
    for (const rules::Conflict& conflict : m_conflicts)
        m_list->addTopLevelItem(new QTreeWidgetItem({conflict.category, RuleText(conflict)}));
    m_list->setCurrentItem(m_list->topLevelItem(0));
    ShowState();
    resize(UsualSize);
}

ConflictWords ConflictDialog::WordsForFile(const QString& fileName)
{
    return {u"其间另一个程序也改了 %1。没有冲突的修改会合在一起；下面这些两边改得不一样，"
            "请逐条决定用哪一边。文件现在的内容已留在历史副本中。"_s.arg(fileName),
            u"用文件里的"_s, u"全部用文件里的"_s};
}

ConflictWords ConflictDialog::WordsForOffice(const QString& configuration)
{
    return {u"其间有人在办公室发布了“%1”的新版。没有冲突的修改会合在一起；下面这些两边改得不一样，"
            "请逐条决定用哪一边。本机的文件改动以前先留历史副本。"_s.arg(configuration),
            u"用办公室的"_s, u"全部用办公室的"_s};
}

QString ConflictDialog::AnswerText(const std::optional<rules::Side>& answer) const
{
    if (!answer) return u"未定"_s;
    return *answer == rules::Side::Mine ? u"用我的"_s : m_words.theirs;
}

void ConflictDialog::Build()
{
    auto* column = new QVBoxLayout(this);
    auto* told = new QLabel(m_words.lead);
    told->setWordWrap(true);
    told->setTextFormat(Qt::PlainText);
    column->addWidget(told);
    m_list->setHeaderLabels({u"类别"_s, u"规则"_s, u"决定"_s});
    m_list->setRootIsDecorated(false);
    m_list->setAccessibleName(u"冲突"_s);
    m_list->header()->setSectionResizeMode(CategoryColumn, QHeaderView::ResizeToContents);
    m_list->header()->setSectionResizeMode(RuleColumn, QHeaderView::Stretch);
    m_list->header()->setSectionResizeMode(AnswerColumn, QHeaderView::ResizeToContents);
    m_list->header()->setStretchLastSection(false);
    column->addWidget(m_list, 1);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_text->setAccessibleName(u"两边的样子"_s);
    column->addWidget(m_text);
    auto* answers = new QHBoxLayout;
    const auto button = [&](const QString& text, rules::Side side, bool all) {
        auto* made = new QPushButton(text);
        made->setToolTip(all ? u"所有冲突都这样决定"_s : u"选中的冲突这样决定"_s);
        made->setAutoDefault(false);
        connect(made, &QPushButton::clicked, this, [this, side, all] { Answer(side, all); });
        answers->addWidget(made);
    };
    button(u"用我的(&M)"_s, rules::Side::Mine, false);
    button(m_words.theirs + u"(&F)"_s, rules::Side::Theirs, false);
    answers->addStretch();
    button(u"全部用我的"_s, rules::Side::Mine, true);
    button(m_words.allTheirs, rules::Side::Theirs, true);
    column->addLayout(answers);
    column->addWidget(MakeButtons(*this, m_accept, u"按上面的决定合并，写进规则文件"_s));
    widgets::MakeSelectedRowCurrent(*m_list);
    connect(m_list, &QTreeWidget::currentItemChanged, this, [this] { ShowState(); });
}

void ConflictDialog::Answer(rules::Side side, bool all)
{
    const int current = m_list->indexOfTopLevelItem(m_list->currentItem());
    for (std::size_t i = 0; i < m_answers.size(); ++i)
        if (all || static_cast<int>(i) == current) m_answers[i] = side;
    const auto open = std::find(m_answers.begin(), m_answers.end(), std::nullopt);
    if (open != m_answers.end())
        m_list->setCurrentItem(m_list->topLevelItem(static_cast<int>(open - m_answers.begin())));
    ShowState();
}

void ConflictDialog::ShowState()
{
    for (std::size_t i = 0; i < m_answers.size(); ++i)
        m_list->topLevelItem(static_cast<int>(i))->setText(AnswerColumn, AnswerText(m_answers[i]));
    const int current = m_list->indexOfTopLevelItem(m_list->currentItem());
    m_text->setText(current < 0 ? CString()
                                : m_conflicts[static_cast<std::size_t>(current)].Describe().trimmed());
    m_accept->setEnabled(std::find(m_answers.begin(), m_answers.end(), std::nullopt) == m_answers.end());
}

std::vector<rules::Side> ConflictDialog::Answers() const
{
    std::vector<rules::Side> answers;
    for (const auto& answer : m_answers)
        answers.push_back(answer.value_or(rules::Side::Mine));
    return answers;
}

std::optional<std::vector<rules::Side>> ConflictDialog::Ask(const std::vector<rules::Conflict>& conflicts,
                                                            ConflictWords words, QWidget* parent)
{
    ConflictDialog dialog(conflicts, std::move(words), parent);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.Answers();
}

} // namespace editor
