#include "dictionary/EntryEditor.h"

#include "base/Database.h"
#include "rulebase/Schema.h"
#include "base/FieldChecks.h"
#include "dictionary/DictionaryMessages.h"
#include "dictionary/DocumentMaster.h"
#include "dictionary/EntryCascade.h"
#include "dictionary/RecordFields.h"
#include "dictionary/SegmentEditor.h"

namespace normaris::dictionary {

namespace {

const QString kNameLabel = QStringLiteral("･･･名称");

bool hasFormalName(Level level) { return levelInfo(level).bodyColumn != std::u16string_view(levelInfo(level).textColumn); }

} // namespace

EntryEditor::EntryEditor(QSqlDatabase db, QString style, QString document, Level level, QStringList parents)
    : m_db(std::move(db)), m_style(std::move(style)), m_document(std::move(document)), m_level(level), m_parents(std::move(parents))
{
}

QString EntryEditor::documentKind() const
{
    const std::optional<DocumentRecord> doc = DocumentMaster(m_db, m_style).document(m_document);
    return doc ? doc->kind : QString();
}

ClausePlace EntryEditor::placeOf(const QString &code) const { return {m_level, m_style, m_document, m_parents + QStringList{code}}; }

bool EntryEditor::parentStands() const
{
    if (!DocumentMaster(m_db, m_style).document(m_document))
        return false;
    // Each parent by its own level's place: 章 under the document, 条 under the 章 …
    for (qsizetype i = 0; i < m_parents.size(); ++i) {
        Level parentLevel = Level::Chapter;
        for (const LevelInfo &info : kLevels) {
            if (info.placeDepth == i + 1)
                parentLevel = info.level;
        }
        const ClausePlace parent{parentLevel, m_style, m_document, m_parents.mid(0, i + 1)};
        if (scalar(m_db, QStringLiteral("SELECT count(*) FROM \"%1\" WHERE %2").arg(parent.table(), parent.whereSql()),
                   parent.whereValues())
                .toInt()
            == 0)
            return false;
    }
    return true;
}

QList<LevelEntry> EntryEditor::entries() const
{
    const ClausePlace any = placeOf(QString());
    const LevelInfo &info = levelInfo(m_level);
    const QString order =
        info.segmented ? QStringLiteral("CAST(Code AS INTEGER), CAST(結合 AS INTEGER)") : QStringLiteral("CAST(Code AS INTEGER)");
    auto q = execSql(m_db,
                     QStringLiteral("SELECT Code, \"%1\", \"%2\", 変更フラグ, 選択フラグ FROM \"%3\" WHERE %4 ORDER BY %5")
                         .arg(any.textColumn(), QString::fromUtf16(info.bodyColumn), any.table(), any.siblingsWhereSql(), order),
                     any.siblingsWhereValues());
    QList<LevelEntry> list;
    while (q.next()) {
        const QString code = q.value(0).toString();
        const QString text = q.value(1).toString();
        if (info.segmented && !list.isEmpty() && list.last().code == code) {
            list.last().text += text;
            continue;
        }
        LevelEntry e;
        e.code = code;
        e.name = text;
        e.text = info.segmented ? text : QString();
        e.formalName = hasFormalName(m_level) ? q.value(2).toString() : QString();
        e.standard = !isUserCode(m_level, code);
        e.changed = q.value(3).toBool();
        e.selected = q.value(4).toBool();
        list << e;
    }
    return list;
}

std::optional<LevelEntry> EntryEditor::entry(const QString &code) const
{
    for (const LevelEntry &e : entries()) {
        if (e.code == code)
            return e;
    }
    return std::nullopt;
}

bool EntryEditor::isComposed(const QString &code) const { return EntryCascade(m_db, placeOf(code)).isComposed(); }

bool EntryEditor::checkCode(Prompt &prompt, QString &code, Mode mode, const QString &savedCode) const
{
    return checkCodeField(prompt, m_level, code, mode == Mode::Edit, savedCode, [this](const QString &c) {
        const ClausePlace place = placeOf(c);
        return scalar(m_db, QStringLiteral("SELECT count(*) FROM \"%1\" WHERE %2").arg(place.table(), place.whereSql()),
                      place.whereValues())
                   .toInt()
               > 0;
    });
}

bool EntryEditor::checkName(Prompt &prompt, const QString &name) { return checkNameField(prompt, name, kNameLabel); }

bool EntryEditor::checkFormalName(Prompt &prompt, const QString &formalName)
{
    return checkNameField(prompt, formalName, kFormalNameLabel);
}

// Refuses, with the navigator's own words, a place whose document or parents are gone.
static bool refuseMissingParent(Prompt &prompt, const EntryEditor &editor)
{
    if (editor.parentStands())
        return false;
    prompt.error(kInputErrorTitle, QStringLiteral("上位のデータがありません。") + QString::fromUtf16(levelInfo(editor.level()).pickerHint));
    return true;
}

Outcome EntryEditor::updateHeading(Prompt &prompt, Mode mode, const LevelEntry &saved, const LevelEntry &entered)
{
    LevelEntry row = entered;
    const bool formal = hasFormalName(m_level);
    if (formal && row.formalName.isEmpty())
        row.formalName = row.name;
    const std::pair<const QString *, const QString *> fields[] = {{&row.code, &kCodeLabel}, {&row.name, &kNameLabel}};
    for (const auto &[value, label] : fields) {
        if (value->isEmpty()) {
            prompt.error(kInputErrorTitle, kEmptyField + *label);
            return Outcome::Stopped;
        }
    }
    if (mode == Mode::Add || saved.name != row.name || saved.formalName != row.formalName)
        row.changed = true;
    return runRefusableTransaction(prompt, m_db, [&] {
        if (refuseMissingParent(prompt, *this) || !checkCode(prompt, row.code, mode, saved.code) || !checkName(prompt, row.name)
            || (formal && !checkFormalName(prompt, row.formalName)))
            return false;
        const QString body = QString::fromUtf16(levelInfo(m_level).bodyColumn);
        if (mode == Mode::Edit) {
            if (row.code != saved.code)
                EntryCascade(m_db, placeOf(saved.code)).changeCode(row.code);
            const ClausePlace place = placeOf(row.code);
            QString set = QStringLiteral("\"%1\" = ?, 変更フラグ = ?").arg(place.textColumn());
            QVariantList values = {row.name, row.changed};
            if (formal) {
                set += QStringLiteral(", \"%1\" = ?").arg(body);
                values << row.formalName;
            }
            execSql(m_db, QStringLiteral("UPDATE \"%1\" SET %2 WHERE %3").arg(place.table(), set, place.whereSql()),
                    values + place.whereValues());
        } else {
            const ClausePlace place = placeOf(row.code);
            QStringList columns = place.keyColumns();
            QVariantList values = place.whereValues();
            columns << place.textColumn() << QStringLiteral("変更フラグ") << QStringLiteral("選択フラグ");
            values << row.name << true << false;
            if (formal) {
                columns << body;
                values << row.formalName;
            }
            insertInto(m_db, place.table(), columns, values);
        }
        return true;
    });
}

Outcome EntryEditor::addClause(Prompt &prompt, SegmentEditor &editor)
{
    bool filled = false;
    for (const SegmentRecord &s : editor.segments())
        filled = filled || !s.isEmpty();
    if (!filled) {
        prompt.error(kInputErrorTitle, kEmptyField + kSegmentTextLabel);
        return Outcome::Stopped;
    }
    Outcome edited = Outcome::Stopped;
    const Outcome outer = runRefusableTransaction(prompt, m_db, [&] {
        QString code = editor.place().codes.value(editor.place().codes.size() - 1);
        if (refuseMissingParent(prompt, *this) || !checkCode(prompt, code, Mode::Add, QString()))
            return false;
        if (code != editor.place().codes.last()) {
            // The editor was opened on the code as typed: the padded one is the same place
            // only when nothing had to be added.
            prompt.error(kInputErrorTitle, QStringLiteral("%1を入力してください。").arg(userCodeRange(m_level)) + kCodeLabel);
            return false;
        }
        edited = editor.update(prompt);
        return edited == Outcome::Done;
    });
    return outer == Outcome::Stopped ? edited : outer;
}

Outcome EntryEditor::changeCode(Prompt &prompt, const QString &oldCode, QString newCode)
{
    return runRefusableTransaction(prompt, m_db, [&] {
        if (!checkCode(prompt, newCode, Mode::Edit, oldCode))
            return false;
        if (newCode != oldCode)
            EntryCascade(m_db, placeOf(oldCode)).changeCode(newCode);
        return true;
    });
}

Outcome EntryEditor::updateClause(Prompt &prompt, SegmentEditor &editor, QString newCode)
{
    const QString oldCode = editor.place().codes.value(editor.place().codes.size() - 1);
    Outcome edited = Outcome::Stopped;
    const Outcome outer = runRefusableTransaction(prompt, m_db, [&] {
        if (newCode != oldCode && !checkCode(prompt, newCode, Mode::Edit, oldCode))
            return false;
        edited = editor.update(prompt);
        if (edited != Outcome::Done)
            return false;
        if (newCode != oldCode)
            EntryCascade(m_db, placeOf(oldCode)).changeCode(newCode);
        return true;
    });
    return outer == Outcome::Stopped ? edited : outer;
}

Outcome EntryEditor::remove(Prompt &prompt, const QString &code)
{
    if (!isUserCode(m_level, code)) {
        prompt.error(kDeleteLimitTitle, kUserDataOnly);
        return Outcome::Stopped;
    }
    return runRefusableTransaction(prompt, m_db, [&] {
        const std::optional<LevelEntry> found = entry(code);
        if (!found) {
            prompt.error(kDeleteLimitTitle, QStringLiteral("%1「%2」はありません。").arg(levelCaption(m_level), code));
            return false;
        }
        const EntryCascade cascade(m_db, placeOf(code));
        if (cascade.isComposed()) {
            prompt.error(kDeleteLimitTitle, QStringLiteral("作成データとして使用中なので削除できません。"));
            return false;
        }
        if (cascade.citedFromOutside()) {
            prompt.error(QStringLiteral("削除制限(参照条文番号)"),
                         QStringLiteral("「本Code又は本Codeに含まれる下位Code」が「他条文」から参照されているため削除できません。"));
            return false;
        }
        if (!prompt.question(
                QStringLiteral("削除の確認"),
                QStringLiteral(" %1 %2 を削除しますか？\n下位のデータがある場合は、それらも一緒に削除します。").arg(code, found->name)))
            return false;
        EntryCascade(m_db, placeOf(code)).deleteRows();
        return true;
    });
}

} // namespace normaris::dictionary
