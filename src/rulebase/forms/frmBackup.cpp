#include "rulebase/forms/frmBackup.h"
#include "rulebase/CompanyNames.h"

#include "rulebase/Maintenance.h"
#include "base/AppState.h"
#include "shell/forms/DialogButtons.h"
#include "shell/forms/FormHelpers.h"

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace normaris {

namespace {
} // namespace

frmBackup::frmBackup(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmBackup"));
    setWindowTitle(QStringLiteral("バックアップ"));
    const DataLayout layout = AppState::instance().layout();
    QDir::setCurrent(layout.dataDir());
    auto *outer = new QVBoxLayout(this);

    auto *sourceFrame = new QGroupBox(QStringLiteral("バックアップ元を選択してください"), this);
    auto *sourceBox = new QVBoxLayout(sourceFrame);
    m_source = new QComboBox(sourceFrame);
    m_source->setObjectName(QStringLiteral("Combo1"));
    m_source->addItems(companiesOf(layout));
    m_source->setCurrentIndex(-1);
    sourceBox->addWidget(m_source);
    outer->addWidget(sourceFrame);

    auto *targetFrame = new QGroupBox(QStringLiteral("バックアップ先を選択してください"), this);
    auto *targetBox = new QVBoxLayout(targetFrame);
    m_standardPlace =
        new QRadioButton(QStringLiteral("標準のバックアップ先（%1）").arg(QDir::toNativeSeparators(layout.backupRoot())), targetFrame);
    m_standardPlace->setObjectName(QStringLiteral("Option1_0"));
    m_standardPlace->setChecked(true);
    m_chosenPlace = new QRadioButton(QStringLiteral("フォルダを指定する"), targetFrame);
    m_chosenPlace->setObjectName(QStringLiteral("Option1_1"));
    auto *folderRow = new QHBoxLayout;
    m_folder = new QLineEdit(targetFrame);
    m_folder->setObjectName(QStringLiteral("Dir1"));
    m_folder->setEnabled(false);
    QPushButton *browse = makeButton(targetFrame, QStringLiteral("cmdBrowse"), QStringLiteral("参照(&R)..."));
    browse->setEnabled(false);
    folderRow->addWidget(m_folder, 1);
    folderRow->addWidget(browse);
    targetBox->addWidget(m_standardPlace);
    targetBox->addWidget(m_chosenPlace);
    targetBox->addLayout(folderRow);
    outer->addWidget(targetFrame);
    connect(m_chosenPlace, &QRadioButton::toggled, m_folder, &QWidget::setEnabled);
    connect(m_chosenPlace, &QRadioButton::toggled, browse, &QWidget::setEnabled);
    connect(browse, &QPushButton::clicked, this, &frmBackup::pickFolder);

    auto *label1 = new QLabel(
        QStringLiteral("標準のバックアップ先を選ぶと、プログラムのフォルダにある BackupDB の中に会社名のフォルダを作ってコピーします。"
                       "フォルダを指定すると、会社のデータをそのフォルダの中へ直接コピーします。同じ名前のファイルは上書きされます。"),
        this);
    label1->setObjectName(QStringLiteral("Label1"));
    label1->setWordWrap(true);
    auto *label2 = new QLabel(QStringLiteral("データファイルが大きいため、空き容量の少ない保存先を選択するとエラーが発生します"), this);
    label2->setObjectName(QStringLiteral("Label2"));
    label2->setWordWrap(true);
    outer->addWidget(label1);
    outer->addWidget(label2);

    outer->addLayout(okCancelHelpRow(this, [this] { backUp(); }));

    resize(twips(7200), twips(5200));
    PlaceForm(this);
}

void frmBackup::pickFolder()
{
    // Qt's own chooser speaks Japanese with the program; the platform's follows the locale.
    const QString folder = QFileDialog::getExistingDirectory(this, QStringLiteral("バックアップ先のフォルダ"), m_folder->text(),
                                                             QFileDialog::ShowDirsOnly | QFileDialog::DontUseNativeDialog);
    if (!folder.isEmpty())
        m_folder->setText(folder);
}

void frmBackup::backUp()
{
    std::optional<QString> destination;
    if (m_chosenPlace->isChecked()) {
        if (m_folder->text().trimmed().isEmpty()) {
            uiPrompt().plain(QStringLiteral("バックアップの確認"), QStringLiteral("バックアップ先の準備ができていません。"));
            return;
        }
        destination = m_folder->text().trimmed();
    }
    const Outcome outcome = Maintenance(AppState::instance().layout(), uiPrompt()).backup(m_source->currentText(), destination);
    if (outcome == Outcome::Done)
        accept();
}

} // namespace normaris
