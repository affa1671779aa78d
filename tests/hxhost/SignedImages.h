// An image, a copy of the plugin, and a key of minisign's to sign the one and to lie beside the other.
#pragma once

#include "tests/hxhost/HxHost.h"

class SignedImages : public HxHostTest {
protected:
    void SetUp() override
    {
        makeKey("maker");
        ASSERT_TRUE(QFile::copy(HX_PLUGIN_FILE, plugin()));
    }

    // NAME.pub and NAME.key, without a password.
    void makeKey(const QString& name) const
    {
        minisign({"-G", "-W", "-p", path(name + ".pub"), "-s", path(name + ".key")});
    }

    static ProgramResult minisign(const QStringList& words)
    {
        const ProgramResult ended = runProgram(QStringLiteral("minisign"), words);
        EXPECT_EQ(ended.exitCode, 0) << words.join(' ').toStdString() << ended.err.toStdString();
        return ended;
    }

    QString plugin() const { return path("liborbit.so"); }
    const QString& imageFile() const { return m_image; }
    QString signatureFile() const { return m_image + ".minisig"; }

    // From now on images for the plugin must be signed with this key.
    void trust(const QString& key = "maker") const
    {
        write("liborbit.pub", read(path(key + ".pub")));
    }

    QJsonObject sign(const QString& key = "maker", const QStringList& more = {}) const
    {
        return json(QStringList{"image", "sign", m_image, "--key", path(key + ".key")} + more);
    }

    // The comment that minisign verifies and shows.
    QString verifiedComment(const QString& signature) const
    {
        return QString::fromUtf8(
            minisign({"-V", "-Q", "-p", path("maker.pub"), "-m", m_image, "-x", signature}).out);
    }

    // A whole run on the simulated product; its trace is in the file "trace".
    QJsonObject update(const QStringList& more = {}) const
    {
        QFile::remove(path("trace"));
        return json(QStringList{"update", m_image, "--port", "simulator", "--no-listen", "--plugin",
                                plugin(), "--trace", path("trace")} +
                    more);
    }

    static QJsonObject signatureOf(const QJsonObject& document)
    {
        return document.value("result").toObject().value("signature").toObject();
    }

    static QString errorOf(const QJsonObject& document, const QString& part = "what")
    {
        return document.value("error").toObject().value(part).toString();
    }

    // With code 6, in this state and these words, before anything is sent.
    void expectRefused(const QString& state, const QString& words,
                       const QStringList& more = {}) const
    {
        const QJsonObject document = update(more);
        EXPECT_EQ(document.value("exitName").toString(), "image-refused");
        EXPECT_EQ(signatureOf(document).value("state").toString(), state);
        EXPECT_TRUE(errorOf(document).contains(words)) << errorOf(document).toStdString();
        EXPECT_TRUE(errorOf(document, "expected").startsWith("an image signed with a key of "));
        EXPECT_FALSE(errorOf(document, "next").isEmpty());
        EXPECT_FALSE(document.value("result").toObject().contains("port"));
        EXPECT_FALSE(read(path("trace")).contains(" sent "));
    }

    void expectSent(const QString& state, const QStringList& more = {}) const
    {
        const QJsonObject document = update(more);
        EXPECT_EQ(document.value("exitName").toString(), "success")
            << errorOf(document).toStdString();
        EXPECT_EQ(signatureOf(document).value("state").toString(), state);
    }

private:
    QString m_image = image();
};
