#include "fileformats/XlsxSheet.h"

#include "base/Failure.h"

#include <QFile>
#include <xlsxwriter.h>

namespace normaris {

void writeXlsxSheet(const QString &path, const QString &title, const QList<XlsxColumn> &columns, const QList<QStringList> &rows)
{
    const QByteArray file = QFile::encodeName(path);
    lxw_workbook *book = workbook_new(file.constData());
    if (!book)
        throw Failure(QStringLiteral("「%1」を作成できません。").arg(path));
    lxw_worksheet *sheet = workbook_add_worksheet(book, nullptr);

    lxw_format *titleFormat = workbook_add_format(book);
    format_set_bold(titleFormat);
    format_set_font_size(titleFormat, 12);
    lxw_format *heading = workbook_add_format(book);
    format_set_bold(heading);
    format_set_border(heading, LXW_BORDER_THIN);
    format_set_bg_color(heading, 0xDDEBF7);
    // Text format "@" on every data cell: the sheet keeps codes as typed.
    lxw_format *cell = workbook_add_format(book);
    format_set_num_format(cell, "@");
    format_set_border(cell, LXW_BORDER_THIN);
    format_set_text_wrap(cell);

    worksheet_write_string(sheet, 0, 0, title.toUtf8().constData(), titleFormat);
    for (int c = 0; c < columns.size(); ++c) {
        worksheet_set_column(sheet, lxw_col_t(c), lxw_col_t(c), columns[c].width, nullptr);
        worksheet_write_string(sheet, 1, lxw_col_t(c), columns[c].heading.toUtf8().constData(), heading);
    }
    for (int r = 0; r < rows.size(); ++r) {
        for (int c = 0; c < columns.size(); ++c)
            worksheet_write_string(sheet, lxw_row_t(r + 2), lxw_col_t(c), rows[r].value(c).toUtf8().constData(), cell);
    }
    const lxw_error error = workbook_close(book);
    if (error != LXW_NO_ERROR)
        throw Failure(QStringLiteral("「%1」を書き込めません。（%2）").arg(path, QString::fromUtf8(lxw_strerror(error))));
}

} // namespace normaris
