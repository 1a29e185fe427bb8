#pragma once

#include <QColor>

class QPainter;
class QRectF;

// The faces of the evaluation panel, Image1 to Image20: ten smiling green
// ones for the right answers, ten from pale to red for the wrong ones. They
// are drawn from shapes into whatever box they are given, so they are as
// sharp on a doubled screen as on a plain one.
class Faccina
{
public:
    static constexpr int Quante = 20;
    // The size the faces were designed at, in pixels of a plain screen.
    static constexpr int Lato = 28;

    struct Aspetto
    {
        QColor corpo; // the face, at its lower right
        QColor bordo;
        double sorriso; // how far the mouth's middle sags, in design pixels; < 0 frowns
        bool guance;    // rosy cheeks
        bool lacrima;   // a tear under the right eye
    };

    // Face `numero`, 1..Quante.
    static Aspetto aspetto(int numero);
    // Draws face `numero` filling `box` (a square), antialiased.
    static void disegna(QPainter &painter, int numero, const QRectF &box);
};
