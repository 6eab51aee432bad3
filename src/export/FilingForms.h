#pragma once
// What is typed from the basic settings alone, with no clause data: the signature
// block under an agreement, and the notification of the work rules (就業規則届)
// with the employees' opinion (意見書) that a company files with the labour
// standards inspection office.
//
// A line that shows settings is typed in one piece, in blue when any of its
// settings still holds its own marker, and black again after it.

#include "export/SettingValues.h"
#include "document/Typist.h"

namespace normaris {

class FilingForms {
public:
    // party: the workers' side, '1' 労働組合, '2' 従業員代表, '3' パート代表.
    FilingForms(Typist &typist, SettingValues settings, QString party)
        : m_typist(typist), m_settings(std::move(settings)), m_party(std::move(party))
    {
    }

    // After the last row of an agreement's body.
    void typeSignatureBlock();
    // Two pages; isChange strikes out 作成 rather than 変更.
    void typeNotificationAndOpinion(bool isChange);

private:
    void typeNotification(bool isChange);
    void typeOpinion();
    void typeDateUnderHeading();

    enum class Digits { AsStored, FullWidth };
    // pattern: the line with the settings in braces, "{使用者職名}　{使用者氏名}　印".
    void typeSettingLine(const QString &pattern, Digits digits = Digits::AsStored);
    void typeStruck(const QString &text);
    void typeParagraphs(int count);

    Typist &m_typist;
    SettingValues m_settings;
    QString m_party;
};

} // namespace normaris
