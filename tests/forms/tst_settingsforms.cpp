// The settings, dates and words dialogs offscreen, driven by their control names.

#include "DocxContent.h"
#include "ScriptedPrompt.h"
#include "FormSession.h"
#include "TestRoot.h"
#include "TestServer.h"
#include "rulebase/ServerStore.h"
#include "export/WorkDataBuild.h"
#include "rulebase/CompanyFiles.h"
#include "base/Database.h"
#include "rulebase/forms/frmKihon.h"
#include "rulebase/forms/frmSekoubi.h"
#include "base/AppState.h"
#include "shell/forms/FormHelpers.h"
#include "words/forms/frmGokusentakuSub.h"
#include "words/forms/frmGokusentaku_01.h"

#include <QFile>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace normaris;
using namespace normaris::test;

class SettingsFormsTest : public QObject {
    Q_OBJECT
private slots:
    void init() { m_session = std::make_unique<FormSession>(); }
    void cleanup() { m_session.reset(); }

    void kihonFiltersKeysAndChecksOnEnter()
    {
        frmKihon form;
        form.show();
        auto *postcode = form.findChild<QLineEdit *>(QStringLiteral("Text1_1"));
        auto *workers = form.findChild<QLineEdit *>(QStringLiteral("Text1_13"));
        QCOMPARE(form.findChild<QLineEdit *>(QStringLiteral("Text1_0"))->text(), QStringLiteral("☆0001☆"));
        QCOMPARE(postcode->text(), QString());
        postcode->setFocus();
        QTest::keyClicks(postcode, QStringLiteral("1a0x0-0;001"));
        QCOMPARE(postcode->text(), QStringLiteral("100-0001"));

        workers->setFocus();
        workers->clear();
        QTest::keyClicks(workers, QStringLiteral("0"));
        QTest::keyClick(workers, Qt::Key_Return);
        QCOMPARE(m_session->prompt.lines(), QStringList{QStringLiteral("入力エラー: 1～9999999を入力してください。･･･労働者数")});
        QCoreApplication::processEvents();
        QVERIFY(workers->hasFocus());
    }

    void kihonUpdateWritesMarkersAndWarnsOnlyFromTheConsole()
    {
        for (const bool fromConsole : {false, true}) {
            AppState::instance().KihonFromExport = fromConsole;
            m_session->prompt.clear();
            frmKihon form;
            form.findChild<QLineEdit *>(QStringLiteral("Text1_0"))->setText(QStringLiteral("株式会社テスト"));
            form.findChild<QLineEdit *>(QStringLiteral("Text1_2"))->clear();
            m_session->prompt.answer({true});
            form.findChild<QPushButton *>(QStringLiteral("Command1"))->click();
            QStringList expected = {QStringLiteral("更新の確認: 内容を変更します。\nよろしいですか。")};
            if (fromConsole)
                expected << QStringLiteral("データ変更: データエクスポート処理の過程で基本設定を変更した場合は、\n"
                                           "もう一度データエクスポートフォームの「新規作成」をクリックしてください。");
            QCOMPARE(m_session->prompt.lines(), expected);
            QVERIFY(!AppState::instance().KihonFromExport);
            QCOMPARE(form.result(), int(QDialog::Accepted));
        }
        QCOMPARE(scalar(AppState::cn(), QStringLiteral("SELECT 事業所名 || '|' || 所在地1 FROM 企業情報")).toString(),
                 QStringLiteral("株式会社テスト|☆0003☆"));
    }

    // A company taken out opens for reading: a change is refused with the server's reason,
    // and the program goes on (a second try says the same; what is there still reads).
    void takenOutCompanyRefusesAChange()
    {
        if (!TestServer::requested())
            QSKIP("a company is taken out only from the server store");
        QSqlDatabase cn = AppState::cn();
        const int rows = scalar(cn, QStringLiteral("SELECT count(*) FROM 企業情報")).toInt();
        {
            Transaction mark(cn);
            ServerStore::markTakenOut(cn, QStringLiteral("tester@desk"));
            mark.commit();
        }
        frmKihon form;
        form.findChild<QLineEdit *>(QStringLiteral("Text1_0"))->setText(QStringLiteral("株式会社テスト"));
        for (int attempt = 0; attempt < 2; ++attempt) {
            m_session->prompt.clear();
            m_session->prompt.answer({true});
            form.findChild<QPushButton *>(QStringLiteral("Command1"))->click();
            QCOMPARE(m_session->prompt.lines(),
                     (QStringList{QStringLiteral("更新の確認: 内容を変更します。\nよろしいですか。"),
                                  kProgramTitle
                                      + QStringLiteral(": 『甲』は持ち出し中のため変更できません。持ち帰ってから変更してください。")}));
            QVERIFY(form.result() != QDialog::Accepted);
        }
        QCOMPARE(scalar(cn, QStringLiteral("SELECT count(*) FROM 企業情報")).toInt(), rows);
        QCOMPARE(scalar(cn, QStringLiteral("SELECT 規程 FROM 規程 WHERE 文章形式Code = '1' AND Code = '01'")).toString(),
                 QStringLiteral("就業規則"));
    }

