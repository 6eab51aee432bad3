#include "pdf/LegalCheckPdf.h"

#include "pdf/ReportPdf.h"

namespace normaris::legal {

int writeCheckPdf(const QString &path, const QString &company, const QList<CheckResult> &results)
{
    pdf::ReportTable report;
    report.title = QStringLiteral("法令チェック表");
    report.company = company;
    report.headings = resultHeadings();
    // 規程, 状態, 法令, 事項, 条・語句, 限度・施行日
    report.shares = {150, 70, 220, 250, 190, 120};
    for (const CheckResult &r : results)
        report.rows << r.cells();
    return pdf::writeReportPdf(path, report);
}

} // namespace normaris::legal
