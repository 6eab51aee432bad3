#include "versions/forms/frmVersions.h"

#include "base/AppState.h"
#include "base/Failure.h"
#include "export/DocumentExport.h"
#include "rulebase/JapaneseDate.h"
#include "shell/forms/FormHelpers.h"
#include "versions/ComparisonExport.h"
#include "versions/VersionStore.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace normaris {

frmVersions::frmVersions(const QString &style, const QString &document, QWidget *parent)
    : QDialog(parent), m_style(style), m_document(document)
{
    setObjectName(QStringLiteral("frmVersions"));
    setWindowTitle(ComparisonExport::kTitle);
    auto *layout = new QVBoxLayout(this);
    auto *caption = new QLabel(QStringLiteral("比較する版を二つ選択してください（選択しないときは最新の二つ）"), this);
    caption->setObjectName(QStringLiteral("Label1"));
    layout->addWidget(caption);
    m_list = new QTableWidget(0, 3, this);
    m_list->setObjectName(QStringLiteral("VersionList"));
    m_list->setHorizontalHeaderLabels({QStringLiteral("版"), QStringLiteral("作成日時"), QStringLiteral("施行日")});
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setSelectionMode(QAbstractItemView::MultiSelection);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->verticalHeader()->hide();
    m_list->horizontalHeader()->setStretchLastSection(true);
    layout->addWidget(m_list);
    auto *older = new QHBoxLayout;
    auto *olderCaption = new QLabel(QStringLiteral("改正前(&O):"), this);
    olderCaption->setObjectName(QStringLiteral("Label2"));
    m_older = new QComboBox(this);
    m_older->setObjectName(QStringLiteral("OlderSide"));
    olderCaption->setBuddy(m_older);
    m_older->addItem(QStringLiteral("この規程の版"));
    for (const VersionHeader &v : VersionStore(AppState::cn()).latestOfEach(m_style))
        if (v.document != m_document)
            m_older->addItem(QStringLiteral("%1 %2（版 %3）").arg(v.document, v.name, QString::number(v.id)), v.document);
    older->addWidget(olderCaption);
    older->addWidget(m_older, 1);
    layout->addLayout(older);
    m_remarks = new QCheckBox(QStringLiteral("備考欄を付ける(&R)"), this);
    m_remarks->setObjectName(QStringLiteral("RemarksCheck"));
    layout->addWidget(m_remarks);
    auto *buttons = new QHBoxLayout;
    QPushButton *make = makeButton(this, QStringLiteral("Command1"), QStringLiteral("新旧対照表を作成(&M)"));
    QPushButton *remove = makeButton(this, QStringLiteral("Command3"), QStringLiteral("版の削除(&D)"));
    QPushButton *close = makeButton(this, QStringLiteral("Command2"), QStringLiteral("閉じる(&C)"));
    buttons->addWidget(make);
    buttons->addWidget(remove);
    buttons->addStretch();
    buttons->addWidget(close);
    layout->addLayout(buttons);
    connect(make, &QPushButton::clicked, this, &frmVersions::makeTable);
    connect(remove, &QPushButton::clicked, this, &frmVersions::deleteVersion);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    resize(480, 320);
    reload();
}

void frmVersions::reload()
{
    const QList<VersionHeader> versions = VersionStore(AppState::cn()).list(m_style, m_document);
    m_list->clearSelection();
    m_list->setRowCount(int(versions.size()));
    for (int row = 0; row < versions.size(); ++row) {
        const VersionHeader &v = versions[row];
        m_list->setItem(row, 0, new QTableWidgetItem(QString::number(v.id)));
        m_list->setItem(row, 1, new QTableWidgetItem(v.made.toString(QStringLiteral("yyyy-MM-dd HH:mm"))));
        m_list->setItem(row, 2, new QTableWidgetItem(v.effective.isValid() ? formatEraDate(v.effective) : QString()));
        m_list->item(row, 0)->setData(Qt::UserRole, v.id);
    }
}

void frmVersions::makeTable()
{
    ComparisonRequest request{m_style, m_document, std::nullopt, std::nullopt, AppState::instance().companyPanel()};
    request.remarks = m_remarks->isChecked();
    request.against = m_older->currentData().toString();
    const QModelIndexList rows = m_list->selectionModel()->selectedRows();
    if (!request.against.isEmpty()) {
        // The old side is the other document; a chosen row is the new side.
        if (rows.size() > 1) {
            uiPrompt().error(ComparisonExport::kTitle, QStringLiteral("改正後の版を一つ選択してください（選択しないときは最新の版）。"));
            return;
        }
        if (rows.size() == 1)
            request.newer = m_list->item(rows[0].row(), 0)->data(Qt::UserRole).toLongLong();
    } else if (rows.size() == 2) {
        const qint64 a = m_list->item(rows[0].row(), 0)->data(Qt::UserRole).toLongLong();
        const qint64 b = m_list->item(rows[1].row(), 0)->data(Qt::UserRole).toLongLong();
        request.older = qMin(a, b);
        request.newer = qMax(a, b);
    } else if (!rows.isEmpty()) {
        uiPrompt().error(ComparisonExport::kTitle, QStringLiteral("比較する版を二つ選択してください。"));
        return;
    }
    try {
        const QString path = DocumentExport::temporaryPath(m_document);
        if (ComparisonExport(AppState::cn(), uiPrompt()).write(request, path) != Outcome::Done) {
            QFile::remove(path);
            return;
        }
        m_lastDocument = path;
        openDocument(path);
    } catch (const Failure &f) {
        uiPrompt().failure(f.text());
    }
}

void frmVersions::deleteVersion()
{
    const QModelIndexList rows = m_list->selectionModel()->selectedRows();
    if (rows.size() != 1) {
        uiPrompt().error(ComparisonExport::kTitle, QStringLiteral("削除する版を一つ選択してください。"));
        return;
    }
    const qint64 id = m_list->item(rows[0].row(), 0)->data(Qt::UserRole).toLongLong();
    if (!uiPrompt().question(QStringLiteral("版の削除"), QStringLiteral("版 %1 を削除します。").arg(id)))
        return;
    try {
        VersionStore(AppState::cn()).remove(id);
    } catch (const Failure &f) {
        uiPrompt().failure(f.text());
    }
    reload();
}

} // namespace normaris
