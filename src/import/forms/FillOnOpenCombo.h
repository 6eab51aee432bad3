#pragma once
// A pick list that fills itself as it opens (the lists of the import's third step
// read the source each time), and moves on to the next control on Enter.

#include <QComboBox>
#include <functional>

namespace normaris {

class FillOnOpenCombo : public QComboBox {
    Q_OBJECT
public:
    // fill returns false to keep the list closed (it has told the user why).
    explicit FillOnOpenCombo(QWidget *parent = nullptr) : QComboBox(parent) {}
    void setFill(std::function<bool()> fill) { m_fill = std::move(fill); }
    void showPopup() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    std::function<bool()> m_fill;
};

} // namespace normaris
