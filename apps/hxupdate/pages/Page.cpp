#include "apps/hxupdate/pages/Page.h"

#include "apps/hxupdate/parts/Heading.h"
#include "apps/hxupdate/parts/StepList.h"

#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QScrollArea>

#include <algorithm>

namespace hxupdate {

namespace {

struct PageWords {
    Q_DECLARE_TR_FUNCTIONS(PageWords)
};

// A group with a name, which a screen reader says when the keyboard comes into it.
QAccessibleInterface* newPageInterface(const QString& /*className*/, QObject* object)
{
    auto* page = dynamic_cast<Page*>(object);
    return page == nullptr ? nullptr : new QAccessibleWidget(page, QAccessible::Grouping);
}

// The keyboard scrolls what the window is too small for.
QScrollArea* newScrollArea(QWidget* content)
{
    auto* area = new QScrollArea;
    area->setWidget(content);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setAccessibleName(PageWords::tr("What this page says"));
    return area;
}

} // namespace

Page::Page(UpdateModel& model, const char* name)
    : m_model(model), m_heading(new Heading), m_steps(new StepList), m_buttonRow(new QHBoxLayout)
{
    QAccessible::installFactory(newPageInterface);
    setObjectName(QLatin1String(name));
    auto* content = new QWidget;
    m_body = new QVBoxLayout(content);
    m_body->setSpacing(m_body->spacing() * 2);
    m_body->addWidget(m_heading);
    m_body->addWidget(m_steps);
    m_body->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(newScrollArea(content), 1);
    layout->addLayout(m_buttonRow);
    m_buttonRow->addStretch();
}

QString Page::title() const
{
    return m_heading->title();
}

void Page::takeFocus()
{
    const auto canBePressed = [](const QPushButton* button) {
        return button->isEnabled() && button->isVisibleTo(button->parentWidget());
    };
    const auto found = std::find_if(m_buttons.rbegin(), m_buttons.rend(), canBePressed);
    if (found != m_buttons.rend())
        (*found)->setFocus();
}

void Page::say(const Advice& advice)
{
    m_heading->show(advice.title, advice.sentence);
    m_steps->show(advice.steps);
    if (accessibleName() != advice.title)
        setAccessibleName(advice.title);
}

void Page::add(QWidget* widget)
{
    m_body->insertWidget(m_body->indexOf(m_steps), widget);
}

QPushButton* Page::addButton(const char* name, const std::function<void()>& pressed)
{
    for (QPushButton* button : m_buttons)
        button->setDefault(false);
    auto* button = new QPushButton;
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(true);
    connect(button, &QPushButton::clicked, this, pressed);
    m_buttonRow->addWidget(button);
    m_buttons << button;
    return button;
}

} // namespace hxupdate
