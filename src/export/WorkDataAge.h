#pragma once
// Whether a document's work data still hold what they were made from. データ作成
// records, with the time, a fingerprint of what it took (the document's dictionary
// rows and composition), and 設定項目の置換 a fingerprint of what it took (the words
// and references, the effective dates and the company's settings). When what a step
// that has run took has changed since, the work data are out of date: the console
// marks the document 要再作成, and 置換 and データをWordへ送る ask before they go on.
// A word changed before the substitution has run is no matter: it takes the new one.
//
// The record stands in its own table beside the company's tables
//   作成データ記録  文章形式Code, 規程Code, 作成日時, 作成指紋, 置換日時, 置換指紋
// (times in ISO form, 置換… empty until the substitution), which a company file made
// before it gains at its first データ作成. Work data built before then have no record
// and count as up to date.

#include "base/Prompt.h"

#include <QDateTime>
#include <QSqlDatabase>

namespace normaris {

inline const QString kWorkDataRecordTable = QStringLiteral("作成データ記録");

// The two steps that read the company's data into the work data.
enum class WorkDataStep { Build, Substitution };

class WorkDataAge {
public:
    WorkDataAge(QSqlDatabase db, Prompt &prompt) : m_db(std::move(db)), m_prompt(prompt) {}

    // Notes that the step has just taken what its inputs say, inside the step's write.
    void record(WorkDataStep step, const QString &style, const QString &document);
    // When the step last ran on the work data; invalid when never recorded.
    QDateTime recorded(WorkDataStep step, const QString &style, const QString &document) const;
    // Whether an input of the recorded work data has changed since.
    bool isStale(const QString &style, const QString &document) const;

    // How a failed read is reported: as "取消" (the substitution's steps), or with its
    // own description (the export's).
    enum class ReadFailure { Cancelled, Described };

    // Before a step that uses the work data: when they are out of date, asks whether to
    // build them again. Done when they are up to date or were built again (and, with
    // substitute, substituted); Stopped when the user keeps them, or after the build's
    // own message; Failed after a failed read's message.
    Outcome refreshIfStale(const QString &style, const QString &document, bool substitute, ReadFailure failure);

    // The question, for the document named.
    static QString question(const QString &documentName);

private:
    QString fingerprint(WorkDataStep step, const QString &style, const QString &document) const;

    QSqlDatabase m_db;
    Prompt &m_prompt;
};

} // namespace normaris
