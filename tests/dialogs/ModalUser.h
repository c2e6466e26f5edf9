#pragma once

#include <functional>
#include <initializer_list>

class QWidget;

namespace test {

/// What a user does at one modal window.
using ModalStep = std::function<void(QWidget&)>;

/// Lets a user act at the modal windows that come up from now on: the first step at the first one to have
/// control, the next at the one that has control after it, which may stand in front of it or be the same. A
/// window that is still there after the last step is closed and fails the test, as does a step that finds no
/// window.
void InModalWindows(std::initializer_list<ModalStep> steps);

} // namespace test
