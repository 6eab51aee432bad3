#pragma once
// Reads the text sources of the dictionary.
//
// A document file (documents/*.txt, UTF-8) is a sequence of lines; indentation is only for reading:
//
//   # a comment
//   文章形式 1                       prose style: 1 である調, 2 ですます調
//   規程 01 就業規則                 the document: code and display name
//   正式名称 就業規則                formal name of the document, or of the 条 above it
//   文章種別 1                       1 規則・規程, 2 協約・協定
//   前文                             the preamble clause
//   章 01 総則                       a chapter: code and title
//   条 0001 目的                     an article: code and title
//   項 01 / 号 01 / 丸 01 / イロハ 01  a clause of that level under the last one above it
//   = text                           a segment of the clause's text
//   =↵ text                          a segment that starts on a new line
//   語句 0001 表示名称 = 既定の語句    the embedded word ★0001★ of this clause
//   参照 0001 条0003 項02            the reference ◆0001◆ of this clause and its target
//                                    (規程NN 章NN 条NNNN 項NN 号NN 丸NN イロハNN 結合N)
//   テンプレート 01                  a template to insert in place of the segment above it,
//                                    which must continue its clause after a line break
//   標準案                           (header) the document comes composed and on the list
//   標準外                           this clause and all under it stay out of the standard
//                                    draft: stock that the user can add
//
// An article given before any chapter belongs to the chapterless body, 章 "00".
// A table file (tables/*.tsv) holds the rows of a fixed table: the first line names the
// table, the second its columns, each further line one row, fields separated by tabs.

#include "seed/SeedSource.h"

namespace normaris::seed {

// The text of a source file's bytes: UTF-8, a byte order mark at the start left out. A
// line that is not UTF-8, or that holds a control character other than the tab, is an
// error with its line (and no excerpt of its bytes); the text is then empty.
QString decodeSource(const QString &file, const QByteArray &bytes, QList<SourceError> &errors);

// Parses one document file; problems go to errors.
Document parseDocument(const QString &file, const QString &text, QList<SourceError> &errors);
// Parses one table file.
FixedTable parseTable(const QString &file, const QString &text, QList<SourceError> &errors);
// The name of the dictionary's release: the one line of folder/release.txt (2026.11);
// empty when there is no such file.
inline const QString kReleaseNameFile = QStringLiteral("release.txt");
QString readReleaseName(const QString &folder, QList<SourceError> &errors);
// Reads folder/documents/*.txt and folder/tables/*.tsv, each in name order, and the release name.
Dictionary readDictionary(const QString &folder, QList<SourceError> &errors);

} // namespace normaris::seed
