#include "platform/MessageBoxes.h"

#include <QApplication>
#include <QMessageBox>

MessageBoxes::Answer QtMessageBoxes::show(const QString &text, Buttons buttons, Icon icon,
                                          const QString &title)
{
    QMessageBox box(QApplication::activeWindow());
    box.setWindowTitle(title.isEmpty() ? defaultTitle() : title);
    box.setText(text);
    switch (icon) {
    case Critical:
        box.setIcon(QMessageBox::Critical);
        break;
    case Question:
        box.setIcon(QMessageBox::Question);
        break;
    case Exclamation:
        box.setIcon(QMessageBox::Warning);
        break;
    case Information:
        box.setIcon(QMessageBox::Information);
        break;
    case NoIcon:
        break;
    }
    struct Choice
    {
        QMessageBox::StandardButton qt;
        Answer answer;
    };
    QList<Choice> choices;
    switch (buttons) {
    case OkOnly:
        choices = {{QMessageBox::Ok, Ok}};
        break;
    case OkCancel:
        choices = {{QMessageBox::Ok, Ok}, {QMessageBox::Cancel, Cancel}};
        break;
    case AbortRetryIgnore:
        choices = {{QMessageBox::Abort, Abort},
                   {QMessageBox::Retry, Retry},
                   {QMessageBox::Ignore, Ignore}};
        break;
    case YesNoCancel:
        choices = {{QMessageBox::Yes, Yes}, {QMessageBox::No, No}, {QMessageBox::Cancel, Cancel}};
        break;
    case YesNo:
        choices = {{QMessageBox::Yes, Yes}, {QMessageBox::No, No}};
        break;
    case RetryCancel:
        choices = {{QMessageBox::Retry, Retry}, {QMessageBox::Cancel, Cancel}};
        break;
    }
    QMessageBox::StandardButtons set;
    for (const Choice &c : choices)
        set |= c.qt;
    box.setStandardButtons(set);
    const int pressed = box.exec();
    for (const Choice &c : choices)
        if (c.qt == pressed)
            return c.answer;
    return choices.size() > 1 ? Cancel : Ok;
}
