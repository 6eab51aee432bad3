#include "legal/forms/frmLegalCheck.h"

#include "base/AppState.h"
#include "base/Failure.h"
#include "composition/Panels.h"
#include "composition/forms/CompositionFlow.h"
#include "pdf/LegalCheckPdf.h"
#include "shell/forms/FormHelpers.h"

#include <QColor>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace normaris {

frmLegalCheck::frmLegalCheck(const QString &style, const QString &document, QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmLegalCheck"));
    setWindowTitle(QStringLiteral("法令チェック"));
    chooseXlsxPath = [this](const QString &proposed) {
        return QFileDialog::getSaveFileName(this, QStringLiteral("法令チェック表の保存"), proposed, QStringLiteral("Excel (*.xlsx)"));
    };
    choosePdfPath = [this](const QString &proposed) {
        return QFileDialog::getSaveFileName(this, QStringLiteral("法令チェック表の保存"), proposed, QStringLiteral("PDF (*.pdf)"));
    };
    try {
        if (document.isEmpty()) {
            m_results = legal::checkCompany(AppState::cn(), legal::shippedRequirements(), style);
        } else {
            legal::CheckRequest request;
            request.style = style;
            request.document = document;
            m_results = legal::checkDocument(AppState::cn(), legal::shippedRequirements(), request);
        }
    } catch (const Failure &f) {
        uiPrompt().failure(f.text());
    }
    auto *layout = new QVBoxLayout(this);
    auto *caption = new QLabel(QStringLiteral("行をダブルクリックすると、その条の設定画面を開きます"), this);
    caption->setObjectName(QStringLiteral("Label1"));
    layout->addWidget(caption);
    const QStringList &headings = legal::resultHeadings();
    m_list = new QTableWidget(int(m_results.size()), int(headings.size()), this);
    m_list->setObjectName(QStringLiteral("ResultList"));
    m_list->setHorizontalHeaderLabels(headings);
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->verticalHeader()->hide();
    m_list->horizontalHeader()->setStretchLastSection(true);
    for (int row = 0; row < m_results.size(); ++row) {
        const QStringList cells = m_results[row].cells();
        const QColor colour = QColor::fromRgb(legal::stateColour(m_results[row].state));
        for (int column = 0; column < cells.size(); ++column) {
            auto *item = new QTableWidgetItem(cells[column]);
            item->setBackground(colour);
            m_list->setItem(row, column, item);
        }
    }
    m_list->resizeColumnsToContents();
    layout->addWidget(m_list);
    auto *buttons = new QHBoxLayout;
    QPushButton *save = makeButton(this, QStringLiteral("Command1"), QStringLiteral("法令チェック表を保存(&X)"));
    QPushButton *pdf = makeButton(this, QStringLiteral("Command3"), QStringLiteral("PDFで保存(&P)"));
    QPushButton *close = makeButton(this, QStringLiteral("Command2"), QStringLiteral("閉じる(&C)"));
    buttons->addWidget(save);
    buttons->addWidget(pdf);
    buttons->addStretch();
    buttons->addWidget(close);
    layout->addLayout(buttons);
    connect(save, &QPushButton::clicked, this, &frmLegalCheck::saveXlsx);
    connect(pdf, &QPushButton::clicked, this, &frmLegalCheck::savePdf);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_list, &QTableWidget::cellDoubleClicked, this, [this](int row, int) { goToArticle(row); });
    resize(900, 480);
}

void frmLegalCheck::saveXlsx()
{
    const QString path = chooseXlsxPath(QStringLiteral("法令チェック表.xlsx"));
    if (path.isEmpty())
        return;
    try {
        legal::writeCheckXlsx(path, m_results);
    } catch (const Failure &f) {
        uiPrompt().failure(f.text());
    }
}

void frmLegalCheck::savePdf()
{
    const QString path = choosePdfPath(QStringLiteral("法令チェック表.pdf"));
    if (path.isEmpty())
        return;
    try {
        legal::writeCheckPdf(path, AppState::instance().companyPanel(), m_results);
    } catch (const Failure &f) {
        uiPrompt().failure(f.text());
    }
}

// The article panel of the row's document, at the row's article (or the top when it is
// not composed); the panel flow runs once this dialog has closed.
void frmLegalCheck::goToArticle(int row)
{
    const legal::CheckResult &r = m_results.at(row);
    AppState &state = AppState::instance();
    state.CurBunshoKeishikiCode = r.style;
    state.CurKiteiCode = r.document;
    state.ArticlePanelRow = -1;
    const QList<PanelRow> rows = articlePanel(AppState::cn(), r.style, r.document);
    for (int i = 0; i < rows.size(); ++i) {
        if (rows[i].level == Level::Article && rows[i].codes[1] == r.codes[1]) {
            state.ArticlePanelRow = i;
            break;
        }
    }
    CompositionFlow::handOver(CompositionFlow::Form::ArticlePanel);
    m_goToPanel = true;
    accept();
}

} // namespace normaris
