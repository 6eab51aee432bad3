#pragma once
// 法令チェック: one document of a company checked against the requirements in force on
// its latest effective date. Each requirement comes out as 充足 (with the printed
// numbers of the clauses that meet it), 不足, 要確認 (the user's own text seems to
// state it: a person must confirm), or 範囲外 (a word out of its legal bound, with its
// value and the bound); those that take effect within twelve months after the date
// follow as 施行予定. One algorithm over the table: no requirement has code of its own.
// The check only reads.

#include "base/Prompt.h"
#include "legal/Requirements.h"

#include <QSqlDatabase>

namespace normaris::legal {

enum class CheckState { Met, Missing, ToConfirm, OutOfBounds, Coming };

// 充足, 不足, 要確認, 範囲外, 施行予定
QString stateName(CheckState state);
// The state's colour in the result list, 0xRRGGBB.
unsigned stateColour(CheckState state);

struct CheckResult {
    QString style;
    QString document;
    QString documentName;
    QDate date; // the date the document was checked for
    CheckState state = CheckState::Met;
    QString code; // the requirement's
    QString law;
    QString caption;
    QStringList articles; // 第３０条第２項第３号: where it is met, or the user's text to confirm
    QString value;        // 範囲外 and 要確認 of a word: the word as set
    QString bound;        // 限度: 100時間未満
    QDate effective;      // 施行予定: the day it takes effect
    // The clause to go to from the result: the first that meets it or was searched for.
    Level level = Level::Article;
    QStringList codes = QStringList(6);

    // The cells of the result in the list, the .xlsx and the text: 規程, 状態, 法令, 事項,
    // 条・語句, 限度・施行日.
    QStringList cells() const;
    // The line of the text output: the cells after the document's, joined by a full-width space.
    QString line() const;
};

// The headings of the result's cells.
const QStringList &resultHeadings();

struct CheckRequest {
    QString style = QStringLiteral("1");
    QString document;
    QDate date; // invalid: the document's latest effective date (today when it has none)
    // A clause to leave out, as if released: its level and place (章Code … イロハCode).
    Level withoutLevel = Level::Document;
    QStringList withoutCodes;
};

// The standard document whose requirements apply to document: itself when it is a standard one;
// for a document of the user's (70–99, e.g. read from the client's file), the standard document
// whose name or formal name is its name or formal name; empty when none is.
QString standardDocumentFor(QSqlDatabase db, const QString &style, const QString &document);
// The check of one document against table (a document of the user's through the words of its
// text only, so never 充足). Throws DbError when a read fails.
QList<CheckResult> checkDocument(QSqlDatabase db, const QList<Requirement> &table, const CheckRequest &request);
// The check of every document on the company's list in the style, in Code order.
QList<CheckResult> checkCompany(QSqlDatabase db, const QList<Requirement> &table, const QString &style, const QDate &date = {});

// The 法令チェック表 as text: for each document a line with its name and date, then one
// requirement a line.
QString checkText(const QList<CheckResult> &results);
// The 法令チェック表 as a one-sheet .xlsx, the cells of the results as rows. Throws Failure.
void writeCheckXlsx(const QString &path, const QList<CheckResult> &results);

// Whether anything is 不足 or 範囲外.
bool hasFindings(const QList<CheckResult> &results);

// The requirements that releasing the clause would leave 不足: met now, missing after.
QList<CheckResult> leftMissingByRelease(QSqlDatabase db, const QList<Requirement> &table, const QString &style, const QString &document,
                                        Level level, const QStringList &codes);

// Before a release: when it would leave a requirement 不足, asks whether to release all the
// same, naming each. True when the release may go on.
bool confirmReleaseAgainstLaw(QSqlDatabase db, Prompt &prompt, const QString &style, const QString &document, Level level,
                              const QStringList &codes);
// Before データをWordへ送る: when the document has anything 不足 or 範囲外, asks whether to
// make it all the same. Done when it may go on, Stopped when the answer is no, Failed
// after the failure's own text when the check could not read.
Outcome confirmExportAgainstLaw(QSqlDatabase db, Prompt &prompt, const QString &style, const QString &document);

} // namespace normaris::legal
