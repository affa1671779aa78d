#include "apps/hxupdate/parts/PortDialog.h"

#include "apps/hxupdate/parts/Heading.h"

#include "host/base/PrintableText.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace hxupdate {

namespace {

struct PortDialogWords {
    Q_DECLARE_TR_FUNCTIONS(PortDialog)
};

const QString askName = QStringLiteral("ask");

constexpr int portRole = Qt::UserRole; // the port's own name, which need not be printable

QListWidget* newPortList()
{
    auto* list = new QListWidget;
    list->setObjectName(QStringLiteral("ports"));
    list->setAccessibleName(PortDialogWords::tr("MIDI ports"));
    return list;
}

QString chosenPort(const QListWidget& list)
{
    const QListWidgetItem* item = list.currentItem();
    return item == nullptr ? QString() : item->data(portRole).toString();
}

QStringList portsOf(const QListWidget& list)
{
    QStringList ports;
    for (int row = 0; row < list.count(); ++row)
        ports << list.item(row)->data(portRole).toString();
    return ports;
}

// The port that was chosen stays so as long as it is there.
void showPorts(QListWidget& list, const QStringList& ports)
{
    if (portsOf(list) == ports) // a screen reader that reads it is not interrupted
        return;
    const QString chosen = chosenPort(list);
    list.clear();
    for (const QString& port : ports) {
        auto* item = new QListWidgetItem(hx::printable(port), &list);
        item->setData(portRole, port);
    }
    list.setCurrentRow(std::max(0, int(ports.indexOf(chosen))));
}

QDialogButtonBox* newButtons(QDialog* dialog)
{
    auto* buttons = new QDialogButtonBox;
    QPushButton* ask =
        buttons->addButton(PortDialogWords::tr("&Ask this port"), QDialogButtonBox::AcceptRole);
    ask->setObjectName(askName);
    QPushButton* cancel =
        buttons->addButton(PortDialogWords::tr("&Cancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("cancel"));
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    return buttons;
}

} // namespace

void choosePort(QWidget* parent, UpdateModel& model)
{
    auto* dialog = new QDialog(parent);
    dialog->setObjectName(QStringLiteral("portDialog"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(PortDialogWords::tr("My product is on another port"));
    QListWidget* list = newPortList();
    QDialogButtonBox* buttons = newButtons(dialog);
    auto* layout = new QVBoxLayout(dialog);
    layout->addWidget(newTextLabel(
        PortDialogWords::tr("Choose the port that your product is connected to. What is "
                            "connected there is asked who it is; nothing else is sent.")));
    layout->addWidget(list);
    layout->addWidget(buttons);
    const auto refresh = [list, buttons, &model] {
        showPorts(*list, model.connection().ports);
        buttons->findChild<QPushButton*>(askName)->setEnabled(list->count() > 0);
    };
    refresh();
    QObject::connect(&model, &UpdateModel::connectionChanged, list, refresh);
    QObject::connect(dialog, &QDialog::accepted, parent,
                     [list, &model] { model.pickPort(chosenPort(*list)); });
    dialog->open();
}

} // namespace hxupdate
