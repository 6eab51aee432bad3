// 現行規程の取込: reading rules of 100, 1,000 and 3,000 articles from a text file, finding
// their structure and citations, and writing them as a document of the company's own
// (composed and on the list), each step timed, to show that the whole grows linearly.

#include "BenchCompany.h"
#include "intake/RulesFile.h"
#include "intake/RulesIntake.h"
#include "intake/RulesStructure.h"

#include <QCoreApplication>
#include <QFile>
#include <cstdio>

using namespace normaris;
using namespace normaris::bench;

namespace {

// Rules of that many articles in up to 29 chapters, each article with a caption, two
// paragraphs, three items and a citation of the article before it.
QString syntheticRules(int articles)
{
    QString text = QStringLiteral("就業規則\n\nこの規則は、株式会社ベンチ（以下「会社」という。）の従業員に適用する。\n");
    const int perChapter = (articles + 28) / 29; // and 附則 the thirtieth
    for (int a = 1; a <= articles; ++a) {
        if ((a - 1) % perChapter == 0)
            text += QStringLiteral("\n第%1章　第%1の事項\n").arg((a - 1) / perChapter + 1);
        text +=
            QStringLiteral("（第%1の見出し）\n第%1条　会社は、従業員が業務を円滑に遂行できるよう、必要な措置を講ずるものとする。\n").arg(a);
        text += QStringLiteral("２　%1の場合において、会社は、次の事項に留意しなければならない。\n")
                    .arg(a > 1 ? QStringLiteral("前条") : QStringLiteral("前項"));
        text += QStringLiteral("一　従業員の健康の確保\n二　業務の効率化\n三　関係法令の遵守\n");
    }
    text += QStringLiteral("\n附　則\nこの規則は、令和７年４月１日から施行する。\n");
    return text;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    BenchCompany company;
    if (!company.open())
        return 1;
    int code = 70;
    for (int articles : {100, 1000, 2999}) {
        const QString file = company.folder() + QStringLiteral("/rules%1.txt").arg(articles);
        {
            QFile f(file);
            if (!f.open(QIODevice::WriteOnly))
                return 1;
            f.write(syntheticRules(articles).toUtf8());
        }
        intake::RulesFileResult read;
        intake::FoundRules rules;
        const double readMs = timed([&] { read = intake::readRulesFile(file); });
        const double findMs = timed([&] { rules = intake::findStructure(*read.lines, file, QString::number(code)); });
        Outcome written = Outcome::Failed;
        const intake::IntakeRequest request{kStyle, QString::number(code), QStringLiteral("規程%1").arg(articles), QString(), QString()};
        const double writeMs = timed([&] { written = intake::writeRules(company.prompt, company.db(), rules, request); });
        std::printf("%5d articles  %6d rows read  read %7.1f ms  structure %7.1f ms  write %8.1f ms  %s\n", articles,
                    int(read.lines->lines.size()), readMs, findMs, writeMs,
                    written == Outcome::Done ? "written" : qUtf8Printable(company.prompt.m_last));
        ++code;
    }
    return 0;
}
