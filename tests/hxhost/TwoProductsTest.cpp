// Two products of two makers, one host: what it does for the one it does for the other, with nothing
// but the plugin exchanged, and neither plugin lets the other's image near a product.
#include "tests/hxhost/HxHost.h"

#include <QJsonArray>

namespace {

struct Product {
    const char* plugin;
    const char* name;
    const char* identifier;
    const char* manufacturer;
    const char* header; // of its messages
    const char* serialNumber;
};

void PrintTo(const Product& product, std::ostream* out)
{
    *out << product.name;
}

const Product valdrin = {HX_PLUGIN_FILE, "Valdrin",           "0x300041",
                         "00 6B 2D",     "F0 00 6B 2D 30 41", "3330343130303031"};
const Product example = {HX_SECOND_PLUGIN_FILE, "Example",         "0x120005", "00 21 7F",
                         "F0 00 21 7F 12 05",   "3132303530303031"};

class TwoProducts : public HxHostTest {
protected:
    // The command with this product's plugin.
    static QStringList with(const Product& product, QStringList arguments)
    {
        return arguments << QStringLiteral("--plugin") << QString::fromLatin1(product.plugin);
    }

    static QJsonObject resultOf(const QJsonObject& document)
    {
        return document.value("result").toObject();
    }

    static QString text(const QJsonObject& document, const QString& path)
    {
        QJsonValue value = document.value("result");
        for (const QString& part : path.split('.'))
            value = value.toObject().value(part);
        return value.toString();
    }

    // An image of 300 code bytes for the product.
    QString imageFor(const Product& product) const
    {
        const QString name = path(QString::fromLatin1(product.name) + ".syx");
        const QString code = write("code.bin", QByteArray(300, 'c') + product.name);
        const ProgramResult built =
            hxhost(with(product, {"image", "build", code, "-o", name, "--kind", "fwu"}));
        EXPECT_EQ(built.exitCode, 0) << built.err.toStdString();
        return name;
    }
};

class EachProduct : public TwoProducts, public testing::WithParamInterface<Product> {
protected:
    const Product& product() const { return GetParam(); }
    QStringList withPlugin(const QStringList& arguments) const
    {
        return with(product(), arguments);
    }

    // The simulated product that keeps its memory from one command to the next.
    QString port() const { return "simulator:" + path("product.state"); }
};

} // namespace

TEST_P(EachProduct, IsInspectedWithoutAWordOfWarning)
{
    const QJsonObject document = json(withPlugin({"inspect"}));
    EXPECT_EQ(document.value("exitCode").toInt(), 0);
    EXPECT_EQ(text(document, "device.productName"), product().name);
    EXPECT_EQ(text(document, "device.identifier"), product().identifier);
    EXPECT_EQ(document.value("warnings").toArray().size(), 0);
}

TEST_P(EachProduct, KeepsTheContract)
{
    const QJsonObject document = json({"check", QString::fromLatin1(product().plugin)});
    EXPECT_EQ(document.value("exitCode").toInt(), 0);
    const QJsonObject summary = resultOf(document).value("summary").toObject();
    EXPECT_EQ(summary.value("failed").toInt(-1), 0);
    EXPECT_EQ(summary.value("skipped").toInt(-1), 0);
}

TEST_P(EachProduct, IsIdentifiedAndRead)
{
    const QJsonObject document = json(withPlugin({"info", "--port", "simulator"}));
    EXPECT_EQ(document.value("exitCode").toInt(), 0);
    EXPECT_EQ(text(document, "identity.identifier"), product().identifier);
    EXPECT_EQ(text(document, "identity.manufacturer"), product().manufacturer);
    EXPECT_EQ(text(document, "gender.identifier"), product().identifier);
    EXPECT_EQ(text(document, "version.version"), "1.0.2.3");
    EXPECT_EQ(text(document, "esn.number"), product().serialNumber);
    EXPECT_EQ(text(document, "checksum.stored.bytes"), text(document, "checksum.calculated.bytes"));
}

