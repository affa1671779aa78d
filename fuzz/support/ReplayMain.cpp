// Runs every input of a seed file through its target, without a fuzzer: replay TARGET FILE.
#include "fuzz/support/FuzzTarget.h"
#include "fuzz/support/SeedFile.h"

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

// A finding ends the program.
void replay(const hx::fuzz::Target& target, const hx::fuzz::Seed& seed)
{
    std::printf("%s %s\n", target.name, seed.name.constData());
    std::fflush(stdout); // the last line names the input that ended the program
    hx::fuzz::FuzzInput input(reinterpret_cast<const uint8_t*>(seed.bytes.constData()),
                              static_cast<size_t>(seed.bytes.size()));
    target.run(input);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s TARGET FILE\n", argv[0]);
        return 2;
    }
    const hx::fuzz::Target* const target = findTarget(argv[1]);
    if (target == nullptr) {
        std::fprintf(stderr, "there is no target %s\n", argv[1]);
        return 2;
    }
    const hx::fuzz::SeedFile seeds(QString::fromLocal8Bit(argv[2]));
    if (!seeds.errorText().isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(seeds.errorText()));
        return 1;
    }
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    for (const hx::fuzz::Seed& seed : seeds.seeds())
        replay(*target, seed);
    return 0;
}
