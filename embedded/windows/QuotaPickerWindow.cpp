#include "embedded/windows/QuotaPickerWindow.h"

#include "embedded/windows/ItemPane.h"
#include "embedded/windows/LibraryLists.h"

#include <QtWidgets/QPushButton>

#include <utility>

using namespace Qt::StringLiterals;

namespace embedded {

QuotaPickerWindow::QuotaPickerWindow(QWidget& parent, const LibraryContents& contents,
                                     std::shared_ptr<PickerMemory> memory)
    : PickerWindow(parent, contents, std::move(memory))
{
    setWindowTitle(u"套定额"_s);
    auto* pick = new QPushButton(u"选用定额(&D)"_s, this);
    pick->setEnabled(false);
    connect(pick, &QPushButton::clicked, this, [this] { Pick(); });
    MainPane().OnPicked([this] { Pick(); });
    MainPane().OnSelected([this, pick] { pick->setEnabled(MainPane().Current() != nullptr); });
    Finish({pick});
}

void QuotaPickerWindow::Load()
{
    MainPane().SetItems(QuotaItems(Contents()));
    Chapters().SetChapters(u"全部定额"_s, QuotaChapters(Contents()));
}

void QuotaPickerWindow::Pick()
{
    if (const PickerItem* const quota = MainPane().Current()) SendQuota(*quota);
}

} // namespace embedded
