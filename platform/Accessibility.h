#pragma once

#include "platform/ControlDef.h"

class QWidget;

// What assistive tools (screen readers, accessibility-based test tools) see
// of the program's windows: each screen is a frame named by its caption;
// buttons have a press action that clicks them as the mouse does; a frame or
// a value box is named by the label that titles it, with the labelled-by and
// label-for relations; decorations are neither named nor focusable; a panel
// that is disabled or covered by another one does not show, nor does what it
// holds. Text boxes and combo boxes keep Qt's own description.
namespace Accessibility {

// Marks `widget` as the window of a control of this kind.
void describe(QWidget *widget, ControlKind kind);

// Marks `window` as a screen.
void describeScreen(QWidget *window);

// `label` (a label of the same screen) says on screen what `widget` is.
void labelledBy(QWidget *widget, QWidget *label);

// A decoration: nothing for a screen reader to read, no tab stop.
void setDecorative(QWidget *widget);
bool isDecorative(const QWidget *widget);

} // namespace Accessibility
