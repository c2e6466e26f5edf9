#pragma once

#include "platform/Text.h"
#include "tables/XmlStream.h"

#include <QtCore/QByteArray>

#include <functional>
#include <vector>

namespace tables {

/// Texts in XLSX parts write characters that XML cannot hold as _xHHHH_.
CString WithoutEscapes(CString text);
CString WithEscapes(CString text);

/// The texts that the cells of an XLSX workbook share, all of them in memory.
class XlsxStrings final : private XmlHandler
{
public:
    /// Reads them. Raises `TableError`, also for more than memory should be spent on.
    void Read(ZipReader& zip, const CString& part, const std::function<void()>& pulse);

    std::size_t Count() const noexcept { return m_texts.size(); }
    QStringView At(std::size_t index) const { return m_texts[index]; }

private:
    void Start(std::string_view name, const XmlAttributes& attributes) override;
    void End(std::string_view name) override;
    void Text(std::string_view text) override;
    void Keep(const CString& text);

    CString m_path;
    std::function<void()> m_pulse;
    CArray<CString> m_blocks; ///< each of a fixed size, so that the texts stay where they are
    std::vector<QStringView> m_texts;
    qsizetype m_size = 0;
    QByteArray m_current;
    bool m_isInText = false;
    int m_reading = 0; ///< depth of what tells how a text is read out
};

} // namespace tables
