// What every page has: a heading, its own things, steps, and a row of buttons that is always seen.
#pragma once

#include "apps/hxupdate/model/UpdateModel.h"
#include "apps/hxupdate/words/Advice.h"

#include <QPushButton>
#include <QVBoxLayout>

#include <functional>

namespace hxupdate {

class Heading;
class StepList;

class Page : public QWidget {
public:
    // `name` is the page's object name; `go` in it and in the buttons' names is what tests press.
    Page(UpdateModel& model, const char* name);

    // Shows what the model says now.
    virtual void refresh() = 0;

    QString title() const;

    // Puts the keyboard on the button that goes on, or on the first that can be pressed.
    void takeFocus();

protected:
    UpdateModel& model() const { return m_model; }
    void say(const Advice& advice);

    // Below the sentence and above the steps.
    void add(QWidget* widget);

    // The last one that is added is the one that goes on.
    QPushButton* addButton(const char* name, const std::function<void()>& pressed);

private:
    UpdateModel& m_model;
    Heading* m_heading;
    StepList* m_steps;
    QVBoxLayout* m_body;
    QHBoxLayout* m_buttonRow;
    QList<QPushButton*> m_buttons;
};

} // namespace hxupdate
