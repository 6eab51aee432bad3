#include "base/FieldChecks.h"

#include "base/DataLayout.h"
#include "base/Prompt.h"

#include <QStringEncoder>
#include <array>

namespace normaris {

namespace {

// Byte width of every BMP code unit in CP932, built once (a few milliseconds).
// The converter writes 0xFC 0xFC for a character that CP932 lacks and nothing at all
// for an ignorable one; either counts 1, like the "?" of the platform's own conversion.
class Cp932Widths {
public:
    Cp932Widths()
    {
        QStringEncoder encoder("windows-31j", QStringConverter::Flag::Stateless);
        for (int u = 0; u < 0x10000; ++u) {
            const QChar unit{char16_t(u)};
            const QByteArray bytes = unit.isSurrogate() ? QByteArray() : QByteArray(encoder.encode(QStringView(&unit, 1)));
            const bool missing = bytes.isEmpty() || bytes == QByteArrayLiteral("\xFC\xFC");
            m_width[u] = missing ? 1 : quint8(bytes.size());
        }
    }
    int width(char16_t unit) const { return m_width[unit]; }

private:
    std::array<quint8, 0x10000> m_width{};
};

const Cp932Widths &widths()
{
    static const Cp932Widths table;
    return table;
}

// The "#" number format: no digits at all for zero.
QString hashFormat(int n) { return n == 0 ? QString() : QString::number(n); }

const QString kInputError = QStringLiteral("入力のエラー");
const QString kRenameTitle = QStringLiteral("名前の変更");
// A value read from bytes that were not UTF-8 holds U+FFFD where they stood.
const QString kGarbledText = QStringLiteral("項目中に文字化けした文字（U+FFFD）を含むことはできません。");

// The checks after the empty test, shared by both field checks.
bool checkFilledField(Prompt &prompt, const QString &text, qint16 limit, const QString &label)
{
    if (text.contains(u'"')) {
        prompt.error(kInputError, QStringLiteral("項目中に \" を含むことはできません。 ") + label);
        return false;
    }
    if (text.contains(u'\'')) {
        prompt.error(kInputError, QStringLiteral("項目中に ' を含むことはできません。 ") + label);
        return false;
    }
    if (text.contains(QChar::ReplacementCharacter)) {
        prompt.error(kInputError, kGarbledText + QStringLiteral(" ") + label);
        return false;
    }
    const int length = CP932Length(text);
    if (length > limit) {
        prompt.error(kInputError, QStringLiteral("項目の長さ(") + hashFormat(length) + QStringLiteral(")が制限(") + hashFormat(limit)
                                      + QStringLiteral(")を越えています。 ") + label);
        return false;
    }
    return true;
}

} // namespace

int CP932Length(const QString &text)
{
    const Cp932Widths &table = widths();
    int bytes = 0;
    for (QChar c : text) {
        // A surrogate half is a unit that CP932 lacks.
        bytes += c.isSurrogate() ? 1 : table.width(c.unicode());
    }
    return bytes;
}

bool CheckRequiredField(Prompt &prompt, const QString &text, qint16 limit, bool allowEmpty, const QString &itemLabel)
{
    if (text.isEmpty()) {
        if (allowEmpty)
            return true;
        prompt.error(kInputError, QStringLiteral("未入力は許されません。 ") + itemLabel);
        return false;
    }
    return checkFilledField(prompt, text, limit, itemLabel);
}

bool CheckOptionalField(Prompt &prompt, const QString &text, qint16 limit, bool allowEmpty, const QString &itemLabel)
{
    if (text.isEmpty() && allowEmpty)
        return true;
    return checkFilledField(prompt, text, limit, itemLabel);
}

bool CheckNoControlCharacters(Prompt &prompt, const QString &text, const QString &itemLabel)
{
    for (QChar c : text) {
        if (c.category() == QChar::Other_Control || c.category() == QChar::Other_Format) {
            prompt.error(kInputError, QStringLiteral("項目中に制御文字を含むことはできません。 ") + itemLabel);
            return false;
        }
    }
    return true;
}

bool CheckNoMarkers(Prompt &prompt, const QString &text, const QString &itemLabel)
{
    for (const QChar sign : {u'★', u'☆', u'◆'}) {
        if (text.contains(sign)) {
            prompt.error(kInputError, QStringLiteral("項目中に %1 を含むことはできません。 ").arg(sign) + itemLabel);
            return false;
        }
    }
    return true;
}

bool CheckFileName(Prompt &prompt, const QString &name)
{
    static const QString forbidden = QStringLiteral("\\/:,;*?\"<>|");
    bool refused = name.isEmpty() || name == QString(QChar(u'\0'));
    for (QChar c : name)
        refused = refused || forbidden.contains(c);
    if (refused) {
        prompt.error(kRenameTitle, QStringLiteral("ファイル名には次の文字は使えません。\n"
                                                  "\\ / : , ; * ? \" < > |"));
    }
    return refused;
}

bool CheckCompanyName(Prompt &prompt, const QString &name)
{
    if (CheckFileName(prompt, name))
        return true;
    if (name == u"." || name == u"..") {
        prompt.error(kRenameTitle, QStringLiteral("「.」と「..」は会社名に使えません。"));
        return true;
    }
    for (QChar c : name) {
        if (c.category() == QChar::Other_Control || c.category() == QChar::Other_Format) {
            prompt.error(kRenameTitle, QStringLiteral("会社名に制御文字は使えません。"));
            return true;
        }
    }
    if (name.startsWith(u'.')) {
        prompt.error(kRenameTitle, QStringLiteral("会社名の先頭に「.」は使えません。"));
        return true;
    }
    if (DataLayout::isReservedName(name)) {
        prompt.error(kRenameTitle, QStringLiteral("「%1」はプログラムが使う名前なので会社名に使えません。").arg(name));
        return true;
    }
    if (name.contains(QChar::ReplacementCharacter)) {
        prompt.error(kRenameTitle, QStringLiteral("会社名に文字化けした文字（U+FFFD）は使えません。"));
        return true;
    }
    if (name.trimmed() != name) {
        prompt.error(kRenameTitle, QStringLiteral("会社名の先頭と末尾には空白を置けません。"));
        return true;
    }
    return false;
}

} // namespace normaris
