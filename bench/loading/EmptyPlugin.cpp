// The least that Qt's plugin loader loads: what loading costs whatever the plugin holds.
#include <QObject>
#include <QtPlugin>

class EmptyPlugin : public QObject {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "empty")
};

#include "EmptyPlugin.moc"
