#include "import/MarkerRenumbering.h"

#include "base/Database.h"

#include <QRegularExpression>
#include <QSet>

namespace normaris {

namespace {

constexpr int kLastCode = 9999;

QString fourDigits(int n) { return QStringLiteral("%1").arg(n, 4, 10, QLatin1Char('0')); }

} // namespace

std::optional<MarkerRenumbering> MarkerRenumbering::plan(QSqlDatabase target, const SourceEntry &entry)
{
    MarkerRenumbering renumbering;
    const QString document = entry.place().code(Level::Document);
    for (size_t t = 0; t < kVariableTables.size(); ++t) {
        const VariableTable &table = kVariableTables[t];
        const QString name = QString::fromUtf16(table.table);
        // Past every code of the document and of the rows the import brings along.
        int next = scalar(target, QStringLiteral("SELECT max(CAST(Code AS INTEGER)) FROM \"%1\" WHERE 規程Code = ?").arg(name), {document})
                       .toInt();
        const QList<QSqlRecord> used = entry.usedRows(table);
        for (const QSqlRecord &row : used)
            next = qMax(next, row.value(QStringLiteral("Code")).toInt());
        QSet<QString> seen;
        for (const QSqlRecord &row : used) {
            const QString code = row.value(QStringLiteral("Code")).toString();
            if (seen.contains(code))
                continue;
            seen.insert(code);
            const bool taken =
                scalar(target, QStringLiteral("SELECT count(*) FROM \"%1\" WHERE 規程Code = ? AND Code = ?").arg(name), {document, code})
                    .toInt()
                > 0;
            if (!taken)
                continue;
            if (++next > kLastCode)
                return std::nullopt;
            renumbering.m_codes[t].append({code, fourDigits(next)});
        }
    }
    return renumbering;
}

bool MarkerRenumbering::isEmpty() const
{
    return std::all_of(m_codes.begin(), m_codes.end(), [](const auto &codes) { return codes.isEmpty(); });
}

QString MarkerRenumbering::code(const VariableTable &table, const QString &sourceCode) const
{
    for (size_t t = 0; t < kVariableTables.size(); ++t) {
        if (kVariableTables[t].table != table.table)
            continue;
        for (const auto &[from, to] : m_codes[t])
            if (from == sourceCode)
                return to;
    }
    return sourceCode;
}

QString MarkerRenumbering::rewrite(const QString &text) const
{
    if (isEmpty())
        return text;
    // Every marker at once, so that a code given to one is never taken for another's.
    static const QRegularExpression marker(QStringLiteral("([★◆])(\\d{4})\\1"));
    QString result;
    qsizetype from = 0;
    for (QRegularExpressionMatchIterator it = marker.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        result += text.mid(from, m.capturedStart() - from);
        const QChar sign = m.captured(1).at(0);
        QString code = m.captured(2);
        for (const VariableTable &table : kVariableTables)
            if (table.marker == sign.unicode())
                code = this->code(table, code);
        result += sign + code + sign;
        from = m.capturedEnd();
    }
    return result + text.mid(from);
}

QStringList MarkerRenumbering::changes() const
{
    QStringList lines;
    for (size_t t = 0; t < kVariableTables.size(); ++t)
        for (const auto &[from, to] : m_codes[t])
            lines << QString::fromUtf16(kVariableTables[t].conflictName) + QStringLiteral("のCode：") + from + QStringLiteral("→") + to;
    return lines;
}

} // namespace normaris
