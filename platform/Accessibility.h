#pragma once

#include "platform/ControlDef.h"

class QWidget;

// What assistive tools (screen readers, accessibility-based test tools) see
// of the controls Qt does not describe by itself: the program's buttons, with
// a press action that clicks them as the mouse does, frames, pictures, lines
// and shapes. Labels, text boxes and combo boxes keep Qt's own description.
namespace Accessibility {

// Marks `widget` as the window of a control of this kind.
void describe(QWidget *widget, ControlKind kind);

} // namespace Accessibility
