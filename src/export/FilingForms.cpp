#include "export/FilingForms.h"

#include "export/Numerals.h"
#include "rulebase/JapaneseDate.h"

#include <QDate>
#include <QHash>
#include <QRegularExpression>

namespace normaris {

namespace {

const QString kBlanks20 = QString(20, QChar(u'　'));
const QString kBlanks8 = QString(8, QChar(u'　'));

// The lines of the workers' side, by party: two under an agreement, one under
// the opinion.
struct PartyLines {
    QString agreementFirst;
    QString agreementSecond;
    QString opinion;
};

const QHash<QString, PartyLines> &partyLines()
{
    static const QHash<QString, PartyLines> lines = {
        {QStringLiteral("1"),
         {QStringLiteral("{労働組合名}"), QStringLiteral("{従業員職名}　{従業員氏名}　印"),
          QStringLiteral("{労働組合名}　{従業員職名}　{従業員氏名}　印")}},
        {QStringLiteral("2"),
         {QStringLiteral("{事業所名}"), QStringLiteral("労働代表者　{従業員氏名}　印"),
          QStringLiteral("労働代表者　{従業員職名}　{従業員氏名}　印")}},
        {QStringLiteral("3"),
         {QStringLiteral("{事業所名}"), QStringLiteral("労働代表者　{パート氏名}　印"),
          QStringLiteral("労働代表者　{パート職名}　{パート氏名}　印")}},
    };
    return lines;
}

// The name of today's era: the date lines are left blank for the user to fill in
// by hand, in the era they will be filed in. Every era name has two characters.
QString eraOfToday() { return formatEraDate(QDate::currentDate()).left(2); }

QString blankDateLine() { return eraOfToday() + QStringLiteral("　　　　年　　　　月　　　　日"); }

} // namespace

void FilingForms::typeSettingLine(const QString &pattern, Digits digits)
{
    static const QRegularExpression placeholder(QStringLiteral("\\{([^}]*)\\}"));
    QString line;
    bool unset = false;
    qsizetype done = 0;
    for (auto it = placeholder.globalMatch(pattern); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        const QString column = m.captured(1);
        const QString value = m_settings.value(column);
        line += pattern.mid(done, m.capturedStart() - done) + (digits == Digits::FullWidth ? fullWidthDigits(value) : value);
        unset = unset || m_settings.isUnset(column);
        done = m.capturedEnd();
    }
    line += pattern.mid(done);
    m_typist.setColor(unset ? Typist::Color::Blue : Typist::Color::Black);
    m_typist.typeText(line);
    m_typist.setColor(Typist::Color::Black);
}

void FilingForms::typeStruck(const QString &text)
{
    m_typist.setDoubleStrikeThrough(true);
    m_typist.typeText(text);
    m_typist.setDoubleStrikeThrough(false);
}

void FilingForms::typeParagraphs(int count)
{
    for (int i = 0; i < count; ++i)
        m_typist.typeParagraph();
}

void FilingForms::typeSignatureBlock()
{
    m_typist.setColor(Typist::Color::Black);
    m_typist.typeParagraph();
    m_typist.typeText(blankDateLine());
    typeParagraphs(3);
    typeSettingLine(kBlanks20 + QStringLiteral("{事業所名}"));
    m_typist.typeParagraph();
    typeSettingLine(kBlanks20 + QStringLiteral("{使用者職名}　{使用者氏名}　印"));
    typeParagraphs(3);
    const auto party = partyLines().constFind(m_party);
    if (party == partyLines().cend())
        return;
    typeSettingLine(kBlanks20 + party->agreementFirst);
    m_typist.typeParagraph();
    typeSettingLine(kBlanks20 + party->agreementSecond);
}

void FilingForms::typeNotificationAndOpinion(bool isChange)
{
    typeNotification(isChange);
    typeOpinion();
}

void FilingForms::typeNotification(bool isChange)
{
    m_typist.setAlignment(Typist::Alignment::Center);
    m_typist.setFontSize(20);
    m_typist.typeText(QStringLiteral("就業規則"));
    // The one form serves both filings: the word that does not apply is struck out.
    if (isChange)
        m_typist.typeText(QStringLiteral("（変更）"));
    else
        typeStruck(QStringLiteral("（変更）"));
    m_typist.typeText(QStringLiteral("届"));
    typeDateUnderHeading();
    typeSettingLine(QStringLiteral("{管轄の労基署}労働基準監督署長　殿"));
    typeParagraphs(3);

    m_typist.typeText(QStringLiteral("　今回、別添のとおり当社の就業規則を"));
    if (isChange) {
        typeStruck(QStringLiteral("作成・"));
        m_typist.typeText(QStringLiteral("変更"));
    } else {
        m_typist.typeText(QStringLiteral("作成"));
        typeStruck(QStringLiteral("・変更"));
    }
    m_typist.typeText(QStringLiteral("しましたので、"));
    m_typist.typeParagraph();
    m_typist.typeText(QStringLiteral("　意見書を添えて届け出します。"));
    typeParagraphs(5);

    if (!m_settings.value(QStringLiteral("労働保険番号")).isEmpty()) {
        typeSettingLine(QStringLiteral("労働保険番号　　{労働保険番号}"));
        typeParagraphs(2);
    }
    typeSettingLine(QStringLiteral("　　事業場名　　{事業所名}"));
    typeParagraphs(2);

    // Without a postcode the address starts on the 所在地 line itself.
    if (!m_settings.value(QStringLiteral("郵便番号")).isEmpty()) {
        typeSettingLine(QStringLiteral("　　　所在地　　{郵便番号}"));
        m_typist.typeParagraph();
        typeSettingLine(kBlanks8 + QStringLiteral("{所在地1}"));
    } else {
        typeSettingLine(QStringLiteral("　　　所在地　　{所在地1}"));
    }
    m_typist.typeParagraph();
    if (!m_settings.value(QStringLiteral("所在地2")).isEmpty()) {
        typeSettingLine(kBlanks8 + QStringLiteral("{所在地2}"));
        m_typist.typeParagraph();
    }
    m_typist.typeParagraph();

    typeSettingLine(QStringLiteral("　　　ＴＥＬ　　{tel}"));
    typeParagraphs(2);
    typeSettingLine(QStringLiteral("代表者職氏名　　{使用者職名}　{使用者氏名}　印"));
    typeParagraphs(2);
    typeSettingLine(QStringLiteral("　　　　業種　　{業種}"));
    typeParagraphs(2);
    typeSettingLine(QStringLiteral("　　労働者数　　{労働者数}人"), Digits::FullWidth);
    m_typist.typeParagraph();
    m_typist.insertPageBreak();
}

// Under the heading of either page: the body size, and the date the company fills in by hand.
void FilingForms::typeDateUnderHeading()
{
    m_typist.setFontSize(12);
    typeParagraphs(2);
    m_typist.setAlignment(Typist::Alignment::Right);
    m_typist.typeText(blankDateLine());
    typeParagraphs(2);
    m_typist.setAlignment(Typist::Alignment::Left);
}

void FilingForms::typeOpinion()
{
    m_typist.setAlignment(Typist::Alignment::Center);
    m_typist.setFontSize(20);
    m_typist.typeText(QStringLiteral("意見書"));
    typeDateUnderHeading();
    typeSettingLine(QStringLiteral("{事業所名}"));
    m_typist.typeParagraph();
    typeSettingLine(QStringLiteral("{使用者職名}　{使用者氏名}　殿"));
    typeParagraphs(3);
    m_typist.typeText(
        QStringLiteral("　") + eraOfToday()
        + QStringLiteral("　　　年　　　月　　　日付をもって意見を求められた就業規則について、下記のとおり意見を提出します。"));
    typeParagraphs(2);

    m_typist.setAlignment(Typist::Alignment::Center);
    m_typist.typeText(QStringLiteral("記"));
    m_typist.typeParagraph();
    // The space in which the representative writes the opinion by hand.
    m_typist.setAlignment(Typist::Alignment::Left);
    typeParagraphs(16);

    m_typist.setAlignment(Typist::Alignment::Right);
    if (const auto party = partyLines().constFind(m_party); party != partyLines().cend())
        typeSettingLine(party->opinion);
}

} // namespace normaris
