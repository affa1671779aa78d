// Makes pictures of every page, for the documents: window_pictures FOLDER [LANGUAGE...]; without a
// language of every language and look.
#include "tests/hxupdate/Looks.h"
#include "tests/hxupdate/Scenes.h"

#include "apps/hxupdate/window/Language.h"

#include <QApplication>
#include <QDir>
#include <QHash>
#include <QImage>
#include <QPixmap>

#include <algorithm>

namespace {

// Half of the bits of each colour are enough to look at, and a fifth of the bytes.
QRgb coarse(QRgb colour)
{
    return (colour & 0xFFF0F0F0) | ((colour >> 4) & 0x000F0F0F);
}

QImage inFewColours(QImage picture)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            picture.setPixel(x, y, coarse(picture.pixel(x, y)));
            ++counts[picture.pixel(x, y)];
        }
    }
    QVector<QRgb> colours = counts.keys().toVector();
    std::sort(colours.begin(), colours.end(),
              [&counts](QRgb one, QRgb other) { return counts[one] > counts[other]; });
    colours.resize(std::min(256, int(colours.size())));
    return picture.convertToFormat(QImage::Format_Indexed8, colours);
}

bool takePictures(const QString& folder, const QString& prefix)
{
    bool isSaved = true;
    for (const Scene& scene : scenes()) {
        WindowBench bench;
        scene.bringAbout(bench);
        bench.settle();
        const QImage picture = inFewColours(bench.window.grab().toImage());
        const QString name = QString("%1-%2.png").arg(prefix, scene.name);
        isSaved = picture.save(QDir(folder).filePath(name), "PNG", 0) && isSaved;
        endScene(bench);
    }
    return isSaved;
}

bool speakAndTake(const QString& folder, const QString& language)
{
    hxupdate::speak(*qApp, QLocale(language));
    return takePictures(folder, language.left(2));
}

template <typename Look>
bool takeWith(const QString& folder, const QString& prefix)
{
    const Look look;
    return takePictures(folder, prefix);
}

bool takeLooks(const QString& folder)
{
    hxupdate::speak(*qApp, QLocale(QStringLiteral("en_US")));
    const bool isSaved = takeWith<LongTexts>(folder, QStringLiteral("long")) &&
                         takeWith<LargeFont>(folder, QStringLiteral("large"));
    return takeWith<HighContrast>(folder, QStringLiteral("contrast")) && isSaved;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments().mid(1);
    if (words.isEmpty())
        return 2;
    const QString& folder = words.first();
    QStringList languages = words.mid(1);
    bool isSaved = !languages.isEmpty() || takeLooks(folder);
    if (languages.isEmpty())
        languages = QStringList({"en_US", "de_DE", "fr_FR", "es_ES"});
    for (const QString& language : languages)
        isSaved = speakAndTake(folder, language) && isSaved;
    return isSaved ? 0 : 1;
}
