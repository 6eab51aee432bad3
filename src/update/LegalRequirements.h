#pragma once
// The legal requirement behind an entry of the standard draft, where the legal check's
// table of requirements names one (「労働基準法第89条第1号」). The update proposes a new
// standard entry with it.

#include "update/DictionaryRelease.h"

namespace normaris {

// The requirement that asks for the entry at key, or empty when none is named.
QString legalRequirementFor(QSqlDatabase db, const EntryKey &key);

} // namespace normaris
