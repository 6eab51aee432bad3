#pragma once
// Helpers that every dialog of the desktop program uses.

#include "base/Prompt.h"

#include <functional>

class QDialog;
class QComboBox;
class QLineEdit;
class QListWidget;
class QPushButton;
class QWidget;

namespace normaris {

// 15 twips make one pixel at 96 dpi.
constexpr int twips(int t) { return t / 15; }

// The Prompt of the desktop program: message boxes, or a script installed by tests.
Prompt &uiPrompt();
void setUiPrompt(Prompt *prompt); // nullptr restores the message boxes

// Places a form at one third of the free space of the screen in each direction.
void PlaceForm(QWidget *form);
// Places a form at the top left corner of the main window, over it.
void placeOverMainWindow(QWidget *form);
// Selects the whole text of the box.
void SelectAllText(QLineEdit *box);
// Makes every line edit of the form select all on focus and move on with Enter.
void installTextBoxBehaviour(QWidget *form);

// Widens a text box or a combo so that a text of its byte limit shows whole at the
// program's font: a full-width character is two bytes and about twice as wide.
void showBytes(QLineEdit *box, int bytes);
void showBytes(QComboBox *combo, int bytes);

// Enter on a list item, or a double click on it, presses the button (the dialog's
// default action for that list).
void actOnListItem(QListWidget *list, QPushButton *button);

// A push button with the objectName that tests and the help call find it by.
QPushButton *makeButton(QWidget *parent, const QString &objectName, const QString &caption);

// Opens the help page of the form (by its objectName) in the browser.
void showHelp(QWidget *form);
// Opens a file with the desktop's default application, unless NORMARIS_NO_OPEN is set.
bool openWithDesktop(const QString &path);
// Opens a finished document with the desktop's application, or says that there is none.
void openDocument(const QString &path);
// Replaces what openWithDesktop does (tests record the paths); an empty one restores it.
void setDesktopOpener(std::function<bool(const QString &path)> opener);

} // namespace normaris
