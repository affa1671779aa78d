// Bytes that no host would send: the product stays whole, bounded, and honest about its code.
#include "qt/Saturated.h"
#include "simulator/Crc32.h"
#include "simulator/FaultyProduct.h"
#include "simulator/StateFile.h"

#include "tests/simulator/UpdateMessages.h"
#include "tests/support/Valdrin.h"

#include <gtest/gtest.h>

#include <random>

namespace hx::sim {

namespace {

using Random = std::mt19937;

int below(Random& random, int limit)
{
    return static_cast<int>(random() % static_cast<unsigned>(limit));
}

QByteArray randomBytes(Random& random, int size)
{
    QByteArray bytes;
    for (int i = 0; i < size; ++i)
        bytes.append(static_cast<char>(random() & 0xFF));
    return bytes;
}

// A message that begins as one for the product and goes on with anything.
QByteArray randomCommand(Random& random)
{
    static const QByteArray commands = bytesOf("1B1C212E2F303142434243424355");
    QByteArray message = bytesOf("F0006B2D3041");
    message.append(commands.at(below(random, saturated(commands.size()))));
    static const QByteArray seconds = bytesOf("0008090A0A0C0C0D4600");
    message.append(seconds.at(below(random, saturated(seconds.size()))));
    const int size = below(random, 160);
    for (int i = 0; i < size; ++i)
        message.append(static_cast<char>(random() & 0x7F));
    return message.append('\xF7');
}

// A well-formed update message with any fields.
QByteArray randomUpdateMessage(Random& random)
{
    const quint8 kind = below(random, 8) == 0 ? kindFwd : kindFwu;
    const QByteArray code = codeOfSize(112 * (1 + below(random, 3)) - below(random, 2));
    if (below(random, 6) == 0)
        return fileCheck(code, "1234", kind);
    if (below(random, 6) == 0)
        return closing();
    const int number = below(random, 4);
    return dataMessage(number, static_cast<quint64>(number) * 112, code.mid(112 * number, 112),
                       kind);
}

QByteArray mutated(Random& random, QByteArray message)
{
    const int position = below(random, saturated(message.size()));
    switch (below(random, 4)) {
    case 0:
        message[position] = static_cast<char>(random() & 0xFF);
        break;
    case 1:
        message.remove(position, 1 + below(random, 4));
        break;
    case 2:
        message.insert(position, randomBytes(random, 1 + below(random, 3)));
        break;
    default:
        break;
    }
    return message;
}

QByteArray hostileInput(Random& random)
{
    switch (below(random, 4)) {
    case 0:
        return randomBytes(random, below(random, 64));
    case 1:
        return randomCommand(random);
    case 2:
        return mutated(random, randomUpdateMessage(random));
    default:
        return randomUpdateMessage(random);
    }
}

bool isWholeMessage(const QByteArray& bytes)
{
    for (int i = 1; i + 1 < bytes.size(); ++i)
        if (static_cast<quint8>(bytes.at(i)) >= 0x80)
            return false;
    return bytes.size() >= 9 && bytes.size() <= 48 && bytes.startsWith('\xF0') &&
           bytes.endsWith('\xF7');
}

} // namespace

TEST(HostileInput, ProductStaysHonestAndBounded)
{
    SimulatedProductSettings settings;
    settings.memorySize = 400;
    SimulatedProduct product(valdrin(), settings);
    Random random(7);
    int updates = 0;
    for (int round = 0; round < 100000; ++round) {
        const bool wasValid = product.isCodeValid();
        const QByteArray input = hostileInput(random);
        const QVector<SimulatedReply> replies = product.receive(input);
        ASSERT_LE(replies.size(), input.size() / 2 + 1);
        for (const SimulatedReply& reply : replies)
            ASSERT_TRUE(isWholeMessage(reply.bytes)) << hexOf(reply.bytes).constData();
        ASSERT_LE(product.codeBytes().size(), settings.memorySize);
        if (product.isCodeValid()) {
            ASSERT_EQ(product.code().crc, productCrc32(product.codeBytes())) << round;
        }
        updates += !wasValid && product.isCodeValid() ? 1 : 0;
    }
    EXPECT_GT(updates, 50); // the inputs reach the far end
}

TEST(HostileInput, AnyStateReachedIsSavedAndRestored)
{
    SimulatedProduct product{valdrin()};
    Random random(8);
    for (int round = 0; round < 2000; ++round) {
        product.receive(hostileInput(random));
        SimulatedProduct other{valdrin()};
        QString error;
        ASSERT_TRUE(other.restore(product.save(), &error)) << error.toStdString();
        ASSERT_EQ(other.save(), product.save());
    }
}

TEST(HostileInput, AfterAnythingAWholeUpdateSucceeds)
{
    SimulatedProduct product{valdrin()};
    Random random(9);
    const QByteArray code = codeOfSize(250);
    const QVector<QByteArray> image = imageOf(code, "5678");
    for (int round = 0; round < 3000; ++round) {
        for (int i = 0; i < 5; ++i)
            product.receive(hostileInput(random));
        for (const QByteArray& message : image)
            product.receive(message);
        ASSERT_EQ(product.codeBytes(), code) << round;
        ASSERT_TRUE(product.isCodeValid()) << round;
    }
}

TEST(HostileInput, FaultyProductTakesAnyPlan)
{
    Random random(10);
    for (int round = 0; round < 3000; ++round) {
        FaultPlan plan;
        for (int i = 0; i < 4; ++i) {
            Fault fault;
            fault.kind =
                static_cast<FaultKind>(below(random, static_cast<int>(FaultKind::Noise) + 1));
            fault.first = 1 + below(random, 4);
            fault.last = fault.first + below(random, 5);
            fault.position = below(random, 1023) - 511;
            fault.value = below(random, 258) - 2;
            plan.append(fault);
        }
        FaultyProduct product(SimulatedProduct(valdrin()), plan);
        for (int i = 0; i < 20; ++i) {
            ASSERT_LE(product.receive(hostileInput(random)).size(), 200);
            ASSERT_LE(product.product().codeBytes().size(), 512);
        }
    }
}

TEST(HostileInput, StateFilesOfAnyKindAreRefusedOrTaken)
{
    Random random(11);
    StoredCode code;
    code.bytes = codeOfSize(70);
    code.valid = true;
    code.version = {{'1', '2', '3', '4'}};
    const QByteArray text = writeStateFile(code);
    const QByteArray lines = text.left(text.lastIndexOf("end "));
    for (int round = 0; round < 20000; ++round) {
        const QByteArray changed = mutated(random, lines);
        const QByteArray end =
            "end " +
            QByteArray::number(productCrc32(changed), 16).toUpper().rightJustified(8, '0') + '\n';
        StoredCode read;
        QString error;
        SerialNumber serialNumber;
        const bool isTaken = readStateFile(changed + end, 1000, &read, &error, &serialNumber);
        ASSERT_NE(isTaken, !error.isEmpty());
        if (isTaken) { // then it says the same again
            ASSERT_EQ(writeStateFile(read, serialNumber), changed + end);
        }
    }
}

} // namespace hx::sim
