#include "dictionary/RecordFields.h"

#include "base/FieldChecks.h"
#include "dictionary/DictionaryMessages.h"

namespace normaris::dictionary {

namespace {

constexpr qint16 kNameLimit = 80;

int lastCode(const LevelInfo &info)
{
    int last = 1;
    for (int i = 0; i < info.codeWidth; ++i)
        last *= 10;
    return last - 1;
}

QString padded(int n, const LevelInfo &info) { return QStringLiteral("%1").arg(n, info.codeWidth, 10, QLatin1Char('0')); }

} // namespace

QString userCodeRange(Level level)
{
    const LevelInfo &info = levelInfo(level);
    return padded(info.firstUserCode, info) + u'～' + padded(lastCode(info), info);
}

QString standardCodeRange(Level level)
{
    const LevelInfo &info = levelInfo(level);
    return padded(1, info) + u'～' + padded(info.firstUserCode - 1, info);
}

bool checkCodeField(Prompt &prompt, Level level, QString &code, bool editing, const QString &savedCode,
                    const std::function<bool(const QString &code)> &taken)
{
    const LevelInfo &info = levelInfo(level);
    if (code.isEmpty()) {
        prompt.error(kInputErrorTitle, kEmptyField + kCodeLabel);
        return false;
    }
    if (code.size() < info.codeWidth)
        code = QString(info.codeWidth - code.size(), u'0') + code;
    // The field takes digits only; the command line gets the same refusal as a range.
    const QString rangeText = userCodeRange(level) + QStringLiteral("を入力してください。") + kCodeLabel;
    for (QChar c : code) {
        if (c < u'0' || c > u'9') {
            prompt.error(kInputErrorTitle, rangeText);
            return false;
        }
    }
    if (editing && !isUserCode(level, savedCode)) {
        if (code != savedCode) {
            prompt.error(kInputErrorTitle, standardCodeRange(level) + QStringLiteral("は変更できません。") + kCodeLabel);
            code = savedCode;
            return false;
        }
    } else if (!isUserCode(level, code) || code.toInt() > lastCode(info)) {
        prompt.error(kInputErrorTitle, rangeText);
        return false;
    }
    if (editing && code == savedCode)
        return true;
    if (taken(code)) {
        prompt.error(kInputErrorTitle, QStringLiteral("Codeが重複しています。"));
        return false;
    }
    return true;
}

bool checkNameField(Prompt &prompt, const QString &name, const QString &label)
{
    // Control characters would end up in a document's title and in the text sources.
    for (QChar c : name) {
        if (c.category() == QChar::Other_Control) {
            prompt.error(kInputErrorTitle, QStringLiteral("項目中に制御文字を含むことはできません。 ") + label);
            return false;
        }
    }
    return CheckRequiredField(prompt, name, kNameLimit, false, label);
}

} // namespace normaris::dictionary
