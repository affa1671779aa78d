// Makes pictures of every page, for the documents: window_pictures FOLDER [LANGUAGE...]
#include "tests/hxupdate/Scenes.h"

#include "apps/hxupdate/window/Language.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QPixmap>

namespace {

bool takePictures(const QString& folder, const QString& language)
{
    hxupdate::speak(*qApp, QLocale(language));
    bool isSaved = true;
    for (const Scene& scene : scenes()) {
        WindowBench bench;
        scene.bringAbout(bench);
        bench.settle();
        const QImage picture = bench.window.grab().toImage().convertToFormat(
            QImage::Format_Indexed8, Qt::ThresholdDither | Qt::AvoidDither);
        const QString name = QString("%1-%2.png").arg(language.left(2), scene.name);
        isSaved = picture.save(QDir(folder).filePath(name), "PNG", 0) && isSaved;
        endScene(bench);
    }
    return isSaved;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QStringList languages = QCoreApplication::arguments().mid(2);
    if (argc < 2)
        return 2;
    if (languages.isEmpty())
        languages = QStringList({"en_US", "de_DE", "fr_FR", "es_ES"});
    bool isSaved = true;
    for (const QString& language : languages)
        isSaved = takePictures(QString::fromLocal8Bit(argv[1]), language) && isSaved;
    return isSaved ? 0 : 1;
}
