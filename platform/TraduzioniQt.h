#pragma once

class QCoreApplication;

// Qt's own texts (the buttons and labels of its standard dialogs: folder
// chooser, message boxes) in Italian, whatever language the desktop speaks.
class TraduzioniQt
{
public:
    // Loads Qt's Italian catalogue into `app`; false (one line on stderr)
    // when it is not installed, and the dialogs stay in Qt's English.
    static bool installa(QCoreApplication &app);
};
