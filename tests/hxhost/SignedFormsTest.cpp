// Images in another form than .syx, and with odd names, are signed and verified like all others.
#include "tests/hxhost/SignedImages.h"

namespace {

QByteArray bigEndian(int value, int size)
{
    QByteArray bytes;
    for (int i = size - 1; i >= 0; --i)
        bytes += char(value >> 8 * i);
    return bytes;
}

// The messages of a .syx file as the events of a Standard MIDI File with one track.
QByteArray midiFileOf(const QByteArray& syx)
{
    QByteArray events;
    for (const QByteArray& message : syx.split('\xF7')) {
        const int size = int(message.size()); // without its F0, with its F7
        if (size == 0)
            continue;
        events += QByteArray(1, '\0') + '\xF0' + char(0x80 | size >> 7) + char(size & 0x7F) +
                  message.mid(1) + '\xF7';
    }
    events += QByteArray::fromHex("00FF2F00");
    return "MThd" + bigEndian(6, 4) + bigEndian(0, 2) + bigEndian(1, 2) + bigEndian(96, 2) +
           "MTrk" + bigEndian(int(events.size()), 4) + events;
}

} // namespace

TEST_F(SignedImages, AMidiFileIsSignedAndVerifiedAsItLiesThere)
{
    trust();
    const QString midi = write("image.mid", midiFileOf(read(imageFile())));
    const QJsonObject made = json({"image", "sign", midi, "--key", path("maker.key")});
    EXPECT_EQ(made.value("exitCode").toInt(), 0) << errorOf(made).toStdString();
    EXPECT_EQ(signatureOf(made).value("file").toString(), midi + ".minisig");
    minisign({"-V", "-Q", "-p", path("maker.pub"), "-m", midi});
    const QStringList update = {"update",   midi,     "--port",  "simulator",  "--no-listen",
                                "--plugin", plugin(), "--trace", path("trace")};
    EXPECT_EQ(json(update).value("exitCode").toInt(), 0);
    // The same messages in the other form, and one delta time that is another.
    EXPECT_EQ(
        signatureOf(this->update({"--signature", midi + ".minisig"})).value("state").toString(),
        "other file");
    QByteArray changed = read(midi);
    changed[changed.size() - 4] = 1;
    write("image.mid", changed);
    const QJsonObject refused = json(update);
    EXPECT_EQ(refused.value("exitCode").toInt(), 6);
    EXPECT_EQ(signatureOf(refused).value("state").toString(), "other file");
}

TEST_F(SignedImages, AnImageWhoseNameBeginsWithADashIsSignedAndVerified)
{
    const auto inFolder = [this](const QString& words) {
        return runProgram("/bin/sh",
                          {"-c", "cd '" + path(".") + "' && \"$0\" " + words, HX_HOST_PROGRAM});
    };
    write("-odd.syx", read(imageFile()));
    write("--json.syx", read(imageFile()));
    for (const QString name : {"./-odd.syx", "./--json.syx"}) {
        EXPECT_EQ(inFolder("image sign " + name + " --key maker.key").exitCode, 0);
        EXPECT_EQ(inFolder("image verify " + name + " --pubkey maker.pub").exitCode, 0);
        EXPECT_EQ(inFolder("image sign " + name + " --key maker.key").exitCode, 10)
            << "it is there";
        ASSERT_TRUE(QFile::remove(path(name + ".minisig")));
    }
    EXPECT_EQ(inFolder("image sign --key maker.key -- -odd.syx").exitCode, 0);
    EXPECT_TRUE(QFile::exists(path("-odd.syx.minisig")));
    EXPECT_EQ(inFolder("image verify --pubkey maker.pub -- -odd.syx").exitCode, 0);
    const ProgramResult taken = inFolder("image sign -odd.syx --key maker.key");
    EXPECT_EQ(taken.exitCode, 2) << "it is taken for options";
    EXPECT_FALSE(taken.err.isEmpty());
}