TEST_P(EachProduct, IsUpdatedVerifiedAndReplayed)
{
    const QString image = imageFor(product());
    const QString trace = path("update.trace");
    const QJsonObject updated =
        json(withPlugin({"update", image, "--port", port(), "--trace", trace}));
    EXPECT_EQ(updated.value("exitCode").toInt(), 0);
    EXPECT_EQ(text(updated, "outcome"), "succeeded");
    EXPECT_EQ(text(updated, "image.product"), product().identifier);
    EXPECT_EQ(text(updated, "checksum.image"), text(updated, "checksum.stored.bytes"));
    const QByteArray record = read(trace);
    EXPECT_TRUE(record.contains(QByteArray(product().header) + " 43 0A 00 00"));
    EXPECT_TRUE(record.contains("= fwupdate.fwu.filecheck"));
    EXPECT_TRUE(record.contains("= fwupdate.fwu.response.good"));

    EXPECT_EQ(hxhost(withPlugin({"verify", image, "--port", port()})).exitCode, 0);
    EXPECT_EQ(hxhost(withPlugin({"update", image, "--port", "replay:" + trace})).exitCode, 0);
}

// The one plugin compares more than the checksums; nothing of that is said of the other.
TEST_P(EachProduct, HasANoteOnItsCodeOnlyWhereThePluginContradictsTheChecksums)
{
    const QJsonObject document = json(withPlugin({"verify", "--port", "simulator"}));
    const QJsonObject plugin = resultOf(document).value("plugin").toObject();
    const QJsonObject valid = plugin.value("isCodeValid").toObject();
    const bool contradicts = product().plugin == valdrin.plugin;
    EXPECT_EQ(valid.value("fwu").toBool(), !contradicts);
    EXPECT_EQ(valid.contains("note"), contradicts);
}

TEST_P(EachProduct, HasNoNoteOnCodeThatIsDamaged)
{
    const ProgramResult damaged = hxhost(
        withPlugin({"update", imageFor(product()), "--port", port(), "--fault", "bad-write:2"}));
    EXPECT_EQ(damaged.exitCode, 7) << damaged.err.toStdString();
    const QJsonObject document = json(withPlugin({"info", "--port", port()}));
    const QJsonObject plugin = resultOf(document).value("plugin").toObject();
    EXPECT_EQ(plugin.value("isCodeValid").toObject(),
              (QJsonObject{{"fwu", false}, {"fwd", false}}));
}

TEST_P(EachProduct, IsRecoveredAfterAnUpdateThatWasCutOff)
{
    const QString image = imageFor(product());
    const ProgramResult cut = hxhost(
        withPlugin({"update", image, "--port", port(), "--fault", "power-cut:2-", "--rate", "0"}));
    EXPECT_EQ(cut.exitCode, 7) << cut.err.toStdString();

    const QJsonObject lost = json(withPlugin({"recover", "--port", port()}));
    EXPECT_EQ(lost.value("exitCode").toInt(), 8);
    EXPECT_EQ(text(lost, "condition"), "no valid code");
    EXPECT_EQ(text(lost, "version.state"), "refused");

    EXPECT_EQ(hxhost(withPlugin({"update", image, "--port", port()})).exitCode, 0);
    EXPECT_EQ(text(json(withPlugin({"recover", "--port", port()})), "condition"), "code intact");
}

INSTANTIATE_TEST_SUITE_P(Of, EachProduct, testing::Values(valdrin, example),
                         [](const testing::TestParamInfo<Product>& tested) {
                             return std::string(tested.param.name);
                         });

