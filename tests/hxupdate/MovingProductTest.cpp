// A product that goes away in the midst of its update, as one that restarts does, and comes back
// under another number.
#include "tests/hxupdate/Bench.h"

#include "apps/hxupdate/model/MachinePorts.h"

using namespace hxupdate;

namespace {

// Where it is plugged in. A port that was opened before it went away is gone for good.
struct Socket {
    int messagesUntilLoss = -1; // negative: it stays
    bool comesBack = true;
    bool takesItsSystemAway = false;
    QByteArray otherSerial; // of the unit that comes back in its place
    bool isAway = false;
    int number = 20;
    hx::SimulatedPort wire{hx::sim::FaultyProduct(hx::sim::SimulatedProduct(hx::sim::valdrin())),
                           {{0, 0}, 0}};

    QString portName() const { return QStringLiteral("Valdrin Update %1:0").arg(number); }

    QList<hx::MidiBackend> present() const
    {
        if (isAway && takesItsSystemAway)
            return {};
        QStringList ports = {QStringLiteral("Piano 16:0")};
        if (!isAway)
            ports << portName();
        return {{QStringLiteral("alsa"), QStringLiteral("ALSA"), ports, ports, {}}};
    }

    void count()
    {
        if (messagesUntilLoss == 0) {
            number += 4;
            isAway = !comesBack;
            if (!otherSerial.isEmpty())
                wire.device() = unit(otherSerial);
        }
        --messagesUntilLoss;
    }
};

class SocketPort final : public hx::MidiPort {
public:
    explicit SocketPort(Socket& socket) : m_socket(socket), m_name(socket.portName()) {}

    QString name() const override { return m_name; }
    hx::Clock& clock() override { return m_socket.wire.clock(); }
    bool isGone() const override { return m_socket.isAway || m_name != m_socket.portName(); }

    qint64 send(const QByteArray& message) override
    {
        m_socket.count();
        return isUsable() ? m_socket.wire.send(message) : 0;
    }
    hx::MidiChunk receive(hx::Microseconds deadline) override
    {
        return isUsable() ? m_socket.wire.receive(deadline) : hx::MidiChunk();
    }

private:
    bool isUsable()
    {
        errorText = isGone() ? QStringLiteral("it was pulled out") : QString();
        return !isGone();
    }

    Socket& m_socket;
    QString m_name;
};

class AwakeAlways final : public SleepGuard {
public:
    bool hold() override { return true; }
    void release() override {}
};

// The model on the machine's ports, of which this file makes up what there is.
class MovingProduct : public testing::Test {
protected:
    MovingProduct()
    {
        QObject::connect(&model, &UpdateModel::noticed, &model,
                         [this](Notice notice, const QString&) { notices << notice; });
    }

    bool isAt(Step step)
    {
        return waitUntil([this, step] { return model.step() == step; });
    }

    void review()
    {
        model.look();
        ASSERT_TRUE(waitUntil([this] { return model.connection().product() != nullptr; }));
        model.useProduct();
        const auto built = hx::buildImage(samples::product(), samples::code(300), CodeType::Fwu,
                                          QStringLiteral("1.0.2.4"));
        model.takeFile(m_files.write("image.syx", samples::content(built->messages)));
        ASSERT_TRUE(isAt(Step::Review));
    }

    // To the verdict; the product goes away at its third message of the image.
    void updateWithALoss()
    {
        review();
        socket.messagesUntilLoss = 3 + 2; // identity, version before, serial number
        model.startUpdate();
        ASSERT_TRUE(isAt(Step::Verdict));
    }

    Socket socket;
    QList<Notice> notices;

private:
    Surroundings surroundings()
    {
        const std::shared_ptr<hx::Clock> clock(std::shared_ptr<void>(), &socket.wire.clock());
        const auto open = [this](const hx::PortAddress& address) {
            EXPECT_EQ(address.output, socket.portName());
            return hx::Result<std::unique_ptr<hx::MidiPort>>(std::make_unique<SocketPort>(socket));
        };
        Surroundings with;
        with.pluginPlace = QStringLiteral(HX_PLUGIN_FILE);
        with.ports = std::make_unique<MachinePorts>(
            MidiSystem{[this] { return socket.present(); }, open, clock});
        with.sleep = std::make_unique<AwakeAlways>();
        return with;
    }

    TestFiles m_files;

protected:
    UpdateModel model{surroundings()};
};

} // namespace

TEST_F(MovingProduct, IsUpdatedWhenItComesBackUnderAnotherNumber)
{
    updateWithALoss();
    EXPECT_EQ(model.end().ending, Ending::Succeeded) << model.end().reason.toStdString();
    EXPECT_EQ(socket.portName(), "Valdrin Update 24:0");
    EXPECT_EQ(socket.wire.product().codeBytes(), samples::code(300));
}

TEST_F(MovingProduct, IsToldWhenItGoesAndWhenItIsBack)
{
    updateWithALoss();
    EXPECT_EQ(notices, QList<Notice>({Notice::ProductAway, Notice::ProductBack}));
    EXPECT_TRUE(
        model.end().record.contains("the port Valdrin Update 20:0 is back, as Valdrin Update 24:0"))
        << model.end().record.toStdString();
}

TEST_F(MovingProduct, IsNotTakenForAnotherUnitInItsPlaceWhichGetsNothing)
{
    socket.otherSerial = "30410099";
    updateWithALoss();
    EXPECT_EQ(model.end().ending, Ending::WrongMidway) << model.end().reason.toStdString();
    EXPECT_FALSE(socket.wire.product().isUpdating());
    EXPECT_TRUE(socket.wire.product().isCodeValid());
}

TEST_F(MovingProduct, IsALostConnectionWhenItDoesNotComeBackInTime)
{
    socket.comesBack = false;
    updateWithALoss();
    EXPECT_EQ(model.end().ending, Ending::LostMidway);
    EXPECT_EQ(notices, QList<Notice>({Notice::ProductAway}));
}

TEST_F(MovingProduct, IsNotWaitedForWhenItsMidiSystemIsGoneToo)
{
    socket.comesBack = false;
    socket.takesItsSystemAway = true;
    updateWithALoss();
    EXPECT_EQ(model.end().ending, Ending::LostMidway);
    EXPECT_EQ(notices, QList<Notice>());
}

TEST_F(MovingProduct, IsNotWaitedForWhileItIsLookedFor)
{
    socket.comesBack = false;
    socket.messagesUntilLoss = 0;
    const hx::Microseconds start = socket.wire.clock().now();
    model.look();
    ASSERT_TRUE(waitUntil([this] { return model.connection().finding != Finding::Searching; }));
    EXPECT_EQ(model.connection().finding, Finding::Silent);
    EXPECT_LT(socket.wire.clock().now() - start, hx::returnTime);
    EXPECT_EQ(notices, QList<Notice>());
}
