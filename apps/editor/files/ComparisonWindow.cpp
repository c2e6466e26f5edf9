#include "editor/files/ComparisonWindow.h"

#include "editor/dialogs/DialogParts.h"
#include "editor/dialogs/DifferenceView.h"
#include "editor/dialogs/TextDifference.h"
#include "editor/messages/ErrorBox.h"
#include "editor/project/ChosenFile.h"
#include "editor/steps/LongStep.h"
#include "embedded/data/project/Look.h"
#include "platform/Paths.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSignalBlocker>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

// In characters and lines, for a large font needs a larger window.
constexpr int FirstWidth = 110;
constexpr int FirstHeight = 32;

} // namespace

ComparisonWindow::ComparisonWindow(QWidget* parent, const FileChoices& files, const CString& before,
                                   const CString& after)
    : QDialog(parent), m_before(MakeCombo(files, before)), m_after(MakeCombo(files, after)),
      m_asXml(new QCheckBox(u"显示 XML(&X)"_s)), m_difference(new DifferenceView)
{
    setWindowTitle(u"比较规则文件"_s);
    resize(fontMetrics().averageCharWidth() * FirstWidth, fontMetrics().lineSpacing() * FirstHeight);
    Build();
    RunGuarded([&] { ShowDifference(); });
}

void ComparisonWindow::Build()
{
    auto* form = new QFormLayout;
    for (QComboBox* combo : {m_before, m_after}) {
        auto* other = new QPushButton(combo == m_before ? u"其他文件(&1)…"_s : u"其他文件(&2)…"_s);
        other->setAutoDefault(false);
        other->setToolTip(u"选一个不在工程中的规则文件"_s);
        connect(other, &QPushButton::clicked, this,
                [this, combo] { RunGuarded([&] { ChooseOther(*combo); }); });
        connect(combo, &QComboBox::currentIndexChanged, this,
                [this] { RunGuarded([&] { ShowDifference(); }); });
        auto* row = new QHBoxLayout;
        row->addWidget(combo, 1);
        row->addWidget(other);
        form->addRow(combo == m_before ? u"从(&F)："_s : u"到(&T)："_s, row);
        static_cast<QLabel*>(form->labelForField(row))->setBuddy(combo);
    }
    auto* title = new QLabel(u"变了什么(&D)"_s);
    title->setBuddy(m_difference);
    auto* buttons = new QDialogButtonBox;
    auto* swap = buttons->addButton(u"对调(&W)"_s, QDialogButtonBox::ActionRole);
    swap->setAutoDefault(false);
    swap->setToolTip(u"两边对调（Alt+W）"_s);
    AddCloseButton(*buttons);
    m_asXml->setToolTip(u"比较文件的文字，不按规则比较（Alt+X）"_s);
    auto* foot = new QHBoxLayout;
    foot->addWidget(m_asXml);
    foot->addWidget(buttons, 1);
    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(title);
    column->addWidget(m_difference, 1);
    column->addLayout(foot);
    connect(swap, &QPushButton::clicked, this, [this] { RunGuarded([&] { Swap(); }); });
    connect(m_asXml, &QCheckBox::toggled, this, [this] { RunGuarded([&] { ShowDifference(); }); });
    connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
}

QComboBox* ComparisonWindow::MakeCombo(const FileChoices& files, const CString& chosen)
{
    auto* combo = new QComboBox(this);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    for (const auto& [text, path] : files) {
        combo->addItem(text, path);
        combo->setItemData(combo->count() - 1, platform::ToNative(path), Qt::ToolTipRole);
    }
    combo->setCurrentIndex(qMax(0, combo->findData(chosen)));
    return combo;
}

void ComparisonWindow::ChooseOther(QComboBox& combo)
{
    const QString folder = QFileInfo(platform::ToNative(combo.currentData().toString())).path();
    const QString file = ChooseRuleFile(this, folder);
    if (file.isEmpty()) return;
    const CString path = PathTextOf(file);
    if (combo.findData(path) < 0) combo.addItem(platform::ToNative(path), path);
    combo.setCurrentIndex(combo.findData(path));
}

void ComparisonWindow::Swap()
{
    const CString before = m_before->currentData().toString();
    const CString after = m_after->currentData().toString();
    {
        const QSignalBlocker quietBefore(m_before);
        const QSignalBlocker quietAfter(m_after);
        for (auto [combo, path] : {std::pair(m_before, after), std::pair(m_after, before)}) {
            if (combo->findData(path) < 0) combo->addItem(platform::ToNative(path), path);
            combo->setCurrentIndex(combo->findData(path));
        }
    }
    ShowDifference();
}

void ComparisonWindow::ShowDifference()
{
    m_difference->clear();
    const CString before = m_before->currentData().toString();
    const CString after = m_after->currentData().toString();
    const bool asXml = m_asXml->isChecked();
    CString text;
    const bool compared = RunLongStep(this, u"正在比较…"_s, [&](StepControl& control) {
        const QByteArray from = embedded::ReadToLook(before);
        const QByteArray to = embedded::ReadToLook(after);
        control.Check();
        text = asXml ? DescribeDifference(from, to) : DescribeRuleDifference(from, to);
        control.Check();
    });
    if (compared) m_difference->setPlainText(text);
}

} // namespace editor
