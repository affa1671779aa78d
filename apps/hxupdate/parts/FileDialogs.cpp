#include "apps/hxupdate/parts/FileDialogs.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QSettings>

namespace hxupdate {

namespace {

const QString lastFolder = QStringLiteral("lastFolder");

struct FileDialogWords {
    Q_DECLARE_TR_FUNCTIONS(FileDialogs)
};

QFileDialog* newFileDialog(QWidget* parent, const QString& title, const PathChosen& chosen)
{
    auto* dialog = new QFileDialog(parent, title, QSettings().value(lastFolder).toString());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog, &QFileDialog::fileSelected, parent, [chosen](const QString& path) {
        QSettings().setValue(lastFolder, QFileInfo(path).absolutePath());
        chosen(path);
    });
    return dialog;
}

} // namespace

void chooseImageFile(QWidget* parent, const PathChosen& chosen)
{
    QFileDialog* dialog =
        newFileDialog(parent, FileDialogWords::tr("Choose the update image"), chosen);
    dialog->setObjectName(QStringLiteral("imageDialog"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilters({FileDialogWords::tr("Update images (*.syx *.mid *.hex *.txt)"),
                            FileDialogWords::tr("All files (*)")});
    dialog->open();
}

void chooseRecordFile(QWidget* parent, const PathChosen& chosen)
{
    QFileDialog* dialog = newFileDialog(parent, FileDialogWords::tr("Save the record"), chosen);
    dialog->setObjectName(QStringLiteral("recordDialog"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("trace"));
    dialog->selectFile(QStringLiteral("update.trace"));
    dialog->open();
}

} // namespace hxupdate
