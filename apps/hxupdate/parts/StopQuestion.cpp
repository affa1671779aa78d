#include "apps/hxupdate/parts/StopQuestion.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>

namespace hxupdate {

namespace {

struct StopQuestionWords {
    Q_DECLARE_TR_FUNCTIONS(StopQuestion)
};

const QString questionName = QStringLiteral("stopQuestion");

QMessageBox* newQuestion(QWidget* parent)
{
    auto* box = new QMessageBox(QMessageBox::Warning, StopQuestionWords::tr("Stop the update?"),
                                StopQuestionWords::tr("Stop the update?"), {}, parent);
    box->setObjectName(questionName);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setInformativeText(
        StopQuestionWords::tr("The message that is on its way is sent to its end. After that the "
                              "product may have to be updated before it can be used."));
    return box;
}

} // namespace

void askWhetherToStop(QWidget* parent, UpdateModel& model, const std::function<void()>& stopped)
{
    if (parent->window()->findChild<QMessageBox*>(questionName) != nullptr)
        return;
    QMessageBox* box = newQuestion(parent->window());
    QPushButton* stay =
        box->addButton(StopQuestionWords::tr("&Go on updating"), QMessageBox::RejectRole);
    stay->setObjectName(QStringLiteral("stay"));
    QPushButton* stop =
        box->addButton(StopQuestionWords::tr("&Stop the update"), QMessageBox::DestructiveRole);
    stop->setObjectName(QStringLiteral("confirmStop"));
    box->setDefaultButton(stay);
    box->setEscapeButton(stay);
    QObject::connect(stop, &QPushButton::clicked, box, [&model, stopped] {
        model.stop();
        stopped();
    });
    const auto closeWhenOver = [&model, box] {
        if (!model.isRunning())
            box->close();
    };
    QObject::connect(&model, &UpdateModel::stepChanged, box, closeWhenOver);
    box->open();
}

} // namespace hxupdate
