#include "dictionary/DocumentMaster.h"

#include "base/Database.h"
#include "base/FieldChecks.h"
#include "base/Levels.h"
#include "dictionary/CodeCascade.h"
#include "dictionary/DictionaryMessages.h"
#include "dictionary/RecordFields.h"

#include <QSqlQuery>

namespace normaris::dictionary {

namespace {

const QString kNameLabel = QStringLiteral("･･･表示名称");

DocumentRecord recordOf(const RowReader &q)
{
    return {q.value(0).toString(), q.value(1).toString(), q.value(2).toBool(),
            q.value(3).toString(), q.value(4).toBool(),   q.value(5).toString()};
}

const QString kSelectDocuments =
    QStringLiteral("SELECT Code, 規程, 変更フラグ, 正式名称, 選択フラグ, 文章種別 FROM 規程 WHERE 文章形式Code = ?");

bool isStandardCode(const QString &code) { return code.toInt() < levelInfo(Level::Document).firstUserCode; }

} // namespace

QList<DocumentRecord> DocumentMaster::documents() const
{
    RowReader q = execSql(m_db, kSelectDocuments + QStringLiteral(" ORDER BY CAST(Code AS INTEGER)"), {m_style});
    QList<DocumentRecord> list;
    while (q.next())
        list << recordOf(q);
    return list;
}

std::optional<DocumentRecord> DocumentMaster::document(const QString &code) const
{
    RowReader q = execSql(m_db, kSelectDocuments + QStringLiteral(" AND Code = ?"), {m_style, code});
    if (!q.next())
        return std::nullopt;
    return recordOf(q);
}

bool DocumentMaster::hasPreamble(const QString &code) const
{
    return scalar(m_db, QStringLiteral("SELECT count(*) FROM 前文 WHERE 文章形式Code = ? AND 規程Code = ? AND Code = '01'"),
                  {m_style, code})
               .toInt()
           > 0;
}

bool DocumentMaster::hasRows() const
{
    return scalar(m_db, QStringLiteral("SELECT count(*) FROM 規程 WHERE 文章形式Code = ?"), {m_style}).toInt() > 0;
}

bool DocumentMaster::checkCode(Prompt &prompt, QString &code, Mode mode, const QString &savedCode) const
{
    // The very first document of a style may go without a code.
    if (code.isEmpty() && !hasRows())
        return true;
    return checkCodeField(prompt, Level::Document, code, mode == Mode::Edit, savedCode, [this](const QString &c) {
        return scalar(m_db, QStringLiteral("SELECT count(*) FROM 規程 WHERE 文章形式Code = ? AND Code = ?"), {m_style, c}).toInt() > 0;
    });
}

bool DocumentMaster::checkName(Prompt &prompt, const QString &name) { return checkNameField(prompt, name, kNameLabel); }

bool DocumentMaster::checkFormalName(Prompt &prompt, const QString &formalName)
{
    return checkNameField(prompt, formalName, kFormalNameLabel);
}

Outcome DocumentMaster::update(Prompt &prompt, Mode mode, const DocumentRecord &saved, const DocumentRecord &entered)
{
    const std::pair<const QString *, const QString *> fields[] = {
        {&entered.code, &kCodeLabel}, {&entered.name, &kNameLabel}, {&entered.formalName, &kFormalNameLabel}};
    for (const auto &[value, label] : fields) {
        if (value->isEmpty()) {
            // With no document at all the update ends without a word.
            if (hasRows())
                prompt.error(kInputErrorTitle, kEmptyField + *label);
            return Outcome::Stopped;
        }
    }
    DocumentRecord row = entered;
    if (!row.changed) {
        row.changed = saved.name.isEmpty() || saved.name != row.name || saved.formalName.isEmpty() || saved.formalName != row.formalName;
    }
    // The checks read the table that the step writes: they run inside its transaction.
    return runRefusableTransaction(prompt, m_db, [&] {
        if (!checkCode(prompt, row.code, mode, saved.code) || !checkName(prompt, row.name) || !checkFormalName(prompt, row.formalName))
            return false;
        if (mode == Mode::Edit) {
            if (row.code != saved.code)
                CodeCascade(m_db, m_style).changeCode(saved.code, row.code);
            execSql(m_db,
                    QStringLiteral("UPDATE 規程 SET Code = ?, 規程 = ?, 変更フラグ = ?, 正式名称 = ?, 文章種別 = ? "
                                   "WHERE 文章形式Code = ? AND Code = ?"),
                    {row.code, row.name, row.changed, row.formalName, row.kind, m_style, saved.code});
        } else {
            execSql(m_db,
                    QStringLiteral("INSERT INTO 規程 (文章形式Code, Code, 規程, 変更フラグ, 正式名称, 選択フラグ, 文章種別) "
                                   "VALUES (?, ?, ?, ?, ?, 0, ?)"),
                    {m_style, row.code, row.name, row.changed, row.formalName, row.kind});
        }
        return true;
    });
}

Outcome DocumentMaster::remove(Prompt &prompt, const QString &code)
{
    if (isStandardCode(code)) {
        prompt.error(kDeleteLimitTitle, kUserDataOnly);
        return Outcome::Stopped;
    }
    // The tests read what the delete removes: they run inside its transaction.
    return runRefusableTransaction(prompt, m_db, [&] {
        const std::optional<DocumentRecord> doc = document(code);
        if (!doc)
            return false;
        // A document of the user's own keeps its composition while it is off the list,
        // for when it comes back; only a document on the list counts as in use.
        const bool inUse =
            doc->selected
            && scalar(m_db, QStringLiteral("SELECT count(*) FROM 作成データ補助～条 WHERE 文章形式Code = ? AND 規程Code = ?"),
                      {m_style, code})
                       .toInt()
                   > 0;
        if (inUse) {
            prompt.error(kDeleteLimitTitle, QStringLiteral("作成データとして使用中なので削除できません。"));
            return false;
        }
        CodeCascade cascade(m_db, m_style);
        if (cascade.referenceBlocked(code)) {
            prompt.error(QStringLiteral("削除制限(参照条文番号)"),
                         QStringLiteral("「本Code又は本Codeに含まれる下位Code」が「他条文」から参照されているため削除できません。"));
            return false;
        }
        if (!prompt.question(QStringLiteral("削除の確認"),
                             QStringLiteral(" %1 %2 を削除しますか？\n前文および章以下のデータがある場合は、それらも一緒に削除します。")
                                 .arg(code, doc->name)))
            return false;
        cascade.deleteRows(code);
        execSql(m_db, QStringLiteral("DELETE FROM 規程 WHERE 文章形式Code = ? AND Code = ?"), {m_style, code});
        return true;
    });
}

} // namespace normaris::dictionary
