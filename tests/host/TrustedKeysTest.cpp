// The keys beside a plugin: where they are looked for, and that whatever lies there counts.
#include "host/base/FileName.h"
#include "tests/host/SignatureSamples.h"
#include "tests/host/TestFiles.h"
#include "tests/support/QtPrinting.h"

#include <QDir>
#include <QFileInfo>

using namespace hx;

namespace {

const QByteArray oneKey = samples::publicKeyText(samples::keyPair('a'));

// A plugin in a folder of its own.
class PluginPlace : public TestFiles {
public:
    QString plugin = copy(HX_PLUGIN_FILE, "liborbit.so");

    TrustedKeys keys(const QString& name = QString()) const
    {
        const PluginLoadResult loaded = loadPlugin(name.isEmpty() ? plugin : name);
        EXPECT_TRUE(loaded.ok()) << loaded.problem.what.toStdString();
        return keysOf(*loaded.plugin);
    }
};

QString problemOf(const TrustedKeys& keys)
{
    EXPECT_TRUE(keys.areAskedFor());
    return keys.keys ? QString("usable") : keys.keys.problem().what;
}

} // namespace

TEST(TrustedKeys, NoneAreAskedForWhereNoFileLiesBesideThePlugin)
{
    PluginPlace place;
    place.write("liborbit.so.pub", oneKey);
    place.write("orbit.pub", oneKey);
    EXPECT_FALSE(place.keys().areAskedFor());
}

TEST(TrustedKeys, LieBesideThePluginUnderItsName)
{
    PluginPlace place;
    const QString file = place.write("liborbit.pub", oneKey);
    const TrustedKeys keys = place.keys();
    EXPECT_EQ(keys.file, file);
    ASSERT_TRUE(bool(keys.keys));
    EXPECT_EQ(keys.keys->front().id, QByteArray(8, 'a'));
    EXPECT_EQ(place.keys(place.folder()).file, file) << "the plugin of a folder";
}

TEST(TrustedKeys, OfAPluginThatALinkLeadsToAreThoseBesideTheLinkFirst)
{
    PluginPlace place;
    QDir(place.folder()).mkpath("links");
    const QString link = place.path("links/libother.so");
    ASSERT_TRUE(QFile::link(place.plugin, link));
    EXPECT_FALSE(place.keys(link).areAskedFor());
    const QString beside = place.write("liborbit.pub", oneKey);
    EXPECT_EQ(place.keys(link).file, QFileInfo(beside).canonicalFilePath());
    const QString besideLink = place.write("links/libother.pub", oneKey);
    EXPECT_EQ(place.keys(link).file, besideLink);
}

TEST(TrustedKeys, WhateverLiesThereIsTheirFile)
{
    PluginPlace place;
    const QString file = place.path("liborbit.pub");
    place.write("liborbit.pub", "");
    EXPECT_EQ(problemOf(place.keys()),
              "it has 0 lines; expected two lines for each of 1 to 16 public keys");
    place.write("liborbit.pub", QByteArray(10000000, '\n'));
    EXPECT_EQ(problemOf(place.keys()), "it has more than 16384 bytes");
    ASSERT_TRUE(QFile::remove(file));
    ASSERT_TRUE(QDir().mkdir(file));
    EXPECT_EQ(problemOf(place.keys()), "it is a folder");
    ASSERT_TRUE(QDir().rmdir(file));
    ASSERT_TRUE(QFile::link(place.path("nowhere"), file));
    EXPECT_EQ(problemOf(place.keys()), "No such file or directory");
    ASSERT_TRUE(QFile::remove(file));
    ASSERT_TRUE(QFile::link("/dev/null", file));
    EXPECT_EQ(problemOf(place.keys()), "it is not a regular file");
    ASSERT_TRUE(QFile::remove(file));
    ASSERT_TRUE(QFile::link(place.write("elsewhere", oneKey), file));
    EXPECT_EQ(problemOf(place.keys()), "usable");
}
