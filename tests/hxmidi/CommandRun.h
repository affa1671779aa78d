// Runs a command line of hxmidi inside the test and keeps what it said.
#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <string>
#include <vector>

struct CommandRun {
    int code = -1;
    std::string out;
    std::string err;

    // The one document that --json printed.
    QJsonObject json() const
    {
        return QJsonDocument::fromJson(QByteArray::fromStdString(out)).object();
    }

    // The first line of standard error.
    std::string firstComplaint() const { return err.substr(0, err.find('\n')); }
};

CommandRun hxmidi(const std::vector<std::string>& words, const QByteArray& input = QByteArray());
