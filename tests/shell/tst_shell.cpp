// The shell helpers: byte counts in CP932, the order and wording of the field checks,
// the company name check, the single-instance lock, the busy pointer and the laying out of a
// program folder.

#include "ScriptedPrompt.h"
#include "base/BusyCursor.h"
#include "base/FieldChecks.h"
#include "shell/ProgramFolder.h"
#include "shell/SingleInstance.h"

#include <QDir>
#include <QFile>
#include <QMimeDatabase>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace normaris;
using normaris::test::ScriptedPrompt;

class ShellTest : public QObject {
    Q_OBJECT
private slots:
    // Each kind of file the program opens with the desktop has an application that
    // opens it, as the desktop database of this machine says: the documents, the
    // lists and reports, and the PDFs.
    void theDesktopOpensWhatTheProgramMakes_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("document") << QStringLiteral("就業規則.docx");
        QTest::newRow("list") << QStringLiteral("一覧表.xlsx");
        QTest::newRow("pdf") << QStringLiteral("就業規則.pdf");
    }
    void theDesktopOpensWhatTheProgramMakes()
    {
        QFETCH(QString, file);
        const QString type = QMimeDatabase().mimeTypeForFile(file, QMimeDatabase::MatchExtension).name();
        QProcess query;
        query.start(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("default"), type});
        QVERIFY2(query.waitForFinished(30000), "xdg-mime (xdg-utils) is not installed");
        const QString application = QString::fromLocal8Bit(query.readAllStandardOutput()).trimmed();
        QVERIFY2(application.endsWith(QStringLiteral(".desktop")), qPrintable(type + QStringLiteral(": no application")));
    }

    void cp932Length_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("bytes");
        QTest::newRow("empty") << QString() << 0;
        QTest::newRow("ascii") << QStringLiteral("abc 123") << 7;
        QTest::newRow("half-width katakana") << QStringLiteral("ｱｲｳﾞ") << 4;
        QTest::newRow("full-width kana and kanji") << QStringLiteral("就業規則です") << 12;
        QTest::newRow("circled digit (NEC extension)") << QStringLiteral("①⑳") << 4;
        QTest::newRow("roman numeral and ㈱") << QStringLiteral("Ⅰ㈱") << 4;
        QTest::newRow("IBM extension kanji") << QStringLiteral("髙") << 2;
        QTest::newRow("full-width space and tilde") << QStringLiteral("　～") << 4;
        QTest::newRow("125 full-width") << QString(125, QChar(u'あ')) << 250;
        QTest::newRow("not in CP932: one per UTF-16 unit") << QStringLiteral("ǅ😀") << 3;
    }
    void cp932Length()
    {
        QFETCH(QString, text);
        QFETCH(int, bytes);
        QCOMPARE(CP932Length(text), bytes);
    }

    // Which message each check shows, in the order the checks run.
    void fieldChecks_data()
    {
        QTest::addColumn<bool>("required");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("limit");
        QTest::addColumn<bool>("allowEmpty");
        QTest::addColumn<bool>("good");
        QTest::addColumn<QString>("message");
        const QString none;
        for (bool required : {true, false}) {
            const QByteArray kind = required ? "required: " : "optional: ";
            QTest::newRow(kind + "empty allowed") << required << QString() << 10 << true << true << none;
            QTest::newRow(kind + "125 full-width fit 250") << required << QString(125, QChar(u'漢')) << 250 << false << true << none;
            QTest::newRow(kind + "126 full-width over 250")
                << required << QString(126, QChar(u'漢')) << 250 << false << false
                << QStringLiteral("入力のエラー: 項目の長さ(252)が制限(250)を越えています。 ･･･文章");
            QTest::newRow(kind + "both quotes: double first")
                << required << QStringLiteral("a'b\"c") << 80 << false << false
                << QStringLiteral("入力のエラー: 項目中に \" を含むことはできません。 ･･･文章");
            QTest::newRow(kind + "single quote") << required << QStringLiteral("a'b") << 80 << false << false
                                                 << QStringLiteral("入力のエラー: 項目中に ' を含むことはできません。 ･･･文章");
            QTest::newRow(kind + "bytes that were not UTF-8")
                << required << QStringLiteral("a\uFFFDb") << 80 << false << false
                << QStringLiteral("入力のエラー: 項目中に文字化けした文字（U+FFFD）を含むことはできません。 ･･･文章");
            QTest::newRow(kind + "quote beats length")
                << required << QStringLiteral("'") + QString(50, QChar(u'漢')) << 80 << false << false
                << QStringLiteral("入力のエラー: 項目中に ' を含むことはできません。 ･･･文章");
        }
        QTest::newRow("required: empty refused")
            << true << QString() << 10 << false << false << QStringLiteral("入力のエラー: 未入力は許されません。 ･･･文章");
        QTest::newRow("optional: empty passes") << false << QString() << 10 << false << true << none;
        QTest::newRow("limit 0 prints no digits") << true << QStringLiteral("ab") << 0 << false << false
                                                  << QStringLiteral("入力のエラー: 項目の長さ(2)が制限()を越えています。 ･･･文章");
    }
    void fieldChecks()
    {
        QFETCH(bool, required);
        QFETCH(QString, text);
        QFETCH(int, limit);
        QFETCH(bool, allowEmpty);
        QFETCH(bool, good);
        QFETCH(QString, message);
        ScriptedPrompt prompt;
        const QString label = QStringLiteral("･･･文章");
        const bool result = required ? CheckRequiredField(prompt, text, qint16(limit), allowEmpty, label)
                                     : CheckOptionalField(prompt, text, qint16(limit), allowEmpty, label);
        QCOMPARE(result, good);
        QCOMPARE(prompt.lines(), message.isEmpty() ? QStringList() : QStringList{message});
        if (!good)
            QCOMPARE(prompt.shown().first().icon, Prompt::Icon::Error);
    }

    void companyNames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("message");
        const QString badChars = QStringLiteral("名前の変更: ファイル名には次の文字は使えません。\n\\ / : , ; * ? \" < > |");
        QTest::newRow("plain") << QStringLiteral("株式会社テスト") << QString();
        QTest::newRow("inner blank") << QStringLiteral("ABC 商事") << QString();
        QTest::newRow("empty") << QString() << badChars;
        QTest::newRow("NUL") << QString(QChar(u'\0')) << badChars;
        for (const char *c : {"\\", "/", ":", ",", ";", "*", "?", "\"", "<", ">", "|"})
            QTest::newRow(c) << QStringLiteral("a") + QString::fromLatin1(c) + QStringLiteral("b") << badChars;
        QTest::newRow("dot") << QStringLiteral(".") << QStringLiteral("名前の変更: 「.」と「..」は会社名に使えません。");
        QTest::newRow("dot dot") << QStringLiteral("..") << QStringLiteral("名前の変更: 「.」と「..」は会社名に使えません。");
        QTest::newRow("tab") << QStringLiteral("a\tb") << QStringLiteral("名前の変更: 会社名に制御文字は使えません。");
        QTest::newRow("newline") << QStringLiteral("a\nb") << QStringLiteral("名前の変更: 会社名に制御文字は使えません。");
        QTest::newRow("leading blank") << QStringLiteral(" a") << QStringLiteral("名前の変更: 会社名の先頭と末尾には空白を置けません。");
        QTest::newRow("trailing full-width blank")
            << QStringLiteral("a　") << QStringLiteral("名前の変更: 会社名の先頭と末尾には空白を置けません。");
        // The names the program keeps for itself in the data folder.
        const QString leadingDot = QStringLiteral("名前の変更: 会社名の先頭に「.」は使えません。");
        QTest::newRow("work folder of a new company") << QStringLiteral(".normaris-work-new-丙社") << leadingDot;
        QTest::newRow("work folder of a deleted company") << QStringLiteral(".normaris-work-deleted-丙社") << leadingDot;
        QTest::newRow("leading dot") << QStringLiteral(".丙社") << leadingDot;
        QTest::newRow("inner dot") << QStringLiteral("丙.社") << QString();
        QTest::newRow("seed file") << QStringLiteral("規程原本db.sqlite")
                                   << QStringLiteral("名前の変更: 「規程原本db.sqlite」はプログラムが使う名前なので会社名に使えません。");
        QTest::newRow("bytes that were not UTF-8")
            << QStringLiteral("\uFFFD\uFFFD") << QStringLiteral("名前の変更: 会社名に文字化けした文字（U+FFFD）は使えません。");
    }
    void companyNames()
    {
        QFETCH(QString, name);
        QFETCH(QString, message);
        ScriptedPrompt prompt;
        QCOMPARE(CheckCompanyName(prompt, name), !message.isEmpty());
        QCOMPARE(prompt.lines(), message.isEmpty() ? QStringList() : QStringList{message});
    }

    void aSecondInstanceIsRefused()
    {
        QTemporaryDir dir;
        const QString lock = dir.path() + QStringLiteral("/normaris.lock");
        {
            SingleInstance first(lock);
            SingleInstance second(lock);
            QVERIFY(first.isFirst());
            QVERIFY(!second.isFirst());
        }
        SingleInstance again(lock); // the first one has gone
        QVERIFY(again.isFirst());
    }

    void busyPointerNests()
    {
        QList<bool> calls;
        BusyCursor::setHandler([&](bool busy) { calls << busy; });
        {
            BusyCursor outer;
            BusyCursor inner;
            QVERIFY(BusyCursor::isBusy());
        }
        QVERIFY(!BusyCursor::isBusy());
        BusyCursor::setHandler({});
        QCOMPARE(calls, (QList<bool>{true, false}));
    }

    void fileNameCheckAllowsDots()
    {
        // The file name check alone refuses only its listed characters.
        ScriptedPrompt prompt;
        QVERIFY(!CheckFileName(prompt, QStringLiteral("..")));
        QVERIFY(prompt.lines().isEmpty());
    }

    // A folder laid out by an older program knows fewer releases of the dictionary: every start
    // brings it those of this program, byte for byte.
    void everyStartBringsTheReleases()
    {
        const QString own = QStringLiteral(NORMARIS_APP_DIR "/releases");
        const QStringList shipped = QDir(own).entryList(QDir::Files, QDir::Name);
        QVERIFY2(shipped.size() >= 2, "the program folder ships fewer than two releases");
        QTemporaryDir root;
        prepareProgramFolder(root.path(), QStringLiteral(NORMARIS_APP_DIR));
        const QString releases = root.path() + QStringLiteral("/releases");
        // As an older program left it: the newest release unknown, an older file damaged.
        QVERIFY(QFile::remove(releases + u'/' + shipped.last()));
        QFile damaged(releases + u'/' + shipped.first());
        QVERIFY(damaged.open(QIODevice::WriteOnly | QIODevice::Truncate));
        damaged.close();
        prepareProgramFolder(root.path(), QStringLiteral(NORMARIS_APP_DIR));
        QCOMPARE(QDir(releases).entryList(QDir::Files, QDir::Name), shipped);
        for (const QString &name : shipped) {
            QFile a(own + u'/' + name);
            QFile b(releases + u'/' + name);
            QVERIFY(a.open(QIODevice::ReadOnly) && b.open(QIODevice::ReadOnly));
            QVERIFY2(a.readAll() == b.readAll(), qPrintable(name));
        }
    }
};

QTEST_GUILESS_MAIN(ShellTest)
#include "tst_shell.moc"
