#include "update/forms/frmDicUpdate.h"
#include "rulebase/CompanyNames.h"

#include "base/AppState.h"
#include "shell/forms/FormHelpers.h"
#include "update/UpdateReport.h"

#include <QApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace normaris {

namespace {

DataLayout programLayout() { return AppState::instance().layout(); }

QPlainTextEdit *readOnlyText(QWidget *parent, const QString &name)
{
    auto *text = new QPlainTextEdit(parent);
    text->setObjectName(name);
    text->setReadOnly(true);
    return text;
}

} // namespace

frmDicUpdate::frmDicUpdate(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmDicUpdate"));
    setWindowTitle(CompanyUpdate::kTitle);
    auto *outer = new QVBoxLayout(this);
    m_message = new QLabel(QStringLiteral("会社の辞書を、このプログラムの辞書の版に更新します。"), this);
    m_message->setObjectName(QStringLiteral("Label1"));
    outer->addWidget(m_message);

    const QString company = AppState::instance().companyPanel();
    auto *target = new QGroupBox(QStringLiteral("更新する会社"), this);
    auto *targetLayout = new QHBoxLayout(target);
    m_open = new QRadioButton(
        AppState::instance().isCompanyOpen() ? QStringLiteral("『%1』").arg(company) : QStringLiteral("（会社が未指定）"), target);
    m_open->setObjectName(QStringLiteral("Option1_0"));
    m_open->setEnabled(AppState::instance().isCompanyOpen());
    m_all = new QRadioButton(QStringLiteral("すべての会社"), target);
    m_all->setObjectName(QStringLiteral("Option1_1"));
    (m_open->isEnabled() ? m_open : m_all)->setChecked(true);
    targetLayout->addWidget(m_open);
    targetLayout->addWidget(m_all);
    outer->addWidget(target);

    m_summary = readOnlyText(this, QStringLiteral("Text1"));
    outer->addWidget(m_summary, 1);

    auto *conflict = new QGroupBox(QStringLiteral("競合"), this);
    conflict->setObjectName(QStringLiteral("Frame1"));
    auto *grid = new QGridLayout(conflict);
    m_conflictPlace = new QLabel(conflict);
    m_conflictPlace->setObjectName(QStringLiteral("Label2"));
    grid->addWidget(m_conflictPlace, 0, 0, 1, 3);
    const QString captions[3] = {QStringLiteral("出荷時の文章"), QStringLiteral("会社の文章"), QStringLiteral("新しい文章")};
    for (int i = 0; i < 3; ++i) {
        grid->addWidget(new QLabel(captions[i], conflict), 1, i);
        m_texts[i] = readOnlyText(conflict, QStringLiteral("Text%1").arg(i + 2));
        grid->addWidget(m_texts[i], 2, i);
    }
    m_keep = makeButton(conflict, QStringLiteral("Command3"), QStringLiteral("会社の文章を残す(&K)"));
    m_take = makeButton(conflict, QStringLiteral("Command4"), QStringLiteral("新しい文章にする(&T)"));
    grid->addWidget(m_keep, 3, 1);
    grid->addWidget(m_take, 3, 2);
    outer->addWidget(conflict, 1);
    conflict->setEnabled(false);

    auto *buttons = new QHBoxLayout;
    m_check = makeButton(this, QStringLiteral("Command1"), QStringLiteral("確認(&C)"));
    m_update = makeButton(this, QStringLiteral("Command2"), QStringLiteral("更新(&U)"));
    QPushButton *close = makeButton(this, QStringLiteral("Command5"), QStringLiteral("閉じる"));
    buttons->addStretch();
    for (QPushButton *b : {m_check, m_update, close})
        buttons->addWidget(b);
    outer->addLayout(buttons);
    m_update->setEnabled(false);
    m_check->setDefault(true);
    connect(m_check, &QPushButton::clicked, this, &frmDicUpdate::check);
    connect(m_update, &QPushButton::clicked, this, &frmDicUpdate::runUpdate);
    connect(m_keep, &QPushButton::clicked, this, [this] { decide(false); });
    connect(m_take, &QPushButton::clicked, this, [this] { decide(true); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_all, &QRadioButton::toggled, this, [this](bool all) {
        m_check->setEnabled(!all);
        m_update->setEnabled(all);
    });
    m_check->setEnabled(!m_all->isChecked());
    m_update->setEnabled(m_all->isChecked());
    resize(twips(12000), twips(9000));
    PlaceForm(this);
}

// The summary of the open company's update, worked out and kept nowhere.
void frmDicUpdate::check()
{
    UpdateOptions options;
    options.dryRun = true;
    options.compare = false;
    const QString company = AppState::instance().companyPanel();
    if (CompanyUpdate(programLayout(), uiPrompt()).update(company, options, m_trial) != Outcome::Done)
        return;
    m_summary->setPlainText(updateReportText(m_trial));
    m_conflicts.clear();
    for (const UpdateEntry &e : std::as_const(m_trial.entries)) {
        if (e.kind == UpdateKind::Conflict)
            m_conflicts << e;
    }
    m_next = 0;
    m_taken.clear();
    showConflict();
}

void frmDicUpdate::showConflict()
{
    const bool more = m_next < m_conflicts.size();
    m_keep->parentWidget()->setEnabled(more);
    m_update->setEnabled(!more && m_trial.from != m_trial.to);
    if (!more) {
        m_conflictPlace->clear();
        for (QPlainTextEdit *t : m_texts)
            t->clear();
        return;
    }
    const UpdateEntry &e = m_conflicts[m_next];
    m_conflictPlace->setText(
        QStringLiteral("競合 %1／%2　%3　%4　%5").arg(m_next + 1).arg(m_conflicts.size()).arg(e.place, e.documentName, e.article));
    m_texts[0]->setPlainText(e.shipped);
    m_texts[1]->setPlainText(e.company);
    m_texts[2]->setPlainText(e.offered);
}

void frmDicUpdate::decide(bool takeNew)
{
    if (m_next >= m_conflicts.size())
        return;
    if (takeNew)
        m_taken << m_conflicts[m_next].place;
    ++m_next;
    showConflict();
}

void frmDicUpdate::runUpdate()
{
    if (m_all->isChecked()) {
        runAll();
        return;
    }
    UpdateOptions options;
    options.take = m_taken;
    UpdateResult result;
    const QString company = AppState::instance().companyPanel();
    if (CompanyUpdate(programLayout(), uiPrompt()).update(company, options, result) != Outcome::Done)
        return;
    m_summary->setPlainText(updateReportText(result));
    m_update->setEnabled(false);
    uiPrompt().information(CompanyUpdate::kTitle, QStringLiteral("更新が完了しました。"));
}

void frmDicUpdate::runAll()
{
    const QStringList names = companiesOf(programLayout());
    QProgressDialog progress(QStringLiteral("会社の辞書を更新しています。"), QString(), 0, int(names.size()), this);
    progress.setObjectName(QStringLiteral("ProgressBar1"));
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(0);
    QStringList lines;
    UpdateOptions options;
    CompanyUpdate(programLayout(), uiPrompt())
        .updateAll(options, [&](int done, int, const QString &name, Outcome outcome, const UpdateResult &r) {
            lines << (outcome == Outcome::Done ? r.summary() : name + QStringLiteral(": 更新しませんでした"));
            m_summary->setPlainText(lines.join(u'\n'));
            progress.setValue(done);
            QApplication::processEvents();
        });
    m_update->setEnabled(false);
    uiPrompt().information(CompanyUpdate::kTitle, QStringLiteral("更新が完了しました。"));
}

} // namespace normaris
