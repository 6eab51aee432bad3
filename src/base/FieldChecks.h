#pragma once
// Checks of typed values, shared by all dialogs and the CLI. Every length is
// counted in bytes of the Japanese code page (CP932), because a full-width
// character takes two bytes of a column's width.

#include <QString>

namespace normaris {

class Prompt;

// Bytes of text in CP932: half-width (ASCII, ｱ) 1, full-width 2. A character that
// CP932 lacks counts 1 for each UTF-16 unit, as the platform's conversion writes "?".
int CP932Length(const QString &text);

// True when the value is good; false when a message with title "入力のエラー" has been shown.
bool CheckRequiredField(Prompt &prompt, const QString &text, qint16 limit, bool allowEmpty, const QString &itemLabel);
// As CheckRequiredField, but an empty text is never reported.
bool CheckOptionalField(Prompt &prompt, const QString &text, qint16 limit, bool allowEmpty, const QString &itemLabel);

// True when the name is refused as a file name (and the message has been shown).
bool CheckFileName(Prompt &prompt, const QString &name);

// True when the name can't be a company name because it would not stay one folder
// inside the data folder: ".", "..", control characters, leading or trailing blanks,
// or because the program keeps it for itself: a leading "." (its work folders) and the
// name of the seed file. U+FFFD (what stands for bytes that were not UTF-8) is refused.
// Includes CheckFileName. The message has the title "名前の変更".
bool CheckCompanyName(Prompt &prompt, const QString &name);

// True when text holds no control or format character (TAB and line breaks included);
// otherwise shows "入力のエラー" naming the item by itemLabel and answers false.
bool CheckNoControlCharacters(Prompt &prompt, const QString &text, const QString &itemLabel);

// True when text holds no marker sign (★ ☆ ◆): a value is printed as typed, and a
// marker in it would be printed as it stands. Otherwise shows "入力のエラー" as the
// refusal of quotes does and answers false.
bool CheckNoMarkers(Prompt &prompt, const QString &text, const QString &itemLabel);

// The company name limit in CP932 bytes.
constexpr int kCompanyNameLimit = 30;

} // namespace normaris
