#pragma once
// Hand-made rows of 作成データ for the tests of the typing of documents.

#include "rulebase/CompositionRow.h"
#include "rulebase/Schema.h"

namespace normaris::test {

// Rows of 作成データ as the work data build leaves them: 結合 and テンプレート
// empty when there is none, 改行 "1" or empty. Each clause takes the place of its
// parents from the rows added before it.
class Draft {
public:
    explicit Draft(QString style = QStringLiteral("1")) : m_style(std::move(style)) {}

    Draft &document(const QString &title) { return add(Level::Document, 1, title); }
    Draft &preamble(const QString &text, const QString &join = {})
    {
        m_join = join;
        return add(Level::Preamble, 1, text);
    }
    Draft &chapter(const QString &code, int number, const QString &title) { return place(Level::Chapter, code, number, title); }
    Draft &article(const QString &code, int number, const QString &title) { return place(Level::Article, code, number, title); }
    // A clause of level 項 to イ, or the head of a chain when join is '1'.
    Draft &clause(Level level, const QString &code, int number, const QString &text, const QString &join = {})
    {
        m_join = join;
        return place(level, code, number, text);
    }
    // One more segment of the clause added last.
    Draft &segment(const QString &join, const QString &text, bool lineBreak = false, const QString &templateCode = {})
    {
        m_join = join;
        m_lineBreak = lineBreak;
        m_template = templateCode;
        return add(m_level, m_number, text);
    }
    // A clause row with no text: the place of a template.
    Draft &templateRow(Level level, const QString &code, int number, const QString &templateCode)
    {
        m_template = templateCode;
        return place(level, code, number, QString());
    }
    // The next row starts a new line (改行 "1").
    Draft &withLineBreak()
    {
        m_lineBreak = true;
        return *this;
    }
    // The row that the work data build puts last, in no place.
    Draft &closing()
    {
        m_codes = QStringList(6);
        return add(Level::Closing, 1, QStringLiteral("ダミーの行"));
    }

    // 就業規則, chapter 01 総則, article 0001 目的: the usual start of a clause test.
    static Draft opening()
    {
        return Draft()
            .document(QStringLiteral("就業規則"))
            .chapter(QStringLiteral("01"), 1, QStringLiteral("総則"))
            .article(QStringLiteral("0001"), 1, QStringLiteral("目的"));
    }

    void write(QSqlDatabase db, const QString &document = QStringLiteral("01")) const
    {
        for (const QVariantList &row : m_rows) {
            QVariantList values = row;
            values[2] = document;
            insertRow(db, kOutputRowsTable, values);
        }
    }

private:
    Draft &place(Level level, const QString &code, int number, const QString &text)
    {
        const int depth = placeDepth(level);
        m_codes[depth - 1] = code;
        for (int i = depth; i < 6; ++i)
            m_codes[i].clear();
        return add(level, number, text);
    }
    Draft &add(Level level, int number, const QString &text)
    {
        m_level = level;
        m_number = number;
        QVariantList row = {int(m_rows.size()) + 1, levelCode(level), QString(), number};
        for (const QString &code : m_codes)
            row << code;
        row << m_join << (m_lineBreak ? QStringLiteral("1") : QString()) << m_template << text << 0 << 0 << 0 << m_style << QString();
        m_rows << row;
        m_join.clear();
        m_lineBreak = false;
        m_template.clear();
        return *this;
    }

    QString m_style;
    QList<QVariantList> m_rows;
    QStringList m_codes = QStringList(6);
    Level m_level = Level::Document;
    int m_number = 0;
    QString m_join;
    bool m_lineBreak = false;
    QString m_template;
};

} // namespace normaris::test
