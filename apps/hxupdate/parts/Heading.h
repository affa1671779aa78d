// A title and one sentence, at the top of a page.
#pragma once

#include <QLabel>

namespace hxupdate {

class Heading final : public QWidget {
public:
    Heading();

    void show(const QString& title, const QString& sentence);
    QString title() const { return m_title->text(); }

private:
    QLabel* m_title;
    QLabel* m_sentence;
};

// Plain text that is broken where the window is narrow.
QLabel* newTextLabel(const QString& text = QString());

} // namespace hxupdate
