// hxhost support: one text with all that somebody who is to help needs to know.
#include "apps/hxhost/commands/CommandLine.h"
#include "apps/hxhost/commands/Commands.h"
#include "apps/hxhost/commands/ImageReport.h"
#include "apps/hxhost/report/StandardStreams.h"
#include "apps/hxhost/session/PluginPlace.h"

#include "host/base/FileName.h"
#include "host/base/HexText.h"
#include "host/trace/Trace.h"

#include <QCryptographicHash>
#include <QDir>
#include <QRegularExpression>
#include <QSysInfo>

namespace hx::host {

namespace {

struct SupportOptions {
    ConnectionOptions connection;
    std::string output;
    std::string image; // empty: none
    std::string trace; // empty: none
};

struct Section {
    QString title;
    QString what; // what is in it, for the list at the head
    QString text;
};

using Sections = QList<Section>;

const QString promise =
    QStringLiteral("It holds no names of people, computers or folders. The names of MIDI ports "
                   "and the serial number of the instrument are in it.");

// File names stay, the folders before them tell who works where.
QString withoutFolders(QString text)
{
    static const QRegularExpression folders(QStringLiteral("(?<![\\w.])/(?:[^\\s/\"']+/)+"));
    text.replace(QDir::homePath(), QStringLiteral("~"));
    return text.remove(folders);
}

QString versions()
{
    return QStringLiteral("hxhost  %1\nQt      %2 (built with %3)\nsystem  %4, %5 %6, %7\n")
        .arg(QStringLiteral(HXHOST_VERSION), QString::fromLatin1(qVersion()),
             QStringLiteral(QT_VERSION_STR), QSysInfo::prettyProductName(), QSysInfo::kernelType(),
             QSysInfo::kernelVersion(), QSysInfo::currentCpuArchitecture());
}

// What another command says, its problem included. That problem does not fail the report about it.
QString saidBy(CommandContext& context, const std::function<void(CommandContext&)>& command)
{
    Report report;
    CommandContext inner{context.output,   report,    context.console,
                         context.recorder, QString(), std::nullopt};
    command(inner);
    QString text = report.toText(true);
    if (const std::optional<Problem>& problem = report.problem())
        text += QStringLiteral("error: %1\n").arg(problem->what);
    if (report.exitCode() == ExitCode::Interrupted)
        context.report.fail(*report.problem());
    return withoutFolders(text);
}

QString imageText(const QByteArray& content, const UpdateImage& image, const QString& format)
{
    const QByteArray hash = QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex();
    QString text = QStringLiteral("SHA-256   %1\nbytes     %2\nformat    %3\nkind      %4\n"
                                  "version   %5\nmessages  %6\n")
                       .arg(QString::fromLatin1(hash))
                       .arg(content.size())
                       .arg(format, codeTypeTag(image.kind), image.version)
                       .arg(image.messages.size());
    if (image.ok())
        return text + QStringLiteral("checksum  %1\n").arg(hexText(image.expectedChecksum()));
    return text + QStringLiteral("problem   %1\n").arg(imageProblemLine(image.problems.front()));
}

bool addImageSection(CommandContext& context, const SupportOptions& options, Sections& sections)
{
    const QString name = fileNameText(options.image);
    const Result<QByteArray> content = readInput(name, maxImageFileBytes);
    if (!content) {
        context.fail(
            ExitCode::FileError,
            QStringLiteral("the image \"%1\" cannot be read: %2").arg(name, content.problem().what),
            QStringLiteral("an update image: .syx, hex text or Standard MIDI File"),
            QStringLiteral("give its name with --image, or leave it out"));
        return false;
    }
    const PluginLoadResult plugin = loadPlugin(pluginPlace(options.connection.plugin));
    const LoadedImage image =
        imageIn(name, *content,
                plugin.ok() ? describeProduct(plugin.plugin->device()) : ProductDescription());
    sections << Section{QStringLiteral("Image"),
                        QStringLiteral("the checksum of the image, and what it says of itself"),
                        imageText(*content, image.image, imageFormatName(image.file.format))};
    return true;
}

// The command line at the head of a trace, without its names: "hxhost update ... --rate 2000".
QString withoutNames(const QString& commandLine)
{
    QStringList kept;
    const QStringList words = commandLine.split(QLatin1Char(' '));
    for (int i = 0; i < words.size(); ++i) {
        bool isNumber = false;
        words.at(i).toInt(&isNumber);
        const bool isTold = i < 3 || isNumber || words.at(i).startsWith(QLatin1Char('-'));
        if (isTold || kept.last() != QLatin1String("..."))
            kept << (isTold ? words.at(i) : QStringLiteral("..."));
    }
    return kept.join(QLatin1Char(' '));
}

bool addTraceSection(CommandContext& context, const std::string& path, Sections& sections)
{
    const QString name = fileNameText(path);
    const Result<TraceEvents> trace = readTrace(name);
    if (!trace) {
        context.report.fail(trace.problem());
        return false;
    }
    const Result<QByteArray> content = readInput(name, maxTraceBytes);
    if (!content) {
        context.fail(ExitCode::FileError,
                     QStringLiteral("the trace \"%1\": %2").arg(name, content.problem().what),
                     QStringLiteral("a file that stays as it is"), QStringLiteral("try again"));
        return false;
    }
    QStringList lines = QString::fromUtf8(*content).split(QLatin1Char('\n'));
    for (QString& line : lines) {
        if (line.startsWith(QLatin1String("# hxhost ")))
            line = withoutNames(line);
    }
    sections << Section{QStringLiteral("Last trace"),
                        QStringLiteral("the last trace, with every byte that travelled"),
                        withoutFolders(lines.join(QLatin1Char('\n')))};
    return true;
}

QStringList contentsOf(const Sections& sections)
{
    QStringList contents;
    for (const Section& section : sections)
        contents << section.what;
    return contents;
}

QByteArray document(const Sections& sections)
{
    QString text = QStringLiteral("hxhost support report 1\n\nIt holds:\n- ") +
                   contentsOf(sections).join(QLatin1String("\n- ")) + QLatin1String("\n\n") +
                   promise + QLatin1Char('\n');
    for (const Section& section : sections)
        text += QStringLiteral("\n== %1 ==\n%2").arg(section.title, section.text);
    return text.toUtf8();
}

bool collect(CommandContext& context, const SupportOptions& options, Sections& sections)
{
    const ConnectionOptions& connection = options.connection;
    sections
        << Section{QStringLiteral("Versions"),
                   QStringLiteral("the versions of the program, of Qt and of the system"),
                   versions()}
        << Section{QStringLiteral("Ports"), QStringLiteral("the names of the MIDI ports"),
                   saidBy(context, [&](auto& inner) { reportPorts(inner, connection.plugin); })}
        << Section{QStringLiteral("Plugin"), QStringLiteral("what the plugin says of itself"),
                   saidBy(context, [&](auto& inner) { reportPlugin(inner, connection.plugin); })}
        << Section{QStringLiteral("Instrument"),
                   QStringLiteral("what the instrument and the plugin answer, or why not"),
                   saidBy(context, [&](auto& inner) { reportProduct(inner, connection); })};
    return !context.report.failed() &&
           (options.image.empty() || addImageSection(context, options, sections)) &&
           (options.trace.empty() || addTraceSection(context, options.trace, sections));
}

void support(CommandContext& context, const SupportOptions& options)
{
    Sections sections;
    if (!collect(context, options, sections))
        return;
    const QString path = fileNameText(options.output);
    const QByteArray content = document(sections);
    context.isOutputTaken = isStandardStream(path);
    const Result<> written = writeOutput(path, content);
    if (!written)
        return context.fail(ExitCode::FileError,
                            QStringLiteral("the report \"%1\" cannot be written: %2")
                                .arg(path, written.problem().what),
                            QStringLiteral("a file name in a folder that may be written to"),
                            QStringLiteral("give another name with -o"));
    context.report.add(QStringLiteral("file"), path);
    context.report.add(QStringLiteral("bytes"), content.size());
    context.report.add(QStringLiteral("contents"), QJsonArray::fromStringList(contentsOf(sections)),
                       contentsOf(sections).join(QLatin1String("; ")));
    context.report.say(promise);
}

} // namespace

void addSupportCommand(CommandLine& line)
{
    auto options = std::make_shared<SupportOptions>();
    const Command command = line.add("support", "Write a report to send with a call for help");
    command.addOption("-o,--output", options->output, "Report to write")
        .valueName("FILE")
        .required();
    command.addOption("--image", options->image, "The image whose checksum the report states")
        .valueName("FILE");
    command
        .addOption("--last-trace", options->trace,
                   "The record that --trace wrote in the run that failed")
        .valueName("FILE");
    addConnectionOptions(command, options->connection);
    line.setRun(command, [options](CommandContext& context) { support(context, *options); });
}

} // namespace hx::host
