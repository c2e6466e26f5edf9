#include "editor/docks/takeoff/BillPanel.h"

#include "editor/docks/DocksFixture.h"
#include "shared/BillFiles.h"
#include "shared/BillListing.h"
#include "shared/GatherPricingFacts.h"
#include "support/Patience.h"
#include "tables/TableReader.h"

#include <QtGui/QImage>
#include <QtGui/QPaintEngine>
#include <QtGui/QPainter>
#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeView>

#include <cmath>

using namespace Qt::StringLiterals;
using editor::BillPages;
using editor::BillPanel;
using editor::TakeoffHits;

namespace {

/// All sheets of a table as text, a line each.
QStringList TextOf(const CString& path)
{
    QStringList lines;
    CStringArray sheets = tables::OpenTable(path)->Sheets();
    if (sheets.isEmpty()) sheets = {CString()};
    for (const CString& sheet : sheets) {
        lines.append(u"# "_s + sheet);
        const auto table = tables::OpenTable(path, {.sheet = sheet});
        while (const tables::Row* const row = table->Next()) {
            QStringList cells;
            for (const tables::Cell& cell : row->cells)
                cells.append(cell.text.toString());
            lines.append(cells.join(u'|'));
        }
    }
    return lines;
}

class BillPanelTest : public test::DocksFixture
{
protected:
    BillPanelTest() : m_hits(m_session), m_panel(m_session, m_hits)
    {
        m_panel.resize(700, 500);
        m_panel.show();
    }

    void OpenTable(const CString& table)
    {
        m_hits.Open(table);
        test::WaitInLoopFor(u"the prices"_s, [&] { return m_hits.IsCurrent(); });
    }
    void OpenTable() { OpenTable(Sample(u"PlumbingTakeoff.csv"_s)); }
    rules::TakeoffJob Job()
    {
        return {.table = m_hits.Path(),
                .sheet = {},
                .groupBy = {},
                .configuration = shared::WithinCatalogue(*m_session.Draft().Snapshot(),
                                                         m_project->Host().CatalogueContents()),
                .facts = m_session.Facts()->pricing};
    }
    QTreeView& View() const { return *m_panel.findChild<QTreeView*>(); }
    QPushButton& Button(const QString& text) const
    {
        for (QPushButton* button : m_panel.findChildren<QPushButton*>())
            if (button->text() == text) return *button;
        throw std::out_of_range(text.toStdString());
    }

    TakeoffHits m_hits;
    BillPanel m_panel;
};

/// Takes down what is painted as texts and where they end.
class TextEngine : public QPaintEngine
{
public:
    struct Text
    {
        QString text;
        QPointF place;
        double width;
    };

    TextEngine() : QPaintEngine(AllFeatures) {}
    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawPath(const QPainterPath&) override {}
    Type type() const override { return User; }
    void drawTextItem(const QPointF& place, const QTextItem& item) override
    {
        if (!texts.empty() && IsGoneOnWith(texts.back(), place)) {
            texts.back().text += item.text();
            texts.back().width += item.width();
        } else
            texts.push_back({item.text(), place, item.width()});
    }

    std::vector<Text> texts;

private:
    /// A text comes in pieces where it goes from one font to another.
    static bool IsGoneOnWith(const Text& text, const QPointF& place)
    {
        return std::abs(text.place.y() - place.y()) < 1 &&
               std::abs(text.place.x() + text.width - place.x()) < 1;
    }
};

class TextPage : public QPaintDevice
{
public:
    explicit TextPage(const QSize& size) : m_size(size) {}
    QPaintEngine* paintEngine() const override { return &m_engine; }
    const std::vector<TextEngine::Text>& Texts() const { return m_engine.texts; }
    QString AllText() const
    {
        QString all;
        for (const TextEngine::Text& one : m_engine.texts)
            all += one.text + u'\n';
        return all;
    }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        constexpr int Dots = 100;
        switch (metric) {
        case PdmWidth:
            return m_size.width();
        case PdmHeight:
            return m_size.height();
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return Dots;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        default:
            return QPaintDevice::metric(metric);
        }
    }

private:
    QSize m_size;
    mutable TextEngine m_engine;
};

const QSize PageSize(700, 1000);

BillPages PagesOf(const rules::Bill& bill, const TextPage& page)
{
    return {bill, rules::PricingMode::Bill, {u"工程量清单"_s, u"工程：甲"_s, u"合计"_s}, PageSize, page};
}

rules::BillRow Row(const CString& number, const CString& quantity)
{
    rules::BillRow row;
    row.number = number;
    row.name = u"名称"_s + number;
    row.unit = u"m"_s;
    row.quantity = quantity;
    return row;
}

} // namespace

