// Fault plans as text, and a product under any plan and any bytes.
#include "simulator/FaultyProduct.h"

#include "fuzz/support/FuzzTarget.h"
#include "tests/simulator/UpdateMessages.h"
#include "tests/support/Valdrin.h"

namespace {

using namespace hx;
using namespace hx::sim;
using namespace hx::fuzz;

constexpr int memorySize = 300;

sim::FaultPlan planOf(const QByteArray& text)
{
    sim::FaultPlan plan;
    for (const QByteArray& name : text.split('\n')) {
        QString error;
        const std::optional<sim::Fault> fault = sim::parseFault(QString::fromUtf8(name), &error);
        require(fault.has_value() == error.isEmpty(), "a refused fault has a reason");
        if (fault.has_value()) {
            require(fault->first >= 1 && fault->first <= fault->last, "a fault strikes something");
            plan.append(*fault);
        }
    }
    return plan;
}

void run(FuzzInput& input)
{
    const sim::FaultPlan plan = planOf(input.block());
    static const QVector<QByteArray> image = imageOf(codeOfSize(250), "5678");
    sim::SimulatedProductSettings settings;
    settings.memorySize = memorySize;
    sim::FaultyProduct product(sim::SimulatedProduct(sim::valdrin(), settings), plan);
    QVector<QByteArray> messages = image;
    messages.prepend(bytesOf("F07E7F0601F7"));
    messages.append(bytesOf("F0006B2D304130F7"));
    while (!input.atEnd())
        messages.insert(input.byte() % messages.size(), input.block());

    for (const QByteArray& message : messages) {
        const bool wasGone = product.isGone();
        const QVector<sim::SimulatedReply> replies = product.receive(message);
        require(!wasGone || (replies.isEmpty() && product.isGone()), "what is gone stays gone");
        // Every message may be heard twice, and every answer be doubled with another put before it.
        require(replies.size() <= 8 * (message.size() / 2 + 2), "replies are bounded");
        for (const sim::SimulatedReply& reply : replies)
            require(reply.bytes.size() <= 4096 && reply.delayUs >= 0, "a reply is bounded");
        require(product.product().codeBytes().size() <= memorySize, "the memory is bounded");
        require(product.unaskedBytes().size() <= 4096, "what nobody asked for is bounded");
    }
}

const Target target("faulty_product", run);

} // namespace
