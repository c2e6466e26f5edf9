#include "editor/office/JoinedDialog.h"

#include "editor/dialogs/DifferenceView.h"
#include "editor/dialogs/TextDifference.h"

#include <QtGui/QScreen>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

// In characters and lines, for a large font needs a larger window.
constexpr QSize FirstText(180, 28);

/// A difference below its title.
QWidget* Titled(const QString& title, const QByteArray& before, const QByteArray& after)
{
    auto* widget = new QWidget;
    auto* column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    auto* view = new DifferenceView;
    view->setPlainText(DescribeRuleDifference(before, after));
    auto* label = new QLabel(title);
    label->setBuddy(view);
    column->addWidget(label);
    column->addWidget(view, 1);
    return widget;
}

CString Lead(const shared::JoinedStates& joined)
{
    const CString version = CString::number(joined.version);
    if (joined.before == 0) {
        return u"“%1”有别人发布的第 %2 版，已与本机的文件合并。请看过再发布；不发布就什么也不改"_s.arg(
            joined.configuration, version);
    }
    return u"其间又有人发布了“%1”的第 %2 版，又合并了一次；与第 %3 版合并的结果已经写进本机的文件。"
           "请看过再发布；不发布，本机的文件就停在那里"_s.arg(joined.configuration, version,
                                                              CString::number(joined.before));
}

} // namespace

JoinedDialog::JoinedDialog(const shared::JoinedStates& joined, QWidget* parent) : QDialog(parent)
{
    setWindowTitle(u"合并的结果"_s);
    const QSize first(FirstText.width() * fontMetrics().averageCharWidth(),
                      FirstText.height() * fontMetrics().lineSpacing());
    resize(first.boundedTo(screen()->availableSize()));
    auto* told = new QLabel(Lead(joined));
    told->setWordWrap(true);
    told->setTextFormat(Qt::PlainText);
    auto* views = new QSplitter;
    views->setChildrenCollapsible(false);
    views->addWidget(Titled(u"并入本机文件的(&T)"_s, joined.mine, joined.merged));
    views->addWidget(Titled(u"随之发布的(&M)"_s, joined.theirs, joined.merged));
    auto* buttons = new QDialogButtonBox;
    auto* publish = buttons->addButton(u"发布(&P)"_s, QDialogButtonBox::AcceptRole);
    publish->setDefault(true);
    publish->setToolTip(u"合并的结果写进本机的文件，并发布为下一版（Enter）"_s);
    auto* leave = buttons->addButton(u"不发布"_s, QDialogButtonBox::RejectRole);
    leave->setAutoDefault(false);
    leave->setToolTip(joined.before == 0 ? u"什么也不改（Esc）"_s
                                         : u"本机的文件停在上一次合并的结果（Esc）"_s);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { accept(); });
    connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
    auto* column = new QVBoxLayout(this);
    column->addWidget(told);
    column->addWidget(views, 1);
    column->addWidget(buttons);
}

bool JoinedDialog::Ask(const shared::JoinedStates& joined, QWidget* parent)
{
    return JoinedDialog(joined, parent).exec() == QDialog::Accepted;
}

} // namespace editor
