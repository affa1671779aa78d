// Runs every file of a folder through one target, without a fuzzer: replay TARGET FOLDER.
#include "fuzz/support/FuzzTarget.h"

#include <QDir>
#include <QFile>

#include <cstdio>
#include <cstring>

namespace {

const hx::fuzz::Target* findTarget(const char* name)
{
    const hx::fuzz::Target* target = hx::fuzz::Target::last;
    while (target != nullptr && std::strcmp(target->name, name) != 0)
        target = target->next;
    return target;
}

// The number of units that were run; one that is a finding ends the program.
int replayFolder(const hx::fuzz::Target& target, const QDir& folder)
{
    int count = 0;
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    for (const QString& name : names) {
        std::printf("%s %s\n", target.name, qPrintable(name));
        std::fflush(stdout); // the last line names the unit that ended the program
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            return 0;
        const QByteArray unit = file.readAll();
        hx::fuzz::FuzzInput input(reinterpret_cast<const uint8_t*>(unit.constData()),
                                  static_cast<size_t>(unit.size()));
        target.run(input);
        ++count;
    }
    return count;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s TARGET FOLDER\n", argv[0]);
        return 2;
    }
    const hx::fuzz::Target* const target = findTarget(argv[1]);
    if (target == nullptr) {
        std::fprintf(stderr, "there is no target %s\n", argv[1]);
        return 2;
    }
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    if (replayFolder(*target, QDir(QString::fromLocal8Bit(argv[2]))) > 0)
        return 0;
    std::fprintf(stderr, "no unit could be read in %s\n", argv[2]);
    return 1;
}