namespace {

class OtherImage : public TwoProducts {
protected:
    // `plugin` is given the image of `other`.
    void expectRefused(const Product& plugin, const Product& other) const
    {
        const QString image = imageFor(other);
        const QString trace = path("refused.trace");
        const QJsonObject document =
            json(with(plugin, {"update", image, "--port", "simulator", "--trace", trace}));
        EXPECT_EQ(document.value("exitCode").toInt(), 9);
        EXPECT_EQ(text(document, "image.product"), other.identifier);
        const QString what = document.value("error").toObject().value("what").toString();
        EXPECT_TRUE(what.contains(
            QStringLiteral("it begins with %1; expected %2.").arg(other.header, plugin.header)))
            << what.toStdString();
        EXPECT_FALSE(read(trace).contains(" sent "));
    }
};

} // namespace

TEST_F(OtherImage, OfTheExampleIsRefusedByTheValdrinPluginBeforeAnythingIsSent)
{
    expectRefused(valdrin, example);
}

TEST_F(OtherImage, OfTheValdrinIsRefusedByTheExamplePluginBeforeAnythingIsSent)
{
    expectRefused(example, valdrin);
}

// The simulated product follows the plugin, so the other one comes from a record.
TEST_F(OtherImage, AProductOfAnotherMakerIsNotTakenForOurs)
{
    const QByteArray question = "sent        F0 7E 7F 06 01 F7\n";
    const QByteArray answer = "received    F0 7E 00 06 02 00 21 7F 30 00 41 00 31 30 32 33 F7\n";
    const QString trace =
        write("other.trace", "# hxtrace 1\n"
                             "     0.000000 " +
                                 question + "     0.003000 " + answer + "     2.201920 " +
                                 question + "     2.205000 " + answer);
    const QJsonObject document = json(with(valdrin, {"identify", "--port", "replay:" + trace}));
    EXPECT_EQ(document.value("exitCode").toInt(), 9);
    EXPECT_EQ(text(document, "identity.manufacturer"), "00 21 7F");
    EXPECT_EQ(text(document, "identity.identifier"), valdrin.identifier);
}

namespace {

// The example's plugin takes no identity reply but that of its own product.
class StrictPattern : public TwoProducts {
protected:
    static constexpr const char* valdrinReply =
        "F0 7E 00 06 02 00 6B 2D 30 00 41 00 31 30 32 33 F7";

    // A record in which `reply` answers each of ten identity requests.
    QString answeredBy(const QByteArray& reply) const
    {
        constexpr double requestSeconds = 6 * 0.000320;
        constexpr double timeoutSeconds = 2.2;
        QByteArray lines("# hxtrace 1\n");
        for (int i = 0; i < 10; ++i) {
            const double sent = i * (timeoutSeconds + requestSeconds);
            lines += QByteArray::number(sent, 'f', 6).rightJustified(13) +
                     " sent        F0 7E 7F 06 01 F7\n" +
                     QByteArray::number(sent + 0.003, 'f', 6).rightJustified(13) + " received    " +
                     reply + "\n";
        }
        return "replay:" + write("answered.trace", lines);
    }

    QList<QStringList> commands() const
    {
        return {{"identify"}, {"info"}, {"verify"}, {"recover"}, {"update", imageFor(example)}};
    }
};

} // namespace

TEST_F(StrictPattern, TellsTheOtherProductThatItKeepsOut)
{
    const QString port = answeredBy(valdrinReply);
    const QString told =
        QStringLiteral("something answered, but not as this plugin's product: ") + valdrinReply;
    for (const QStringList& command : commands()) {
        const QStringList arguments = with(example, command + QStringList{"--port", port});
        const ProgramResult result = hxhost(arguments);
        EXPECT_EQ(result.exitCode, 9) << command.first().toStdString();
        EXPECT_TRUE(result.err.contains("error: " + told.toLatin1() + "\n"))
            << result.err.toStdString();
        const QJsonObject error = json(arguments).value("error").toObject();
        EXPECT_EQ(error.value("what").toString(), told) << command.first().toStdString();
    }
}

