#include "tables/XlsxStyles.h"

#include "tables/TableError.h"
#include "tables/ZipReader.h"

#include <QtCore/QDateTime>

#include <cmath>

namespace tables {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t MostFormats = 1000000;
constexpr double SecondsOfDay = 86400;
/// 9999-12-31 and one day.
constexpr double EndOfDates = 2958466;

/// Whether the formats that every program knows by number show dates; some do so in Chinese and Japanese
/// only.
bool IsDateNumber(int format)
{
    return (format >= 14 && format <= 22) || (format >= 27 && format <= 36) ||
           (format >= 45 && format <= 47) || (format >= 50 && format <= 58);
}

/// Where a bracket at `at` ends.
qsizetype EndOfBracket(const CString& format, qsizetype at)
{
    const qsizetype end = format.indexOf(u']', at);
    return end < 0 ? format.size() - 1 : end;
}

/// Whether brackets hold a span of time ([h], [mm]), not a colour or language.
bool IsSpan(QStringView inside)
{
    if (inside.isEmpty()) return false;
    const QChar first = inside.front().toLower();
    for (const QChar character : inside) {
        if (character.toLower() != first) return false;
    }
    return first == u'h' || first == u'm' || first == u's';
}

} // namespace

bool IsDateFormat(const CString& format)
{
    for (qsizetype at = 0; at < format.size(); ++at) {
        switch (format.at(at).toLower().unicode()) {
        case u'"': {
            const qsizetype end = format.indexOf(u'"', at + 1);
            at = end < 0 ? format.size() : end;
            break;
        }
        case u'\\':
        case u'_':
        case u'*':
            ++at;
            break;
        case u'[': {
            const qsizetype end = EndOfBracket(format, at);
            if (IsSpan(QStringView(format).sliced(at + 1, end - at - 1))) return true;
            at = end;
            break;
        }
        case u'y':
        case u'm':
        case u'd':
        case u'h':
        case u's':
            return true;
        default:
            break;
        }
    }
    return false;
}

CString DateText(double days, bool countsFrom1904)
{
    if (!(days >= 0) || days >= EndOfDates) return {};
    const auto seconds = static_cast<qint64>(std::llround(days * SecondsOfDay));
    const qint64 day = seconds / 86400;
    const QTime time = QTime(0, 0).addSecs(static_cast<int>(seconds % 86400));
    const CString clock = time.toString(u"HH:mm:ss"_s);
    if (day == 0 && !countsFrom1904) return clock;
    // 1900 counts as a leap year there: before March every day is one early.
    const QDate start = countsFrom1904 ? QDate(1904, 1, 1) : QDate(1899, 12, day < 60 ? 31 : 30);
    const CString date = start.addDays(day).toString(u"yyyy-MM-dd"_s);
    return seconds % 86400 == 0 ? date : date + u' ' + clock;
}

void XlsxStyles::Read(ZipReader& zip, const CString& part)
{
    m_path = zip.Path();
    XmlStream(zip, part.toUtf8().constData(), *this).Run();
}

void XlsxStyles::Start(std::string_view name, const XmlAttributes& attributes)
{
    if (name == "cellXfs") m_isInCellFormats = true;
    const int id = attributes.Value("numFmtId").toInt();
    if (name == "numFmt")
        m_ownFormats.insert(id, IsDateFormat(CString::fromUtf8(attributes.Value("formatCode"))));
    if (name == "xf" && m_isInCellFormats) m_isDate.push_back(m_ownFormats.value(id, IsDateNumber(id)));
    if (m_isDate.size() > MostFormats || static_cast<std::size_t>(m_ownFormats.size()) > MostFormats)
        throw TableError(m_path, u"工作簿的格式太多"_s);
}

void XlsxStyles::End(std::string_view name)
{
    if (name == "cellXfs") m_isInCellFormats = false;
}

} // namespace tables
