#include "tests/hxmidi/CommandRun.h"

#include "apps/hxmidi/commands/CommandLine.h"
#include "apps/hxmidi/commands/Commands.h"

#include <QBuffer>

CommandRun hxmidi(const std::vector<std::string>& words, const QByteArray& input)
{
    QByteArray given = input;
    QBuffer in(&given);
    QBuffer out;
    QBuffer err;
    in.open(QIODevice::ReadOnly);
    out.open(QIODevice::WriteOnly);
    err.open(QIODevice::WriteOnly);
    std::vector<const char*> argv = {"hxmidi"};
    for (const std::string& word : words)
        argv.push_back(word.c_str());
    hx::midi::CommandLine line({in, out, err});
    hx::midi::addAllCommands(line);
    const int code = line.run(int(argv.size()), argv.data());
    return {code, out.data().toStdString(), err.data().toStdString()};
}
