#pragma once

class QLabel;

namespace widgets {

/// Shows the text of `label` as a fault, in a red that can be read on its background, or as usual again.
void MarkAsFault(QLabel& label, bool fault);

} // namespace widgets
