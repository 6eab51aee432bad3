// The text of a PDF through Poppler: every page's text as it is laid out, one line a line
// of the page, an indented line keeping its indent. The only file that speaks to Poppler.

#include "intake/RulesFile.h"

#include <QFile>
#include <QFileInfo>

#include <memory>
#include <poppler-document.h>
#include <poppler-page.h>

namespace normaris::intake {

RulesFileResult readPdf(const QString &path)
{
    const QString name = QFileInfo(path).fileName();
    const QByteArray local = QFile::encodeName(path);
    std::unique_ptr<poppler::document> document(poppler::document::load_from_file(std::string(local.constData(), size_t(local.size()))));
    if (!document)
        return RulesFileResult{std::nullopt,
                               QStringLiteral("ファイル「%1」は PDF として読めません。壊れているか、別の形式のファイルです。").arg(name)};
    if (document->is_locked())
        return RulesFileResult{
            std::nullopt, QStringLiteral("ファイル「%1」はパスワードで保護されています。保護を解除してから取り込んでください。").arg(name)};
    RulesLines out;
    out.laidOut = true;
    bool anyText = false;
    for (int i = 0; i < document->pages(); ++i) {
        std::unique_ptr<poppler::page> page(document->create_page(i));
        if (!page)
            continue;
        const poppler::byte_array utf8 = page->text(page->page_rect(), poppler::page::physical_layout).to_utf8();
        const QString text = QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
        for (const QString &line : text.split(u'\n')) {
            if (!line.trimmed().isEmpty())
                anyText = true;
            out.lines << RulesLine{line, false};
        }
    }
    if (!anyText)
        return RulesFileResult{std::nullopt, QStringLiteral("ファイル「%1」には文字がありません。スキャンした画像だけの PDF "
                                                            "と思われます。文字を含む PDF か、Word・テキストのファイルを指定してください。")
                                                 .arg(name)};
    return RulesFileResult{out, QString()};
}

} // namespace normaris::intake
