// Runs a program of this project as a person would, and keeps all that it leaves behind.
#pragma once

#include <QByteArray>
#include <QMap>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

struct ProgramResult {
    int exitCode = -1; // -1: it did not end by itself within a minute
    QByteArray out;
    QByteArray err;
};

// `environment` is added to the environment of the tests. Standard input is empty, standard output
// and error are no terminals.
inline ProgramResult runProgram(const QString& program, const QStringList& arguments,
                                const QMap<QString, QString>& environment = {})
{
    constexpr int aMinute = 60000;
    QProcess process;
    QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
    for (auto it = environment.begin(); it != environment.end(); ++it)
        all.insert(it.key(), it.value());
    process.setProcessEnvironment(all);
    process.start(program, arguments);
    process.closeWriteChannel();
    ProgramResult result;
    if (!process.waitForFinished(aMinute)) {
        process.kill();
        process.waitForFinished();
    } else if (process.exitStatus() == QProcess::NormalExit) {
        result.exitCode = process.exitCode();
    }
    result.out = process.readAllStandardOutput();
    result.err = process.readAllStandardError();
    return result;
}
