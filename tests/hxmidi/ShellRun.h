// Runs a command line in a shell, with the real hxmidi as the one that is found first.
#pragma once

#include <QProcess>
#include <QProcessEnvironment>

#include <gtest/gtest.h>

struct ShellRun {
    int code = -1;
    QByteArray output; // standard output and standard error as they came
};

inline ShellRun runInShell(const QString& command, const QString& folder)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PATH"), QStringLiteral(HXMIDI_FOLDER ":") +
                                                   environment.value(QStringLiteral("PATH")));
    QProcess shell;
    shell.setProcessEnvironment(environment);
    shell.setWorkingDirectory(folder);
    shell.setProcessChannelMode(QProcess::MergedChannels);
    shell.start(QStringLiteral("bash"), {QStringLiteral("-c"), command});
    shell.closeWriteChannel();
    if (!shell.waitForFinished(60000))
        ADD_FAILURE() << "did not end: " << command.toStdString();
    return {shell.exitCode(), shell.readAllStandardOutput()};
}