    void sekoubiAddsRefusesAndDeletes()
    {
        frmSekoubi form;
        form.show();
        const auto button = [&](const char *name) { return form.findChild<QPushButton *>(QString::fromUtf8(name)); };
        QVERIFY(button("cmdEdit")->isHidden());
        button("cmdAdd")->click();
        auto *date = form.findChild<QLineEdit *>(QStringLiteral("Text1"));
        QVERIFY(date->isVisibleTo(&form));
        QVERIFY(!button("cmdClose")->isEnabled());
        date->setText(QStringLiteral("2009/2/30"));
        button("cmdUpdate")->click();
        QCOMPARE(m_session->prompt.lines(), QStringList{QStringLiteral("入力エラー: 日付の入力が正しくありません。･･･年月日")});
        date->setText(QStringLiteral("令和8年4月1日"));
        button("cmdUpdate")->click();
        QCOMPARE(scalar(AppState::cn(),
                        QStringLiteral("SELECT count(*) || '|' || min(文章形式Code || ' ' || 規程Code || ' ' || 年月日) FROM 施行日"))
                     .toString(),
                 QStringLiteral("1|1 01 2026-04-01"));
        QVERIFY(!button("cmdEdit")->isHidden());
        QCOMPARE(form.findChild<QLabel *>(QStringLiteral("lblStatus"))->text(), QStringLiteral("Record: 1"));

        m_session->prompt.clear();
        m_session->prompt.answer({true});
        button("cmdDelete")->click();
        QCOMPARE(m_session->prompt.lines(), QStringList{QStringLiteral("削除の確認: 2026/04/01 を削除しますか？")});
        // With the last date gone only 追加 and 閉じる are left.
        QVERIFY(button("cmdEdit")->isHidden() && button("cmdDelete")->isHidden() && button("cmdFirst")->isHidden());
        QVERIFY(button("cmdAdd")->isEnabled() && button("cmdClose")->isEnabled());
    }

    void wordsFormSavesAndEmptiesToTheMarker()
    {
        AppState &state = AppState::instance();
        chooseArticleWithWords();
        state.WordsPreviewAllowed = false;
        frmGokusentaku_01 form;
        QVERIFY(form.findChild<QPushButton *>(QStringLiteral("Command4"))->isHidden());
        auto *first = form.findChild<QLineEdit *>(QStringLiteral("Text1_0"));
        const QString code = form.findChild<QLabel *>(QStringLiteral("Label3_0"))->text();
        first->clear();
        m_session->prompt.answer({false});
        form.findChild<QPushButton *>(QStringLiteral("Command2"))->click();
        QCOMPARE(m_session->prompt.lines(), QStringList{QStringLiteral("更新完了: データ更新が完了しました。\nフォームを閉じますか？")});
        QCOMPARE(first->text(), u'★' + code + u'★');
        QCOMPARE(
            scalar(AppState::cn(),
                   QStringLiteral("SELECT 語句 FROM 変数テーブル語句 WHERE 規程Code = '01' AND 章Code = ? AND 条Code = ? AND Code = ?"),
                   {state.CurShoCode, state.CurJoCode, code})
                .toString(),
            u'★' + code + u'★');
    }

    void previewNeedsTheWorkData()
    {
        chooseArticleWithWords();
        AppState::instance().WordsPreviewAllowed = true;
        frmGokusentaku_01 form;
        auto *preview = form.findChild<QPushButton *>(QStringLiteral("Command4"));
        QVERIFY(!preview->isHidden());
        preview->click();
        QCOMPARE(m_session->prompt.lines(),
                 QStringList{QStringLiteral("データ未作成: まだ「データ作成」を実行していないため表示できません。")});
        QVERIFY(form.lastPreview().isEmpty());
    }

