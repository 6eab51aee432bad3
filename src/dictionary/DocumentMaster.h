#pragma once
// The documents of one prose style (table 規程): the checks of their fields, and the
// add, edit and delete steps of the document master. Codes 01 to 69 came with the
// data file and keep their code; 70 to 99 are the user's and may be renumbered or
// deleted, with all that hangs on them.

#include "base/Prompt.h"

#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <optional>

namespace normaris::dictionary {

struct DocumentRecord {
    QString code;
    QString name;                       // 規程 (表示名称)
    bool changed = false;               // 変更フラグ
    QString formalName;                 // 正式名称
    bool selected = false;              // 選択フラグ
    QString kind = QStringLiteral("1"); // 文章種別: 1 規則・規程, 2 協約・協定
};

class DocumentMaster {
public:
    enum class Mode { Add, Edit };

    DocumentMaster(QSqlDatabase db, QString style) : m_db(std::move(db)), m_style(std::move(style)) {}

    const QString &style() const { return m_style; }
    QList<DocumentRecord> documents() const;
    std::optional<DocumentRecord> document(const QString &code) const;
    // Whether the document has a 前文 (the mark "★前文あり★").
    bool hasPreamble(const QString &code) const;

    // The check of the code field. A one-digit code is padded ("7" becomes "07"), and an
    // edited standard code that was changed goes back to savedCode; code holds the result.
    bool checkCode(Prompt &prompt, QString &code, Mode mode, const QString &savedCode) const;
    // The checks of the display name and the formal name.
    static bool checkName(Prompt &prompt, const QString &name);
    static bool checkFormalName(Prompt &prompt, const QString &formalName);

    // 更新: the empty-field test, the field checks, and in one transaction the code change
    // (when an edit changed the code) and the row. saved is the row as the edit found it
    // (empty when adding); entered.changed is the 変更 box as it stands.
    Outcome update(Prompt &prompt, Mode mode, const DocumentRecord &saved, const DocumentRecord &entered);

    // 削除: the refusals, the question, then the document and everything under it in one
    // transaction.
    Outcome remove(Prompt &prompt, const QString &code);

private:
    bool hasRows() const;

    QSqlDatabase m_db;
    QString m_style;
};

} // namespace normaris::dictionary
