#include "editor/docks/takeoff/BillPanel.h"

#include "editor/docks/takeoff/BillModel.h"
#include "editor/messages/ErrorBox.h"
#include "editor/project/Project.h"
#include "editor/steps/LongStep.h"
#include "platform/Paths.h"
#include "platform/ReplacedFile.h"
#include "shared/BillFiles.h"
#include "shared/Outcomes.h"
#include "widgets/TipDelegate.h"

#include <QtCore/QBuffer>
#include <QtCore/QDir>
#include <QtGui/QPageLayout>
#include <QtGui/QPdfWriter>
#include <QtGui/QShortcut>
#include <QtPrintSupport/QPrintDialog>
#include <QtPrintSupport/QPrinter>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTreeView>

#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

constexpr int WidestColumn = 30; ///< in characters, at first
constexpr QMarginsF PageMargins(15, 15, 15, 12);

bool IsSame(const rules::BillRow& a, const rules::BillRow& b)
{
    return a.specialty == b.specialty && a.number == b.number && a.name == b.name && a.unit == b.unit &&
           a.features == b.features && a.sum == b.sum && a.components == b.components &&
           a.missing == b.missing && a.withFittings == b.withFittings &&
           std::equal(a.quotas.begin(), a.quotas.end(), b.quotas.begin(), b.quotas.end(), IsSame);
}

bool IsSame(const rules::Bill& a, const rules::Bill& b)
{
    return a.totals == b.totals &&
           std::equal(a.rows.begin(), a.rows.end(), b.rows.begin(), b.rows.end(),
                      [](const auto& one, const auto& other) { return IsSame(one, other); });
}

/// Writes what is shown; the table is read for it again.
void WriteBill(const CString& path, const TakeoffFigures& figures, StepControl& control)
{
    const rules::TakeoffJob job{.table = figures.table->Path(),
                                .sheet = {},
                                .groupBy = {},
                                .configuration = figures.rules,
                                .facts = figures.facts->pricing};
    if (path.endsWith(u".csv"_s, Qt::CaseInsensitive)) return shared::WriteBillCsv(path, figures.bill, job);
    const embedded::Progress progress = control.AsProgress();
    rules::TakeoffPricing pricing(job);
    pricing.Price(shared::WatchFor(progress));
    if (!IsSame(pricing.Result(), figures.bill))
        throw rules::TakeoffChanged(
            u"%1 变了，没有写出，请先重新读取"_s.arg(platform::ToNative(figures.table->Path())));
    shared::WriteBillWorkbook(path, pricing, progress);
}

} // namespace

BillPanel::BillPanel(WorkSession& session, TakeoffHits& hits, QWidget* parent)
    : QWidget(parent), m_session(session), m_hits(hits), m_model(new BillModel(this)),
      m_export(new QPushButton(u"导出…"_s)), m_pdf(new QPushButton(u"PDF…"_s)),
      m_print(new QPushButton(u"打印…"_s)), m_state(new QLabel), m_view(new QTreeView)
{
    m_state->setTextFormat(Qt::PlainText);
    m_state->setWordWrap(true);
    m_state->setAccessibleName(u"合计"_s);
    m_view->setModel(m_model);
    m_view->setUniformRowHeights(true);
    m_view->setAllColumnsShowFocus(true);
    m_view->setAlternatingRowColors(true);
    m_view->setItemDelegate(new widgets::LineDelegate(m_view));
    m_view->setAccessibleName(u"工程量清单"_s);
    m_view->setWhatsThis(u"双击或按 Enter 找出套用这一项的规则"_s);
    auto* column = new QVBoxLayout(this);
    column->addWidget(BuildButtons());
    column->addWidget(m_view, 1);
    column->addWidget(m_state);
    Connect();
    ShowBill();
}

QWidget* BillPanel::BuildButtons()
{
    m_export->setToolTip(u"写成工作簿（清单、每个构件、需要核对的构件）或 CSV 文件（Ctrl+Shift+E）"_s);
    m_pdf->setToolTip(u"把清单写成 PDF 文件，A4 纵向（Ctrl+Shift+P）"_s);
    m_print->setToolTip(u"打印清单（Ctrl+P）"_s);
    auto* buttons = new QWidget;
    auto* row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    for (QPushButton* const button : {m_export, m_pdf, m_print}) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    row->addStretch(1);
    return buttons;
}

void BillPanel::Connect()
{
    const auto onKeys = [this](const QKeySequence& keys, QPushButton* button) {
        auto* shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, button, [button] { button->click(); });
    };
    onKeys(Qt::CTRL | Qt::SHIFT | Qt::Key_E, m_export);
    onKeys(Qt::CTRL | Qt::SHIFT | Qt::Key_P, m_pdf);
    onKeys(QKeySequence::Print, m_print);
    connect(m_export, &QPushButton::clicked, this, [this] { RunGuarded([&] { AskForExport(); }); });
    connect(m_pdf, &QPushButton::clicked, this, [this] { RunGuarded([&] { AskForPdf(); }); });
    connect(m_print, &QPushButton::clicked, this, [this] { RunGuarded([&] { Print(); }); });
    connect(m_view, &QTreeView::activated, this, [this](const QModelIndex& index) {
        const CString number = m_model->LineAt(index).row->number;
        RunGuarded([&] { emit ItemWanted(number); });
    });
    connect(&m_hits, &TakeoffHits::HitsChanged, this, [this] { ShowBill(); });
    connect(&m_hits, &TakeoffHits::StateChanged, this, [this] { ShowState(); });
}

void BillPanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (m_isStale) ShowBill();
}

void BillPanel::ShowBill()
{
    m_isStale = m_hits.Figures() && !isVisible();
    if (m_isStale) return ShowState();
    const int seen = m_view->verticalScrollBar()->value();
    const QModelIndex former = m_view->currentIndex();
    const CString chosen = former.isValid() ? m_model->LineAt(former).row->number : CString();
    const bool isFirst = m_model->rowCount() == 0;
    m_model->Show(m_hits.Figures());
    m_view->expandAll();
    if (isFirst) {
        const int widest = WidestColumn * fontMetrics().averageCharWidth();
        for (int column = 0; column < m_model->columnCount(); ++column) {
            m_view->resizeColumnToContents(column);
            m_view->setColumnWidth(column, std::min(widest, m_view->columnWidth(column)));
        }
    }
    for (int row = 0; row < m_model->rowCount(); ++row)
        if (const QModelIndex index = m_model->index(row, 0); m_model->LineAt(index).row->number == chosen) {
            m_view->setCurrentIndex(index);
            break;
        }
    m_view->verticalScrollBar()->setValue(seen);
    ShowState();
}

void BillPanel::ShowState()
{
    const TakeoffFiguresPtr& figures = m_hits.Figures();
    CString text = u"打开构件表以后，这里是它的工程量清单"_s;
    if (m_hits.Now() == TakeoffHits::State::Failed) text = m_hits.Error();
    if (figures) {
        text = shared::TotalsText(figures->bill.totals);
        if (!m_hits.IsCurrent()) text += u"，正在重新套价…"_s;
    }
    if (m_state->text() != text) m_state->setText(text);
    for (QPushButton* const button : {m_export, m_pdf, m_print})
        button->setEnabled(figures != nullptr);
}

/// What is written is what the rules say now.
TakeoffFiguresPtr BillPanel::Figures() const
{
    if (!m_hits.Figures()) throw std::runtime_error(u"没有打开构件表"_s.toStdString());
    if (!m_hits.IsCurrent()) throw std::runtime_error(u"正在重新套价，请稍等"_s.toStdString());
    return m_hits.Figures();
}

bool BillPanel::Export(const CString& path)
{
    const TakeoffFiguresPtr figures = Figures();
    return RunLongStep(this, u"正在写出 %1…"_s.arg(platform::FileNameOf(path)),
                       [&](StepControl& control) { WriteBill(path, *figures, control); });
}

BillPages::Titles BillPanel::Titles() const
{
    const CString project =
        m_session.OpenedProject() != nullptr ? m_session.OpenedProject()->Name() : CString();
    return {.title = m_session.Facts()->isBillMode ? u"工程量清单"_s : u"工程量表"_s,
            .subtitle = u"工程：%1　配置：%2　构件表：%3"_s.arg(
                project, m_session.IsOpen() ? m_session.File().Name() : CString(),
                platform::FileNameOf(m_hits.Path())),
            .foot = shared::TotalsText(Figures()->bill.totals)};
}

void BillPanel::WritePdf(const CString& path) const
{
    constexpr int DotsPerInch = 600;
    const TakeoffFiguresPtr figures = Figures();
    QBuffer bytes;
    bytes.open(QBuffer::WriteOnly);
    {
        QPdfWriter writer(&bytes);
        writer.setResolution(DotsPerInch);
        writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, PageMargins,
                                         QPageLayout::Millimeter));
        writer.setTitle(Titles().title);
        BillPages::Print(figures->bill, figures->facts->pricing.mode, Titles(), writer);
    }
    platform::ReplacedFile file(path);
    file.Write(bytes.data());
    file.Commit();
}

QString BillPanel::ProposedFile(const QString& ending) const
{
    const CString table = m_hits.Path();
    const CString name = platform::BeforeLastStop(platform::FileNameOf(table));
    return platform::ToNative(platform::FolderOf(table) + u'\\' + name + u"-清单"_s + ending);
}

void BillPanel::AskForExport()
{
    Figures();
    const QString file = QFileDialog::getSaveFileName(this, u"导出工程量清单"_s, ProposedFile(u".xlsx"_s),
                                                      u"XLSX 工作簿 (*.xlsx);;CSV 文件 (*.csv)"_s);
    if (!file.isEmpty()) Export(platform::FromNative(file));
}

void BillPanel::AskForPdf()
{
    Figures();
    const QString file =
        QFileDialog::getSaveFileName(this, u"写成 PDF"_s, ProposedFile(u".pdf"_s), u"PDF 文件 (*.pdf)"_s);
    if (!file.isEmpty()) WritePdf(platform::FromNative(file));
}

void BillPanel::Print()
{
    const TakeoffFiguresPtr figures = Figures();
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageMargins(PageMargins, QPageLayout::Millimeter);
    printer.setDocName(Titles().title);
    QPrintDialog dialog(&printer, this);
    dialog.setWindowTitle(u"打印工程量清单"_s);
    if (dialog.exec() != QDialog::Accepted) return;
    BillPages::Print(figures->bill, figures->facts->pricing.mode, Titles(), printer);
}

} // namespace editor
