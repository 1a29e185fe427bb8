#pragma once

#include <QColor>
#include <QString>

// One row of a screen's design table: a control as the designer placed it.
// Geometry is in twips, relative to the container (the screen's inner area,
// or a frame). For a line, left/top/width/height hold X1, Y1, X2, Y2.
enum class ControlKind
{
    Label,
    Frame,
    OptionButton, // the big choice button: an option button in push-button style
    CommandButton,
    TextBox,
    PictureBox,
    Image,
    Line,
    Shape,
    ComboBox,
    Timer,
    Menu,
};

struct FontDef
{
    QString family{}; // empty: the screen's font
    double size = 0;  // points; 0: the screen's size
    bool bold = false;
    bool italic = false;
};

enum class Align
{
    Left,
    Right,
    Center
};

// A control docked to an edge of its container keeps that edge and the
// container's full height; only its width is its own.
enum class Dock
{
    None,
    Left,
    Right
};

struct ControlDef
{
    ControlKind kind;
    const char *name;
    int index = -1;           // member of a control array when >= 0
    const char *in = nullptr; // container: frame or picture box name
    int inIndex = -1;
    double left = 0, top = 0, width = 0, height = 0;
    QString caption{};
    QColor back{}; // invalid: the container's / the style's
    QColor fore{};
    FontDef font{};
    bool visible = true;
    bool enabled = true;
    bool value = false; // option buttons chosen at design; menu entries shown checked
    bool checkable = false; // menu entries that show a check mark (Checked)
    Align align = Align::Left;
    bool border = false;      // labels and picture boxes with a single border
    bool transparent = false; // labels that let their container show through
    bool wordWrap = true;     // labels: wrap at word boundaries, or cut at the right edge
    QString tip{};            // pop-up hint
    QString picture{};        // image resource of an Image or PictureBox
    int interval = 0;         // timers, milliseconds
    int borderWidth = 1;      // lines and shapes, pixels
    Dock dock = Dock::None;
};