TEST_F(StrictPattern, ShowsWhoTheOtherProductIs)
{
    const QJsonObject document =
        json(with(example, {"identify", "--port", answeredBy(valdrinReply)}));
    EXPECT_EQ(document.value("exitName").toString(), "wrong-product");
    EXPECT_EQ(text(document, "identity.state"), "other product");
    EXPECT_EQ(text(document, "identity.reply"), valdrinReply);
    EXPECT_EQ(text(document, "identity.identifier"), valdrin.identifier);
    EXPECT_EQ(text(document, "identity.manufacturer"), valdrin.manufacturer);
    const QJsonObject identity = resultOf(document).value("identity").toObject();
    EXPECT_FALSE(identity.value("served").toBool(true));
}

TEST_F(StrictPattern, LeavesSilenceWhatItIs)
{
    for (const QStringList& command : commands()) {
        const ProgramResult result = hxhost(
            with(example, command + QStringList{"--port", "simulator", "--fault", "silent"}));
        EXPECT_EQ(result.exitCode, 5) << command.first().toStdString();
        EXPECT_TRUE(result.err.contains("error: The instrument did not answer. "))
            << result.err.toStdString();
    }
}

// Of an answer that is not an identity reply it is not known that it is another product's.
TEST_F(StrictPattern, TakesNoOtherAnswerForAnotherProduct)
{
    const QString port = answeredBy("F0 7E 00 06 02 00 6B 2D F7");
    for (const QStringList& command : commands())
        EXPECT_EQ(hxhost(with(example, command + QStringList{"--port", port})).exitCode, 5)
            << command.first().toStdString();
}

namespace {

// The same product, served by a plugin that does not name how its stored checksum is read.
const Product unverifiable = {HX_UNVERIFIABLE_PLUGIN_FILE, example.name,   example.identifier,
                              example.manufacturer,        example.header, example.serialNumber};

const char nothingToVerifyWith[] =
    "this plugin names no stored checksum: the update can be sent, not verified";

class IncompletePlugin : public TwoProducts {
protected:
    static void expectWarned(const QJsonObject& document)
    {
        const QJsonArray warnings = document.value("warnings").toArray();
        EXPECT_TRUE(warnings.contains(QString::fromLatin1(nothingToVerifyWith)));
    }
};

} // namespace

TEST_F(IncompletePlugin, IsSaidToBeOneWhenItIsInspected)
{
    const QJsonObject document = json(with(unverifiable, {"inspect"}));
    EXPECT_EQ(document.value("exitCode").toInt(), 0);
    expectWarned(document);
}

TEST_F(IncompletePlugin, SaysBeforeAnUpdateThatItCannotBeVerified)
{
    const QString image = imageFor(unverifiable);
    const QJsonObject document = json(with(unverifiable, {"update", image, "--dry-run"}));
    EXPECT_EQ(document.value("exitCode").toInt(), 0);
    expectWarned(document);
}

TEST_F(IncompletePlugin, SendsTheUpdateAndSpeaksNoWordOfSuccess)
{
    const QString image = imageFor(unverifiable);
    const QJsonObject document =
        json(with(unverifiable, {"update", image, "--port", "simulator", "--no-listen"}));
    EXPECT_EQ(document.value("exitCode").toInt(), 8);
    expectWarned(document);
    EXPECT_EQ(text(document, "outcome"), "verification failed");
    const QJsonObject messages = resultOf(document).value("messages").toObject();
    EXPECT_EQ(messages.value("acknowledged").toInt(), messages.value("total").toInt(-1));
    const QString what = document.value("error").toObject().value("what").toString();
    EXPECT_TRUE(what.contains("the plugin's dictionary has no \"version.read.user.crc\""))
        << what.toStdString();
}

TEST_F(IncompletePlugin, VerifiesNothing)
{
    const QJsonObject document = json(with(unverifiable, {"verify", "--port", "simulator"}));
    EXPECT_EQ(document.value("exitCode").toInt(), 8);
}
