#include "cli/pricing/CoverageReport.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

constexpr double PageWidth = 1080;
constexpr double Margin = 24;
constexpr double TextWidth = 520; ///< of a rule's text
constexpr double NumberWidth = 96;
constexpr double BarLeft = Margin + TextWidth + NumberWidth;
constexpr double BarWidth = PageWidth - Margin - BarLeft;
constexpr double RowHeight = 22;
constexpr double BarHeight = 12;
constexpr double TextSize = 13;
constexpr double HeadingSize = 15;
constexpr double TitleSize = 20;

/// Lays the picture out from top to bottom.
class Page
{
public:
    explicit Page(const CoverageReport& report)
    {
        m_picture.width = PageWidth;
        m_picture.title = u"规则的覆盖"_s;
        m_y = Margin + TitleSize;
        Put({.x = Margin, .y = m_y, .size = TitleSize, .isBold = true, .text = m_picture.title});
        m_y += RowHeight;
        PutWithin(Margin, PageWidth - 2 * Margin, Ink::Muted, report.table + u"　×　"_s + report.ruleFile);
        Legend();
        for (const rules::CategoryCoverage& category : report.coverage.categories)
            Take(category);
        if (report.coverage.categories.empty()) {
            m_y += 2 * RowHeight;
            PutWithin(Margin, PageWidth - 2 * Margin, Ink::Muted, u"没有可以显示的构件"_s);
        }
        m_picture.height = m_y + Margin;
    }

    Picture Finished() { return std::move(m_picture); }

private:
    void Put(Label label) { m_picture.labels.push_back(std::move(label)); }

    void PutWithin(double x, double width, Ink ink, const CString& text)
    {
        const CString cut = CutToWidth(text, TextSize, width);
        Put({.x = x,
             .y = m_y,
             .size = TextSize,
             .ink = ink,
             .text = cut,
             .whole = cut == text ? CString() : text});
    }

    void Legend()
    {
        m_y += RowHeight;
        double x = Margin;
        for (const auto& [ink, text] : {std::pair{Ink::Caught, u"规则命中"_s},
                                        {Ink::Default, u"默认规则"_s},
                                        {Ink::Uncaught, u"没有规则"_s}}) {
            m_picture.bars.push_back({x, m_y - BarHeight + 1, BarHeight, BarHeight, ink});
            Put({.x = x + 18, .y = m_y, .size = TextSize, .ink = Ink::Muted, .text = text});
            x += 100;
        }
        Put({.x = PageWidth - Margin,
             .y = m_y,
             .size = TextSize,
             .endsAtX = true,
             .ink = Ink::Muted,
             .text = u"条长为占该类别构件的比例"_s});
    }

    void Take(const rules::CategoryCoverage& category)
    {
        m_y += 2 * RowHeight;
        const CString count = u"%1 个构件"_s.arg(category.Components());
        const double room = PageWidth - 2 * Margin - WidthOf(count, HeadingSize) - Margin;
        Put({.x = Margin,
             .y = m_y,
             .size = HeadingSize,
             .isBold = true,
             .text = CutToWidth(category.category->text, HeadingSize, room)});
        Put({.x = PageWidth - Margin, .y = m_y, .size = HeadingSize, .endsAtX = true, .text = count});
        m_y += 4;
        CStringArray never;
        for (std::size_t i = 0; i < category.hits.size(); ++i) {
            const rules::Rule& rule = category.category->rules[i];
            const CString number = CString::number(i + 1);
            if (category.hits[i] == 0 && !rule.isDefault)
                never.append(number);
            else
                Row(u"第 %1 条　%2"_s.arg(number, rule.isDefault ? u"默认规则"_s : rule.Text()),
                    category.hits[i], category.Components(), rule.isDefault ? Ink::Default : Ink::Caught);
        }
        if (category.withoutRule > 0)
            Row(u"没有规则适用"_s, category.withoutRule, category.Components(), Ink::Uncaught);
        if (never.isEmpty()) return;
        m_y += RowHeight;
        PutWithin(Margin, PageWidth - 2 * Margin, Ink::Muted,
                  u"从未命中 %1 条：第 %2 条"_s.arg(never.size()).arg(never.join(u"、"_s)));
    }

    void Row(const CString& text, std::uint64_t count, std::uint64_t whole, Ink ink)
    {
        m_y += RowHeight;
        PutWithin(Margin, TextWidth, count > 0 ? Ink::Text : Ink::Muted, text);
        Put({.x = BarLeft - 12,
             .y = m_y,
             .size = TextSize,
             .endsAtX = true,
             .ink = count > 0 ? Ink::Text : Ink::Muted,
             .text = CString::number(count)});
        const double top = m_y - BarHeight + 1;
        m_picture.bars.push_back({BarLeft, top, BarWidth, BarHeight, Ink::Track});
        const double part = static_cast<double>(count) / static_cast<double>(whole);
        // What is there is seen, however little it is.
        if (count > 0)
            m_picture.bars.push_back({BarLeft, top, std::max(part * BarWidth, 2.0), BarHeight, ink});
    }

    Picture m_picture;
    double m_y = 0; ///< base line of the line written last
};

} // namespace

Picture CoveragePicture(const CoverageReport& report)
{
    return Page(report).Finished();
}

} // namespace cli
