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

// Places a form, when it first shows, centred over the window that opened it (its
// parent's window, else the main window), whole on the screen and no larger than
// the screen's free space. It stays where the user moves it after that.
void PlaceForm(QWidget *form);
void placeOverMainWindow(QWidget *form);
// Centres form over the window over (the screen when null), inside the screen's free space.
void centreOver(QWidget *form, QWidget *over);

// A wizard is a row of steps, each a modal dialog opened by the step before it. A step
// marked so opens in the size and place of the step it opens over, and one left by
// its 戻る button ends with WizardBack, so that the step beneath stays; any other end
// of a step (閉じる, キャンセル, Escape) closes the steps beneath it too.
inline constexpr int WizardBack = 2;
void markWizardStep(QWidget *step);
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

// The widget keeps its room in the layout while hidden, so that nothing moves.
void keepRoomWhenHidden(QWidget *widget);

// A push button with the objectName that tests and the help call find it by.
QPushButton *makeButton(QWidget *parent, const QString &objectName, const QString &caption);

// Shows the help page of the form (by its objectName) in the program's help window;
// a page that is missing is named in a message.
void showHelp(QWidget *form);
// Opens a file with the desktop's default application, unless NORMARIS_NO_OPEN is set.
bool openWithDesktop(const QString &path);
// Opens a finished document with the desktop's application, or says that there is none.
void openDocument(const QString &path);
// Replaces what openWithDesktop does (tests record the paths); an empty one restores it.
void setDesktopOpener(std::function<bool(const QString &path)> opener);

} // namespace normaris
