#include "apps/hxupdate/parts/PortDialog.h"

#include "apps/hxupdate/parts/Heading.h"

#include "host/base/PrintableText.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace hxupdate {

namespace {

struct PortDialogWords {
    Q_DECLARE_TR_FUNCTIONS(PortDialog)
};

QListWidget* newPortList(const QStringList& ports)
{
    auto* list = new QListWidget;
    list->setObjectName(QStringLiteral("ports"));
    list->setAccessibleName(PortDialogWords::tr("MIDI ports"));
    for (const QString& port : ports)
        list->addItem(hx::printable(port));
    list->setCurrentRow(0);
    return list;
}

QDialogButtonBox* newButtons(QDialog* dialog)
{
    auto* buttons = new QDialogButtonBox;
    QPushButton* ask =
        buttons->addButton(PortDialogWords::tr("&Ask this port"), QDialogButtonBox::AcceptRole);
    ask->setObjectName(QStringLiteral("ask"));
    QPushButton* cancel =
        buttons->addButton(PortDialogWords::tr("&Cancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("cancel"));
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    return buttons;
}

} // namespace

void choosePortOf(QWidget* parent, const QStringList& ports,
                  const std::function<void(const QString&)>& chosen)
{
    auto* dialog = new QDialog(parent);
    dialog->setObjectName(QStringLiteral("portDialog"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(PortDialogWords::tr("My product is on another port"));
    QListWidget* list = newPortList(ports);
    auto* layout = new QVBoxLayout(dialog);
    layout->addWidget(newTextLabel(
        PortDialogWords::tr("Choose the port that your product is connected to. What is "
                            "connected there is asked who it is; nothing else is sent.")));
    layout->addWidget(list);
    layout->addWidget(newButtons(dialog));
    QObject::connect(dialog, &QDialog::accepted, parent,
                     [list, ports, chosen] { chosen(ports.at(list->currentRow())); });
    dialog->open();
}

} // namespace hxupdate
