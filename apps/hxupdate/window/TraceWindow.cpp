#include "apps/hxupdate/window/TraceWindow.h"

#include "apps/hxupdate/window/TraceTable.h"

#include "host/base/PrintableText.h"
#include "host/trace/TraceSvg.h"

#include <QFileInfo>
#include <QHeaderView>
#include <QPushButton>
#include <QScrollArea>
#include <QSvgWidget>
#include <QTabWidget>
#include <QTableView>
#include <QVBoxLayout>

namespace hxupdate {

namespace {

constexpr QSize firstSize(960, 640);

} // namespace

TraceWindow::TraceWindow(const QString& path, const hx::TraceEvents& events, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("traceWindow"));
    setAttribute(Qt::WA_DeleteOnClose);
    const QString name = hx::printable(QFileInfo(path).fileName());
    setWindowTitle(tr("Trace %1").arg(name));
    auto* tabs = new QTabWidget;
    tabs->setAccessibleName(tr("Views of the trace"));
    tabs->addTab(newDrawing(name, events), tr("&Drawing"));
    tabs->addTab(newTable(events), tr("&Table"));
    auto* close = new QPushButton(tr("&Close"));
    close->setObjectName(QStringLiteral("close"));
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs);
    layout->addWidget(close, 0, Qt::AlignRight);
    resize(firstSize);
}

QWidget* TraceWindow::newDrawing(const QString& title, const hx::TraceEvents& events)
{
    auto* drawing = new QSvgWidget;
    drawing->setObjectName(QStringLiteral("drawing"));
    drawing->load(hx::traceSvg(title, events));
    drawing->setFixedSize(drawing->sizeHint());
    drawing->setAccessibleName(tr("Drawing of the trace; the table has the same in words"));
    auto* area = new QScrollArea;
    area->setWidget(drawing);
    area->setAccessibleName(tr("Drawing of the trace"));
    return area;
}

QWidget* TraceWindow::newTable(const hx::TraceEvents& events)
{
    auto* table = new QTableView;
    table->setObjectName(QStringLiteral("table"));
    table->setModel(new TraceTable(events, table));
    table->setAccessibleName(tr("Events of the trace"));
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->hide();
    table->resizeColumnsToContents();
    table->horizontalHeader()->setStretchLastSection(true);
    return table;
}

} // namespace hxupdate
