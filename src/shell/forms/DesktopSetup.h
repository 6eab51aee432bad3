#pragma once
// What the desktop program sets up once, before its first window: its name, Qt's
// own texts in Japanese, and the F1 key as the help of the active dialog.

class QApplication;

namespace normaris {

// The program is Japanese throughout, whatever the user's locale: Qt's own texts
// (the text boxes' menus, the standard buttons, the file dialogs) come from Qt's
// Japanese translations. Returns false when those are not installed.
bool loadJapaneseQtTexts(QApplication &app);

// The name, the translations and the help key. Titles are left as each dialog sets
// them: no program name is appended to them.
void setUpDesktopProgram(QApplication &app);

// F1 opens the help page of the dialog that has the focus, or of the nearest dialog
// beneath it that has one.
void installHelpKey(QApplication &app);

} // namespace normaris
