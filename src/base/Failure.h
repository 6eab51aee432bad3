#pragma once
// A failure with a text the user can read. Core steps throw it; the entry point
// that the user started catches it and shows the text through the Prompt.

#include <QString>
#include <exception>

namespace normaris {

class Failure : public std::exception {
public:
    explicit Failure(QString text) : m_text(std::move(text)), m_utf8(m_text.toUtf8()) {}
    const QString &text() const { return m_text; }
    const char *what() const noexcept override { return m_utf8.constData(); }

private:
    QString m_text;
    QByteArray m_utf8;
};

} // namespace normaris