TEST_F(BillPanelTest, ShowsTheLinesOfTheBillWithTheirQuotasBelow)
{
    OpenTable();
    const auto lines = shared::LinesOf(m_hits.Figures()->bill, rules::PricingMode::Bill);
    const QAbstractItemModel& model = *View().model();
    std::size_t line = 0;
    for (int row = 0; row < model.rowCount(); ++row) {
        const QModelIndex top = model.index(row, 0);
        EXPECT_EQ(top.data().toString(), QString::number(lines[line].serial));
        EXPECT_EQ(top.siblingAtColumn(1).data().toString(), lines[line].row->number);
        EXPECT_EQ(model.parent(top), QModelIndex());
        ++line;
        for (int below = 0; below < model.rowCount(top); ++below, ++line) {
            const QModelIndex quota = model.index(below, 1, top);
            EXPECT_EQ(quota.data().toString(), lines[line].row->number);
            EXPECT_EQ(model.parent(quota), top);
            EXPECT_EQ(model.rowCount(quota.siblingAtColumn(0)), 0);
        }
    }
    EXPECT_EQ(line, lines.size());
    EXPECT_GT(line, 0U);
}

TEST_F(BillPanelTest, TheWorkbookIsThatOfTheCommandLine)
{
    OpenTable();
    Insert(m_pipe, RuleLike(m_pipe, {Equal(u"材质"_s, u"镀锌钢管"_s)}));
    test::WaitInLoopFor(u"the prices"_s, [&] { return m_hits.IsCurrent(); });
    const CString own = m_folder.Path(u"own.xlsx"_s);
    ASSERT_TRUE(m_panel.Export(own));
    const CString expected = m_folder.Path(u"expected.xlsx"_s);
    rules::TakeoffPricing pricing(Job());
    pricing.Price();
    shared::WriteBillWorkbook(expected, pricing, {});
    EXPECT_EQ(TextOf(own), TextOf(expected));
    EXPECT_GT(TextOf(own).size(), 300);
}

TEST_F(BillPanelTest, TheCsvFileIsThatOfTheCommandLine)
{
    OpenTable();
    ASSERT_TRUE(m_panel.Export(m_folder.Path(u"own.csv"_s)));
    rules::TakeoffPricing pricing(Job());
    shared::WriteBillCsv(m_folder.Path(u"expected.csv"_s), pricing.Price(), Job());
    EXPECT_EQ(m_folder.ReadFile(u"own.csv"_s), m_folder.ReadFile(u"expected.csv"_s));
}

TEST_F(BillPanelTest, ATableThatHasChangedIsNotWrittenAsWhatIsShown)
{
    const auto row = [&](int length) {
        return QStringLiteral("构件编号,类别,材质,公称直径,连接方式,水平管长度,立管长度\n1,%1,镀锌钢管,65,"
                              "螺纹连接,%2,0\n")
            .arg(m_pipe)
            .arg(length)
            .toUtf8();
    };
    OpenTable(m_folder.WriteFile(u"t.csv"_s, row(5)));
    m_folder.WriteFile(u"t.csv"_s, row(6));
    m_folder.WriteFile(u"bill.xlsx"_s, "former");
    EXPECT_THROW(m_panel.Export(m_folder.Path(u"bill.xlsx"_s)), rules::TakeoffChanged);
    EXPECT_EQ(m_folder.ReadFile(u"bill.xlsx"_s), "former");
}

TEST_F(BillPanelTest, ATableThatGivesOtherFeaturesHasChangedToo)
{
    Insert(m_pipe, RuleLike(m_pipe, {Equal(u"材质"_s, u"甲"_s)}));
    Insert(m_pipe, RuleLike(m_pipe, {Equal(u"材质"_s, u"乙"_s)}));
    const auto row = [&](const QString& material) {
        return u"构件编号,类别,材质,水平管长度,立管长度\n1,%1,%2,5,0\n"_s.arg(m_pipe, material).toUtf8();
    };
    OpenTable(m_folder.WriteFile(u"t.csv"_s, row(u"甲"_s)));
    m_folder.WriteFile(u"t.csv"_s, row(u"乙"_s));
    EXPECT_THROW(m_panel.Export(m_folder.Path(u"bill.xlsx"_s)), rules::TakeoffChanged);
    EXPECT_FALSE(m_folder.Exists(u"bill.xlsx"_s));
}

TEST_F(BillPanelTest, NothingIsWrittenWhileThePricesAreOfAFormerState)
{
    OpenTable();
    Insert(m_pipe, RuleLike(m_pipe, {Equal(u"材质"_s, u"镀锌钢管"_s)}));
    EXPECT_THROW(m_panel.Export(m_folder.Path(u"bill.xlsx"_s)), std::runtime_error);
    EXPECT_THROW(m_panel.WritePdf(m_folder.Path(u"bill.pdf"_s)), std::runtime_error);
    EXPECT_FALSE(m_folder.Exists(u"bill.xlsx"_s));
    EXPECT_FALSE(m_folder.Exists(u"bill.pdf"_s));
}

