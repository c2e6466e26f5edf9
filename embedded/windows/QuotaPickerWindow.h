#pragma once

#include "embedded/windows/PickerWindow.h"

namespace embedded {

/// The picker of quota mode: the quota library.
class QuotaPickerWindow : public PickerWindow
{
public:
    QuotaPickerWindow(QWidget& parent, const LibraryContents& contents, std::shared_ptr<PickerMemory> memory);

    void Load() override;

private:
    void Pick();
};

} // namespace embedded
