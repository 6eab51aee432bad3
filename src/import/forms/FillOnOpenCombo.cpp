#include "import/forms/FillOnOpenCombo.h"

#include <QKeyEvent>

namespace normaris {

void FillOnOpenCombo::showPopup()
{
    if (m_fill && !m_fill())
        return;
    QComboBox::showPopup();
}

void FillOnOpenCombo::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        focusNextChild();
        return;
    }
    QComboBox::keyPressEvent(event);
}

} // namespace normaris
