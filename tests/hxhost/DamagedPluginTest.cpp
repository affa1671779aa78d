// Plugin files with one bit turned over: whatever the bit is, the program ends by itself.
#include "qt/Saturated.h"
#include "tests/hxhost/HxHost.h"

#include <cstddef>
#include <random>

#ifdef Q_OS_LINUX
#include <link.h>
#endif

namespace {

class DamagedPlugin : public HxHostTest {
protected:
    // The plugin of this build with one bit turned over.
    QString damaged(int bit) const
    {
        QByteArray content = read(QStringLiteral(HX_PLUGIN_FILE));
        content[bit / 8] = char(content.at(bit / 8) ^ (1 << bit % 8));
        return write(QStringLiteral("damaged") + HX_MODULE_SUFFIX, content);
    }

    void expectNoSignal(int bit, const QStringList& command) const
    {
        const ProgramResult ended = hxhost(command + QStringList{"--plugin", damaged(bit)});
        EXPECT_GE(ended.exitCode, 0) << "bit " << bit << ": " << ended.err.toStdString();
        if (ended.exitCode != 0) {
            EXPECT_EQ(ended.exitCode, 3) << "bit " << bit << ": " << ended.err.toStdString();
            EXPECT_TRUE(ended.err.startsWith("error: ")) << "bit " << bit;
        }
    }
};

#ifdef Q_OS_LINUX
// Where the file keeps the address of the function that runs when it is loaded.
int loadFunctionAt()
{
    QFile file(QStringLiteral(HX_PLUGIN_FILE));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray content = file.readAll();
    const auto* header = reinterpret_cast<const ElfW(Ehdr)*>(content.constData());
    const auto* sections =
        reinterpret_cast<const ElfW(Shdr)*>(content.constData() + header->e_shoff);
    for (int i = 0; i < header->e_shnum; ++i) {
        const int end = int(sections[i].sh_offset + sections[i].sh_size);
        for (int at = int(sections[i].sh_offset); sections[i].sh_type == SHT_DYNAMIC && at < end;
             at += int(sizeof(ElfW(Dyn)))) {
            const auto* entry = reinterpret_cast<const ElfW(Dyn)*>(content.constData() + at);
            if (entry->d_tag == DT_INIT)
                return at + int(offsetof(ElfW(Dyn), d_un));
        }
    }
    ADD_FAILURE() << "the plugin has no such function";
    return 0;
}
#endif

} // namespace

TEST_F(DamagedPlugin, OfWhichAHeaderBitLiesIsRefusedAndNeverASignal)
{
    const int headerBits = 64 * 8; // of an ELF file: where all else is found by
    for (int bit = 0; bit < headerBits; bit += 5)
        expectNoSignal(bit, {"inspect"});
}

TEST_F(DamagedPlugin, TrialOfASoundOneLeavesNothingInTheTrace)
{
    const QString trace = path("trace");
    ASSERT_EQ(hxhost({"identify", "--port", "simulator", "--trace", trace}).exitCode, 0);
    EXPECT_FALSE(read(trace).contains(" log ")) << read(trace).toStdString();
}

TEST_F(DamagedPlugin, OfWhichAnyBitLiesIsRefusedOrWorksAndIsNeverASignal)
{
    const int size = hx::saturated(read(QStringLiteral(HX_PLUGIN_FILE)).size());
    std::mt19937 random(1); // the same bits each time
    for (int trial = 0; trial < 100; ++trial)
        expectNoSignal(int(random() % (unsigned(size) * 8)), {"inspect"});
}

#ifdef Q_OS_LINUX
TEST_F(DamagedPlugin, ThatJumpsIntoNowhereWhenItIsLoadedIsSaidToHaveCrashed)
{
    const int bit = loadFunctionAt() * 8 + 40; // of the address: no memory is there
    const ProgramResult ended = hxhost({"inspect", "--plugin", damaged(bit)});
    EXPECT_EQ(ended.exitCode, 3);
    EXPECT_TRUE(ended.err.contains("was tried in a process of its own, and it "))
        << ended.err.toStdString();
}
#endif
