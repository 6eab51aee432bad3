#pragma once
// The structure of Japanese rules found in their lines: the title and a 前文; 章 (a 節
// or 款 becomes a chapter of its own whose title carries both); articles written as
// 第５条（見出し） or with the caption on the line above; 枝番 articles (第４条の２) as
// articles of their own; paragraphs, items (1)（１）１．一, sub-items ①～⑳ and イロハ／アイウ;
// 附則 as the last chapter; deleted articles; tables as lines of the clause before them.
// A line that fits nowhere joins the clause above it. Citations of the document's own
// articles become references (◆) to the entries they name; citations of a law or of
// another document stay text. Everything that was not plain is told in the report.
//
// The result is a dictionary text of a user's document (codes from 70, 条 from 7000),
// ready for the level editors' checks, and its rendering in the format of `dict get`.

#include "dictionary/EntryText.h"
#include "intake/RulesFile.h"

#include <QStringList>

namespace normaris::intake {

struct ReportLine {
    int line = 0; // in the file's text; 0 for the document as a whole
    QString text;
    QString toString() const;
};

struct FoundRules {
    QString title;       // the first line, or empty
    QString companyName; // as the text defines it: 株式会社○○（以下「会社」という。）
    dictionary::EntriesSource source;
    QList<ReportLine> report;
    // What was found, for the summary.
    int chapters = 0, articles = 0, paragraphs = 0, items = 0, subItems = 0, references = 0;
};

// The structure of the lines as a document of the given code. file names the source in
// the entries' messages. An empty source.entries means that no article was found.
FoundRules findStructure(const RulesLines &lines, const QString &file, const QString &document);

// Replaces every occurrence of the company's name by the setting marker of 事業所名.
void markCompanyName(FoundRules &rules, const QString &name);

// The summary lines: the counts, the company name found, then the report.
QStringList summaryOf(const FoundRules &rules);

// The dictionary text of the result in the format that `dict put` reads.
QString dictionaryText(const FoundRules &rules, const QString &style, const QString &name, const QString &formalName);

// A number written in digits of either width or in kanji numerals; -1 when it is none.
int parseNumber(QStringView text);

} // namespace normaris::intake
