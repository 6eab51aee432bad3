// The words of an article: the list of articles that hold them, the round trip of a
// word, and the count of words captioned 担当者.

#include "ScriptedPrompt.h"
#include "TestRoot.h"
#include "rulebase/CompanyFiles.h"
#include "base/Database.h"
#include "base/AppState.h"
#include "words/EmbeddedWords.h"

#include <QTest>

using namespace normaris;
using namespace normaris::test;

namespace {

// A small document of its own: 条 0001 without words, 条 0002 with ★0001★ in one 項
// and ★0002★ in a 号 whose own flag is off, and 条 0003 whose only word is unselected.
void buildDocument(QSqlDatabase db)
{
    const QStringList sql = {
        "INSERT INTO 章 (文章形式Code, 規程Code, Code, 章, 選択フラグ) VALUES ('1','09','01','総則',1), ('1','09','02','雑則',1), "
        "('1','09','03','附則',0)",
        "INSERT INTO 条 (文章形式Code, 規程Code, 章Code, Code, 条, 選択フラグ) VALUES ('1','09','01','0001','目的',1), "
        "('1','09','01','0002','定義',1),"
        " ('1','09','01','0003','期間',1), ('1','09','01','0010','未使用',0)",
        "INSERT INTO 項 (文章形式Code, 規程Code, 章Code, 条Code, Code, 項, 結合, 変数語句, 選択フラグ) VALUES"
        " ('1','09','01','0002','01','期間は★0001★とする。','0',1,1), ('1','09','01','0003','01','★0003★','0',1,0),"
        " ('1','09','01','0010','01','★0004★','0',1,1)",
        "INSERT INTO 号 (文章形式Code, 規程Code, 章Code, 条Code, 項Code, Code, 号, 結合, 変数語句, 選択フラグ) VALUES"
        " ('1','09','01','0002','01','01','担当は★0002★','0',1,0)",
        "INSERT INTO 変数テーブル語句 (Code, 語句, 規程Code, 章Code, 条Code, 項Code, 号Code, 結合, 種別, 表示名称, 選択フラグ) VALUES"
        " ('0001','３か月','09','01','0002','01','','0','4','試用期間',1), "
        "('0002','総務部長','09','01','0002','01','01','0','5','担当者',1),"
        " ('0003','','09','01','0003','01','','0','4','担当者',0)",
    };
    for (const QString &s : sql)
        execSql(db, s);
}

QStringList codes(const QList<CodeAndName> &list)
{
    QStringList out;
    for (const CodeAndName &c : list)
        out << c.code;
    return out;
}

} // namespace

class WordsTest : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        m_root = std::make_unique<TestRoot>();
        m_root->openCompany(QStringLiteral("甲"));
        buildDocument(AppState::cn());
    }
    void cleanup() { m_root.reset(); }

    void chaptersAndArticles()
    {
        EmbeddedWords words(AppState::cn(), QStringLiteral("1"), QStringLiteral("09"));
        QCOMPARE(codes(words.chapters()), (QStringList{QStringLiteral("01"), QStringLiteral("02")}));
        // 0002 holds a selected word clause; 0003's clause is off; 0010 is not in use.
        QCOMPARE(codes(words.articlesWithWords(QStringLiteral("01"))), QStringList{QStringLiteral("0002")});
        QCOMPARE(codes(words.articlesWithWords(QStringLiteral("02"))), QStringList());
        QCOMPARE(scalar(AppState::cn(), QStringLiteral("SELECT count(*) FROM 語句設定■条")).toInt(), 0);
    }

    // An emptied word goes back to its marker, so that the gap stays visible.
    void roundTrip()
    {
        EmbeddedWords words(AppState::cn(), QStringLiteral("1"), QStringLiteral("09"));
        const QString chapter = QStringLiteral("01"), article = QStringLiteral("0002");
        QCOMPARE(words.words(chapter, article).size(), 2);
        words.save(chapter, article, {{QStringLiteral("0001"), QStringLiteral("６か月")}, {QStringLiteral("0002"), QString()}});
        const QList<EmbeddedWord> after = words.words(chapter, article);
        QCOMPARE(after[0].word, QStringLiteral("６か月"));
        QCOMPARE(after[0].caption, QStringLiteral("試用期間"));
        QCOMPARE(after[1].word, QStringLiteral("★0002★"));
    }

    void countOfTantousha()
    {
        EmbeddedWords words(AppState::cn(), QStringLiteral("1"), QStringLiteral("09"));
        QCOMPARE(words.countCaptioned(QStringLiteral("担当者")), 1); // the unselected one does not count
    }

    void wordCheck()
    {
        ScriptedPrompt prompt;
        QVERIFY(EmbeddedWords::checkWord(prompt, QString()));
        QVERIFY(EmbeddedWords::checkWord(prompt, QString(40, QChar(u'語'))));
        QVERIFY(!EmbeddedWords::checkWord(prompt, QString(41, QChar(u'語'))));
        QCOMPARE(prompt.lines(), QStringList{QStringLiteral("入力のエラー: 項目の長さ(82)が制限(80)を越えています。 ･･･設定内容")});
    }

private:
    std::unique_ptr<TestRoot> m_root;
};

QTEST_GUILESS_MAIN(WordsTest)
#include "tst_words.moc"
