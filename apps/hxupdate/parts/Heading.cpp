#include "apps/hxupdate/parts/Heading.h"

#include <QVBoxLayout>

namespace hxupdate {

namespace {

constexpr double titleScale = 1.5;

} // namespace

QLabel* newTextLabel(const QString& text)
{
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

Heading::Heading() : m_title(newTextLabel()), m_sentence(newTextLabel())
{
    m_title->setObjectName(QStringLiteral("title"));
    m_sentence->setObjectName(QStringLiteral("sentence"));
    QFont font = m_title->font();
    font.setPointSizeF(font.pointSizeF() * titleScale);
    font.setBold(true);
    m_title->setFont(font);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_title);
    layout->addWidget(m_sentence);
}

void Heading::show(const QString& title, const QString& sentence)
{
    m_title->setText(title);
    m_sentence->setText(sentence);
}

} // namespace hxupdate
