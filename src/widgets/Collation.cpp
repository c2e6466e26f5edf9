#include "widgets/Collation.h"

#include <QtCore/QCollator>
#include <QtCore/QLocale>

namespace widgets {

int Collate(const CString& left, const CString& right)
{
    static const QCollator collator = [] {
        QCollator chinese(QLocale(QLocale::Chinese, QLocale::China));
        chinese.setNumericMode(true);
        return chinese;
    }();
    return collator.compare(left, right);
}

} // namespace widgets