    void articleWithoutWordsHasNoPreview()
    {
        AppState &state = AppState::instance();
        const QString place =
            scalar(
                AppState::cn(),
                QStringLiteral("SELECT 章Code || ' ' || Code FROM 条 WHERE 文章形式Code = '1' AND 規程Code = '01' AND 選択フラグ = 1 "
                               "AND NOT EXISTS (SELECT 1 FROM 変数テーブル語句 w WHERE w.規程Code = 条.規程Code AND w.章Code = 条.章Code "
                               "AND w.条Code = 条.Code AND w.選択フラグ = 1) LIMIT 1"))
                .toString();
        QVERIFY(!place.isEmpty());
        state.CurShoCode = place.section(u' ', 0, 0);
        state.CurJoCode = place.section(u' ', 1, 1);
        state.WordsPreviewAllowed = true;
        frmGokusentaku_01 form;
        QVERIFY(form.findChild<QPushButton *>(QStringLiteral("Command4"))->isHidden());
        QCOMPARE(form.findChild<QLabel *>(QStringLiteral("Label2_0"))->text(), QStringLiteral("埋込語句はありません。"));
        QCOMPARE(form.findChild<QPushButton *>(QStringLiteral("Command3"))->text(), QStringLiteral("閉じる(&C)"));
    }

    // After データ作成 the article is written to a .docx and opened, with no message.
    void previewWritesTheArticle()
    {
        ScriptedPrompt building;
        QCOMPARE(WorkDataBuild(AppState::cn(), building).build(QStringLiteral("1"), QStringLiteral("01")), Outcome::Done);
        AppState &state = AppState::instance();
        chooseArticleWithWords();
        state.WordsPreviewAllowed = true;
        const QString title = scalar(AppState::cn(),
                                     QStringLiteral("SELECT 文章 FROM 作成データ WHERE 文章形式Code = '1' AND 規程Code = '01' "
                                                    "AND 章Code = ? AND 条Code = ? AND 種別 = '3'"),
                                     {state.CurShoCode, state.CurJoCode})
                                  .toString();
        frmGokusentaku_01 form;
        form.findChild<QPushButton *>(QStringLiteral("Command4"))->click();
        QVERIFY(m_session->prompt.lines().isEmpty());
        const QString path = form.lastPreview();
        QVERIFY(QFileInfo(path).size() > 0);
        const DocxBody body = readBody(zipEntries(path).value(QStringLiteral("word/document.xml")));
        QFile::remove(path);
        QVERIFY2(body.error.isEmpty(), qPrintable(body.error));
        QVERIFY(body.paragraphs.size() > 2);
        QCOMPARE(body.paragraphs.first().text(), QStringLiteral("第●条（") + title + QStringLiteral("）"));
    }

    void tantoushaBlockOnlyForTwoAgreements()
    {
        frmGokusentakuSub form;
        QVERIFY(form.findChild<QGroupBox *>(QStringLiteral("Frame1"))->isHidden());
        AppState::instance().CurKiteiCode = QStringLiteral("34");
        frmGokusentakuSub agreement;
        QVERIFY(!agreement.findChild<QGroupBox *>(QStringLiteral("Frame1"))->isHidden());
        QVERIFY(agreement.findChild<QLabel *>(QStringLiteral("Label1"))
                    ->text()
                    .endsWith(QStringLiteral("には「担当者」の設定が0ヶ所あります。")));
    }

private:
    // The first article of document 01 that holds a selected word, as CurShoCode / CurJoCode.
    void chooseArticleWithWords()
    {
        AppState &state = AppState::instance();
        const QString place =
            scalar(AppState::cn(),
                   QStringLiteral("SELECT 章Code || ' ' || 条Code FROM 変数テーブル語句 WHERE 規程Code = '01' AND 種別 <> '10' "
                                  "AND 選択フラグ = 1 ORDER BY CAST(章Code AS INTEGER), CAST(条Code AS INTEGER) LIMIT 1"))
                .toString();
        QVERIFY(!place.isEmpty());
        state.CurShoCode = place.section(u' ', 0, 0);
        state.CurJoCode = place.section(u' ', 1, 1);
    }

    std::unique_ptr<FormSession> m_session;
};

QTEST_MAIN(SettingsFormsTest)
#include "tst_settingsforms.moc"
