#include "rulebase/forms/frmKihon.h"

#include "rulebase/BasicSettings.h"
#include "base/AppState.h"
#include "shell/forms/FormHelpers.h"

#include <QApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QValidator>

namespace normaris {

namespace {

// Keeps out the characters a field does not take, typed or pasted.
class FieldKeys : public QValidator {
public:
    FieldKeys(int index, QObject *parent) : QValidator(parent), m_index(index) {}
    State validate(QString &input, int &) const override
    {
        for (QChar c : input) {
            if (!BasicSettings::acceptsKey(m_index, c))
                return Invalid;
        }
        return Acceptable;
    }

private:
    int m_index;
};

} // namespace

frmKihon::frmKihon(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmKihon"));
    setWindowTitle(QStringLiteral("基本設定"));
    auto *outer = new QVBoxLayout(this);
    auto *grid = new QGridLayout;
    const QList<SettingField> &fields = settingFields();
    BasicSettings settings(AppState::cn());
    QStringList values;
    QString chosen;
    try {
        values = settings.load();
        chosen = settings.representative();
    } catch (const std::exception &e) {
        uiPrompt().failure(QString::fromUtf8(e.what()));
    }
    for (int i = 0; i < fields.size(); ++i) {
        auto *label = new QLabel(fields[i].column, this);
        auto *box = new QLineEdit(values.value(i), this);
        box->setObjectName(QStringLiteral("Text1_%1").arg(i));
        if (fields[i].keys != SettingField::Keys::Any)
            box->setValidator(new FieldKeys(i, box));
        box->installEventFilter(this);
        grid->addWidget(label, i, 0);
        grid->addWidget(box, i, 1);
        if (!fields[i].hint.isEmpty())
            grid->addWidget(new QLabel(fields[i].hint, this), i, 2);
        m_fields << box;
    }
    outer->addLayout(grid);

    auto *frame = new QGroupBox(QStringLiteral("代表労働者の選択"), this);
    auto *choices = new QHBoxLayout(frame);
    for (int i = 0; i < kRepresentatives.size(); ++i) {
        auto *option = new QRadioButton(kRepresentatives[i], frame);
        option->setObjectName(QStringLiteral("Option1_%1").arg(i));
        option->setChecked(chosen == QString::number(i + 1));
        choices->addWidget(option);
        m_representative << option;
    }
    outer->addWidget(frame);

    auto *buttons = new QHBoxLayout;
    QPushButton *ok = makeButton(this, QStringLiteral("Command1"), QStringLiteral("更新(&U)"));
    QPushButton *cancel = makeButton(this, QStringLiteral("Command2"), QStringLiteral("キャンセル(&C)"));
    QPushButton *help = makeButton(this, QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    buttons->addStretch();
    for (QPushButton *b : {ok, cancel, help}) {
        b->setAutoDefault(false);
        buttons->addWidget(b);
    }
    outer->addLayout(buttons);
    connect(ok, &QPushButton::clicked, this, &frmKihon::update);
    connect(cancel, &QPushButton::clicked, this, &frmKihon::cancel);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });
    placeOverMainWindow(this);
}

bool frmKihon::checkField(int index)
{
    if (m_checking)
        return true;
    m_checking = true;
    const bool good = BasicSettings::checkField(uiPrompt(), index, m_fields[index]->text());
    m_checking = false;
    if (!good) {
        QLineEdit *box = m_fields[index];
        QTimer::singleShot(0, box, [box] {
            box->setFocus();
            SelectAllText(box);
        });
    }
    return good;
}

bool frmKihon::eventFilter(QObject *watched, QEvent *event)
{
    auto *box = qobject_cast<QLineEdit *>(watched);
    const int index = int(m_fields.indexOf(box));
    if (index < 0)
        return QDialog::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::KeyPress: {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            if (checkField(index))
                focusNextChild();
            return true;
        }
        break;
    }
    case QEvent::FocusIn: QTimer::singleShot(0, box, [box] { SelectAllText(box); }); break;
    case QEvent::FocusOut: {
        const auto reason = static_cast<QFocusEvent *>(event)->reason();
        // A message box taking the focus is not the user leaving the field.
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            checkField(index);
        break;
    }
    default: break;
    }
    return QDialog::eventFilter(watched, event);
}

void frmKihon::update()
{
    if (!uiPrompt().question(QStringLiteral("更新の確認"), QStringLiteral("内容を変更します。\nよろしいですか。")))
        return;
    QStringList values;
    for (QLineEdit *box : m_fields)
        values << box->text();
    QString representative;
    for (int i = 0; i < m_representative.size(); ++i) {
        if (m_representative[i]->isChecked())
            representative = QString::number(i + 1);
    }
    try {
        BasicSettings(AppState::cn()).save(values, representative);
    } catch (const std::exception &e) {
        uiPrompt().failure(QString::fromUtf8(e.what()));
        return;
    }
    AppState &state = AppState::instance();
    if (state.KihonFromExport) {
        uiPrompt().warning(QStringLiteral("データ変更"),
                           QStringLiteral("データエクスポート処理の過程で基本設定を変更した場合は、\n"
                                          "もう一度データエクスポートフォームの「新規作成」をクリックしてください。"));
        state.KihonFromExport = false;
    }
    accept();
}

void frmKihon::cancel()
{
    AppState::instance().KihonFromExport = false;
    reject();
}

void frmKihon::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        QApplication::restoreOverrideCursor();
    QDialog::changeEvent(event);
}

} // namespace normaris
