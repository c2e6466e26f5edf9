#include "dialogs/template/DialogItems.h"

#include <stdexcept>
#include <string>

namespace dialogs {

void DialogItems::ThrowNoItem(int id)
{
    throw std::out_of_range("The dialog has no control " + std::to_string(id) + " of that type.");
}

} // namespace dialogs
