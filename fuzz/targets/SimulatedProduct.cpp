// The simulated product under any bytes: bounded, honest about its code, and never beyond recovery.
#include "simulator/SimulatedProduct.h"

#include "fuzz/support/FuzzTarget.h"
#include "simulator/Crc32.h"
#include "tests/simulator/UpdateMessages.h"
#include "tests/support/Valdrin.h"

namespace {

using namespace hx;
using namespace hx::sim;
using namespace hx::fuzz;

constexpr int memorySize = 300;
constexpr int longestReply = 48;

// Bytes as they are, or a message that gets far.
QByteArray messageOf(FuzzInput& input)
{
    static const QByteArray code = codeOfSize(250);
    static const QVector<QByteArray> image = imageOf(code, "5678");
    const int how = input.byte();
    if (how < 0x60)
        return input.take(1 + how % 32);
    if (how < 0x90) { // any command with any content
        QByteArray message = bytesOf("F0006B2D3041") + input.take(1 + how % 32) + '\xF7';
        return message;
    }
    QByteArray message = image.at(how % image.size());
    if (how >= 0xE0) {
        const auto at = input.byte() % message.size();
        message[at] = static_cast<char>(input.byte());
    }
    if (how >= 0xF0 && message.size() > 10)
        message = withSum(message.mid(6, 2), message.mid(8, message.size() - 10));
    return message;
}

bool isWholeMessage(const QByteArray& bytes)
{
    for (int i = 1; i + 1 < bytes.size(); ++i) {
        if ((bytes.at(i) & 0x80) != 0)
            return false;
    }
    return bytes.size() >= 9 && bytes.size() <= longestReply && bytes.startsWith('\xF0') &&
           bytes.endsWith('\xF7');
}

void requireSound(const sim::SimulatedProduct& product)
{
    require(product.codeBytes().size() <= memorySize, "the memory is bounded");
    if (product.isCodeValid())
        requireSame(product.code().crc, sim::productCrc32(product.codeBytes()),
                    "valid code has the stored checksum");
    require(!product.isUpdating() || !product.isCodeValid(), "no valid code during an update");
    require(product.isCodeValid() || product.mode() != sim::ProductMode::User,
            "nothing but valid code runs");
}

QVector<QByteArray> bytesOfReplies(const QVector<sim::SimulatedReply>& replies)
{
    QVector<QByteArray> all;
    for (const sim::SimulatedReply& reply : replies)
        all += reply.bytes;
    return all;
}

// A second product that hears the same byte by byte answers the same.
void hear(sim::SimulatedProduct& product, sim::SimulatedProduct& twin, const QByteArray& bytes)
{
    const QVector<QByteArray> replies = bytesOfReplies(product.receive(bytes));
    for (const QByteArray& reply : replies)
        require(isWholeMessage(reply), "a reply is a whole message");
    require(replies.size() <= bytes.size() / 2 + 1, "no more replies than messages");
    QVector<QByteArray> twins;
    for (int i = 0; i < bytes.size(); ++i)
        twins += bytesOfReplies(twin.receive(bytes.mid(i, 1)));
    requireSame(twins, replies, "it does not matter how bytes are cut");
}

void step(FuzzInput& input, sim::SimulatedProduct& product, sim::SimulatedProduct& twin)
{
    const int how = input.choice(12);
    if (how == 0) {
        product.powerCycle();
        twin.powerCycle();
    } else if (how == 1) {
        const int writes = input.number();
        product.failPowerAfter(writes);
        twin.failPowerAfter(writes);
    } else {
        hear(product, twin, messageOf(input));
    }
}

void requireRecovers(sim::SimulatedProduct& product)
{
    static const QByteArray code = codeOfSize(130);
    static const QVector<QByteArray> image = imageOf(code, "4321");
    product.failPowerAfter(-1);
    for (const QByteArray& message : image)
        requireSame(product.receive(message).size(), 1, "an update message is answered");
    require(product.isCodeValid(), "a whole update makes the code valid");
    requireSame(product.codeBytes(), code, "a whole update brings its code");
}

void run(FuzzInput& input)
{
    sim::SimulatedProductSettings settings;
    settings.memorySize = memorySize;
    settings.deviceId = input.byte();
    sim::SimulatedProduct product(sim::valdrin(), settings);
    sim::SimulatedProduct twin(sim::valdrin(), settings);
    while (!input.atEnd()) {
        step(input, product, twin);
        requireSound(product);
    }
    const QByteArray state = product.save();
    requireSame(twin.save(), state, "the twin's memory");
    QString error;
    require(twin.restore(state, &error) && error.isEmpty(), "any state can be restored");
    requireSame(twin.save(), state, "a restored state");
    requireRecovers(product);
}

const Target target("simulated_product", run);

} // namespace
