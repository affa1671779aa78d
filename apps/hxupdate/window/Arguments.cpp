#include "apps/hxupdate/window/Arguments.h"

#include "host/product/PluginFolder.h"

#include <QCommandLineParser>
#include <QTextStream>

#include <cstdlib>

namespace hxupdate {

namespace {

constexpr int usageError = 2;

[[noreturn]] void refuse(const QString& what)
{
    QTextStream(stderr) << "hxupdate: " << what << "\nTry 'hxupdate --help'.\n";
    std::exit(usageError);
}

void describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        QStringLiteral("Updates the firmware of a MIDI product, in a window."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions(
        {{QStringLiteral("port"), QStringLiteral("\"simulator\": try it on a simulated product."),
          QStringLiteral("PORT")},
         {QStringLiteral("plugin"),
          QStringLiteral("Device plugin, or a folder of them; without it, those "
                         "that are installed."),
          QStringLiteral("FILE")}});
    parser.addPositionalArgument(QStringLiteral("IMAGE"), QStringLiteral("Update image."),
                                 QStringLiteral("[IMAGE]"));
}

} // namespace

Arguments readArguments(const QStringList& words)
{
    QCommandLineParser parser;
    describe(parser);
    if (!parser.parse(words))
        refuse(parser.errorText());
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp();
    if (parser.isSet(QStringLiteral("version")))
        parser.showVersion();
    const QString port = parser.value(QStringLiteral("port"));
    if (parser.isSet(QStringLiteral("port")) && port != QLatin1String("simulator"))
        refuse(QStringLiteral("--port takes \"simulator\", not \"%1\". A real product's port is "
                              "chosen in the window.")
                   .arg(port));
    const QStringList files = parser.positionalArguments();
    if (files.size() > 1)
        refuse(QStringLiteral("One image at a time, not %1.").arg(files.size()));
    Arguments arguments;
    arguments.isSimulated = !port.isEmpty();
    const QString plugin = parser.value(QStringLiteral("plugin"));
    arguments.pluginPlace = plugin.isEmpty() ? hx::pluginFolder() : plugin;
    if (!files.isEmpty())
        arguments.image = files.first();
    return arguments;
}

} // namespace hxupdate