TEST_F(BillPanelTest, ThePdfFileIsWhole)
{
    OpenTable();
    m_panel.WritePdf(m_folder.Path(u"bill.pdf"_s));
    const QByteArray bytes = m_folder.ReadFile(u"bill.pdf"_s);
    EXPECT_TRUE(bytes.startsWith("%PDF-"));
    EXPECT_TRUE(bytes.trimmed().endsWith("%%EOF"));
    EXPECT_GT(bytes.count("/Type /Page\n"), 1);
}

TEST_F(BillPanelTest, EnterAsksForTheRulesOfAnItem)
{
    OpenTable();
    QString wanted;
    QObject::connect(&m_panel, &BillPanel::ItemWanted, &m_panel,
                     [&](const QString& number) { wanted = number; });
    View().setCurrentIndex(View().model()->index(1, 0));
    QTest::keyClick(&View(), Qt::Key_Return);
    EXPECT_EQ(wanted, View().model()->index(1, 1).data().toString());
}

TEST_F(BillPanelTest, WithoutATableNothingCanBeWritten)
{
    for (const QString& button : {u"导出…"_s, u"PDF…"_s, u"打印…"_s})
        EXPECT_FALSE(Button(button).isEnabled()) << button.toStdString();
    OpenTable();
    for (const QString& button : {u"导出…"_s, u"PDF…"_s, u"打印…"_s})
        EXPECT_TRUE(Button(button).isEnabled()) << button.toStdString();
    m_hits.Close();
    EXPECT_EQ(View().model()->rowCount(), 0);
}

TEST(BillPages, EveryPageHasTitleHeadingsAndNumberAndEveryRowStandsOnce)
{
    rules::Bill bill;
    for (int i = 0; i < 150; ++i) {
        bill.rows.push_back(Row(u"R%1R"_s.arg(i), u"%1.50"_s.arg(i)));
        bill.order.push_back(static_cast<std::uint32_t>(i));
    }
    const TextPage measure(PageSize);
    const BillPages pages = PagesOf(bill, measure);
    ASSERT_GT(pages.Count(), 2);
    QString all;
    for (int page = 0; page < pages.Count(); ++page) {
        TextPage paper(PageSize);
        {
            QPainter painter(&paper);
            pages.Paint(painter, page);
        }
        const QString text = paper.AllText();
        for (const QString& wanted : {u"工程量清单"_s, u"工程：甲"_s, u"项目编码"_s, u"工程量"_s,
                                      u"第 %1 页 共 %2 页"_s.arg(page + 1).arg(pages.Count())})
            EXPECT_TRUE(text.contains(wanted)) << page << wanted.toStdString();
        EXPECT_EQ(text.contains(u"合计"_s), page + 1 == pages.Count());
        for (const TextEngine::Text& one : paper.Texts()) {
            EXPECT_LE(one.place.y(), PageSize.height());
            EXPECT_LE(one.place.x() + one.width, PageSize.width() + 1);
        }
        all += text;
    }
    for (int i = 0; i < 150; ++i)
        EXPECT_EQ(all.count(u"\nR%1R\n"_s.arg(i)), 1) << i;
}

TEST(BillPages, QuantitiesEndBelowEachOther)
{
    rules::Bill bill;
    bill.rows = {Row(u"A"_s, u"1.50"_s), Row(u"B"_s, u"12345.50"_s)};
    bill.order = {0, 1};
    TextPage paper(PageSize);
    const BillPages pages = PagesOf(bill, paper);
    QPainter painter(&paper);
    pages.Paint(painter, 0);
    std::vector<double> ends;
    for (const TextEngine::Text& one : paper.Texts())
        if (one.text.endsWith(u".50"_s)) ends.push_back(one.place.x() + one.width);
    ASSERT_EQ(ends.size(), 2U);
    EXPECT_NEAR(ends[0], ends[1], 1.0);
}

TEST(BillPages, ARowThatNoPageHoldsGoesOnOnTheNextOne)
{
    rules::Bill bill;
    bill.rows = {Row(u"A"_s, u"1"_s)};
    bill.order = {0};
    for (int i = 0; i < 200; ++i)
        bill.rows.front().features.push_back({u"F%1F"_s.arg(i), u"v"_s});
    const TextPage measure(PageSize);
    const BillPages pages = PagesOf(bill, measure);
    ASSERT_GT(pages.Count(), 1);
    QString all;
    for (int page = 0; page < pages.Count(); ++page) {
        TextPage paper(PageSize);
        QPainter painter(&paper);
        pages.Paint(painter, page);
        all += paper.AllText();
    }
    for (int i = 0; i < 200; ++i)
        EXPECT_EQ(all.count(u"F%1F"_s.arg(i)), 1) << i;
}

TEST(BillPages, AnEmptyBillHasOnePageThatSaysSo)
{
    const rules::Bill bill;
    TextPage paper(PageSize);
    const BillPages pages = PagesOf(bill, paper);
    ASSERT_EQ(pages.Count(), 1);
    QPainter painter(&paper);
    pages.Paint(painter, 0);
    EXPECT_TRUE(paper.AllText().contains(u"合计"_s));
}
