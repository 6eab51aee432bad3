#pragma once
// The 法令チェック表 as a page of the program's PDF: a title, the company and the
// date, and the table of results (A4 lying, the header row on every page).
//
// It needs a QGuiApplication: the fonts come from the platform.

#include "legal/LegalCheck.h"

namespace normaris::legal {

// Writes the PDF at path and answers its number of pages. Throws Failure.
int writeCheckPdf(const QString &path, const QString &company, const QList<CheckResult> &results);

} // namespace normaris::legal
